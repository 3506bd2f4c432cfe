// An exception that is none of ours, alone and with an error in the record that gives way to it. In
// one process, since a C++ runtime of the library's own would not tell ours of its exceptions.

#include <gtest/gtest.h>

#include <cstdlib>

#include "in_process/in_process_run.h"

namespace {

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
