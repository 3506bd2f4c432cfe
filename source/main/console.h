#pragma once

/// The program's run: reads the command line, carries out its one command, reports a failure as
/// one "ERROR: " line on standard error. Takes the arguments of main(). Returns the exit status: 0,
/// the code of a failed library call or of a malformed option, or 1 for any other failure.
int runConsole(int argc, const char* const* argv);
