#pragma once

#include "main/command_line.h"

/// Carries out the command of `line`. Throws `MissingArgException` when the command needs an
/// argument word and has none, and whatever the command throws.
void runCommand(const CommandLine& line);
