#include "grammar/output.h"

#include <cstdio>

#include "grammar/grammar_tables.h"

void printText(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
}

void printLine(std::initializer_list<std::string_view> parts) {
  for (const std::string_view part : parts) printText(part);
  printText("\n");
  std::fflush(stdout);
}

bool isQuiet(const FlagMap& flags) {
  return flags.at(std::string(quietFlag));
}

void printSuccess(const FlagMap& flags, std::initializer_list<std::string_view> parts) {
  if (isQuiet(flags)) return;
  printText("SUCCESS: ");
  printLine(parts);
}
