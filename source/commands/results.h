#pragma once

/// The output of commands. If a line cannot be written or stored, each function throws
/// `std::runtime_error` with the message "standard output: " and the system's text, see
/// strerror(3). A reader that is gone is no error.

#include <unistd.h>

#include "grammar/parsed_words.h"
#include "output/standard_streams.h"

/// Throws if `error`, the result of `writeLine` to standard output, is not 0, or if the system did
/// not store the line.
void throwIfNotWritten(int error);

/// Prints a line that consists of `parts`.
template <typename... Parts>
void printLine(const Parts&... parts) {
  throwIfNotWritten(writeLine(STDOUT_FILENO, parts...));
}

/// Prints the confirmation "SUCCESS: " and `parts`, unless quiet mode is on.
template <typename... Parts>
void printSuccess(const FlagMap& flags, const Parts&... parts) {
  if (!isQuiet(flags)) printLine("SUCCESS: ", parts...);
}
