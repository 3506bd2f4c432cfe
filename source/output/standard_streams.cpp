#include "output/standard_streams.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <utility>

void protectStandardStreams() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    if (fcntl(stream, F_GETFD) != -1 || errno != EBADF) continue;
    // pipe(2) takes the lowest free numbers. The first is this stream's: those below it are open.
    int ends[2];
    if (pipe(ends) != 0) _exit(1);
    close(ends[1]);
  }
}

int writePieces(int stream, std::span<iovec> pieces) noexcept {
  static bool isFirstLine = true;
  if (std::exchange(isFirstLine, false)) std::fflush(stdout);
  while (!pieces.empty()) {
    const ssize_t result = writev(stream, pieces.data(), static_cast<int>(pieces.size()));
    if (result < 0) {
      if (errno == EAGAIN) {
        pollfd writable{stream, POLLOUT, 0};
        if (poll(&writable, 1, -1) < 0 && errno != EINTR) return errno;
      } else if (errno != EINTR) {
        return errno == EPIPE || errno == ECONNRESET ? 0 : errno;
      }
      continue;
    }
    auto written = static_cast<std::size_t>(result);
    while (!pieces.empty() && written >= pieces.front().iov_len) {
      written -= pieces.front().iov_len;
      pieces = pieces.subspan(1);
    }
    if (!pieces.empty()) {
      pieces.front().iov_base = static_cast<char*>(pieces.front().iov_base) + written;
      pieces.front().iov_len -= written;
    }
  }
  return 0;
}
