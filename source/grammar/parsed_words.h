#pragma once

/// The parsed words of a command line.

#include <string>
#include <unordered_map>
#include <vector>

/// The arguments in order. Commands use only the first one.
using ArgumentList = std::vector<std::string>;

/// Maps each flag in `validFlags`, with its dash, to whether it occurs.
using FlagMap = std::unordered_map<std::string, bool>;

/// Returns whether confirmations are suppressed.
bool isQuiet(const FlagMap& flags);

/// Returns whether the duration of the command is printed.
bool isTimed(const FlagMap& flags);

/// Maps the name of each option, without dashes, to its value. Contains every occurrence.
using OptionMap = std::unordered_multimap<std::string, std::string>;
