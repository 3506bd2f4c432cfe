#include "simulator/perform.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <thread>

#include "simulator/state_file.h"

namespace simulator {

namespace {

/// A bound for scripts that delete the state again and again.
constexpr int mostAttempts = 100;

/// The operations that a fault can name: all that have a status record.
// clang-format off
constexpr const char* operationNames[] = {
    "loadResources", "unloadResources", "timescale_getTime", "getCurrentTimescale", "syncDomain_create",
    "timestampCorrelator_create", "timestampCorrelator_delete", "timestampCorrelator_correlate",
    "syncDomain_createAndAddDevices", "syncDomain_delete", "syncDomain_start", "syncDomain_startV2",
    "syncDomain_stop", "syncDomain_addSyncableDevice", "syncDomain_isCoherent",
    "syncDomain_isCoherentSinceLastChecked", "getTimescaleInfo", "getSyncableDeviceInfo",
    "getSyncDomainInfo", "getTimestampCorrelatorInfo"};
// clang-format on

struct InjectedFault {
  std::string operation;
  std::int32_t code = 0;
  /// The call that fails; 0: every call.
  std::uint64_t call = 0;
};

/// The environment variables of one operation.
struct Settings {
  std::int64_t delayNs = 0;
  /// Duration of an operation in simulated time; none in system time.
  std::optional<std::int64_t> stepNs;
  std::optional<InjectedFault> fault;
};

/// Returns whether the whole text is a number that is in range.
template <typename Number>
bool readNumber(const char* begin, const char* end, Number& number) {
  const auto [stopped, error] = std::from_chars(begin, end, number);
  return error == std::errc() && stopped == end;
}

std::optional<std::int64_t> readMilliseconds(const std::string& variable) {
  const char* const text = std::getenv(variable.c_str());
  if (text == nullptr) return {};
  std::uint32_t milliseconds = 0;
  const bool valid = readNumber(text, text + std::strlen(text), milliseconds);
  if (!valid) throw Error(badVariable, variable + '=' + text);
  return milliseconds * nsPerMs;
}

/// Reads "operation=code" or "operation=code@N".
std::optional<InjectedFault> readFault() {
  const char* const text = std::getenv("ORSK_SIMULATOR_FAIL");
  if (text == nullptr) return {};
  const char* const end = text + std::strlen(text);
  const char* const equals = std::find(text, end, '=');
  const char* const at = std::find(equals, end, '@');
  InjectedFault fault{{text, equals}};
  const bool known = std::ranges::count(operationNames, fault.operation) > 0;
  const bool code = equals != end && readNumber(equals + 1, at, fault.code) && fault.code < 0;
  const bool call = at == end || (readNumber(at + 1, end, fault.call) && fault.call > 0);
  if (known && code && call) return fault;
  std::string value = std::string("ORSK_SIMULATOR_FAIL=") + text;
  if (!known) value += " names none of";
  for (const char* const name : operationNames) value += known ? "" : std::string(" ") + name;
  throw Error(badVariable, value);
}

std::int64_t systemTimeNs() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::clamp(std::int64_t{std::chrono::nanoseconds(now).count()}, std::int64_t{1}, latestNs);
}

/// Switches between system and simulated time; running domains keep their elapsed time. Returns the
/// present moment.
std::int64_t enterTime(State& state, bool simulated) {
  const std::int64_t left = state.clock_ns != 0 ? state.clock_ns : systemTimeNs();
  if (simulated == (state.clock_ns != 0)) return left;
  const std::int64_t entered = simulated ? simulatedTimeStartNs : systemTimeNs();
  moveMoments(state, entered - left);
  state.clock_ns = simulated ? entered : 0;
  return entered;
}

/// Counts this call. Throws the requested error if it is the one that fails.
void failIfAsked(const std::optional<InjectedFault>& fault, const std::string& name, State& state) {
  if (!fault || fault->operation != name) return;
  if (fault->call != 0 && ++state.calls[name] != fault->call) return;
  throw Error({fault->code, "orsksapisimerr_onDemand", "The requested failure."}, name);
}

/// Performs `work` under the state's lock. In simulated time this includes the duration of the
/// operation and of its wait.
Operation performLocked(const Settings& settings, const char* name, const WorkFunction& work) {
  StateFile file(StateFile::IfMissing::create);
  const State before = file.read();
  State unworked = before;
  Operation operation;
  operation.nowNs = enterTime(unworked, settings.stepNs.has_value());
  const auto keep = [&](State& state) {
    if (settings.stepNs) {
      state.clock_ns = later(operation.nowNs, operation.wait.durationNs);
      state.clock_ns = later(state.clock_ns, *settings.stepNs + settings.delayNs);
    }
    if (state != before) file.write(state);
  };
  try {
    failIfAsked(settings.fault, name, unworked);
    operation.state = unworked;
    work(operation);
  } catch (const Error&) {
    keep(unworked);
    throw;
  }
  keep(operation.state);
  return operation;
}

/// Performs `work`, and again if the state was deleted meanwhile.
Operation performOnState(const Settings& settings, const char* name, const WorkFunction& work) {
  for (int attempt = 1;; ++attempt) {
    try {
      return performLocked(settings, name, work);
    } catch (const StateDeleted&) {
      if (attempt == mostAttempts) throw;
    }
  }
}

/// Waits without the lock. Throws unless the domain is then coherent, at the later of the present
/// and the end of the wait: a system clock may be set back. In simulated time it is always
/// coherent.
void finish(const Operation& operation, bool simulated) {
  const Wait& wait = operation.wait;
  if (!simulated) std::this_thread::sleep_for(std::chrono::nanoseconds(wait.durationNs));
  if (wait.timesOut) throw Error(timedOut, wait.domainUri);
  if (simulated) return;
  try {
    State state = StateFile(StateFile::IfMissing::fail).read();
    const std::int64_t endNs = later(operation.nowNs, wait.durationNs);
    const std::int64_t momentNs = std::max(enterTime(state, false), endNs);
    const auto found = state.domains.find(wait.domainUri);
    if (found != state.domains.end() && found->second.isCoherentAt(momentNs)) return;
  } catch (const StateDeleted&) {
    throw Error(domainStopped, wait.domainUri);
  }
  throw Error(domainStopped, wait.domainUri);
}

}  // namespace

bool performFunction(const char* name, zuerr_Status* status, const WorkFunction& work) noexcept {
  bool done = false;
  Settings settings;
  try {
    // First the delay, which applies whatever the other variables contain.
    settings.delayNs = readMilliseconds("ORSK_SIMULATOR_DELAY_MS").value_or(0);
    settings.stepNs = readMilliseconds("ORSK_SIMULATOR_STEP_MS");
    settings.fault = readFault();
    const Operation operation = performOnState(settings, name, work);
    if (!operation.wait.domainUri.empty()) finish(operation, settings.stepNs.has_value());
    if (operation.warning) report(status, *operation.warning);
    done = true;
  } catch (const Error& error) {
    report(status, error);
  } catch (const std::exception& failure) {
    report(status, internalError, failure.what());
  }
  if (!settings.stepNs) std::this_thread::sleep_for(std::chrono::nanoseconds(settings.delayNs));
  return done;
}

}  // namespace simulator
