#pragma once

#include <string_view>

#include "service/timestamp.h"

/// Prints `label` and `timestamp`: seconds, ".", at least nine digits of nanoseconds, and the
/// fraction. Throws what `printLine` throws.
void printTimestamp(const Timestamp& timestamp, std::string_view label = "");
