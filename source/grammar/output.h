#pragma once

/// The program's one way to standard output. Every line is flushed as it ends, so that a reader of
/// a pipe has it before the process ends. Failed writes are not reported.

#include <initializer_list>
#include <string_view>

#include "grammar/parsed_words.h"

/// Prints `text` as the start of a line that another call ends.
void printText(std::string_view text);

/// Prints a line made of `parts`.
void printLine(std::initializer_list<std::string_view> parts);

/// Whether confirmations are suppressed.
bool isQuiet(const FlagMap& flags);

/// Prints the confirmation "SUCCESS: " and `parts`, unless quiet mode is on.
void printSuccess(const FlagMap& flags, std::initializer_list<std::string_view> parts);
