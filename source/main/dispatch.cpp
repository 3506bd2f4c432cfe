#include "main/dispatch.h"

#include <type_traits>

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

/// Calls `function` with those of a command's inputs that it takes.
template <auto function>
void run(const std::string& argument, const OptionMap& options, const FlagMap& flags) {
  if constexpr (std::is_invocable_v<decltype(function), decltype(argument)>) {
    function(argument);
  } else if constexpr (std::is_invocable_v<decltype(function), decltype(options),
                                           decltype(flags)>) {
    function(options, flags);
  } else {
    function(argument, options, flags);
  }
}

// clang-format off
constexpr Command commands[] = {
    {"help",                run<printHelp>},
    {"loadResources",       run<loadResources>},
    {"unloadResources",     run<unloadResources>},
    {"timestampCorrelator", run<runTimestampCorrelatorCommand>},
    {"syncDomain",          run<runSyncDomainCommand>},
    {"timescale",           run<runTimescaleCommand>},
    {"getCurrentTimescale", run<getCurrentTimescale>},
    {"list",                run<listServiceObjects>},
    {"getApiVersion",       run<getApiVersion>},
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
