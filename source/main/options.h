#pragma once

#include <span>

#include "grammar/parsed_words.h"

/// Returns the options in `words`, which begin at the first word with a dash. Ignores stray words
/// and an option without a value at the end. Throws `zuerr::Exception` with code -52005 for an
/// option without a name or with three or more dashes, and for two options in a row.
OptionMap readOptions(std::span<const char* const> words);
