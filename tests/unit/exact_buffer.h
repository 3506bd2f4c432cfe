#pragma once

#include <cstring>
#include <memory>
#include <string>

#include "errors/json_text_buffer.h"

/// A heap block of exact size, so that a sanitizer detects any access beyond it.
class ExactBuffer {
 public:
  /// Initialises a buffer with `text` and `room` free bytes.
  ExactBuffer(const std::string& text, std::size_t room)
      : size_(text.size() + room + 2), bytes_(new char[size_]) {
    std::memset(bytes_.get(), '#', size_);
    jsonbuf_init(bytes_.get(), size_, text.c_str());
  }

  char* at(std::size_t offset) const { return bytes_.get() + offset; }
  std::string text() const { return bytes_.get(); }
  /// Returns whether the bytes after the text are valid.
  bool isLaidOut() const { return layoutOf(bytes_.get(), size_) == "text, zeros, J"; }

  static std::string layoutOf(const char* bytes, std::size_t size) {
    const std::size_t length = strnlen(bytes, size);
    if (length + 2 > size) return "no room for the end mark";
    for (std::size_t index = length; index + 1 < size; ++index) {
      if (bytes[index] != 0) return "byte " + std::to_string(index) + " is not zero";
    }
    return bytes[size - 1] == 'J' ? "text, zeros, J" : "no end mark";
  }

 private:
  std::size_t size_;
  std::unique_ptr<char[]> bytes_;
};
