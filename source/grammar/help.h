#pragma once

#include <string>

/// Prints the help block of `command` from the grammar tables: its name, its arguments, their
/// options. A word that is no command gets a block of its name alone.
void printCommandHelp(const std::string& command);
