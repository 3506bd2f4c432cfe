#pragma once

#include "main/command_line.h"

/// Executes the command of `line`. Throws `InvalidArgException`, after an assertion, for a word
/// that is not a command, `MissingArgException` if a required argument is missing, and what the
/// command throws.
void runCommand(const CommandLine& line);
