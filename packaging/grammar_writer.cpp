// grammar_writer OUTPUT [TEMPLATE]: prints the grammar's tables for a use:
//   markdown     the README's table of commands
//   lines        a command line that calls the library, for each command and argument
//   types        each command and argument with its options and their types
//   dictionary   the words, for the fuzzer
//   manual       nothing without a template
// With a template prints that, and replaces these lines:
//   @USAGE command argument@   the manual's entry. A template with one entry needs all.
//   %MESSAGES%                 the messages of the command-line errors

#include <algorithm>
#include <fstream>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "errors/console_exceptions.h"
#include "grammar/grammar_tables.h"

namespace {

struct Option {
  std::string name;
  OptionType type;
  std::string unit;
};

/// A command with one of its arguments, or without.
struct Usage {
  std::string command;
  std::string argument;
  std::vector<Option> options;
};

std::vector<Usage> readUsages() {
  std::vector<Usage> usages;
  for (const std::string_view command : validCommands) {
    Usage bare{std::string(command), "", {}};
    for (const CommandOption& row : commandOptions) {
      if (row.command == command) bare.options.push_back({std::string(row.option), row.type, ""});
    }
    std::vector<Usage> withArguments;
    for (const CommandArgument& argument : commandArguments) {
      if (argument.command != command) continue;
      withArguments.push_back({bare.command, std::string(argument.argument), {}});
      for (const ArgumentOption& row : argumentOptions) {
        if (row.command != command || row.argument != argument.argument) continue;
        withArguments.back().options.push_back(
            {std::string(row.option), row.type, std::string(row.unit)});
      }
    }
    if (!needsArgument(command)) usages.push_back(bare);
    usages.insert(usages.end(), withArguments.begin(), withArguments.end());
  }
  return usages;
}

/// Returns whether the entry of help documents the usage too.
bool belongsToHelp(const Usage& usage) {
  return usage.command == "help" && !usage.argument.empty();
}

std::string nameOf(const Usage& usage) {
  return usage.command + (usage.argument.empty() ? "" : ' ' + usage.argument);
}

/// Returns the type with its unit, if the option's name does not contain it.
std::string describe(const Option& option) {
  // A bar would end the table's cell.
  const bool isTruthValue = option.type == OptionType::truthValue;
  const std::string type = isTruthValue ? "0 or 1" : nameOf(option.type);
  return option.unit.empty() ? type : type + " (" + option.unit + ')';
}

/// Writes the manual's entry for one usage, whose text follows in the template. Returns false if
/// there is none of that name.
bool writeManualEntry(std::ostream& out, const std::string& name) {
  for (const Usage& usage : readUsages()) {
    if (nameOf(usage) != name) continue;
    out << ".It Cm " << usage.command;
    if (!usage.argument.empty()) out << " Cm " << usage.argument;
    if (usage.command == "help") out << " Op Ar command";
    out << '\n';
    for (const Option& option : usage.options) {
      out << ".Fl -" << option.name << " Ar " << nameOf(option.type) << '\n';
    }
    // The text begins a line of its own.
    out << ".br\n";
    return true;
  }
  return false;
}

void writeMarkdown(std::ostream& out) {
  out << "| command | argument | options, each followed by its value |\n|---|---|---|\n";
  for (const Usage& usage : readUsages()) {
    if (belongsToHelp(usage)) continue;
    out << "| `" << usage.command << "` | ";
    if (usage.command == "help") out << "a command, or none";
    if (!usage.argument.empty()) out << '`' << usage.argument << '`';
    out << " |";
    for (const Option& option : usage.options) {
      out << " `--" << option.name << "` " << describe(option);
    }
    out << " |\n";
  }
}

void writeLines(std::ostream& out) {
  for (const Usage& usage : readUsages()) {
    if (usage.command == "help") continue;
    out << nameOf(usage);
    for (const Option& option : usage.options) {
      const bool text = option.type == OptionType::text;
      out << " --" << option.name
          << (text ? " a-text-that-is-too-long-for-any-small-string" : " 1");
    }
    out << '\n';
  }
}

void writeTypes(std::ostream& out) {
  for (const Usage& usage : readUsages()) {
    if (usage.options.empty()) continue;
    out << nameOf(usage) << '|';
    for (const Option& option : usage.options) {
      const std::string bits = option.type == OptionType::uint64 ? "64" : "";
      out << " --" << option.name << ' ' << nameOf(option.type) << bits;
    }
    out << '\n';
  }
}

void writeDictionary(std::ostream& out) {
  std::set<std::string> words(validFlags.begin(), validFlags.end());
  for (const Usage& usage : readUsages()) {
    words.insert({usage.command, usage.argument});
    for (const Option& option : usage.options) words.insert(option.name);
  }
  out << "# The words of the grammar, each with the NUL that ends it.\n";
  for (const std::string& word : words) {
    if (!word.empty()) out << '"' << word << "\\x00\"\n";
  }
}

struct Output {
  std::string_view name;
  void (*write)(std::ostream& out);
};

// clang-format off
constexpr Output outputs[] = {
    {"markdown",   writeMarkdown},
    {"lines",      writeLines},
    {"types",      writeTypes},
    {"dictionary", writeDictionary},
    {"manual",     [](std::ostream&) {}},
};
// clang-format on

void writeMessages(std::ostream& out) {
  const SyncDomainConsoleException errors[] = {NoCmdException(),         InvalidCmdException(),
                                               MissingArgException(),    InvalidArgException(),
                                               MissingOptionException(), TooManyOptionsException()};
  for (const SyncDomainConsoleException& error : errors) {
    // In a manual page a text starts no line with a dot or an apostrophe; no message does.
    out << ".It \"ERROR: ";
    for (const char byte : std::string(error.what()))
      out << (byte == '"' ? "\\(dq" : std::string(1, byte));
    out << "\"\n";
  }
}

/// Writes the template `in`. Returns an error, or an empty text.
std::string fillTemplate(std::istream& in, std::ostream& out) {
  std::set<std::string> documented;
  for (std::string line; std::getline(in, line);) {
    if (line == "%MESSAGES%") {
      writeMessages(out);
    } else if (line.starts_with("@USAGE ")) {
      const std::string name = line.substr(7, line.size() - 8);
      const bool isNew = documented.insert(name).second;
      if (!isNew || !writeManualEntry(out, name)) return "unknown or repeated: " + name;
    } else {
      out << line << '\n';
    }
  }
  for (const Usage& usage : readUsages()) {
    const bool missing = !belongsToHelp(usage) && !documented.contains(nameOf(usage));
    if (!documented.empty() && missing) return "the template lacks " + nameOf(usage);
  }
  return in.eof() ? "" : "cannot read the template";
}

}  // namespace

int main(int argc, char** argv) {
  const auto* const output =
      std::ranges::find(outputs, std::string_view(argc < 2 ? "" : argv[1]), &Output::name);
  if (output == std::end(outputs) || argc > 3) {
    std::cerr << "usage: grammar_writer OUTPUT [TEMPLATE]\noutputs:";
    for (const Output& known : outputs) std::cerr << ' ' << known.name;
    std::cerr << '\n';
    return 2;
  }
  std::string error;
  if (argc == 2) {
    output->write(std::cout);
  } else {
    std::ifstream in(argv[2]);
    error = fillTemplate(in, std::cout);
  }
  if (!std::cout.flush()) error = "cannot write";
  if (error.empty()) return 0;
  std::cerr << "grammar_writer: " << error << '\n';
  return 1;
}
