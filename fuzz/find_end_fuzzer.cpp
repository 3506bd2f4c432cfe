// jsonbuf_findEnd on any bytes, in a block of exactly their size, compared with another parser. The
// scanner accepts more:
// - numbers with missing digits or leading zeros ("-", "1.", "1e+", "007");
// - any bytes from 0x80 on, and escapes of lone surrogates (\ud800);
// - any text after the end.
// A text that the other parser accepts must be accepted. An accepted text must be valid for the
// other parser once its numbers are 0, its high bytes "x" and its \u escapes \u0000.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "errors/json_text_buffer.h"

namespace {

bool continuesNumber(char byte) {
  return std::strchr("0123456789+-.eE", byte) != nullptr && byte != '\0';
}

/// Returns `text` without what only the other parser rejects.
std::string strict(const std::string& text) {
  std::string result;
  bool inString = false;
  for (std::size_t index = 0; index < text.size(); ++index) {
    const char byte = text[index];
    if (inString && byte == '\\') {
      const bool unicode = text[index + 1] == 'u';
      result += unicode ? "\\u0000" : text.substr(index, 2);
      index += unicode ? 5 : 1;
    } else if (inString) {
      result += static_cast<unsigned char>(byte) >= 0x80 ? 'x' : byte;
      inString = byte != '"';
    } else if (byte == '-' || (byte >= '0' && byte <= '9')) {
      result += '0';
      while (index + 1 < text.size() && continuesNumber(text[index + 1])) ++index;
    } else {
      result += byte;
      inString = byte == '"';
    }
  }
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::unique_ptr<char[]> block(new char[size + 1]);
  std::copy_n(data, size, block.get());
  block[size] = '\0';
  const std::string text = block.get();

  const char* const end = jsonbuf_findEnd(block.get());
  const bool container = text.starts_with('{') || text.starts_with('[');
  const bool accepted = container && nlohmann::json::accept(text);
  if (accepted) {
    // Only white space may follow the end.
    if (end == nullptr || std::strspn(end + 1, " \t\r\n") != std::strlen(end + 1)) abort();
  }
  if (end != nullptr) {
    const std::string taken(text, 0, static_cast<std::size_t>(end + 1 - block.get()));
    if (!container || !nlohmann::json::accept(strict(taken))) abort();
  }
  if (text != block.get()) abort();
  return 0;
}
