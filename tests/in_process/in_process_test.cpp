// Every command with its first, second, third … allocation failing, until none is left to fail: an
// orderly end with an error, or all that a run with enough memory does.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

#include "in_process/failing_allocations.h"
#include "in_process/in_process_run.h"

namespace {

/// What does not call the library.
const char* const otherLines[] = {
    "", "help", "help syncDomain", "list create", "loadResources --", "loadResources --first --second",
};

/// Returns how many allocations `line` makes, having let each of them fail.
std::size_t failEveryAllocation(const std::string& line) {
  std::istringstream stream(line);
  const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
  const InProcessOutcome whole = runInProcess(words);
  for (std::size_t number = 1;; ++number) {
    allocationsUntilFailure = number;
    const InProcessOutcome outcome = runInProcess(words, countAllocations);
    if (allocationsUntilFailure > 0) {
      EXPECT_EQ(whole, outcome) << line;
      return number - 1;
    }
    SCOPED_TRACE(line + ", allocation " + std::to_string(number));
    if (outcome == whole) continue;
    EXPECT_NE(0, outcome.status);
    EXPECT_NE(std::string::npos, outcome.errors.find("ERROR: "));
    EXPECT_EQ(std::string::npos, outcome.output.find("SUCCESS"));
    EXPECT_EQ(0U, whole.calls.find(outcome.calls));
  }
}

TEST(OutOfMemory, EndsEveryCommandInAnOrderlyWay) {
  std::size_t allocations = 0;
  for (const int code : {0, -9}) {
    setenv("ORSK_TEST_CODE", std::to_string(code).c_str(), 1);
    setenv("ORSK_TEST_TEXT", R"({"error":"text"})", 1);
    for (const char* owner : {"caller", "library"}) {
      setenv("ORSK_TEST_OWNER", owner, 1);
      std::ifstream callingLines(ORSK_TEST_CALLING_LINES);
      for (std::string line; std::getline(callingLines, line);) allocations += failEveryAllocation(line);
      for (const std::string line : otherLines) allocations += failEveryAllocation(line);
    }
  }
  EXPECT_GT(allocations, 4 * 26U);
}

// An exception that is none of ours, alone and with an error in the record that gives way to it. In one
// process, since a C++ runtime of the library's own would not tell ours of its exceptions.
TEST(ForeignException, IsReportedAsUnknown) {
  setenv("ORSK_TEST_THROW", "1", 1);
  for (const char* code : {"0", "-7"}) {
    setenv("ORSK_TEST_CODE", code, 1);
    setenv("ORSK_TEST_TEXT", "{}", 1);
    setenv("ORSK_TEST_OWNER", "library", 1);
    const InProcessOutcome outcome = runInProcess({"syncDomain", "stop", "-t", "--uri", "d"});
    EXPECT_EQ("ERROR: Unknown exception.\n", outcome.errors);
    EXPECT_EQ("", outcome.output);
    EXPECT_EQ("orsksapi_syncDomain_stop(\"d\", fresh status)\nrelease with size 0\n", outcome.calls);
    EXPECT_EQ(1, outcome.status);
  }
  unsetenv("ORSK_TEST_THROW");
}

}  // namespace
