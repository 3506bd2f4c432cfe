#pragma once

/// The process's standard streams: the program's one way to print, except trace lines. Lines bypass
/// the C library's streams, because the client library shares their state. Before its first line
/// the program flushes what the library has printed. A line is one write if the system accepts it
/// whole, and is written before the next one begins.

#include <sys/uio.h>

#include <cstddef>
#include <iterator>
#include <span>
#include <string_view>

/// Makes the standard streams safe. Call it before the client library is initialised.
/// - A closed stream becomes a pipe without a writer, so that no file of the client library takes
///   its number. It reads as the end of input, and a write to it fails with EBADF, see pipe(7). If
///   there can be no pipe, the process ends with status 1.
/// - A closed pipe and a file that cannot grow are failed writes. They do not end the process, see
///   signal(7).
void protectStandardStreams();

/// Writes all bytes of `pieces` and changes `pieces`. Continues after an interruption and a short
/// write, and waits if the stream would block. Returns 0, or the error number of the write that
/// failed. EPIPE and ECONNRESET count as success: the reader is gone.
int writePieces(int stream, std::span<iovec> pieces) noexcept;

/// Writes a line that consists of `parts`. Returns what `writePieces` returns.
template <typename... Parts>
int writeLine(int stream, const Parts&... parts) noexcept {
  const std::string_view texts[] = {parts..., "\n"};
  iovec pieces[std::size(texts)];
  for (std::size_t index = 0; index < std::size(texts); ++index) {
    pieces[index] = {const_cast<char*>(texts[index].data()), texts[index].size()};
  }
  return writePieces(stream, pieces);
}
