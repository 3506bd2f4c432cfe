#pragma once

#include <string>

#include "grammar/parsed_words.h"

/// Executes an `action` of the `timestampCorrelator` command. Throws what `getOption`,
/// `callService` and `printLine` throw, and `InvalidArgException` for another command's action.
void runTimestampCorrelatorCommand(const std::string& action, const OptionMap& options,
                                   const FlagMap& flags);
