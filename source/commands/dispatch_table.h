#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "diagnostics/trace.h"
#include "errors/console_exceptions.h"
#include "grammar/grammar_tables.h"
#include "grammar/parsed_words.h"

/// A row in a command's table of actions.
struct Action {
  std::string_view word;
  void (*run)(const OptionMap& options, const FlagMap& flags);
};

/// Returns whether `table` has a row for each argument of `command` in the grammar's tables.
template <typename Row, std::size_t size>
constexpr bool hasEachArgumentOf(const Row (&table)[size], std::string_view command) {
  return std::ranges::all_of(commandArguments, [&](const CommandArgument& argument) {
    return argument.command != command ||
           std::ranges::count(table, argument.argument, &Row::word) == 1;
  });
}

/// Returns whether the grammar's tables have an argument of `command` for each row of `table`.
template <typename Row, std::size_t size>
constexpr bool hasOnlyArgumentsOf(const Row (&table)[size], std::string_view command) {
  return std::ranges::all_of(table, [&](const Row& row) {
    return std::ranges::any_of(commandArguments, [&](const CommandArgument& argument) {
      return argument.command == command && argument.argument == row.word;
    });
  });
}

/// Returns the row of `table` for `word`. A word of another command passes the grammar's check. For
/// it, asserts at `place` and throws `InvalidArgException`.
template <typename Row, std::size_t size>
const Row& requireRow(const Row (&table)[size], std::string_view word,
                      const orskdbg_AssertPlace& place) {
  for (const Row& row : table) {
    if (row.word == word) return row;
  }
  ORSK_ASSERT(false, place);
  throw InvalidArgException();
}
