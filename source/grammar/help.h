#pragma once

#include <string>
#include <string_view>

/// Prints the help of `command`: its name, its options, its arguments and their options. For a word
/// that is not a command, prints only the word. Ignores failed writes.
void printCommandHelp(std::string_view command);

/// Prints the help of the command in `argument`, or of all commands if it is empty. Ignores failed
/// writes.
void printHelp(const std::string& argument);
