#include "output/standard_streams.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

// A line of several pieces is one write. A socket separates writes.
TEST(Output, WritesALineAtOnce) {
  int ends[2];
  ASSERT_EQ(0, socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends));
  const std::string large(100'000, 'x');
  EXPECT_EQ(0, writeLine(ends[0], "a ", "", large));
  EXPECT_EQ(0, writeLine(ends[0]));
  for (const std::string& expected : {"a " + large + '\n', std::string("\n")}) {
    std::string read(200'000, '#');
    read.resize(static_cast<std::size_t>(recv(ends[1], read.data(), read.size(), 0)));
    EXPECT_EQ(expected, read);
  }
  close(ends[1]);
  protectStandardStreams();
  EXPECT_EQ(0, writeLine(ends[0], "nobody reads it"));
  close(ends[0]);
  EXPECT_EQ(EBADF, writeLine(ends[0], "nowhere"));
}

// A TCP connection that its reader resets fails with ECONNRESET, and only the writes after that
// with EPIPE.
TEST(Output, AReaderThatResetsItsConnectionIsGone) {
  sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
  socklen_t size = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  const int listener = socket(AF_INET, SOCK_STREAM, 0), writer = socket(AF_INET, SOCK_STREAM, 0);
  if (bind(listener, generic, size) != 0 || listen(listener, 1) != 0 ||
      getsockname(listener, generic, &size) != 0 || connect(writer, generic, size) != 0) {
    GTEST_SKIP() << "needs the loopback network: " << std::strerror(errno);
  }
  const int reader = accept(listener, nullptr, nullptr);
  // Closing with bytes unread resets the connection.
  ASSERT_EQ(1, write(writer, "x", 1));
  close(reader);
  EXPECT_EQ(0, writeLine(writer, "nobody reads it"));
  close(writer);
  close(listener);
}

}  // namespace
