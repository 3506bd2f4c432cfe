// Runs the cases of tests/cases: each is a paragraph that reads as a session does.
//   # comment
//   $ the line that bash runs
//   + another line of the same script
//   > a line of standard output
//   ! a line of standard error
//   @ a call that the recording library saw
//   = the exit status, where that is not 0
// The last four are compared with what happened, whole. A byte that is not printable ASCII, a blank
// at a line's end and a missing line end are written in angle brackets: <07>, <20>, <no line end>.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "process/shell.h"

namespace {

struct Case {
  std::string name;
  std::string line;
  std::string expected;

  friend void PrintTo(const Case& self, std::ostream* stream) { *stream << self.line; }
};

std::string visible(const std::string& text) {
  std::string result;
  for (std::size_t index = 0; index < text.size(); ++index) {
    const char byte = text[index];
    const bool lineEnds = index + 1 == text.size() || text[index + 1] == '\n';
    const bool plain = byte == '\n' || (byte >= ' ' && byte <= '~' && !(byte == ' ' && lineEnds));
    char hex[8];
    std::snprintf(hex, sizeof hex, "<%02x>", static_cast<unsigned char>(byte));
    result += plain ? std::string(1, byte) : hex;
  }
  if (!text.empty() && text.back() != '\n') result += "<no line end>\n";
  return result;
}

std::string marked(char mark, const std::string& text) {
  std::string result;
  std::istringstream lines(visible(text));
  for (std::string line; std::getline(lines, line);) {
    result += mark + (line.empty() ? "" : ' ' + line) + '\n';
  }
  return result;
}

std::vector<Case> readCases() {
  std::vector<Case> cases;
  for (const auto& file : std::filesystem::directory_iterator(ORSK_TEST_ROOT "/tests/cases")) {
    if (file.path().extension() != ".txt") continue;
    std::ifstream lines(file.path());
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
      ++number;
      if (line.starts_with("$ ")) {
        cases.push_back({file.path().stem().string() + "_line_" + std::to_string(number), line.substr(2), ""});
      } else if (line.starts_with("+ ")) {
        cases.back().line += '\n' + line.substr(2);
      } else if (!line.empty() && line[0] != '#') {
        cases.back().expected += line + '\n';
      }
    }
  }
  return cases;
}

class Cases : public testing::TestWithParam<Case> {};

TEST_P(Cases, LeavesExactlyThis) {
  const ShellOutcome outcome = runShell(GetParam().line);
  EXPECT_EQ(GetParam().expected, marked('>', outcome.output) + marked('!', outcome.errors) +
                                     marked('@', outcome.calls) +
                                     (outcome.status == 0 ? "" : "= " + std::to_string(outcome.status) + '\n'))
      << "reproduce: LD_LIBRARY_PATH=" ORSK_TEST_LIBRARY " PATH=" ORSK_TEST_BIN ":$PATH BASH_ENV=" ORSK_TEST_ROOT
         "/tests/cases/functions.bash"
         " bash -c '"
      << GetParam().line << "'";
}

INSTANTIATE_TEST_SUITE_P(Session, Cases, testing::ValuesIn(readCases()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
