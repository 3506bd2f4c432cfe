#pragma once

/// What every operation shares: time, injected faults, delays, the locked state, errors.

#include <cstring>
#include <functional>
#include <string>
#include <type_traits>

#include "simulator/model.h"
#include "simulator/reports.h"

namespace simulator {

/// One operation. The state does not change if it throws a `Report`.
struct Operation {
  State state;
  /// The moment of the operation.
  std::int64_t nowNs = 0;
  /// The domain whose coherency is waited for after the work, without the lock. Empty: no wait.
  std::string waitFor;
  std::int64_t waitNs = 0;
};

using WorkFunction = std::function<void(Operation&)>;

/// The same as `perform`, for a function without a result.
void performFunction(const char* function, zuerr_Status* status, const WorkFunction& work) noexcept;

/// Performs `work` of the C function on the state and writes the state back if it changed. Returns
/// the result of `work`, or an empty one if `status` receives an error. Throws nothing.
template <typename Work>
auto perform(const char* function, zuerr_Status* status, const Work& work) noexcept {
  using Result = std::invoke_result_t<Work, Operation&>;
  // A reference fits into a std::function without an allocation, which could fail.
  if constexpr (std::is_void_v<Result>) {
    performFunction(function, status, std::cref(work));
  } else {
    Result result{};
    const auto keepResult = [&](Operation& operation) { result = work(operation); };
    performFunction(function, status, std::cref(keepResult));
    if (status->code < 0) result = {};
    return result;
  }
}

/// Performs `work` and copies the text that it returns into the caller's buffer. On failure, or if
/// the text does not fit, the buffer receives an empty text.
template <typename Work>
void performText(const char* function, char* buffer, std::size_t size, zuerr_Status* status,
                 const Work& work) noexcept {
  const auto text = perform(function, status, [&](Operation& operation) {
    std::string whole = work(operation);
    if (whole.size() >= size) throw Report{bufferTooSmall, std::to_string(whole.size() + 1)};
    return whole;
  });
  if (size > 0) std::memcpy(buffer, text.c_str(), text.size() + 1);
}

}  // namespace simulator
