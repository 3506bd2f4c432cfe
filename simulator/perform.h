#pragma once

/// The frame around every operation: time, injected faults, delays, the locked state, refusals.

#include <cstring>
#include <functional>
#include <optional>
#include <string>

#include "simulator/model.h"
#include "simulator/outcomes.h"

namespace simulator {

/// One operation at work. Where it throws a `Refusal`, the state stays as it was.
struct Operation {
  State state;
  /// The moment at which it happens.
  std::int64_t nowNs = 0;
  /// Told beside a success.
  std::optional<Refusal> warning;
  /// How long the caller waits after the work, without the lock.
  std::int64_t waitNs = 0;
  /// Looks at the state meanwhile, and when the wait is over; may refuse.
  std::function<void(const State& state, bool waitIsOver)> look;
};

/// `perform` for a callable that outlives the call.
bool performReferred(const char* name, zuerr_Status* status,
                     const std::function<void(Operation&)>& work) noexcept;

/// Performs `work`, after which the state is written back if it changed. Returns whether it was
/// done; if not, `status` says why. Lets no exception out.
template <typename Work>
bool perform(const char* name, zuerr_Status* status, const Work& work) noexcept {
  // A reference fits into a std::function without an allocation, which could fail out here.
  return performReferred(name, status, std::cref(work));
}

/// Performs `work` and puts the text it returns into the caller's buffer, which otherwise, and
/// where the text does not fit, becomes an empty one.
template <typename Work>
void performText(const char* name, char* buffer, std::size_t size, zuerr_Status* status,
                 const Work& work) noexcept {
  std::string text;
  const bool done = perform(name, status, [&](Operation& operation) {
    text = work(operation);
    if (text.size() >= size) throw Refusal(bufferTooSmall, std::to_string(text.size() + 1));
  });
  if (size > 0) *buffer = '\0';
  if (done) std::memcpy(buffer, text.c_str(), text.size() + 1);
}

}  // namespace simulator
