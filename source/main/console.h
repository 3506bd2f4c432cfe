#pragma once

/// Runs the program: parses the arguments of main(), executes the command, and reports an error as
/// one "ERROR: " line on standard error. Returns the exit status: 0 on success, the code of a
/// library error or of a malformed option, or 1 for any other error.
int runConsole(int argc, const char* const* argv);
