#pragma once

#include <string>

#include "grammar/parsed_words.h"

/// Asks the service to load the resources of the host in option `remoteHost`, and confirms it.
/// Throws what `getOption` and `callService` throw.
void loadResources(const std::string&, const OptionMap& options, const FlagMap& flags);

/// The same for releasing them.
void unloadResources(const std::string&, const OptionMap& options, const FlagMap& flags);
