#pragma once

#include <string>

#include "grammar/parsed_words.h"

/// Carries out the `timestampCorrelator` command's `action`. Throws what `getOption` and
/// `callService` throw, and `InvalidArgException` for a word that is not one of its actions.
void runTimestampCorrelatorCommand(const std::string& action, const OptionMap& options,
                                   const FlagMap& flags);
