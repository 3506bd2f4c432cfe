#pragma once

#include "grammar/parsed_words.h"

/// Loads the resources of the host in the option `remoteHost` and prints a confirmation. Throws
/// what `getOption`, `callService` and `printLine` throw.
void loadResources(const OptionMap& options, const FlagMap& flags);

/// Unloads them in the same way.
void unloadResources(const OptionMap& options, const FlagMap& flags);
