#pragma once

#include <cstddef>

/// How many allocations of the console are left until one fails; 0: none will.
extern std::size_t allocationsUntilFailure;

/// Allocations count from `begins` true on, except those of the recording library.
void countAllocations(bool begins);
