#pragma once

/// A JSON text kept in a caller-supplied buffer and edited in place.
///
/// Layout of a buffer of `size` bytes, shared byte for byte with the service library:
/// 1. a JSON text, normally one object, from byte 0 on, ended by a NUL; an empty description is
/// "{}";
/// 2. zero bytes from there up to the second-to-last byte;
/// 3. the end mark 'J' in the last byte.
///
/// The free room is what lies between the text's NUL and the end mark, so no size travels with a
/// position: a position is a `char*` into a buffer laid out as above. A text of L characters needs
/// a buffer of at least L + 2 bytes.
///
/// Contract of every routine:
/// 1. the caller owns the buffer; nothing is allocated for it, moved or released here;
/// 2. failure is a null result, and a failed insert has changed nothing; a null position fails;
/// 3. keys and values are NUL-terminated bytes and are escaped when written; no blank is written;
/// 4. an insert returns a position at the character that followed the insertion point, so inserts
///    at the returned positions append members one after another.

#include <cstddef>
#include <string>

extern "C" {

/// A caller's way to enlarge the buffer that a position points into.
struct JsonGrower {
  /// Returns the same position in a larger buffer, or null. A null function never grows.
  char* (*function)(char* position, void* context);
  /// Handed to `function` as it is; not owned.
  void* context;
};

/// Length in bytes of `text` after escaping.
std::size_t jsonbuf_escapedLength(const char* text) noexcept;

/// Writes `text` escaped to `destination`, which has room for `jsonbuf_escapedLength(text)` bytes.
/// Writes no NUL. Returns the position after the last byte written.
///
/// Escaped are: the two-character escapes of RFC 8259 but the slash's, and as \u00xx in lower case
/// the other bytes below 0x20 and 0x7F. Every other byte is copied.
char* jsonbuf_escape(char* destination, const char* text) noexcept;

/// Lays `text` (null: the text that `buffer` already holds) out in a buffer of `size` bytes.
/// Returns the position of the text's last character (for an empty text, of its NUL), or null if
/// the text and its NUL leave no byte for the end mark.
char* jsonbuf_init(char* buffer, std::size_t size, const char* text) noexcept;

/// Returns the position of the closing bracket of the object or array that `buffer` starts with,
/// or null if it does not start with one or it is not well formed. What follows it is not looked
/// at. Numbers are taken more loosely than in RFC 8259 (runs of digits may be empty, leading zeros
/// stand), and bytes from 0x80 on are not checked. Nesting costs one byte of heap a level; null if
/// that cannot be had.
char* jsonbuf_findEnd(char* buffer) noexcept;

/// Opens room for `n` characters and for the comma that must part them from their neighbour.
/// `position` is at a closing bracket (the room opens before it), at the text's NUL (before it, and
/// never with a comma) or at an opening bracket (after it, as the container's first member). A
/// closing bracket is a position only if something but blanks stands before it in the buffer; the
/// text " ]", which is no JSON, has none.
/// Returns where the caller writes exactly `n` characters, or null if there is no room.
char* jsonbuf_makeRoom(char* position, std::size_t n) noexcept;

/// Inserts the string member `key` (null: a bare string).
/// Returns the position just after the value's closing quote.
char* jsonbuf_insertString(char* position, const char* key, const char* value) noexcept;

/// Inserts the number member `key` (null: a bare number).
/// Returns the position just after the digits.
char* jsonbuf_insertInt(char* position, const char* key, int value) noexcept;

/// Inserts an empty object as member `key` (null: a bare object).
/// Returns the position just after its "{}".
char* jsonbuf_insertObject(char* position, const char* key) noexcept;

/// Steps from an object's closing brace out into the enclosing container; null stays null.
char* jsonbuf_leaveObject(char* position) noexcept;

/// As `jsonbuf_insertString`, growing the buffer while it has no room.
char* jsonbuf_insertStringGrowing(char* position, const char* key, const char* value,
                                  const JsonGrower* grower) noexcept;

/// As `jsonbuf_insertObject`, growing the buffer while it has no room. Returns the position of the
/// new object's closing brace, where its members are inserted.
char* jsonbuf_insertObjectGrowing(char* position, const char* key,
                                  const JsonGrower* grower) noexcept;

}  // extern "C"

/// The same for a value held as a `std::string`, up to its first NUL.
char* jsonbuf_insertStringGrowing(char* position, const char* key, const std::string& value,
                                  const JsonGrower* grower) noexcept;
