#pragma once

#include <span>

#include "grammar/parsed_words.h"

/// Reads the words from the first one that begins with "-" to the end of the line: option words,
/// each followed by its value. Stray words, and an option without a value at the end, are dropped.
/// Throws `zuerr::Exception` with code -52005 for the first option word without a name or with
/// three or more dashes, and for one where the value of another is expected.
OptionMap readOptions(std::span<const char* const> words);
