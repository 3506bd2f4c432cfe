#pragma once

/// Makes writing to standard output and standard error safe whatever the program was started with.
/// A stream that was closed leads to /dev/null, so that no file of the client library takes its
/// number; a reader that has gone and a file that may not grow are failed writes, not the end of the process:
/// see signal(7).
void protectStandardStreams();
