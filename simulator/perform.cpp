#include "perform.h"

#include <dlfcn.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string_view>
#include <thread>

#include "state_file.h"

namespace simulator {

namespace {

/// What the environment asks of one operation's call.
struct OnDemand {
  std::uint32_t delayMs = 0;
  /// 0: do not fail.
  std::int32_t failureCode = 0;
  /// Which call fails; 0: every one.
  std::uint64_t failingCall = 0;
};

/// Whether this library has the operation, and it has a status to fail with.
bool canFail(std::string_view operation) {
  const std::string function = "orsksapi_" + std::string(operation);
  return operation != "getApiVersion" && dlsym(RTLD_DEFAULT, function.c_str()) != nullptr;
}

/// Whether `text` is a number, whole and in range.
template <typename Number>
bool readNumber(std::string_view text, Number& number) {
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stopped == end;
}

/// Reads ORSK_SIMULATOR_FAIL ("operation=code" or "operation=code@N") and ORSK_SIMULATOR_DELAY_MS.
/// A bad value is refused whichever operation it is about.
OnDemand readOnDemand(const std::string& operation) {
  OnDemand demand;
  if (const char* const delay = std::getenv("ORSK_SIMULATOR_DELAY_MS")) {
    if (!readNumber(delay, demand.delayMs)) {
      throw Refusal(badVariable, std::string("ORSK_SIMULATOR_DELAY_MS=") + delay);
    }
  }
  if (const char* const failure = std::getenv("ORSK_SIMULATOR_FAIL")) {
    const std::string_view text = failure;
    const std::size_t equals = std::min(text.find('='), text.size());
    const std::size_t at = std::min(text.find('@', equals), text.size());
    const std::string_view named = text.substr(0, equals);
    OnDemand read = demand;
    const bool code = equals < text.size() &&
                      readNumber(text.substr(equals + 1, at - equals - 1), read.failureCode) &&
                      read.failureCode < 0;
    const bool call = at == text.size() ||
                      (readNumber(text.substr(at + 1), read.failingCall) && read.failingCall > 0);
    if (!canFail(named) || !code || !call) {
      throw Refusal(badVariable, "ORSK_SIMULATOR_FAIL=" + std::string(text));
    }
    if (named == operation) demand = read;
  }
  return demand;
}

/// Counts this call and throws if it is the one to fail.
void failOnDemand(const OnDemand& demand, const char* operation, State& state,
                  const StateFile& file) {
  if (demand.failureCode == 0) return;
  if (demand.failingCall != 0) {
    const std::uint64_t call = ++state.calls[operation];
    file.write(state);
    if (call != demand.failingCall) return;
  }
  throw Refusal({demand.failureCode, "orsksapisimerr_onDemand", "The failure that was asked for."},
                operation);
}

void performLocked(const OnDemand& demand, const char* operation,
                   const std::function<void(State&)>& work) {
  const StateFile file;
  State state = file.read();
  failOnDemand(demand, operation, state, file);
  const nlohmann::json before = state;
  work(state);
  if (nlohmann::json(state) != before) file.write(state);
}

}  // namespace

bool perform(const char* operation, zuerr_Status* status,
             const std::function<void(State&)>& work) noexcept {
  bool done = false;
  OnDemand demand;
  try {
    demand = readOnDemand(operation);
    performLocked(demand, operation, work);
    done = true;
  } catch (const Refusal& refusal) {
    leave(status, refusal.outcome, refusal.value.c_str(), refusal.file, refusal.line);
  } catch (const std::exception& failure) {
    leave(status, internalError, failure.what());
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(demand.delayMs));
  return done;
}

void performText(const char* operation, char* buffer, std::size_t size, zuerr_Status* status,
                 const std::function<std::string(State&)>& work) noexcept {
  std::string text;
  const bool done = perform(operation, status, [&](State& state) {
    text = work(state);
    if (text.size() >= size) throw Refusal(bufferTooSmall, std::to_string(text.size() + 1));
  });
  if (size > 0) *buffer = '\0';
  if (done) std::memcpy(buffer, text.c_str(), text.size() + 1);
}

}  // namespace simulator
