#pragma once

#include <string>
#include <vector>

/// What a run of the whole console in this process left behind.
struct InProcessOutcome {
  std::string output;
  std::string errors;
  /// The calls that the recording library saw.
  std::string calls;
  /// The exit status before the system cuts it to eight bits.
  int status = 0;

  bool operator==(const InProcessOutcome&) const = default;
};

/// Runs the console with `words` after the program's name. The N-th allocation of the run fails, if
/// `failingAllocation` is not 0, and becomes 0 once it has.
InProcessOutcome runInProcess(const std::vector<std::string>& words,
                              std::size_t* failingAllocation = nullptr);
