#pragma once

/// What every operation shares: time, injected faults, delays, the locked state, errors.

#include <cstring>
#include <functional>
#include <optional>
#include <string>

#include "simulator/errors.h"
#include "simulator/model.h"

namespace simulator {

/// One operation. The state does not change if it throws an `Error`.
struct Operation {
  State state;
  /// The moment of the operation.
  std::int64_t nowNs = 0;
  /// Warning reported with a success.
  std::optional<Error> warning;
  /// The domain whose coherency is waited for after the work, without the lock. Empty: no wait.
  std::string waitFor;
  std::int64_t waitNs = 0;
  /// The time-out ends the wait.
  bool timesOut = false;
};

using WorkFunction = std::function<void(Operation&)>;

/// The same as `perform`, for a function object.
bool performFunction(const char* function, zuerr_Status* status, const WorkFunction& work) noexcept;

/// Performs `work` of the C function on the state and writes the state back if it changed. Returns
/// true on success, else false with an error in `status`. Throws nothing.
template <typename Work>
bool perform(const char* function, zuerr_Status* status, const Work& work) noexcept {
  // A reference fits into a std::function without an allocation, which could fail.
  return performFunction(function, status, std::cref(work));
}

/// Performs `work` and returns its result, or on failure an empty one.
template <typename Result, typename Work>
Result performFor(const char* function, zuerr_Status* status, const Work& work) noexcept {
  Result result{};
  const auto keepResult = [&](Operation& operation) { result = work(operation); };
  if (!perform(function, status, keepResult)) result = {};
  return result;
}

/// Performs `work` and copies the text that it returns into the caller's buffer. On failure, or if
/// the text does not fit, the buffer receives an empty text.
template <typename Work>
void performText(const char* function, char* buffer, std::size_t size, zuerr_Status* status,
                 const Work& work) noexcept {
  const auto text = performFor<std::string>(function, status, [&](Operation& operation) {
    std::string whole = work(operation);
    if (whole.size() >= size) throw Error(bufferTooSmall, std::to_string(whole.size() + 1));
    return whole;
  });
  if (size > 0) std::memcpy(buffer, text.c_str(), text.size() + 1);
}

}  // namespace simulator
