#pragma once

#include "errors/json_text_buffer.h"

/// Tries `insert(position)` until it succeeds, moving on to the same position in a larger buffer
/// each time it finds no room. Returns what the insert returned, or null when `position` is null or
/// the grower (which may be null) does not grow.
template <typename Insert>
char* insertGrowing(char* position, const JsonGrower* grower, Insert insert) noexcept {
  while (position != nullptr) {
    if (char* const inserted = insert(position)) return inserted;
    if (grower == nullptr || grower->function == nullptr) return nullptr;
    position = grower->function(position, grower->context);
  }
  return nullptr;
}
