#pragma once

#include <string>

#include "grammar/parsed_words.h"

/// Loads the resources of the host in the option `remoteHost` and prints a confirmation. Uses no
/// argument. Throws what `getOption` and `callService` throw.
void loadResources(const std::string& argument, const OptionMap& options, const FlagMap& flags);

/// Unloads them in the same way.
void unloadResources(const std::string& argument, const OptionMap& options, const FlagMap& flags);
