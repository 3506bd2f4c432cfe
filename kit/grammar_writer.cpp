// grammar_writer FORM TEMPLATE OUTPUT: copies a template, with the line "@GRAMMAR@" replaced by the
// grammar's tables in the given form ("bash", which zsh reads too, "fish", "manual", "markdown"),
// and the line "@MESSAGES@" by the messages of the command-line errors.

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
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
    bool needsArgument = false;
    std::vector<Form> withArguments;
    for (const CommandArgument& argument : commandArguments) {
      if (argument.command != command) continue;
      needsArgument = command != "help";
      withArguments.push_back({bare.command, std::string(argument.argument), {}});
      for (const ArgumentOption& row : argumentOptions) {
        if (row.command != command || row.argument != argument.argument) continue;
        withArguments.back().options.push_back({std::string(row.option), row.type});
      }
    }
    if (!needsArgument) forms.push_back(bare);
    forms.insert(forms.end(), withArguments.begin(), withArguments.end());
  }
  return forms;
}

const char* nameOf(OptionType type) {
  switch (type) {
    case OptionType::text:
      return "text";
    case OptionType::truthValue:
      return "truth";
    case OptionType::uint32:
      return "uint32";
    default:
      return "uint64";
  }
}

std::string flagsLine() {
  std::string line;
  for (const std::string_view flag : validFlags)
    line += (line.empty() ? "" : " ") + std::string(flag);
  return line;
}

/// Functions that print, a word a line: what may follow a command, and the options of a command and
/// its argument, each as "name:type".
void writeShell(std::ostream& out, bool fish) {
  const char* const quote = "'";
  const auto function = [&](const char* name) {
    out << (fish ? "function " : "") << name
        << (fish ? "\n  switch \"$argv\"\n" : "() {\n  case \"$*\" in\n");
  };
  const auto entry = [&](const std::string& key, const std::string& words) {
    out << (fish ? "    case " : "    ") << quote << key << quote
        << (fish ? "\n      printf '%s\\n' " : ") printf '%s\\n' ") << words
        << (fish ? "\n" : " ;;\n");
  };
  const auto end = [&] { out << (fish ? "  end\nend\n" : "  esac\n}\n"); };

  const std::vector<Form> forms = readForms();
  function("__orskapp_words");
  std::string commands;
  for (const std::string_view command : validCommands) commands += " " + std::string(command);
  entry("", commands.substr(1));
  for (const std::string_view command : validCommands) {
    std::string arguments;
    for (const Form& form : forms) {
      if (form.command == command && !form.argument.empty()) arguments += " " + form.argument;
    }
    if (!arguments.empty()) entry(std::string(command), arguments.substr(1));
  }
  end();
  function("__orskapp_options");
  for (const Form& form : forms) {
    std::string options;
    for (const Option& option : form.options)
      options += " " + option.name + ":" + nameOf(option.type);
    const std::string key = form.command + (form.argument.empty() ? "" : " " + form.argument);
    if (!options.empty()) entry(key, options.substr(1));
  }
  end();
  function("__orskapp_flags");
  out << (fish ? "    case '*'\n      printf '%s\\n' " : "    *) printf '%s\\n' ") << flagsLine()
      << (fish ? "\n" : " ;;\n");
  end();
}

void writeManual(std::ostream& out) {
  for (const Form& form : readForms()) {
    out << ".It Cm " << form.command;
    if (!form.argument.empty()) out << " Cm " << form.argument;
    out << '\n';
    for (const Option& option : form.options) {
      out << ".Fl -" << option.name << " Ar " << nameOf(option.type) << '\n';
    }
  }
}

void writeMarkdown(std::ostream& out) {
  out << "| command | argument | options, each followed by its value |\n|---|---|---|\n";
  for (const Form& form : readForms()) {
    out << "| `" << form.command << "` | "
        << (form.argument.empty() ? "" : '`' + form.argument + '`') << " |";
    for (const Option& option : form.options)
      out << " `--" << option.name << "` " << nameOf(option.type);
    out << " |\n";
  }
}

void writeGrammar(std::ostream& out, const std::string& form) {
  if (form == "manual") {
    writeManual(out);
  } else if (form == "markdown") {
    writeMarkdown(out);
  } else {
    writeShell(out, form == "fish");
  }
}

void writeMessages(std::ostream& out) {
  for (const char* message : {console_message::noCommand, console_message::invalidCommand,
                              console_message::missingArgument, console_message::invalidArgument,
                              console_message::missingOption, console_message::tooManyOptions}) {
    // In a manual page a text starts no line with a dot or an apostrophe; no message does.
    out << ".It \"ERROR: ";
    for (const char byte : std::string(message))
      out << (byte == '"' ? "\\(dq" : std::string(1, byte));
    out << "\"\n";
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: grammar_writer FORM TEMPLATE OUTPUT\n";
    return 1;
  }
  std::ifstream in(argv[2]);
  std::ofstream out(argv[3]);
  for (std::string line; std::getline(in, line);) {
    if (line == "@GRAMMAR@") {
      writeGrammar(out, argv[1]);
    } else if (line == "@MESSAGES@") {
      writeMessages(out);
    } else {
      out << line << '\n';
    }
  }
  out.flush();
  if (!in.eof() || !out) {
    std::cerr << "grammar_writer: cannot read " << argv[2] << " or write " << argv[3] << '\n';
    return 1;
  }
  return 0;
}
