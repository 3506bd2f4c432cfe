#include <gtest/gtest.h>

#include "diagnostics/monotonic_stop_watch.h"
#include "diagnostics/trace.h"

namespace {

std::string written;

/// Collects the lines of one test, with the hooks and the widths that a program begins with.
class Trace : public testing::Test {
 protected:
  Trace() {
    written.clear();
    orskdbg_write = [](const char* line) { written += line; };
    orskdbg_componentWidth = 10;
    orskdbg_fileWidth = 32;
    orskdbg_lineWidth = 4;
  }
  ~Trace() override { orskdbg_assertHandler = handler_; }

 private:
  decltype(orskdbg_assertHandler) handler_ = orskdbg_assertHandler;
};

const std::string prefixOfMain = "[   orskapp|" + std::string(28, ' ') + "main|0007] ";

/// Returns the line that is written.
std::string traced(const orskdbg_VarLine& context, const std::string& message) {
  written.clear();
  context("%s", message.c_str());
  return written;
}

TEST_F(Trace, PrefixHasColumns) {
  const std::string file = "0123456789012345678901234567890x";
  EXPECT_EQ(prefixOfMain + "m\n", traced({"main", 7, "\n"}, "m"));
  EXPECT_EQ("[   orskapp|" + std::string(32, ' ') + "|0000] m", traced({"", 0, ""}, "m"));
  EXPECT_EQ("[   orskapp|" + file + "|1234] m", traced({file.c_str(), 1234, ""}, "m"));
  EXPECT_EQ("[   orskapp|" + file + "|2345] m", traced({("-/" + file).c_str(), 12345, ""}, "m"));
  orskdbg_componentWidth = 3;
  orskdbg_fileWidth = 0;
  orskdbg_lineWidth = -1;
  EXPECT_EQ("[app||] m", traced({"main", 7, ""}, "m"));
}

TEST_F(Trace, LinesAreCutAt511Characters) {
  for (const std::string terminator : {"\n", "\r\n", ""}) {
    const std::string message(600, 'm');
    EXPECT_EQ((prefixOfMain + message).substr(0, 511 - terminator.size()) + terminator,
              traced({"main", 7, terminator.c_str()}, message));
  }
  EXPECT_EQ(std::string(511, 't'), traced({"main", 7, std::string(600, 't').c_str()}, "m"));
}

// Columns wider than the line.
TEST_F(Trace, PrefixStaysWithinTheLine) {
  orskdbg_componentWidth = 600;
  EXPECT_EQ("[" + std::string(509, ' ') + "\n", traced({"main", 7, "\n"}, "m"));
}

TEST_F(Trace, AssertionCallsTheHandlerLast) {
  orskdbg_assertHandler = [](const orskdbg_VarLine* context, const char* expression) {
    written += std::string(context->file) + std::to_string(context->line) + context->terminator +
               expression;
  };
  constexpr orskdbg_AssertPlace place{"main", 7, " 100%%."};
  ORSK_ASSERT(true, place);
  EXPECT_EQ("", written);
  ORSK_ASSERT(false, place);
  EXPECT_EQ("[orskapp|main|7] !!ASSERT!!\n" + prefixOfMain + "ASSERT(false)\n" + prefixOfMain +
                " 100%.\nmain7\nASSERT(false)",
            written);
}

TEST_F(Trace, AnAssertionWithAMessageReportsItsPlace) {
  ORSK_ASSERT(1 > 2, " 100%%.");
  const orskdbg_VarLine here{__FILE__, __LINE__ - 1, "\n"};
  const std::string reported = written;
  EXPECT_EQ("[orskapp|" + std::string(here.file) + '|' + std::to_string(here.line) +
                "] !!ASSERT!!\n" + traced(here, "ASSERT(1 > 2)") + traced(here, " 100%."),
            reported);
}

TEST(MonotonicStopWatch, ReportsWholeMilliseconds) {
  orsktools::MonotonicStopWatch watch;
  watch.startNs = 0;
  watch.start();
  EXPECT_LT(0, watch.startNs);
  EXPECT_EQ(0, orsktools::wholeMilliseconds(999'999));
  EXPECT_EQ(1, orsktools::wholeMilliseconds(1'999'999));
  EXPECT_EQ(0, orsktools::wholeMilliseconds(-999'999));
}

}  // namespace
