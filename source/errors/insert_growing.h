#pragma once

/// Tries `insert(position)` until it succeeds, moving on to `grow(position)`, the same position in
/// a larger buffer, each time it finds no room. Returns what the insert returned, or null when
/// `position` is null or growth failed.
template <typename Insert, typename Grow>
char* insertGrowing(char* position, Insert insert, Grow grow) noexcept {
  while (position != nullptr) {
    if (char* const inserted = insert(position)) return inserted;
    position = grow(position);
  }
  return nullptr;
}
