#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include "diagnostics/trace.h"
#include "errors/console_exceptions.h"
#include "main/command_line.h"
#include "main/dispatch.h"
#include "output/standard_streams.h"

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

// A TCP connection that its reader resets fails with ECONNRESET, and only the writes after that with EPIPE.
TEST(Output, AReaderThatResetsItsConnectionIsGone) {
  sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
  socklen_t size = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  const int listener = socket(AF_INET, SOCK_STREAM, 0), writer = socket(AF_INET, SOCK_STREAM, 0);
  ASSERT_EQ(0, bind(listener, generic, size));
  ASSERT_EQ(0, listen(listener, 1));
  ASSERT_EQ(0, getsockname(listener, generic, &size));
  ASSERT_EQ(0, connect(writer, generic, size));
  const int reader = accept(listener, nullptr, nullptr);
  // Closing with bytes unread resets the connection.
  ASSERT_EQ(1, write(writer, "x", 1));
  close(reader);
  EXPECT_EQ(0, writeLine(writer, "nobody reads it"));
  close(writer);
  close(listener);
}

TEST(Output, AStreamThatCannotBeWaitedForIsAnError) {
  int ends[2];
  ASSERT_EQ(0, pipe2(ends, O_NONBLOCK));
  while (write(ends[1], "full", 4) > 0) {
  }
  rlimit before{};
  getrlimit(RLIMIT_NOFILE, &before);
  const rlimit none{0, before.rlim_max};
  setrlimit(RLIMIT_NOFILE, &none);
  // Without the wait this would be a busy loop, which the signal ends.
  alarm(20);
  const int error = writeLine(ends[1], "x");
  alarm(0);
  setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(EINVAL, error);
  close(ends[0]);
  close(ends[1]);
}

TEST(CommandLine, MayHoldNotEvenAProgramName) {
  const char* const none[] = {nullptr};
  EXPECT_THROW(readCommandLine(0, none), NoCmdException);
}

// Only possible if the tables and the dispatch differ.
TEST(Dispatch, ReportsACommandWithoutABranch) {
  static std::string trace;
  const auto write = orskdbg_write;
  orskdbg_write = [](const char* line) { trace += line; };
  EXPECT_THROW(runCommand({"noCommand", {}, {}, {}}), InvalidArgException);
  orskdbg_write = write;
  EXPECT_EQ(
      "[orskapp|source/main|1027] !!ASSERT!!\n"
      "[   orskapp|                     source/main|1027] ASSERT(false)\n"
      "[   orskapp|                     source/main|1027]  ERROR: Did not implement all "
      "commands.\n",
      trace);
}

}  // namespace
