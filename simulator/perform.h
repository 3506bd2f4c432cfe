#pragma once

/// What every operation shares: time, injected faults, delays, the locked state, errors.

#include <cstring>
#include <functional>
#include <optional>
#include <string>

#include "simulator/errors.h"
#include "simulator/model.h"

namespace simulator {

/// A wait until a domain is coherent.
struct Wait {
  /// Empty: no wait.
  std::string domainUri;
  std::int64_t durationNs = 0;
  /// The time-out ends the wait.
  bool timesOut = false;
};

/// One operation. The state does not change if it throws an `Error`.
struct Operation {
  State state;
  /// The moment of the operation.
  std::int64_t nowNs = 0;
  /// Warning reported with a success.
  std::optional<Error> warning;
  /// Wait after the work, without the lock.
  Wait wait;
};

using WorkFunction = std::function<void(Operation&)>;

/// The same as `perform`, for a function object.
bool performFunction(const char* name, zuerr_Status* status, const WorkFunction& work) noexcept;

/// Performs `work` on the state and writes the state back if it changed. Returns true on success,
/// else false with an error in `status`. Throws nothing.
template <typename Work>
bool perform(const char* name, zuerr_Status* status, const Work& work) noexcept {
  // A reference fits into a std::function without an allocation, which could fail.
  return performFunction(name, status, std::cref(work));
}

/// Performs `work` and returns its result, or on failure an empty one.
template <typename Result, typename Work>
Result performFor(const char* name, zuerr_Status* status, const Work& work) noexcept {
  Result result{};
  const auto keepResult = [&](Operation& operation) { result = work(operation); };
  if (!perform(name, status, keepResult)) result = {};
  return result;
}

/// Performs `work` and copies the text that it returns into the caller's buffer. On failure, or if
/// the text does not fit, the buffer receives an empty text.
template <typename Work>
void performText(const char* name, char* buffer, std::size_t size, zuerr_Status* status,
                 const Work& work) noexcept {
  const auto text = performFor<std::string>(name, status, [&](Operation& operation) {
    std::string whole = work(operation);
    if (whole.size() >= size) throw Error(bufferTooSmall, std::to_string(whole.size() + 1));
    return whole;
  });
  if (size > 0) std::memcpy(buffer, text.c_str(), text.size() + 1);
}

}  // namespace simulator
