#pragma once

/// A JSON text in a buffer of the caller, edited in place.
///
/// Layout of a buffer of `size` bytes, shared byte for byte with the service library:
/// 1. a JSON text, normally one object, from byte 0 on, then a NUL; the empty text is "{}";
/// 2. zero bytes from there up to the second-to-last byte;
/// 3. the end mark 'J' in the last byte.
///
/// A position is a `char*` into such a buffer. It needs no size: the free bytes end at the end
/// mark. A text of L characters needs a buffer of at least L + 2 bytes.
///
/// Contract of every routine:
/// 1. The caller owns the buffer. No routine allocates or releases it. Only the caller's grower
///    moves it, also in an insert that fails later.
/// 2. On failure the result is null and the text has not changed. A null position fails.
/// 3. Keys and values are NUL-terminated and are escaped. No blanks are written.
/// 4. An insert returns the position after what it inserted, so that the next insert there appends.
///    After an insert at the opening bracket of "{ }" this is the blank.

#include <cstddef>
#include <string>

extern "C" {

/// A function of the caller that enlarges the buffer.
struct JsonGrower {
  /// Returns the same position in a larger buffer, or null. A null function never grows.
  char* (*function)(char* position, void* context);
  /// Passed to `function`; not owned.
  void* context;
};

/// Returns the length of the escaped `text` in bytes.
std::size_t jsonbuf_escapedLength(const char* text) noexcept;

/// Writes the escaped `text` to `destination`, which has room for `jsonbuf_escapedLength(text)`
/// bytes. Writes no NUL. Returns the position after the last byte.
///
/// Uses the two-character escapes of RFC 8259 except that of the slash, and `\u00xx` in lower case
/// for the other bytes below 0x20 and for 0x7F. Copies all other bytes.
char* jsonbuf_escape(char* destination, const char* text) noexcept;

/// Initialises a buffer of `size` bytes with `text` (null: the text in the buffer). Returns the
/// position of the text's last character, or of the NUL of an empty text. Returns null if the text,
/// its NUL and the end mark do not fit.
char* jsonbuf_init(char* buffer, std::size_t size, const char* text) noexcept;

/// Returns the position of the closing bracket of the object or array at the start of `buffer`.
/// Returns null if there is none, if it is not well formed, or if memory runs out: each level of
/// nesting needs one byte. Ignores what follows. Accepts more numbers than RFC 8259 (digits may be
/// missing, leading zeros are allowed) and all bytes from 0x80 on.
char* jsonbuf_findEnd(char* buffer) noexcept;

/// Makes room for `n` characters and, if necessary, a comma. Returns the position at which the
/// caller writes exactly `n` characters, or null if there is no room. `position` is one of:
/// - a closing bracket: the room is before it. A non-blank byte must precede it in the buffer.
/// - the text's NUL: the room is before it, without a comma.
/// - a comma: the room is before it, after a comma of its own.
/// - an opening bracket: the room is after it, for the first member.
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

/// Returns the position after an object's closing brace, or null for null.
char* jsonbuf_leaveObject(char* position) noexcept;

/// Does the same as `jsonbuf_insertString`, and grows the buffer if there is no room.
char* jsonbuf_insertStringGrowing(char* position, const char* key, const char* value,
                                  const JsonGrower* grower) noexcept;

/// Does the same as `jsonbuf_insertObject`, and grows the buffer if there is no room. Returns the
/// position of the new object's closing brace, where members are inserted.
char* jsonbuf_insertObjectGrowing(char* position, const char* key,
                                  const JsonGrower* grower) noexcept;

}  // extern "C"

/// Does the same for a `std::string`, up to its first NUL.
char* jsonbuf_insertStringGrowing(char* position, const char* key, const std::string& value,
                                  const JsonGrower* grower) noexcept;
