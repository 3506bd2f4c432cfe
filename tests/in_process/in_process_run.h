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

/// Runs the console with `words` after the program's name. Calls `atConsole`, if not null, when the
/// console's own work begins and ends.
InProcessOutcome runInProcess(const std::vector<std::string>& words, void (*atConsole)(bool begins) = nullptr);
