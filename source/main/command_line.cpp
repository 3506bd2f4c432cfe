#include "main/command_line.h"

#include <span>
#include <string_view>

#include "errors/console_exceptions.h"
#include "grammar/grammar_tables.h"
#include "main/options.h"

namespace {

/// Finds flags everywhere, even as the value of an option.
FlagMap readFlags(std::span<const char* const> words) {
  FlagMap flags;
  for (const std::string_view flag : validFlags) flags.emplace(flag, false);
  for (const char* const word : words) {
    if (const auto flag = flags.find(word); flag != flags.end()) flag->second = true;
  }
  return flags;
}

}  // namespace

CommandLine readCommandLine(int argc, const char* const* argv) {
  if (argc < 2) throw NoCmdException();
  std::span words(argv + 1, static_cast<std::size_t>(argc) - 1);

  CommandLine line;
  line.command = words.front();
  if (!isOneOf(validCommands, line.command)) {
    throw InvalidCmdException();
  }
  words = words.subspan(1);
  line.flags = readFlags(words);
  for (; !words.empty() && *words.front() != '-'; words = words.subspan(1)) {
    if (!isOneOf(validArguments, words.front())) {
      throw InvalidArgException();
    }
    line.arguments.emplace_back(words.front());
  }
  line.options = readOptions(words);
  return line;
}
