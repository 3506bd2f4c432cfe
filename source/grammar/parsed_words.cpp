#include "grammar/parsed_words.h"

#include "grammar/grammar_tables.h"

bool isQuiet(const FlagMap& flags) {
  return flags.at(std::string(quietFlag));
}

bool isTimed(const FlagMap& flags) {
  return flags.at(std::string(timingFlag));
}
