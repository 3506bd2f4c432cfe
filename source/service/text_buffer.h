#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

/// A buffer of `capacity` zero bytes for a text of the client library.
template <std::size_t capacity>
class TextBuffer {
 public:
  char* data() { return bytes_; }
  std::size_t size() const { return capacity; }

  /// Returns the text up to its NUL, or all bytes if there is none.
  std::string_view text() const { return {bytes_, strnlen(bytes_, capacity)}; }

 private:
  char bytes_[capacity] = {};
};
