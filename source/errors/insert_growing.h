#pragma once

#include "errors/json_text_buffer.h"

/// Calls `insert(position)` until it succeeds, each time at the same position in a larger buffer.
/// Returns the result of the insert, or null if `position` is null or the buffer does not grow. The
/// grower may be null.
template <typename Insert>
char* insertGrowing(char* position, const JsonGrower* grower, Insert insert) noexcept {
  while (position != nullptr) {
    if (char* const inserted = insert(position)) return inserted;
    if (grower == nullptr || grower->function == nullptr) return nullptr;
    position = grower->function(position, grower->context);
  }
  return nullptr;
}
