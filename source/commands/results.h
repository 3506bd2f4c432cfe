#pragma once

/// What commands print. A result that could not be written is not a success: each of these throws
/// `std::runtime_error` with the message "standard output: " and the system's, see strerror(3).

#include <unistd.h>

#include <stdexcept>
#include <string_view>

#include "grammar/parsed_words.h"
#include "output/standard_streams.h"

/// Throws if `error`, from `writeLine` to standard output, is an error number.
void requireWritten(int error);

/// Prints a line made of `parts`.
template <typename... Parts>
void printLine(const Parts&... parts) {
  requireWritten(writeLine(STDOUT_FILENO, parts...));
}

/// Prints the confirmation "SUCCESS: " and `parts`, unless quiet mode is on.
template <typename... Parts>
void printSuccess(const FlagMap& flags, const Parts&... parts) {
  if (!isQuiet(flags)) printLine("SUCCESS: ", parts...);
}
