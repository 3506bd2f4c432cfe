#include "simulator/perform.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <string_view>
#include <thread>

#include "simulator/state_file.h"

namespace simulator {

namespace {

/// Where a script rules the time, it starts with the year 2026 (UTC).
constexpr std::int64_t ruledTimeStartsNs = 1'767'225'600 * nsPerSecond;

/// What may be made to fail: everything that has a status to fail with.
// clang-format off
constexpr std::string_view operationNames[] = {
    "loadResources", "unloadResources", "timescale_getTime", "getCurrentTimescale",
    "timestampCorrelator_create", "timestampCorrelator_delete", "timestampCorrelator_correlate",
    "syncDomain_create", "syncDomain_createAndAddDevices", "syncDomain_delete", "syncDomain_start",
    "syncDomain_startV2", "syncDomain_stop", "syncDomain_addSyncableDevice",
    "syncDomain_isCoherent", "syncDomain_isCoherentSinceLastChecked",
    "getTimescaleInfo", "getSyncableDeviceInfo", "getSyncDomainInfo", "getTimestampCorrelatorInfo",
};
// clang-format on

struct InjectedFault {
  std::string operation;
  std::int32_t code = 0;
  /// Which call fails; 0: every one.
  std::uint64_t call = 0;
};

/// What the environment asks for. A bad value is refused whatever is performed.
struct Conditions {
  /// How long an operation takes; nothing where the system's clock rules.
  std::optional<std::int64_t> stepNs;
  std::int64_t delayNs = 0;
  std::optional<InjectedFault> fault;
};

/// Whether `text` is a number, whole and in range.
template <typename Number>
bool readNumber(std::string_view text, Number& number) {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  const auto [stopped, error] = std::from_chars(begin, end, number);
  return error == std::errc() && stopped == end;
}

std::optional<std::int64_t> readMilliseconds(const std::string& variable) {
  const char* const text = std::getenv(variable.c_str());
  if (text == nullptr) return {};
  std::uint32_t milliseconds = 0;
  if (!readNumber(text, milliseconds)) throw Refusal(badVariable, variable + '=' + text);
  return milliseconds * nsPerMs;
}

/// Reads "operation=code" or "operation=code@N".
std::optional<InjectedFault> readFault() {
  const char* const variable = std::getenv("ORSK_SIMULATOR_FAIL");
  if (variable == nullptr) return {};
  const std::string_view text = variable;
  const std::size_t equals = std::min(text.find('='), text.size());
  const std::size_t at = std::min(text.find('@', equals), text.size());
  InjectedFault fault{std::string(text.substr(0, equals))};
  if (std::ranges::find(operationNames, fault.operation) == std::end(operationNames)) {
    std::string hint = "ORSK_SIMULATOR_FAIL=" + std::string(text) + " names none of";
    for (const std::string_view name : operationNames) hint += ' ' + std::string(name);
    throw Refusal(badVariable, hint);
  }
  const bool code = equals < text.size() &&
                    readNumber(text.substr(equals + 1, at - equals - 1), fault.code) &&
                    fault.code < 0;
  const bool call =
      at == text.size() || (readNumber(text.substr(at + 1), fault.call) && fault.call > 0);
  if (!code || !call) throw Refusal(badVariable, "ORSK_SIMULATOR_FAIL=" + std::string(text));
  return fault;
}

std::int64_t systemTimeNs() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::clamp(std::int64_t{std::chrono::nanoseconds(now).count()}, std::int64_t{1}, latestNs);
}

/// Brings the state into the kind of time that rules: whatever runs has then run for as long in the
/// new one. Returns the present moment.
std::int64_t enterTime(State& state, bool ruled) {
  const std::int64_t left = state.clock_ns != 0 ? state.clock_ns : systemTimeNs();
  if (ruled == (state.clock_ns != 0)) return left;
  const std::int64_t entered = ruled ? ruledTimeStartsNs : systemTimeNs();
  moveMoments(state, entered - left);
  state.clock_ns = ruled ? entered : 0;
  return entered;
}

/// Counts this call, and refuses it if it is the one to fail.
void failIfAsked(const std::optional<InjectedFault>& fault, const std::string& name, State& state) {
  if (!fault || fault->operation != name) return;
  if (fault->call != 0 && ++state.calls[name] != fault->call) return;
  throw Refusal({fault->code, "orsksapisimerr_onDemand", "The failure that was asked for."}, name);
}

void sleepFor(std::int64_t ns) {
  std::this_thread::sleep_for(std::chrono::nanoseconds(ns));
}

/// The moment that is `ns` later.
std::int64_t later(std::int64_t momentNs, std::int64_t ns) {
  return ns > latestNs - momentNs ? latestNs : momentNs + ns;
}

/// Works on the state under its lock. Where a script rules the time, all of the operation passes
/// here; else the caller has still to wait. Returns the finished operation.
Operation performLocked(const Conditions& conditions, const char* name,
                        const std::function<void(Operation&)>& work) {
  StateFile file;
  const State before = file.read();
  State unworked = before;
  Operation operation;
  operation.nowNs = enterTime(unworked, conditions.stepNs.has_value());
  const auto keep = [&](State& state) {
    if (conditions.stepNs) {
      state.clock_ns = later(operation.nowNs, operation.waitNs);
      state.clock_ns = later(state.clock_ns, *conditions.stepNs + conditions.delayNs);
    }
    if (state != before) file.write(state);
  };
  try {
    failIfAsked(conditions.fault, name, unworked);
    operation.state = unworked;
    work(operation);
    if (conditions.stepNs && operation.look) operation.look(operation.state, true);
  } catch (const Refusal&) {
    keep(unworked);
    throw;
  }
  keep(operation.state);
  return operation;
}

/// Looks again and again, so that a caller whose wait has lost its sense is told at once.
void wait(const Operation& operation) {
  std::int64_t leftNs = operation.waitNs;
  do {
    const std::int64_t sleptNs = std::min(leftNs, 100 * nsPerMs);
    sleepFor(sleptNs);
    leftNs -= sleptNs;
    try {
      operation.look(StateFile().read(), leftNs == 0);
    } catch (const std::exception&) {
      continue;  // Without the memory to look nothing is known against what was done.
    }
  } while (leftNs > 0);
}

}  // namespace

bool performReferred(const char* name, zuerr_Status* status,
                     const std::function<void(Operation&)>& work) noexcept {
  bool done = false;
  Conditions conditions;
  try {
    conditions = {readMilliseconds("ORSK_SIMULATOR_STEP_MS"),
                  readMilliseconds("ORSK_SIMULATOR_DELAY_MS").value_or(0), readFault()};
    const Operation operation = performLocked(conditions, name, work);
    if (!conditions.stepNs && operation.look) wait(operation);
    if (operation.warning) leave(status, *operation.warning);
    done = true;
  } catch (const StateRemoved&) {
    return performReferred(name, status, work);
  } catch (const Refusal& refusal) {
    leave(status, refusal);
  } catch (const std::exception& failure) {
    leave(status, internalError, failure.what());
  }
  if (!conditions.stepNs) sleepFor(conditions.delayNs);
  return done;
}

}  // namespace simulator
