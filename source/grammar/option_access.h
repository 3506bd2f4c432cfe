#pragma once

#include <cstdint>
#include <string>

#include "grammar/parsed_words.h"

/// Returns the value of the option `name`, converted to `T`: `std::string` (the text itself),
/// `bool` (0 or 1, also as "+1", "001" or "-0"), `std::uint32_t` or `std::uint64_t` (decimal; a "-"
/// wraps around). Throws `MissingOptionException` or `TooManyOptionsException` unless the option
/// occurs exactly once, and `boost::bad_lexical_cast` for an invalid text.
template <typename T>
T getOption(const std::string& name, const OptionMap& options);
