#pragma once

#include "main/command_line.h"

/// Executes the command of `line`. Throws `MissingArgException` if a required argument is missing,
/// and what the command throws.
void runCommand(const CommandLine& line);
