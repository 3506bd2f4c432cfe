#pragma once

/// What the words of a command line become.

#include <string>
#include <unordered_map>
#include <vector>

/// The argument words in order; commands read the first one only.
using ArgumentList = std::vector<std::string>;

/// Flag word, dash included, to whether it was given; holds every word of `validFlags`.
using FlagMap = std::unordered_map<std::string, bool>;

/// Whether confirmations are suppressed.
bool isQuiet(const FlagMap& flags);

/// Whether the time that the command took is printed.
bool isTimed(const FlagMap& flags);

/// Option name, without its dashes, to value text as typed; every occurrence is stored.
using OptionMap = std::unordered_multimap<std::string, std::string>;
