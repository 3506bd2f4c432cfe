#pragma once

#include <string_view>

#include "service/timestamp.h"

/// Prints a line of `label` and `timestamp`: seconds, ".", at least nine digits of nanoseconds and
/// the fraction word. Throws what `printLine` throws.
void printTimestamp(const Timestamp& timestamp, std::string_view label = "");
