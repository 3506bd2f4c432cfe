#pragma once

#include <string>

#include "grammar/parsed_words.h"

/// Executes an action of the `timescale` command: prints the current time of the timescale in the
/// option `timescaleUri`. Throws what `getOption`, `callService` and `printLine` throw, and
/// `InvalidArgException` for another command's action.
void runTimescaleCommand(const std::string& action, const OptionMap& options, const FlagMap& flags);

/// Prints the URI of the timescale that the host in the option `remoteHost` uses. Throws what
/// `getOption`, `callService` and `printLine` throw. Uses no flags.
void getCurrentTimescale(const OptionMap& options, const FlagMap& flags);

/// Prints the service's list of the objects of a `kind`. Throws what `callService` and `printLine`
/// throw, and `InvalidArgException` for a word that is not a kind.
void listServiceObjects(const std::string& kind);

/// Prints the version of the client library's interface. Throws what the client library and
/// `printLine` throw. Uses no options or flags.
void getApiVersion(const OptionMap& options, const FlagMap& flags);
