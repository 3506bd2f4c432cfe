#include "grammar/help.h"

#include <unistd.h>

#include "grammar/grammar_tables.h"
#include "output/standard_streams.h"

namespace {

/// The rows of a table from the last to the first, for a range-based loop. Clang 14 rejects
/// std::views::reverse of Debian 12's C++ library.
template <typename Table>
struct LastToFirst {
  const Table& table;

  constexpr auto begin() const { return table.rbegin(); }
  constexpr auto end() const { return table.rend(); }
};

template <typename Table>
LastToFirst(const Table&) -> LastToFirst<Table>;

/// Ignores a failed write: help has no result that could be lost.
template <typename... Parts>
void printHelpLine(const Parts&... parts) {
  writeLine(STDOUT_FILENO, parts...);
}

void printArgumentHelp(const CommandArgument& argument) {
  printHelpLine("      ", argument.argument);
  for (const ArgumentOption& row : LastToFirst{argumentOptions}) {
    if (row.command != argument.command || row.argument != argument.argument) continue;
    printHelpLine("         --", row.option, row.helpHint);
  }
}

}  // namespace

void printCommandHelp(const std::string& command) {
  const bool takesArgument = hasRowOf(commandArguments, command);
  const bool takesOptions = hasRowOf(commandOptions, command) || hasRowOf(argumentOptions, command);
  printHelpLine("\n   ", command, takesArgument ? " [arg]" : "",
                takesOptions ? " --[optionN] [valN]" : "");
  for (const CommandOption& row : LastToFirst{commandOptions}) {
    if (row.command == command) printHelpLine("      --", row.option);
  }
  for (const CommandArgument& row : LastToFirst{commandArguments}) {
    if (row.command == command) printArgumentHelp(row);
  }
}

void printHelp(const std::string& argument) {
  if (!argument.empty()) {
    printCommandHelp(argument);
    return;
  }
  for (const std::string_view command : validCommands) printCommandHelp(std::string(command));
}
