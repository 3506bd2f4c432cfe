#include "simulator/perform.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "simulator/settings.h"
#include "simulator/state_file.h"

namespace simulator {

namespace {

std::int64_t systemTimeNs() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::clamp(std::int64_t{std::chrono::nanoseconds(now).count()}, std::int64_t{1}, latestNs);
}

/// Switches between system and simulated time; running domains keep their elapsed time. Returns the
/// present moment.
std::int64_t switchTime(State& state, bool simulated) {
  const std::int64_t left = state.clock_ns != 0 ? state.clock_ns : systemTimeNs();
  if (simulated == (state.clock_ns != 0)) return left;
  const std::int64_t entered = simulated ? simulatedTimeStartNs : systemTimeNs();
  for (auto& [uri, domain] : state.domains)
    for (std::int64_t* const moment : {&domain.runningSince_ns, &domain.checkedSince_ns})
      if (*moment != 0) *moment = addClamped(*moment, entered - left);
  state.clock_ns = simulated ? entered : 0;
  return entered;
}

/// Performs `work` under the state's lock. In simulated time this includes the duration of the
/// operation and of its wait.
void performLocked(const Settings& settings, const char* name, const WorkFunction& work,
                   Operation& operation) {
  const Umask umask;
  if (settings.createsFolders) createFolders(settings.statePath);
  const auto lock = lockState(settings.statePath);
  const State before = readState(settings.statePath);
  State stateOnError = before;
  operation.nowNs = switchTime(stateOnError, settings.stepNs.has_value());
  const auto keep = [&](State& state) {
    if (settings.stepNs) {
      state.clock_ns = addClamped(operation.nowNs, operation.waitNs);
      state.clock_ns = addClamped(state.clock_ns, *settings.stepNs + settings.delayNs);
    }
    if (state != before) writeState(settings.statePath, state);
  };
  try {
    if (settings.failing == name &&
        (settings.call == 0 || ++stateOnError.calls[name] == settings.call))
      throw Report{{settings.code, "orsksapisimerr_onDemand", "The requested failure."}, name};
    operation.state = stateOnError;
    work(operation);
  } catch (const Report&) {
    keep(stateOnError);
    throw;
  }
  keep(operation.state);
}

/// Waits in system time, without the lock. Throws unless the domain is then coherent, at the later
/// of the present and the end of the wait: a system clock may be set back.
void waitAndCheck(const Operation& operation, const std::string& path) {
  const std::int64_t endNs = addClamped(operation.nowNs, operation.waitNs);
  std::this_thread::sleep_for(std::chrono::nanoseconds(operation.waitNs));
  State state = readState(path);
  const std::int64_t momentNs = std::max(switchTime(state, false), endNs);
  const auto found = state.domains.find(operation.waitFor);
  const bool coherent = found != state.domains.end() && found->second.isCoherentAt(momentNs);
  if (!coherent) throw Report{domainStopped, operation.waitFor};
}

}  // namespace

void performFunction(const char* function, zuerr_Status* status,
                     const WorkFunction& work) noexcept {
  const char* const name = function + std::strlen("orsksapi_");
  Settings settings;
  Operation operation;
  try {
    readSettings(settings);
    performLocked(settings, name, work, operation);
    // After the wait in simulated time the domain is always coherent.
    if (!operation.waitFor.empty() && !settings.stepNs) waitAndCheck(operation, settings.statePath);
  } catch (const Report& report) {
    if (report.kind.code == timedOut.code) settings.delayNs += operation.waitNs;
    write(report, status);
  } catch (const std::exception& failure) {
    write(Report{internalError, failure.what()}, status);
  }
  if (!settings.stepNs) std::this_thread::sleep_for(std::chrono::nanoseconds(settings.delayNs));
}

}  // namespace simulator
