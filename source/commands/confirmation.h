#pragma once

#include <initializer_list>
#include <string_view>

#include "grammar/parsed_words.h"

/// Prints the confirmation "SUCCESS: " and `parts`, unless quiet mode is on.
void printSuccess(const FlagMap& flags, std::initializer_list<std::string_view> parts);
