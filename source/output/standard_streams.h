#pragma once

/// The process's standard streams: the program's one way to print. Every line is flushed as it
/// ends, so that a reader of a pipe has it before the process ends. Failed writes are not reported.

#include <initializer_list>
#include <string_view>

/// Makes writing to standard output and standard error safe whatever the program was started with.
/// A stream that was closed leads to /dev/null, so that no file of the client library takes its
/// number; a reader that has gone and a file that may not grow are failed writes, not the end of
/// the process: see signal(7).
void protectStandardStreams();

/// Prints `text` as the start of a line that another call ends.
void printText(std::string_view text);

/// Prints a line made of `parts`.
void printLine(std::initializer_list<std::string_view> parts);
