#pragma once

#include <cstddef>
#include <string_view>

#include "diagnostics/trace.h"
#include "errors/console_exceptions.h"
#include "grammar/parsed_words.h"

/// A row of a command's table of actions.
struct Action {
  std::string_view word;
  void (*run)(const OptionMap& options, const FlagMap& flags);
};

/// Returns the row of `table` for `word`. If there is none, the word passed the grammar's check but
/// not this table: asserts at `place`, and throws `InvalidArgException` to tell the user.
template <typename Row, std::size_t size>
const Row& rowOf(const Row (&table)[size], std::string_view word,
                 const orskdbg_AssertPlace& place) {
  for (const Row& row : table) {
    if (row.word == word) return row;
  }
  ORSK_ASSERT(false, place);
  throw InvalidArgException(console_message::invalidArgument);
}
