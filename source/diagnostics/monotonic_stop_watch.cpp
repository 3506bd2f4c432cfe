#include "diagnostics/monotonic_stop_watch.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <ctime>

namespace orsktools {

std::int64_t monotonicNowNs() {
  timespec now{};
  syscall(SYS_clock_gettime, CLOCK_MONOTONIC, &now);
  return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

void MonotonicStopWatch::start() {
  startNs = monotonicNowNs();
}

}  // namespace orsktools
