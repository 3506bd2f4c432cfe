#include "output/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>

void protectStandardStreams() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    // open(2) takes the lowest free number, which is this one: those before it are open by now.
    if (fcntl(stream, F_GETFD) == -1 && errno == EBADF) open("/dev/null", O_RDWR);
  }
}

void printText(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
}

void printLine(std::initializer_list<std::string_view> parts) {
  for (const std::string_view part : parts) printText(part);
  printText("\n");
  std::fflush(stdout);
}
