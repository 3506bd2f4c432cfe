// Each command with each allocation failing in turn: it ends with an error, or does what it does with enough memory.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

#include "in_process/failing_allocations.h"
#include "in_process/in_process_run.h"

namespace {

/// Command lines that do not call the library.
const char* const otherLines[] = {
    "", "help", "help syncDomain", "list create", "loadResources --", "loadResources --first --second",
};

/// Lets each allocation of `line` fail. Returns their number.
std::size_t failEveryAllocation(const std::string& line) {
  std::istringstream stream(line);
  const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
  const InProcessResult whole = runInProcess(words);
  for (std::size_t number = 1;; ++number) {
    allocationsUntilFailure = number;
    const InProcessResult result = runInProcess(words, countAllocations);
    if (allocationsUntilFailure > 0) {
      EXPECT_EQ(whole, result) << line;
      return number - 1;
    }
    SCOPED_TRACE(line + ", allocation " + std::to_string(number));
    if (result == whole) continue;
    EXPECT_NE(0, result.status);
    EXPECT_NE(std::string::npos, result.errors.find("ERROR: "));
    EXPECT_EQ(std::string::npos, result.output.find("SUCCESS"));
    EXPECT_EQ(0U, whole.calls.find(result.calls));
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

}  // namespace
