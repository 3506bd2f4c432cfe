#pragma once

#include <string>

#include "grammar/parsed_words.h"

/// Executes an `action` of the `syncDomain` command. Throws what `getOption`, `callService` and
/// `printLine` throw, and `InvalidArgException` for another command's action.
void runSyncDomainCommand(const std::string& action, const OptionMap& options,
                          const FlagMap& flags);
