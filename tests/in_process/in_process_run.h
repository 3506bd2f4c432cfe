#pragma once

#include <string>
#include <vector>

/// The results of a run of the console in this process.
struct InProcessResult {
  std::string output;
  std::string errors;
  /// The calls that the recording library saw.
  std::string calls;
  /// The exit status, before the system reduces it to eight bits.
  int status = 0;

  bool operator==(const InProcessResult&) const = default;
};

/// Runs the console with `words` after the program's name. Calls `atConsole`, if not null, when the
/// console's own work begins and ends.
InProcessResult runInProcess(const std::vector<std::string>& words, void (*atConsole)(bool begins) = nullptr);
