#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <thread>

#include "diagnostics/monotonic_stop_watch.h"
#include "diagnostics/trace.h"

namespace {

std::string written;

/// Catches what is written, for one test.
class Trace : public testing::Test {
 protected:
  Trace() {
    written.clear();
    orskdbg_write = [](const char* line) { written += line; };
  }
  ~Trace() override {
    orskdbg_write = write_;
    orskdbg_assertHandler = assertHandler_;
    orskdbg_format = format_;
    orskdbg_componentWidth = 10;
    orskdbg_fileWidth = 32;
    orskdbg_lineWidth = 4;
  }

 private:
  decltype(orskdbg_write) write_ = orskdbg_write;
  decltype(orskdbg_assertHandler) assertHandler_ = orskdbg_assertHandler;
  decltype(orskdbg_format) format_ = orskdbg_format;
};

const std::string blanks28(28, ' ');

TEST_F(Trace, PrefixHasColumns) {
  struct {
    const char* file;
    std::int32_t line;
    std::string expected;
  } const rows[] = {
      {"main", 7, "[   orskapp|" + blanks28 + "main|0007] m1\n"},
      {"", 0, "[   orskapp|" + blanks28 + "    |0000] m1\n"},
      {"main", 12345, "[   orskapp|" + blanks28 + "main|2345] m1\n"},
      {"0123456789012345678901234567890x", 1234, "[   orskapp|0123456789012345678901234567890x|1234] m1\n"},
      {"-/0123456789012345678901234567890x", 99999, "[   orskapp|0123456789012345678901234567890x|9999] m1\n"},
  };
  for (const auto& row : rows) {
    written.clear();
    orskdbg_VarLine{row.file, row.line, "\n"}("m%d", 1);
    EXPECT_EQ(row.expected, written);
  }
  orskdbg_componentWidth = 3;
  orskdbg_fileWidth = 0;
  orskdbg_lineWidth = -1;
  written.clear();
  orskdbg_VarLine{"main", 7, ""}("m");
  EXPECT_EQ("[app||] m", written);
}

TEST_F(Trace, LinesAreCutAt511Characters) {
  const std::string prefix = "[   orskapp|" + blanks28 + "main|0007] ";
  struct {
    std::string terminator;
    std::size_t length;
  } const rows[] = {{"\n", 600}, {"\r\n", 600}, {"", 600}, {"\n", 459}, {"\n", 458}, {"\n", 457}};
  for (const auto& row : rows) {
    const std::string message(row.length, 'm');
    const std::string line = prefix + message;
    written.clear();
    orskdbg_VarLine{"main", 7, row.terminator.c_str()}("%s", message.c_str());
    EXPECT_EQ(line.substr(0, 511 - row.terminator.size()) + row.terminator, written);
  }
  written.clear();
  orskdbg_VarLine{"main", 7, std::string(600, 't').c_str()}("m");
  EXPECT_EQ(std::string(511, 't'), written);
}

// Columns wider than the line, and a formatter that fills whatever room it is given.
TEST_F(Trace, PrefixStaysWithinTheLine) {
  orskdbg_componentWidth = 600;
  orskdbg_VarLine{"main", 7, "\n"}("m");
  EXPECT_EQ("[" + std::string(509, ' ') + "\n", written);
  orskdbg_componentWidth = 10;
  orskdbg_format = [](char* buffer, std::size_t size, const char*, std::va_list) {
    std::memset(buffer, 'f', size);
    return 0;
  };
  written.clear();
  orskdbg_VarLine{"main", 7, "\n"}("m");
  EXPECT_EQ(511U, written.size());
  EXPECT_EQ("ff\n", written.substr(508));
  written.clear();
  orskdbg_printf("m");
  EXPECT_EQ(std::string(511, 'f'), written);
}

// Every writer, in a block of exactly the room it is told: the start of its text, and a NUL.
TEST_F(Trace, PrefixWritersStayWithinTheirRoom) {
  const orskdbg_VarLine context{"main", 7, "\n"};
  const std::string texts[] = {"[", "   orskapp", "|", blanks28 + "main", "|", "0007", "] "};
  for (std::size_t index = 0; index < std::size(texts); ++index) {
    for (std::size_t room = 1; room <= texts[index].size() + 2; ++room) {
      const std::unique_ptr<char[]> block(new char[room]);
      char* const end = orskdbg_prefixWriters[index](block.get(), room, &context);
      EXPECT_EQ(texts[index].substr(0, room - 1), block.get());
      EXPECT_EQ(block.get() + std::strlen(block.get()), end);
    }
    char untouched = '#';
    EXPECT_EQ(&untouched, orskdbg_prefixWriters[index](&untouched, 0, &context));
    EXPECT_EQ('#', untouched);
  }
  EXPECT_EQ(nullptr, orskdbg_prefixWriters[std::size(texts)]);
}

TEST_F(Trace, PlainLineIsCutWithItsEnd) {
  orskdbg_printf("%s|%d\n", "a", 1);
  EXPECT_EQ("a|1\n", written);
  written.clear();
  orskdbg_printf("%s\n", std::string(600, 'x').c_str());
  EXPECT_EQ(std::string(511, 'x'), written);
}

TEST_F(Trace, AssertionTellsTheHandlerLast) {
  orskdbg_assertHandler = [](const orskdbg_VarLine* context, const char* expression) {
    written += std::string(context->file) + std::to_string(context->line) + expression;
  };
  constexpr orskdbg_AssertPlace place{"main", 7, " 100%%."};
  ORSK_ASSERT(true, place);
  EXPECT_EQ("", written);
  ORSK_ASSERT(false, place);
  const std::string prefix = "[   orskapp|" + blanks28 + "main|0007] ";
  EXPECT_EQ("[orskapp|main|7] !!ASSERT!!\n" + prefix + "ASSERT(false)\n" + prefix + " 100%.\nmain7ASSERT(false)",
            written);
}

TEST(MonotonicStopWatch, CountsNanosecondsFromItsStart) {
  const std::int64_t before = orsktools::monotonicNowNs();
  orsktools::MonotonicStopWatch watch;
  EXPECT_LE(before, watch.startNs);
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_GE(orsktools::monotonicNowNs() - watch.startNs, 20'000'000);
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  watch.start();
  const std::int64_t difference = watch.startNs - (now.tv_sec * 1'000'000'000 + now.tv_nsec);
  EXPECT_GE(difference, 0);
  EXPECT_LT(difference, 10'000'000'000);
}

TEST(MonotonicStopWatch, ReportsWholeMilliseconds) {
  EXPECT_EQ(0, orsktools::wholeMilliseconds(999'999));
  EXPECT_EQ(1, orsktools::wholeMilliseconds(1'000'000));
  EXPECT_EQ(1, orsktools::wholeMilliseconds(1'999'999));
  EXPECT_EQ(0, orsktools::wholeMilliseconds(-999'999));
}

}  // namespace
