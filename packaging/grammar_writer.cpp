// grammar_writer FORM [TEMPLATE]: prints the grammar's tables in the given form ("bash", which zsh
// reads too, "fish", "markdown", "lines": a command line that calls the library for each command
// and argument). With a template prints that, with the tables in the place of its line "@GRAMMAR@",
// the manual's entry of a command and argument in the place of "@FORM command argument@", of which
// there must be one for each if there is any, and the messages of the command-line errors in the
// place of "%MESSAGES%".

#include <algorithm>
#include <cstdio>
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
};

/// A command with one of its arguments, or with none.
struct Form {
  std::string command;
  std::string argument;
  std::vector<Option> options;
};

std::vector<Form> readForms() {
  std::vector<Form> forms;
  for (const std::string_view command : validCommands) {
    Form bare{std::string(command), "", {}};
    for (const CommandOption& row : commandOptions) {
      if (row.command == command) bare.options.push_back({std::string(row.option), row.type});
    }
    std::vector<Form> withArguments;
    for (const CommandArgument& argument : commandArguments) {
      if (argument.command != command) continue;
      withArguments.push_back({bare.command, std::string(argument.argument), {}});
      for (const ArgumentOption& row : argumentOptions) {
        if (row.command != command || row.argument != argument.argument) continue;
        withArguments.back().options.push_back({std::string(row.option), row.type});
      }
    }
    if (!needsArgument(command)) forms.push_back(bare);
    forms.insert(forms.end(), withArguments.begin(), withArguments.end());
  }
  return forms;
}

/// Help of one command is not told apart from help of all.
bool isToldWithHelp(const Form& form) {
  return form.command == "help" && !form.argument.empty();
}

std::string nameOf(const Form& form) {
  return form.command + (form.argument.empty() ? "" : ' ' + form.argument);
}

const char* nameOf(OptionType type) {
  switch (type) {
    case OptionType::text:
      return "text";
    case OptionType::truthValue:
      return "truth";
    case OptionType::uint32:
      return "uint32";
    case OptionType::uint64:
      return "uint64";
  }
  return "";
}

/// The texts that `textOf` makes of `rows`, with blanks between them; it leaves a row out with "".
std::string joined(const auto& rows, const auto& textOf) {
  std::string line;
  for (const auto& row : rows) {
    const std::string text(textOf(row));
    if (!text.empty()) line += (line.empty() ? "" : " ") + text;
  }
  return line;
}

/// Functions that print, a word a line: what may follow a command, the command again if it cannot
/// do without, the options of a command and its argument, each as "name:type", and the flags.
void writeShell(std::ostream& out, bool fish) {
  const auto function = [&](const char* name) {
    out << (fish ? "function " : "") << name
        << (fish ? "\n  switch \"$argv\"\n" : "() {\n  case \"$*\" in\n");
  };
  // `pattern` stands as it is; a command without `words` has no entry.
  const auto entry = [&](const std::string& pattern, const std::string& words) {
    if (words.empty()) return;
    out << "    " << (fish ? "case " : "") << pattern << (fish ? "\n      " : ") ")
        << "printf '%s\\n' " << words << (fish ? "\n" : " ;;\n");
  };
  const auto end = [&] { out << (fish ? "  end\nend\n" : "  esac\n}\n"); };
  const auto quoted = [](const std::string& word) { return "'" + word + "'"; };
  const auto itself = [](std::string_view word) { return word; };

  const std::vector<Form> forms = readForms();
  function("__orskapp_words");
  entry(quoted(""), joined(validCommands, itself));
  for (const std::string_view command : validCommands) {
    const auto argumentOf = [&](const Form& form) {
      return form.command == command ? form.argument : std::string();
    };
    entry(quoted(std::string(command)), joined(forms, argumentOf));
  }
  end();
  function("__orskapp_needs_argument");
  for (const std::string_view command : validCommands) {
    if (needsArgument(command)) entry(quoted(std::string(command)), std::string(command));
  }
  end();
  function("__orskapp_options");
  for (const Form& form : forms) {
    const auto typed = [](const Option& option) { return option.name + ":" + nameOf(option.type); };
    entry(quoted(nameOf(form)), joined(form.options, typed));
  }
  end();
  function("__orskapp_flags");
  entry(fish ? quoted("*") : "*", joined(validFlags, itself));
  end();
}

/// The manual's entry for one command and argument, whose text follows in the template. Returns
/// whether there is such a one. Help's arguments are not told one by one.
bool writeManualEntry(std::ostream& out, const std::string& name) {
  for (const Form& form : readForms()) {
    if (nameOf(form) != name) continue;
    out << ".It Cm " << form.command;
    if (!form.argument.empty()) out << " Cm " << form.argument;
    if (form.command == "help") out << " Op Ar command";
    out << '\n';
    for (const Option& option : form.options) {
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
  for (const Form& form : readForms()) {
    if (isToldWithHelp(form)) continue;
    out << "| `" << form.command << "` | ";
    if (form.command == "help") out << "a command, or none";
    if (!form.argument.empty()) out << '`' << form.argument << '`';
    out << " |";
    for (const Option& option : form.options)
      out << " `--" << option.name << "` " << nameOf(option.type);
    out << " |\n";
  }
}

void writeLines(std::ostream& out) {
  for (const Form& form : readForms()) {
    if (form.command == "help") continue;
    out << nameOf(form);
    for (const Option& option : form.options) {
      const bool text = option.type == OptionType::text;
      out << " --" << option.name
          << (text ? " a-text-that-is-too-long-for-any-small-string" : " 1");
    }
    out << '\n';
  }
}

void writeGrammar(std::ostream& out, const std::string& form) {
  if (form == "markdown") {
    writeMarkdown(out);
  } else if (form == "lines") {
    writeLines(out);
  } else {
    writeShell(out, form == "fish");
  }
}

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

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::cerr << "usage: grammar_writer FORM [TEMPLATE]\n";
    return 2;
  }
  const std::string form = argv[1];
  std::ifstream in(argc == 3 ? argv[2] : "/dev/null");
  if (argc == 2) writeGrammar(std::cout, form);
  std::set<std::string> told;
  for (std::string line; std::getline(in, line);) {
    if (line == "@GRAMMAR@") {
      writeGrammar(std::cout, form);
    } else if (line == "%MESSAGES%") {
      writeMessages(std::cout);
    } else if (line.starts_with("@FORM ")) {
      const std::string name = line.substr(6, line.size() - 7);
      if (!writeManualEntry(std::cout, name) || !told.insert(name).second) {
        std::cerr << "grammar_writer: there is no " << name << ", or it is told already\n";
        return 1;
      }
    } else {
      std::cout << line << '\n';
    }
  }
  for (const Form& untold : readForms()) {
    if (!told.empty() && !isToldWithHelp(untold) && !told.contains(nameOf(untold))) {
      std::cerr << "grammar_writer: " << argv[2] << " does not tell of " << nameOf(untold) << '\n';
      return 1;
    }
  }
  std::cout.flush();
  if (!in.eof() || !std::cout) {
    std::cerr << "grammar_writer: cannot read " << argv[argc - 1] << " or write\n";
    return 1;
  }
  return 0;
}
