#pragma once

#include <cstddef>

/// The number of allocations of the console until one fails; 0: none fails.
extern std::size_t allocationsUntilFailure;

/// Begins or ends the counting of allocations. Those of the recording library do not count.
void countAllocations(bool begins);
