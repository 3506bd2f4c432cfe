// Every option that the grammar tables name, against the real program: it is required, once, of the
// table's type, and read in the table's order; and nothing beyond the tables is read.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <vector>

#include "errors/console_exceptions.h"
#include "grammar/grammar_tables.h"
#include "process/shell.h"

namespace {

struct Option {
  std::string_view name;
  OptionType type;
};

/// What may stand before the options, to the options in the table's order.
std::map<std::string, std::vector<Option>> optionsOfCommands() {
  std::map<std::string, std::vector<Option>> result;
  for (const CommandOption& row : commandOptions) {
    result[std::string(row.command)].push_back({row.option, row.type});
  }
  for (const ArgumentOption& row : argumentOptions) {
    result[std::string(row.command) + ' ' + std::string(row.argument)].push_back({row.option, row.type});
  }
  return result;
}

struct Bounds {
  const char* accepted;
  /// Null for a type that takes any text.
  const char* rejected;
};

Bounds boundsOf(OptionType type) {
  switch (type) {
    case OptionType::text:
      return {"' x'", nullptr};
    case OptionType::truthValue:
      return {"+01", "2"};
    case OptionType::uint32:
      return {"4294967295", "4294967296"};
    case OptionType::uint64:
      return {"18446744073709551615", "18446744073709551616"};
  }
  return {};
}

enum class Fault { none, missing, repeated, rejected };

std::string lineWith(const std::string& command, const std::vector<Option>& options,
                     const std::map<std::size_t, Fault>& faults) {
  std::string line = "orskapp " + command;
  for (std::size_t index = 0; index < options.size(); ++index) {
    const auto fault = faults.find(index);
    const Fault kind = fault == faults.end() ? Fault::none : fault->second;
    const Bounds bounds = boundsOf(options[index].type);
    const std::string option = " --" + std::string(options[index].name) + ' ';
    if (kind == Fault::missing) continue;
    line += option + (kind == Fault::rejected ? bounds.rejected : bounds.accepted);
    if (kind == Fault::repeated) line += option + bounds.accepted;
  }
  return line;
}

void expectRefusal(const std::string& line, const char* message) {
  const ShellOutcome outcome = runShell(line);
  EXPECT_EQ(std::string("ERROR: ") + message + '\n', outcome.errors) << line;
  EXPECT_EQ("", outcome.output) << line;
  EXPECT_EQ("", outcome.calls) << line;
  EXPECT_EQ(1, outcome.status) << line;
}

class Options : public testing::TestWithParam<std::string> {};

TEST_P(Options, AreReadAsTheTablesSay) {
  const auto options = optionsOfCommands().at(GetParam());
  const auto line = [&](const std::map<std::size_t, Fault>& faults) { return lineWith(GetParam(), options, faults); };
  const ShellOutcome outcome = runShell(line({}));
  EXPECT_EQ("", outcome.errors);
  EXPECT_EQ(0, outcome.status);
  EXPECT_EQ(1, std::count(outcome.calls.begin(), outcome.calls.end(), '\n'));
  for (std::size_t index = 0; index < options.size(); ++index) {
    expectRefusal(line({{index, Fault::missing}}), MissingOptionException().what());
    expectRefusal(line({{index, Fault::repeated}}), TooManyOptionsException().what());
    if (boundsOf(options[index].type).rejected != nullptr) {
      expectRefusal(line({{index, Fault::rejected}}),
                    "bad lexical cast: source type value could not be interpreted as target");
    }
    if (index == 0) continue;
    expectRefusal(line({{index - 1, Fault::missing}, {index, Fault::repeated}}), MissingOptionException().what());
    expectRefusal(line({{index - 1, Fault::repeated}, {index, Fault::missing}}), TooManyOptionsException().what());
  }
}

std::vector<std::string> commandsWithOptions() {
  std::vector<std::string> result;
  for (const auto& [command, options] : optionsOfCommands()) result.push_back(command);
  return result;
}

INSTANTIATE_TEST_SUITE_P(Of, Options, testing::ValuesIn(commandsWithOptions()), [](const auto& test) {
  std::string name = test.param;
  std::replace(name.begin(), name.end(), ' ', '_');
  return name;
});

}  // namespace
