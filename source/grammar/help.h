#pragma once

#include <string>

/// Prints the help of `command`: its name, its arguments and their options. For a word that is not
/// a command, prints only the word.
void printCommandHelp(const std::string& command);
