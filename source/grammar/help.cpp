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
  for (auto row = argumentOptions.rbegin(); row != argumentOptions.rend(); ++row) {
    if (row->command != argument.command || row->argument != argument.argument) continue;
    printHelpLine("         --", row->option, row->helpHint);
  }
}

}  // namespace

void printCommandHelp(std::string_view command) {
  const bool takesArgument = hasRowOf(commandArguments, command);
  const bool takesOptions = hasRowOf(commandOptions, command) || hasRowOf(argumentOptions, command);
  printHelpLine("\n   ", command, takesArgument ? " [arg]" : "",
                takesOptions ? " --[optionN] [valN]" : "");
  for (auto row = commandOptions.rbegin(); row != commandOptions.rend(); ++row) {
    if (row->command == command) printHelpLine("      --", row->option);
  }
  for (auto row = commandArguments.rbegin(); row != commandArguments.rend(); ++row) {
    if (row->command == command) printArgumentHelp(*row);
  }
}

void printHelp(const std::string& argument) {
  if (!argument.empty()) {
    printCommandHelp(argument);
    return;
  }
  for (const std::string_view command : validCommands) printCommandHelp(command);
}
