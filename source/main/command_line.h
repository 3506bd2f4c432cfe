#pragma once

#include <span>
#include <string>

#include "grammar/parsed_words.h"

/// A command line, read whole and checked as far as words can be checked without carrying it out.
struct CommandLine {
  std::string command;
  ArgumentList arguments;
  FlagMap flags;
  OptionMap options;
};

/// Reads the arguments of main(). `argc` may be 0.
/// Throws `NoCmdException`, `InvalidCmdException` or `InvalidArgException` for the first word that
/// is missing or unknown, and what `readOptions` throws.
CommandLine readCommandLine(int argc, const char* const* argv);
