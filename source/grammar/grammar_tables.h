#pragma once

/// The vocabulary of the command line: commands, arguments and flags, and the arguments and options
/// of each command.
///
/// Handlers read the options of a command or an argument in the order of the rows. Help prints the
/// rows from the last to the first.

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

/// The type of an option's value, for documents and tests. The program reads an option with the
/// type that its handler passes to `getOption`; a test compares the two.
enum class OptionType { text, truthValue, uint32, uint64 };

/// Returns the type as users see it.
constexpr const char* nameOf(OptionType type) {
  switch (type) {
    case OptionType::text:
      return "text";
    case OptionType::truthValue:
      return "0|1";
    case OptionType::uint32:
    case OptionType::uint64:
      return "number";
  }
  return "";
}

struct CommandArgument {
  std::string_view command;
  std::string_view argument;
};

struct CommandOption {
  std::string_view command;
  std::string_view option;
  OptionType type;
};

struct ArgumentOption {
  std::string_view command;
  std::string_view argument;
  std::string_view option;
  OptionType type;
  /// Printed by help after the option's name.
  std::string_view helpHint;
  /// The unit, if the option's name does not contain it. For documents.
  std::string_view unit = {};
};

/// Prints how long the command took.
inline constexpr std::string_view timingFlag = "-t";
/// Suppresses the confirmation lines.
inline constexpr std::string_view quietFlag = "-q";

// clang-format off

/// The words that may come first.
inline constexpr auto validCommands = std::to_array<std::string_view>({
    "help",
    "loadResources",
    "unloadResources",
    "timestampCorrelator",
    "syncDomain",
    "timescale",
    "getCurrentTimescale",
    "list",
    "getApiVersion",
});

/// The words that may follow any command.
inline constexpr auto validArguments = std::to_array<std::string_view>({
    // the commands but help
    "loadResources", "unloadResources", "timestampCorrelator", "syncDomain", "timescale",
    "getCurrentTimescale", "list", "getApiVersion",
    // actions
    "create", "createAndAddDevices", "delete", "start", "startV2", "stop", "correlate",
    "addSyncableDevice", "isCoherent", "isCoherentSinceLastChecked", "getTime",
    // kinds
    "timescales", "syncableDevices", "syncDomains", "correlators",
});

/// The words that are flags everywhere after the command.
inline constexpr auto validFlags = std::to_array<std::string_view>({timingFlag, quietFlag});

/// The arguments of each command.
inline constexpr auto commandArguments = std::to_array<CommandArgument>({
    // command                argument
    {"help",                  "loadResources"},
    {"help",                  "unloadResources"},
    {"help",                  "timestampCorrelator"},
    {"help",                  "syncDomain"},
    {"help",                  "timescale"},
    {"help",                  "getCurrentTimescale"},
    {"help",                  "list"},
    {"help",                  "getApiVersion"},

    {"timestampCorrelator",   "create"},
    {"timestampCorrelator",   "delete"},
    {"timestampCorrelator",   "correlate"},

    {"syncDomain",            "create"},
    {"syncDomain",            "createAndAddDevices"},
    {"syncDomain",            "delete"},
    {"syncDomain",            "start"},
    {"syncDomain",            "startV2"},
    {"syncDomain",            "stop"},
    {"syncDomain",            "addSyncableDevice"},
    {"syncDomain",            "isCoherent"},
    {"syncDomain",            "isCoherentSinceLastChecked"},

    {"timescale",             "getTime"},

    {"list",                  "syncDomains"},
    {"list",                  "syncableDevices"},
    {"list",                  "timescales"},
    {"list",                  "correlators"},
});

/// The options of each command without arguments.
inline constexpr auto commandOptions = std::to_array<CommandOption>({
    // command                option        type
    {"loadResources",         "remoteHost", OptionType::text},
    {"unloadResources",       "remoteHost", OptionType::text},
    {"getCurrentTimescale",   "remoteHost", OptionType::text},
});

inline constexpr std::string_view nullTimescaleHint =
    "  (For automatic timescaleUri selection, supply \"null\") ";
/// The backslashes are part of the text: a shell needs them in a word in double quotes.
inline constexpr std::string_view remoteHostsHint = R"(  (e.g. [\"192.0.2.1\",\"192.0.2.2\"]))";

/// The options of each command and argument.
inline constexpr auto argumentOptions = std::to_array<ArgumentOption>({
    // command                argument                      option                  type                    help hint, unit
    {"timestampCorrelator",   "create",                     "timescaleUri1",        OptionType::text,       ""},
    {"timestampCorrelator",   "create",                     "timescaleUri2",        OptionType::text,       ""},
    {"timestampCorrelator",   "create",                     "samplingInterval",     OptionType::uint32,     "", "ms"},
    {"timestampCorrelator",   "create",                     "historyLength",        OptionType::uint32,     "", "samples"},
    {"timestampCorrelator",   "delete",                     "timescaleUri1",        OptionType::text,       ""},
    {"timestampCorrelator",   "delete",                     "timescaleUri2",        OptionType::text,       ""},
    {"timestampCorrelator",   "correlate",                  "srcTimescaleUri",      OptionType::text,       ""},
    {"timestampCorrelator",   "correlate",                  "dstTimescaleUri",      OptionType::text,       ""},
    {"timestampCorrelator",   "correlate",                  "s",                    OptionType::uint64,     ""},
    {"timestampCorrelator",   "correlate",                  "ns",                   OptionType::uint32,     ""},
    {"timestampCorrelator",   "correlate",                  "fns",                  OptionType::uint32,     "", "fraction"},

    {"syncDomain",            "create",                     "uri",                  OptionType::text,       ""},
    {"syncDomain",            "create",                     "timescaleUri",         OptionType::text,       ""},
    {"syncDomain",            "create",                     "maxOffset_ns",         OptionType::uint32,     ""},
    {"syncDomain",            "create",                     "minSyncDuration_ms",   OptionType::uint32,     ""},
    {"syncDomain",            "createAndAddDevices",        "uri",                  OptionType::text,       ""},
    {"syncDomain",            "createAndAddDevices",        "timescaleUri",         OptionType::text,       nullTimescaleHint},
    {"syncDomain",            "createAndAddDevices",        "remoteHosts",          OptionType::text,       remoteHostsHint},
    {"syncDomain",            "createAndAddDevices",        "maxOffset_ns",         OptionType::uint32,     ""},
    {"syncDomain",            "createAndAddDevices",        "minSyncDuration_ms",   OptionType::uint32,     ""},
    {"syncDomain",            "delete",                     "uri",                  OptionType::text,       ""},
    {"syncDomain",            "start",                      "uri",                  OptionType::text,       ""},
    {"syncDomain",            "start",                      "timeout_s",            OptionType::uint32,     ""},
    {"syncDomain",            "startV2",                    "uri",                  OptionType::text,       ""},
    {"syncDomain",            "startV2",                    "saveInitialCoherency", OptionType::truthValue, ""},
    {"syncDomain",            "startV2",                    "waitToBecomeCoherent", OptionType::truthValue, ""},
    {"syncDomain",            "startV2",                    "timeout_s",            OptionType::uint32,     ""},
    {"syncDomain",            "stop",                       "uri",                  OptionType::text,       ""},
    {"syncDomain",            "addSyncableDevice",          "uri",                  OptionType::text,       ""},
    {"syncDomain",            "addSyncableDevice",          "syncableDeviceUri",    OptionType::text,       ""},
    {"syncDomain",            "isCoherent",                 "uri",                  OptionType::text,       ""},
    {"syncDomain",            "isCoherentSinceLastChecked", "uri",                  OptionType::text,       ""},

    {"timescale",             "getTime",                    "timescaleUri",         OptionType::text,       ""},
});

// clang-format on

/// Returns whether `word` is one of `words`, byte for byte.
template <std::size_t size>
constexpr bool isOneOf(const std::array<std::string_view, size>& words, std::string_view word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

/// Returns whether a row of `table` is about `command`.
template <typename Table>
constexpr bool hasRowOf(const Table& table, std::string_view command) {
  return std::any_of(table.begin(), table.end(),
                     [command](const auto& row) { return row.command == command; });
}

/// Returns whether `command` requires an argument. Without one, help is about all commands.
constexpr bool needsArgument(std::string_view command) {
  return command != "help" && hasRowOf(commandArguments, command);
}

// Consistency checks.
static_assert(validCommands.front() == "help", "help is the first command.");
static_assert(std::equal(validCommands.begin() + 1, validCommands.end(), validArguments.begin()),
              "validArguments begins with the commands but help: add a word there.");
static_assert(std::equal(validCommands.begin() + 1, validCommands.end(), commandArguments.begin(),
                         [](std::string_view command, const CommandArgument& row) {
                           return row.command == "help" && row.argument == command;
                         }),
              "commandArguments begins with the arguments of help, the other commands: add a row.");
static_assert(std::ranges::all_of(commandArguments,
                                  [](const CommandArgument& row) {
                                    return isOneOf(validCommands, row.command) &&
                                           isOneOf(validArguments, row.argument);
                                  }),
              "commandArguments: add the word to validCommands or validArguments.");
static_assert(
    std::ranges::all_of(commandOptions,
                        [](const CommandOption& row) {
                          return isOneOf(validCommands, row.command) &&
                                 !hasRowOf(commandArguments, row.command);
                        }),
    "commandOptions: add the command to validCommands; with arguments it needs argumentOptions.");
static_assert(std::ranges::all_of(argumentOptions,
                                  [](const ArgumentOption& row) {
                                    return std::ranges::count_if(
                                               commandArguments,
                                               [&row](const CommandArgument& other) {
                                                 return row.command == other.command &&
                                                        row.argument == other.argument;
                                               }) == 1;
                                  }),
              "argumentOptions: add the argument to commandArguments, once.");
