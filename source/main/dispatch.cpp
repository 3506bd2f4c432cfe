#include "main/dispatch.h"

#include "commands/dispatch_table.h"
#include "commands/sync_domain_command.h"
#include "commands/timestamp_correlator_command.h"
#include "diagnostics/reported_places.h"
#include "grammar/grammar_tables.h"
#include "grammar/help.h"
#include "main/query_commands.h"
#include "main/resource_commands.h"

namespace {

struct Command {
  std::string_view word;
  bool needsArgument;
  void (*run)(const CommandLine& line);
};

void help(const CommandLine& line) {
  if (!line.arguments.empty()) return printCommandHelp(line.arguments.front());
  for (const std::string_view command : validCommands) printCommandHelp(std::string(command));
}

// clang-format off
constexpr Command commands[] = {
    // word                  needs argument  carried out by
    {"help",                 false,          help},
    {"loadResources",        false,          [](const CommandLine& line) { loadResources(line.options, line.flags); }},
    {"unloadResources",      false,          [](const CommandLine& line) { unloadResources(line.options, line.flags); }},
    {"timestampCorrelator",  true,           [](const CommandLine& line) { runTimestampCorrelatorCommand(line.arguments.front(), line.options, line.flags); }},
    {"syncDomain",           true,           [](const CommandLine& line) { runSyncDomainCommand(line.arguments.front(), line.options, line.flags); }},
    {"timescale",            true,           [](const CommandLine& line) { runTimescaleCommand(line.arguments.front(), line.options, line.flags); }},
    {"getCurrentTimescale",  false,          [](const CommandLine& line) { getCurrentTimescale(line.options); }},
    {"list",                 true,           [](const CommandLine& line) { listServiceObjects(line.arguments.front()); }},
    {"getApiVersion",        false,          [](const CommandLine&) { getApiVersion(); }},
};
// clang-format on

}  // namespace

void runCommand(const CommandLine& line) {
  const Command& command = rowOf(commands, line.command, reported::commands);
  if (command.needsArgument && line.arguments.empty()) {
    throw MissingArgException(console_message::missingArgument);
  }
  command.run(line);
}
