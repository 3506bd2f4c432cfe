#pragma once

#include <string>

#include "grammar/parsed_words.h"

/// Carries out the `timescale` command's `action`: prints the current time of the timescale in
/// option `timescaleUri`. Throws what `getOption` and `callService` throw, and
/// `InvalidArgException` for a word that is not one of its actions.
void runTimescaleCommand(const std::string& action, const OptionMap& options, const FlagMap& flags);

/// Prints the URI of the timescale that the host in option `remoteHost` uses. Throws what
/// `getOption` and `callService` throw.
void getCurrentTimescale(const std::string&, const OptionMap& options, const FlagMap&);

/// Carries out the `list` command for a kind: see `listServiceObjects`.
void runListCommand(const std::string& kind, const OptionMap&, const FlagMap&);

/// Prints what the service knows of the objects of a `kind`. Throws what `callService` throws, and
/// `InvalidArgException` for a word that is not a kind.
void listServiceObjects(const std::string& kind);

/// Prints the version of the client library's interface.
void getApiVersion(const std::string&, const OptionMap&, const FlagMap&);
