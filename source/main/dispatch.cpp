#include "main/dispatch.h"

#include "commands/dispatch_table.h"
#include "commands/sync_domain_command.h"
#include "commands/timestamp_correlator_command.h"
#include "diagnostics/reported_places.h"
#include "grammar/help.h"
#include "main/query_commands.h"
#include "main/resource_commands.h"

namespace {

/// `argument` is empty if the line has no argument.
struct Command {
  std::string_view word;
  void (*run)(const std::string& argument, const OptionMap& options, const FlagMap& flags);
};

void help(const std::string& argument, const OptionMap&, const FlagMap&) {
  if (!argument.empty()) {
    printCommandHelp(argument);
    return;
  }
  for (const std::string_view command : validCommands) printCommandHelp(std::string(command));
}

// clang-format off
constexpr Command commands[] = {
    {"help",                help},
    {"loadResources",       loadResources},
    {"unloadResources",     unloadResources},
    {"timestampCorrelator", runTimestampCorrelatorCommand},
    {"syncDomain",          runSyncDomainCommand},
    {"timescale",           runTimescaleCommand},
    {"getCurrentTimescale", getCurrentTimescale},
    {"list",                listServiceObjects},
    {"getApiVersion",       getApiVersion},
};
// clang-format on
static_assert(std::ranges::equal(commands, validCommands, {}, &Command::word),
              "Add a row for each command in validCommands, in that order.");

}  // namespace

void runCommand(const CommandLine& line) {
  const Command& command = rowOf(commands, line.command, reported::commands);
  if (line.arguments.empty() && needsArgument(line.command)) throw MissingArgException();
  command.run(line.arguments.empty() ? "" : line.arguments.front(), line.options, line.flags);
}
