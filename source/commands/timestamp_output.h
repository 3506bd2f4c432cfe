#pragma once

#include "service/timestamp.h"

/// Prints `timestamp` as seconds, ".", at least nine digits of nanoseconds and the fraction word,
/// and ends the line.
void printTimestamp(const Timestamp& timestamp);
