#pragma once

#include <cstdint>

namespace orsktools {

/// Current time of the monotonic clock, in nanoseconds; see clock_gettime(2).
std::int64_t monotonicNowNs();

/// Whole milliseconds in a span of nanoseconds, truncated toward zero.
constexpr std::int64_t wholeMilliseconds(std::int64_t nanoseconds) {
  return nanoseconds / 1'000'000;
}

/// Runs from its construction on, on a clock that changes of the wall-clock time leave alone.
class MonotonicStopWatch final {
 public:
  MonotonicStopWatch() : startNs(monotonicNowNs()) {}

  /// Starts anew from zero.
  virtual void start();

  /// Start time in nanoseconds of the monotonic clock.
  std::int64_t startNs;
};

}  // namespace orsktools
