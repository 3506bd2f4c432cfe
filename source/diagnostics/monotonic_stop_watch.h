#pragma once

#include <cstdint>
#include <type_traits>

namespace orsktools {

/// Returns the time of the monotonic clock in nanoseconds, see clock_gettime(2).
std::int64_t monotonicNowNs();

/// Returns the whole milliseconds in a number of nanoseconds, truncated toward zero.
constexpr std::int64_t wholeMilliseconds(std::int64_t nanoseconds) {
  return nanoseconds / 1'000'000;
}

/// A stopwatch that starts at its construction. Changes of the wall-clock time do not affect it.
class MonotonicStopWatch final {
 public:
  MonotonicStopWatch() : startNs(monotonicNowNs()) {}

  /// Starts again.
  virtual void start();

  /// Start time in nanoseconds of the monotonic clock.
  std::int64_t startNs;
};
static_assert(std::is_final_v<MonotonicStopWatch> &&
                  sizeof(MonotonicStopWatch) == sizeof(void*) + sizeof(std::int64_t),
              "Other code is compiled against this layout.");

}  // namespace orsktools
