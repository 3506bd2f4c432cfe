#include "output/standard_streams.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

void protectStandardStreams() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    // open(2) takes the lowest free number, which is this one: those before it are open by now.
    if (fcntl(stream, F_GETFD) == -1 && errno == EBADF) open("/dev/null", O_RDWR);
  }
}

int writePieces(int stream, std::span<iovec> pieces) noexcept {
  while (!pieces.empty()) {
    const ssize_t result = writev(stream, pieces.data(), static_cast<int>(pieces.size()));
    if (result < 0) {
      if (errno == EAGAIN) {
        pollfd writable{stream, POLLOUT, 0};
        poll(&writable, 1, -1);
      } else if (errno != EINTR) {
        return errno == EPIPE ? 0 : errno;
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
