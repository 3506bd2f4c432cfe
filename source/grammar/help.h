#pragma once

#include <string>

/// Prints the help of `command`: its name, its options, its arguments and their options. For a word
/// that is not a command, prints only the word.
void printCommandHelp(const std::string& command);

/// Prints the help of the command in `argument`, or of all commands if it is empty.
void printHelp(const std::string& argument);
