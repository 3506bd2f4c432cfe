#include "commands/confirmation.h"

#include "output/standard_streams.h"

void printSuccess(const FlagMap& flags, std::initializer_list<std::string_view> parts) {
  if (isQuiet(flags)) return;
  printText("SUCCESS: ");
  printLine(parts);
}
