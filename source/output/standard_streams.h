#pragma once

/// The process's standard streams: the program's one way to print. Lines go to the system as they
/// are, past the C library's streams, whose state the client library shares. A line is one write
/// where the system takes it whole, and is out before the next is begun.

#include <sys/uio.h>

#include <span>
#include <string_view>

/// Makes writing to standard output and standard error safe whatever the program was started with.
/// A stream that was closed leads to /dev/null, so that no file of the client library takes its
/// number, if this is called before that is initialised; a reader that has gone and a file that may
/// not grow are failed writes, not the end of the process: see signal(7).
void protectStandardStreams();

/// Writes all bytes of `pieces`, which it uses up: goes on after an interruption and a short write,
/// and waits where a stream would block. Returns 0, or the error number of the write that failed;
/// EPIPE is none, for a reader that has gone wanted no more.
int writePieces(int stream, std::span<iovec> pieces) noexcept;

/// Writes a line made of `parts` to a standard stream. Returns what `writePieces` returns.
template <typename... Parts>
int writeLine(int stream, const Parts&... parts) noexcept {
  const std::string_view texts[] = {parts..., "\n"};
  iovec pieces[std::size(texts)];
  for (std::size_t index = 0; index < std::size(texts); ++index) {
    pieces[index] = {const_cast<char*>(texts[index].data()), texts[index].size()};
  }
  return writePieces(stream, pieces);
}
