#pragma once

#include <string>

#include "grammar/parsed_words.h"

/// A parsed command line.
struct CommandLine {
  std::string command;
  ArgumentList arguments;
  FlagMap flags;
  OptionMap options;
};

/// Parses the arguments of main(). `argc` may be 0. Throws `NoCmdException`, `InvalidCmdException`
/// or `InvalidArgException` for the first word that is missing or unknown, and what `readOptions`
/// throws.
CommandLine readCommandLine(int argc, const char* const* argv);
