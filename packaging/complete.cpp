// complete NUMBER WORD...: prints what may stand in place of the word of that number, in a command
// line whose word 0 is the program's name. One candidate per line, in the order of the grammar, and
// after a TAB its description. A line that begins with a TAB describes a value and is no candidate.
// The shells' completions call it. It calls no client library and reads no file.

#include <unistd.h>

#include <charconv>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "grammar/grammar_tables.h"
#include "output/standard_streams.h"

namespace {

using Words = std::vector<std::string_view>;

template <typename... Parts>
void print(const Parts&... parts) {
  writeLine(STDOUT_FILENO, parts...);
}

/// Calls `use(name, type)` for each option of a command, with an argument or an empty text.
template <typename Use>
void forEachOption(std::string_view command, std::string_view argument, const Use& use) {
  for (const CommandOption& row : commandOptions)
    if (row.command == command && argument.empty()) use(row.option, row.type);
  for (const ArgumentOption& row : argumentOptions)
    if (row.command == command && row.argument == argument) use(row.option, row.type);
}

void printValues(std::string_view command, std::string_view argument, std::string_view option) {
  forEachOption(command, argument, [&](std::string_view name, OptionType type) {
    if (name != option) return;
    if (type == OptionType::truthValue) {
      print("0");
      print("1");
    } else {
      print("\t", nameOf(type));
    }
  });
}

/// Removes the redirections, each an operator and its file, before the word `number` and after it.
/// Changes the number with that.
void removeRedirections(Words& words, std::size_t& number) {
  const auto isRedirection = [](std::string_view word) {
    return word.find_first_of("<>") != std::string_view::npos;
  };
  for (std::size_t index = 1; index < words.size();) {
    if (index == number || !isRedirection(words[index])) {
      ++index;
      continue;
    }
    // An operator that stands alone is followed by the file.
    const bool standsAlone = words[index].ends_with('<') || words[index].ends_with('>');
    const std::size_t count =
        standsAlone && index + 1 < words.size() && index + 1 != number ? 2 : 1;
    words.erase(words.begin() + static_cast<std::ptrdiff_t>(index),
                words.begin() + static_cast<std::ptrdiff_t>(index + count));
    if (index < number) number -= count;
  }
}

/// Returns whether another word than `number` is `prefix` and `name`.
bool isGiven(const Words& words, std::size_t number, std::string_view prefix,
             std::string_view name) {
  for (std::size_t index = 2; index < words.size(); ++index) {
    const std::string_view word = words[index];
    if (index != number && word.starts_with(prefix) && word.substr(prefix.size()) == name)
      return true;
  }
  return false;
}

/// Prints the options and flags that the line does not contain yet.
void printOptions(const Words& words, std::size_t number, std::string_view command,
                  std::string_view argument) {
  forEachOption(command, argument, [&](std::string_view name, OptionType type) {
    if (!isGiven(words, number, "--", name)) print("--", name, "\t", nameOf(type));
  });
  for (const std::string_view flag : validFlags)
    if (!isGiven(words, number, "", flag)) print(flag);
}

void complete(const Words& words, std::size_t number) {
  if (number == 1) {
    for (const std::string_view command : validCommands) print(command);
    return;
  }
  const std::string_view command = words[1], current = words[number], before = words[number - 1];
  const bool hasArgument = number > 2 && !words[2].starts_with('-');
  const std::string_view argument = hasArgument ? words[2] : "";
  if (!hasArgument && number > 2 && needsArgument(command)) return;
  if (number > 2 && before.starts_with("--") && before.size() > 2) {
    printValues(command, argument, before.substr(2));
    return;
  }
  if (number == 2 && hasRowOf(commandArguments, command) &&
      (needsArgument(command) || !current.starts_with('-'))) {
    for (const CommandArgument& row : commandArguments)
      if (row.command == command) print(row.argument);
    return;
  }
  printOptions(words, number, command, argument);
}

}  // namespace

int main(int argc, char** argv) {
  const std::span arguments(argv, static_cast<std::size_t>(argc));
  std::size_t number = 0;
  const std::string_view text = argc < 2 ? "" : arguments[1];
  std::from_chars(text.data(), text.data() + text.size(), number);
  if (argc < 3 || number < 1 || number >= arguments.size() - 2) {
    writeLine(STDERR_FILENO, "usage: complete NUMBER WORD...");
    return 2;
  }
  Words words(arguments.begin() + 2, arguments.end());
  removeRedirections(words, number);
  complete(words, number);
  return 0;
}
