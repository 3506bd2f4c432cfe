#include "main/dispatch.h"

#include <algorithm>
#include <string>
#include <string_view>

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

/// Calls a command that has only an argument.
template <void function(const std::string&)>
void withArgument(const std::string& argument, const OptionMap&, const FlagMap&) {
  function(argument);
}

/// Calls a command that has no argument.
template <void function(const OptionMap&, const FlagMap&)>
void withOptions(const std::string&, const OptionMap& options, const FlagMap& flags) {
  function(options, flags);
}

// clang-format off
constexpr Command commands[] = {
    {"help",                withArgument<printHelp>},
    {"loadResources",       withOptions<loadResources>},
    {"unloadResources",     withOptions<unloadResources>},
    {"timestampCorrelator", runTimestampCorrelatorCommand},
    {"syncDomain",          runSyncDomainCommand},
    {"timescale",           runTimescaleCommand},
    {"getCurrentTimescale", withOptions<getCurrentTimescale>},
    {"list",                withArgument<listServiceObjects>},
    {"getApiVersion",       withOptions<getApiVersion>},
};
// clang-format on
static_assert(std::ranges::equal(commands, validCommands, {}, &Command::word),
              "Add a row for each command in validCommands, in that order.");

}  // namespace

void runCommand(const CommandLine& line) {
  const Command& command = requireRow(commands, line.command, reported::commands);
  if (line.arguments.empty() && needsArgument(line.command)) throw MissingArgException();
  command.run(line.arguments.empty() ? "" : line.arguments.front(), line.options, line.flags);
}
