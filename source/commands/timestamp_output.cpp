#include "commands/timestamp_output.h"

#include <cinttypes>
#include <cstdio>

#include "commands/results.h"

void printTimestamp(const Timestamp& timestamp, std::string_view label) {
  // A sign, a point, and at most 20, 10 and 10 digits.
  char text[43];
  std::snprintf(text, sizeof text, "%s%" PRIu64 ".%09" PRIu32 "%" PRIu32,
                timestamp.negative != 0 ? "-" : "", timestamp.seconds, timestamp.nanoseconds,
                timestamp.fraction);
  printLine(label, text);
}
