#pragma once

#include <string>

#include "grammar/parsed_words.h"

/// Executes an action of the `timescale` command: prints the current time of the timescale in the
/// option `timescaleUri`. Throws what `getOption` and `callService` throw, and
/// `InvalidArgException` for another command's action.
void runTimescaleCommand(const std::string& action, const OptionMap& options, const FlagMap& flags);

/// Prints the URI of the timescale that the host in the option `remoteHost` uses. Throws what
/// `getOption` and `callService` throw. Uses no argument or flags.
void getCurrentTimescale(const std::string& argument, const OptionMap& options,
                         const FlagMap& flags);

/// Prints the service's list of the objects of a `kind`. Uses no options or flags. Throws what
/// `callService` throws, and `InvalidArgException` for a word that is not a kind.
void listServiceObjects(const std::string& kind, const OptionMap& options, const FlagMap& flags);

/// Prints the version of the client library's interface. Uses no argument, options or flags.
void getApiVersion(const std::string& argument, const OptionMap& options, const FlagMap& flags);
