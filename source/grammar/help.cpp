#include "grammar/help.h"

#include <unistd.h>

#include "grammar/grammar_tables.h"
#include "output/standard_streams.h"

namespace {

/// Ignores a failed write: help has no result that could be lost.
template <typename... Parts>
void printHelpLine(const Parts&... parts) {
  writeLine(STDOUT_FILENO, parts...);
}

void printArgumentHelp(const CommandArgument& argument) {
  printHelpLine("      ", argument.argument);
  for (const ArgumentOption& row : NewestFirst{argumentOptions}) {
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
  for (const CommandOption& row : NewestFirst{commandOptions}) {
    if (row.command == command) printHelpLine("      --", row.option);
  }
  for (const CommandArgument& row : NewestFirst{commandArguments}) {
    if (row.command == command) printArgumentHelp(row);
  }
}
