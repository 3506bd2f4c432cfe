#include "main/dispatch.h"

#include <string_view>

#include "diagnostics/reported_places.h"
#include "errors/console_exceptions.h"
#include "main/resource_commands.h"

namespace {

struct Command {
  std::string_view word;
  bool needsArgument;
  void (*run)(const CommandLine&);
};

// clang-format off
constexpr Command commands[] = {
    // word                  needs an argument  carried out by
    {"loadResources",        false,             [](const CommandLine& line) { loadResources(line.options, line.flags); }},
    {"unloadResources",      false,             [](const CommandLine& line) { unloadResources(line.options, line.flags); }},
    {"timestampCorrelator",  true,              nullptr},
    {"syncDomain",           true,              nullptr},
    {"timescale",            true,              nullptr},
    {"list",                 true,              nullptr},
};
// clang-format on

}  // namespace

void runCommand(const CommandLine& line) {
  for (const Command& command : commands) {
    if (command.word != line.command) continue;
    if (command.needsArgument && line.arguments.empty()) {
      throw MissingArgException(console_message::missingArgument);
    }
    if (command.run == nullptr) break;
    return command.run(line);
  }
  ORSK_ASSERT(false, reported::commandDispatch);
  throw InvalidArgException(console_message::invalidArgument);
}
