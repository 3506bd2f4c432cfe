#pragma once

#include <string>

/// What one command line of the shell left behind, byte for byte.
struct ShellOutcome {
  std::string output;
  std::string errors;
  /// The calls that the recording library saw.
  std::string calls;
  /// Exit status, or 128 and the number of the signal that ended it.
  int status;
};

/// Runs a line of bash in a cleared environment, where `orskapp` is the program of this build, its
/// client library the recording one, and the functions of tests/cases/functions.bash are known. Of the environment,
/// only ORSK_TEST_RUNNER is passed on.
ShellOutcome runShell(const std::string& line);
