// Every command against every way in which the library can misbehave: the program says and does
// what it should, a sanitizer or valgrind finds nothing, and a library's own buffer is given back
// once.

#include <gtest/gtest.h>

#include <algorithm>

#include "command_lines.h"
#include "process/shell.h"

namespace {

struct Misbehaviour {
  const char* name;
  const char* environment;
  int status;
  /// Null where the run succeeds.
  const char* errors;
  int releases;

  friend void PrintTo(const Misbehaviour& self, std::ostream* stream) { *stream << self.environment; }
};

// clang-format off
const Misbehaviour misbehaviours[] = {
    {"NoNul",                 "ORSK_TEST_FILL=x",                                                                     0,   nullptr, 0},
    {"SlowAnswer",            "ORSK_TEST_DELAY_MS=20",                                                                0,   nullptr, 0},
    {"WarningWithText",       "ORSK_TEST_CODE=1 ORSK_TEST_TEXT='{}'",                                                 0,   nullptr, 0},
    {"WarningWithOwnText",    "ORSK_TEST_CODE=2147483647 ORSK_TEST_TEXT='{}' ORSK_TEST_OWNER=library",                0,   nullptr, 1},
    {"ErrorWithoutText",      "ORSK_TEST_CODE=-1",                                                                    255, "ERROR: -1: \n", 0},
    {"LowestCode",            "ORSK_TEST_CODE=-2147483648",                                                           0,   "ERROR: -2147483648: \n", 0},
    {"TextThatIsNotJson",     "ORSK_TEST_CODE=-2 ORSK_TEST_TEXT='{not %s %n JSON'",                                   254, "ERROR: -2: {not %s %n JSON\n", 0},
    {"ControlBytes",          "ORSK_TEST_CODE=-2 ORSK_TEST_TEXT=$'\\x01\\x1b\\xff'",                                  254, "ERROR: -2: \x01\x1b\xff\n", 0},
    {"OwnCallback",           "ORSK_TEST_CODE=-3 ORSK_TEST_TEXT='{\"a\":1}' ORSK_TEST_OWNER=library",                 253, "ERROR: -3: {\"a\":1}\n", 1},
    {"CallbackReplaced",      "ORSK_TEST_CODE=-3 ORSK_TEST_TEXT='{\"a\":1}' ORSK_TEST_OWNER=both",                    253, "ERROR: -3: {\"a\":1}\n", 1},
    {"DeepNesting",           "ORSK_TEST_CODE=-4 ORSK_TEST_TEXT=$(printf '%0100000d' | tr 0 '[') ORSK_TEST_OWNER=both", 252, nullptr, 1},
    {"SixteenMebibytes",      "ORSK_TEST_CODE=-4 ORSK_TEST_PADDING=16777216 ORSK_TEST_OWNER=library",                 252, nullptr, 1},
};
// clang-format on

class HostileLibrary : public testing::TestWithParam<Misbehaviour> {};

TEST_P(HostileLibrary, DoesNoHarm) {
  const Misbehaviour& row = GetParam();
  for (const std::string line : callingLines) {
    const ShellOutcome outcome = runShell(std::string(row.environment) + " " ORSK_TEST_RUNNER " orskapp " + line);
    SCOPED_TRACE(line);
    EXPECT_EQ(row.status, outcome.status) << outcome.errors.substr(0, 1000);
    if (row.errors != nullptr || row.status == 0) {
      EXPECT_EQ(row.errors == nullptr ? "" : row.errors, outcome.errors);
    } else {
      EXPECT_TRUE(outcome.errors.starts_with("ERROR: -4: ") && outcome.errors.ends_with("\n"));
      EXPECT_EQ(1, std::count(outcome.errors.begin(), outcome.errors.end(), '\n'));
    }
    EXPECT_TRUE((row.status == 0 && row.errors == nullptr) || outcome.output.empty());
    EXPECT_EQ(1 + row.releases, std::count(outcome.calls.begin(), outcome.calls.end(), '\n'));
  }
}

INSTANTIATE_TEST_SUITE_P(With, HostileLibrary, testing::ValuesIn(misbehaviours),
                         [](const auto& test) { return test.param.name; });

}  // namespace
