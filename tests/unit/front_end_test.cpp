#include <gtest/gtest.h>
#include <unistd.h>

#include "commands/confirmation.h"
#include "diagnostics/trace.h"
#include "errors/console_exceptions.h"
#include "main/command_line.h"
#include "main/dispatch.h"
#include "output/standard_streams.h"

namespace {

// Each line is there as soon as it is printed, without waiting for the process to end.
TEST(Output, IsFlushedLineByLine) {
  int ends[2];
  ASSERT_EQ(0, pipe(ends));
  const int standardOutput = dup(STDOUT_FILENO);
  dup2(ends[1], STDOUT_FILENO);
  char read1[64] = "", read2[64] = "";
  printLine({"a ", "line"});
  const auto size1 = read(ends[0], read1, sizeof read1);
  printSuccess({{"-q", false}, {"-t", true}}, {"done"});
  printSuccess({{"-q", true}, {"-t", false}}, {"hidden"});
  printLine({});
  const auto size2 = read(ends[0], read2, sizeof read2);
  dup2(standardOutput, STDOUT_FILENO);
  for (const int descriptor : {ends[0], ends[1], standardOutput}) close(descriptor);
  EXPECT_EQ("a line\n", std::string(read1, static_cast<std::size_t>(size1)));
  EXPECT_EQ("SUCCESS: done\n\n", std::string(read2, static_cast<std::size_t>(size2)));
}

TEST(CommandLine, MayHoldNotEvenAProgramName) {
  const char* const none[] = {nullptr};
  EXPECT_THROW(readCommandLine(0, none), NoCmdException);
}

TEST(CommandLine, KeepsWhatItRead) {
  const char* const words[] = {"orskapp", "list", "correlators", "create", "-q", "--a",
                               "-t",      "--a",  "1",           "--b",    "",   nullptr};
  const CommandLine line = readCommandLine(11, words);
  EXPECT_EQ("list", line.command);
  EXPECT_EQ((ArgumentList{"correlators", "create"}), line.arguments);
  EXPECT_EQ((FlagMap{{"-q", true}, {"-t", true}}), line.flags);
  EXPECT_EQ((OptionMap{{"a", "-t"}, {"a", "1"}, {"b", ""}}), line.options);
  EXPECT_EQ((FlagMap{{"-q", false}, {"-t", false}}), readCommandLine(2, words).flags);
}

// The grammar's check lets no such word through; the tables and the dispatch would have to
// disagree.
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
