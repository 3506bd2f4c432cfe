#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

/// A buffer of `capacity` zero bytes that a library call puts a text into.
template <std::size_t capacity>
class TextBuffer {
 public:
  char* data() { return bytes_; }
  std::size_t size() const { return capacity; }

  /// The text up to its NUL, or all bytes if the library left none.
  std::string_view text() const { return {bytes_, strnlen(bytes_, capacity)}; }

 private:
  char bytes_[capacity] = {};
};
