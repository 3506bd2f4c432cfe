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
  for (auto& [uri, domain] : state.domains) {
    for (std::int64_t* const moment : {&domain.runningSince_ns, &domain.checkedSince_ns}) {
      if (*moment != 0) *moment = addClamped(*moment, entered - left);
    }
  }
  state.clock_ns = simulated ? entered : 0;
  return entered;
}

/// Counts this call. Throws the requested error if it is the one that fails.
void throwInjectedFault(const InjectedFault& fault, const std::string& name, State& state) {
  if (fault.operation != name) return;
  if (fault.call != 0 && ++state.calls[name] != fault.call) return;
  throw Error({fault.code, "orsksapisimerr_onDemand", "The requested failure."}, name);
}

/// Performs `work` under the state's lock. In simulated time this includes the duration of the
/// operation and of its wait.
Operation performLocked(const Settings& settings, const char* name, const WorkFunction& work) {
  const Umask umask;
  const auto lock = lockState(settings.statePath);
  const State before = readState(settings.statePath);
  State stateOnError = before;
  Operation operation;
  operation.nowNs = switchTime(stateOnError, settings.stepNs.has_value());
  const auto keep = [&](State& state) {
    if (settings.stepNs) {
      state.clock_ns = addClamped(operation.nowNs, operation.waitNs);
      state.clock_ns = addClamped(state.clock_ns, *settings.stepNs + settings.delayNs);
    }
    if (state != before) writeState(settings.statePath, state);
  };
  try {
    throwInjectedFault(settings.fault, name, stateOnError);
    operation.state = stateOnError;
    work(operation);
  } catch (const Error&) {
    keep(stateOnError);
    throw;
  }
  keep(operation.state);
  return operation;
}

/// Waits without the lock. Throws unless the domain is then coherent, at the later of the present
/// and the end of the wait: a system clock may be set back. In simulated time it is always
/// coherent.
void waitAndCheck(const Operation& operation, const Settings& settings) {
  if (!settings.stepNs) std::this_thread::sleep_for(std::chrono::nanoseconds(operation.waitNs));
  if (operation.timesOut) throw Error(timedOut, operation.waitFor);
  if (settings.stepNs) return;
  State state = readState(settings.statePath);
  const std::int64_t endNs = addClamped(operation.nowNs, operation.waitNs);
  const std::int64_t momentNs = std::max(switchTime(state, false), endNs);
  const auto found = state.domains.find(operation.waitFor);
  const bool coherent = found != state.domains.end() && found->second.isCoherentAt(momentNs);
  if (!coherent) throw Error(domainStopped, operation.waitFor);
}

}  // namespace

bool performFunction(const char* function, zuerr_Status* status,
                     const WorkFunction& work) noexcept {
  const char* const name = function + std::strlen("orsksapi_");
  bool done = false;
  Settings settings;
  try {
    readSettings(settings);
    const Operation operation = performLocked(settings, name, work);
    if (!operation.waitFor.empty()) waitAndCheck(operation, settings);
    if (operation.warning) report(status, *operation.warning);
    done = true;
  } catch (const Error& error) {
    report(status, error);
  } catch (const std::exception& failure) {
    report(status, Error(internalError, failure.what()));
  }
  if (!settings.stepNs) std::this_thread::sleep_for(std::chrono::nanoseconds(settings.delayNs));
  return done;
}

}  // namespace simulator
