#include "errors/json_text_buffer.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <string_view>
#include <vector>

#include "errors/insert_growing.h"

namespace {

constexpr char endMark = 'J';

bool isWhitespace(char character) {
  return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

bool isHexDigit(char character) {
  return isDigit(character) || (character >= 'a' && character <= 'f') ||
         (character >= 'A' && character <= 'F');
}

bool isControl(char character) {
  return static_cast<unsigned char>(character) < 0x20;
}

bool isOpeningBracket(char character) {
  return character == '{' || character == '[';
}

bool isClosingBracket(char character) {
  return character == '}' || character == ']';
}

char closingBracketOf(char opening) {
  return opening == '{' ? '}' : ']';
}

char* skipWhitespace(char* position) {
  while (isWhitespace(*position)) ++position;
  return position;
}

char* skipDigits(char* position) {
  while (isDigit(*position)) ++position;
  return position;
}

/// Returns the letter of a two-character escape, or 0 if the byte has none.
char escapeLetter(char character) {
  switch (character) {
    case '\b':
      return 'b';
    case '\t':
      return 't';
    case '\n':
      return 'n';
    case '\f':
      return 'f';
    case '\r':
      return 'r';
    case '"':
    case '\\':
      return character;
    default:
      return 0;
  }
}

bool needsHexEscape(char character) {
  return isControl(character) || character == 0x7F;
}

/// Returns the length of `"key":`, or 0 without a key.
std::size_t keyLength(const char* key) {
  return key == nullptr ? 0 : jsonbuf_escapedLength(key) + 3;
}

char* writeQuoted(char* position, const char* text) {
  *position++ = '"';
  position = jsonbuf_escape(position, text);
  *position++ = '"';
  return position;
}

char* writeKey(char* position, const char* key) {
  if (key == nullptr) return position;
  position = writeQuoted(position, key);
  *position++ = ':';
  return position;
}

/// Inserts a member with the unescaped `length` bytes at `value`.
char* insertRaw(char* position, const char* key, const char* value, std::size_t length) {
  position = jsonbuf_makeRoom(position, keyLength(key) + length);
  if (position == nullptr) return nullptr;
  position = writeKey(position, key);
  std::memcpy(position, value, length);
  return position + length;
}

/// Returns whether the closing bracket at `position` closes an empty container.
bool closesEmptyContainer(const char* position) {
  const char* before = position - 1;
  while (isWhitespace(*before)) --before;
  return isOpeningBracket(*before) && closingBracketOf(*before) == *position;
}

bool needsCommaBefore(const char* position) {
  if (*position == '\0') return false;
  return !(isClosingBracket(*position) && closesEmptyContainer(position));
}

/// Counts the free bytes from `position` on, which follows the text's NUL, at most `enough`.
std::size_t countFreeBytes(const char* position, std::size_t enough) {
  std::size_t count = 0;
  while (count < enough && position[count] != endMark) ++count;
  return count;
}

// Each scan function takes the position of a token and returns the position after it, or null if
// the token is another one. No token contains a NUL, so no function reads after the text.

char* scanEscape(char* position) {
  ++position;
  if (*position == 'u') {
    for (int digit = 0; digit < 4; ++digit) {
      if (!isHexDigit(*++position)) return nullptr;
    }
    return position + 1;
  }
  constexpr std::string_view letters = "\"\\/bfnrt";
  return std::ranges::find(letters, *position) != letters.end() ? position + 1 : nullptr;
}

char* scanString(char* position) {
  if (*position != '"') return nullptr;
  ++position;
  while (position != nullptr && *position != '"') {
    if (isControl(*position)) return nullptr;
    position = *position == '\\' ? scanEscape(position) : position + 1;
  }
  return position == nullptr ? nullptr : position + 1;
}

char* scanNumber(char* position) {
  if (!isDigit(*position) && *position != '-') return nullptr;
  position = skipDigits(position + 1);
  if (*position == '.') position = skipDigits(position + 1);
  if (*position == 'e' || *position == 'E') {
    ++position;
    if (!isDigit(*position) && *position != '+' && *position != '-') return nullptr;
    position = skipDigits(position + 1);
  }
  return position;
}

char* scanWord(char* position, std::string_view word) {
  const std::string_view found(position, strnlen(position, word.size()));
  return found == word ? position + word.size() : nullptr;
}

char* scanScalar(char* position) {
  switch (*position) {
    case '"':
      return scanString(position);
    case 't':
      return scanWord(position, "true");
    case 'f':
      return scanWord(position, "false");
    case 'n':
      return scanWord(position, "null");
    default:
      return scanNumber(position);
  }
}

/// Skips the key and the colon in an object, and blanks. Returns the position of the value, or
/// null.
char* scanToValue(char* position, char closingBracket) {
  position = skipWhitespace(position);
  if (closingBracket == ']') return position;
  position = scanString(position);
  if (position == nullptr) return nullptr;
  position = skipWhitespace(position);
  return *position == ':' ? skipWhitespace(position + 1) : nullptr;
}

/// Does the same as `jsonbuf_findEnd`, but throws if memory runs out.
char* findEnd(char* buffer) {
  if (!isOpeningBracket(*buffer)) return nullptr;
  // The expected closing brackets, innermost last. Recursion would let a text exhaust the stack.
  std::vector<char> pending;
  for (char* position = buffer; position != nullptr;) {
    if (isOpeningBracket(*position)) {
      pending.push_back(closingBracketOf(*position));
      position = skipWhitespace(position + 1);
      if (*position != pending.back()) {
        position = scanToValue(position, pending.back());
        continue;
      }
    } else {
      position = scanScalar(position);
      if (position == nullptr) return nullptr;
      position = skipWhitespace(position);
    }
    // A value or an empty container is complete. Closing brackets or a comma follow.
    while (*position == pending.back()) {
      pending.pop_back();
      if (pending.empty()) return position;
      position = skipWhitespace(position + 1);
    }
    position = *position == ',' ? scanToValue(position + 1, pending.back()) : nullptr;
  }
  return nullptr;
}

}  // namespace

std::size_t jsonbuf_escapedLength(const char* text) noexcept {
  std::size_t length = 0;
  for (; *text != '\0'; ++text) {
    if (escapeLetter(*text) != 0) {
      length += 2;
    } else {
      length += needsHexEscape(*text) ? 6 : 1;
    }
  }
  return length;
}

char* jsonbuf_escape(char* destination, const char* text) noexcept {
  constexpr char hexDigits[] = "0123456789abcdef";
  for (; *text != '\0'; ++text) {
    if (const char letter = escapeLetter(*text)) {
      *destination++ = '\\';
      *destination++ = letter;
    } else if (needsHexEscape(*text)) {
      const auto byte = static_cast<unsigned char>(*text);
      std::memcpy(destination, "\\u00", 4);
      destination[4] = hexDigits[byte >> 4];
      destination[5] = hexDigits[byte & 0xF];
      destination += 6;
    } else {
      *destination++ = *text;
    }
  }
  return destination;
}

char* jsonbuf_init(char* buffer, std::size_t size, const char* text) noexcept {
  const std::size_t length = text == nullptr ? strnlen(buffer, size) : std::strlen(text);
  if (size <= length + 1) return nullptr;
  if (text != nullptr) std::memmove(buffer, text, length);
  std::memset(buffer + length, 0, size - 1 - length);
  buffer[size - 1] = endMark;
  return length == 0 ? buffer : buffer + length - 1;
}

char* jsonbuf_findEnd(char* buffer) noexcept {
  try {
    return findEnd(buffer);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

char* jsonbuf_makeRoom(char* position, std::size_t n) noexcept {
  if (position == nullptr) return nullptr;
  const bool asFirstMember = isOpeningBracket(*position);
  char* const gap = asFirstMember ? position + 1 : position;
  const bool comma = asFirstMember ? *skipWhitespace(gap) != closingBracketOf(*position)
                                   : needsCommaBefore(position);
  const std::size_t requested = n + (comma ? 1 : 0);
  if (requested < n) return nullptr;
  const std::size_t tail = std::strlen(gap) + 1;
  if (countFreeBytes(gap + tail, requested) < requested) return nullptr;

  std::memmove(gap + requested, gap, tail);
  if (!comma) return gap;
  if (asFirstMember) {
    gap[n] = ',';
    return gap;
  }
  *gap = ',';
  return gap + 1;
}

char* jsonbuf_insertString(char* position, const char* key, const char* value) noexcept {
  position = jsonbuf_makeRoom(position, keyLength(key) + jsonbuf_escapedLength(value) + 2);
  if (position == nullptr) return nullptr;
  return writeQuoted(writeKey(position, key), value);
}

char* jsonbuf_insertInt(char* position, const char* key, int value) noexcept {
  char digits[64];
  const int length = std::snprintf(digits, sizeof digits, "%i", value);
  return insertRaw(position, key, digits, static_cast<std::size_t>(length));
}

char* jsonbuf_insertObject(char* position, const char* key) noexcept {
  return insertRaw(position, key, "{}", 2);
}

char* jsonbuf_leaveObject(char* position) noexcept {
  return position == nullptr ? nullptr : position + 1;
}

char* jsonbuf_insertStringGrowing(char* position, const char* key, const char* value,
                                  const JsonGrower* grower) noexcept {
  return insertGrowing(position, grower,
                       [=](char* at) { return jsonbuf_insertString(at, key, value); });
}

char* jsonbuf_insertStringGrowing(char* position, const char* key, const std::string& value,
                                  const JsonGrower* grower) noexcept {
  return jsonbuf_insertStringGrowing(position, key, value.c_str(), grower);
}

char* jsonbuf_insertObjectGrowing(char* position, const char* key,
                                  const JsonGrower* grower) noexcept {
  char* const after =
      insertGrowing(position, grower, [=](char* at) { return jsonbuf_insertObject(at, key); });
  return after == nullptr ? nullptr : after - 1;
}
