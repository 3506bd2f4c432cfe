#include "grammar/output.h"

#include <cstdio>

#include "grammar/grammar_tables.h"

namespace {

void print(std::string_view part) {
  std::fwrite(part.data(), 1, part.size(), stdout);
}

void printRest(std::initializer_list<std::string_view> parts) {
  for (const std::string_view part : parts) print(part);
  print("\n");
  std::fflush(stdout);
}

}  // namespace

void printLine(std::initializer_list<std::string_view> parts) {
  printRest(parts);
}

void printSuccess(const FlagMap& flags, std::initializer_list<std::string_view> parts) {
  if (flags.at(std::string(quietFlag))) return;
  print("SUCCESS: ");
  printRest(parts);
}
