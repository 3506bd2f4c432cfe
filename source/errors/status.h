#pragma once

/// The status record of the client library's C interface, shared with it byte for byte.
///
/// Contract between the program, which owns the record, and the library, which reports in it:
/// 1. The program initialises the record with code 0, no text and its own `resize` callback. The
///    record exists during the whole call. The library allocates the text with the record's
///    `resize`.
/// 2. Code 0 is success, above 0 a warning, below 0 an error. The severity only rises: the first
///    error and its text stay.
/// 3. `json` is null or a buffer of `capacity` bytes, see json_text_buffer.h.
/// 4. The program releases the text with the record's `resize` and size 0. The library may have
///    replaced the callback.
///
/// No operation throws or prints. On failure the result is false or null, and the text is valid.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "errors/json_text_buffer.h"

extern "C" {

struct zuerr_Status;

/// Releases or enlarges a record's text buffer.
/// - New size 0: releases the buffer, sets `capacity` to 0 and `json` to null, returns true.
/// - New size up to `capacity`: does nothing and returns true.
/// - Otherwise: provides a buffer of at least the new size with the same text ("{}" if there was
///   none), releases the old buffer and returns true. On failure the record does not change, and
///   the result is false.
using zuerr_ResizeFn = bool (*)(zuerr_Status* status, std::uint32_t newSize);

/// Plain data, like the C library's structure. See `zuerr_initialStatus`.
struct zuerr_Status {
  std::int32_t code;
  /// Size of the text buffer in bytes; 0 if there is none.
  std::uint32_t capacity;
  zuerr_ResizeFn resize;
  /// The text buffer, or null.
  char* json;
};

static_assert(sizeof(zuerr_Status) == 24 && offsetof(zuerr_Status, code) == 0 &&
                  offsetof(zuerr_Status, capacity) == 4 && offsetof(zuerr_Status, resize) == 8 &&
                  offsetof(zuerr_Status, json) == 16,
              "The client library has this layout: do not change the members.");

/// A place that reports an error. The texts exist as long as the program.
struct zuerr_Site {
  const char* file;
  int line;
  /// Null: none.
  const char* component;
  const char* errorConstant;
};

/// The program's `zuerr_ResizeFn`. Allocates with `malloc`: at least 512 bytes, always a power of
/// two. Returns false for sizes from 2^31 on.
bool zuerr_defaultResize(zuerr_Status* status, std::uint32_t newSize) noexcept;

/// Sets `code` if it is more severe than the record's, and then resets a text to "{}". Returns
/// whether the code was set.
bool zuerr_setCode(zuerr_Status* status, std::int32_t code) noexcept;

/// Does the same as `zuerr_setCode` and writes the site into the text. Sets `*textOk`, which may be
/// null, to false if the code was set and the text is not complete, else to true. The code stays
/// set in any case.
bool zuerr_setCodeAt(zuerr_Status* status, std::int32_t code, const zuerr_Site* site,
                     bool* textOk) noexcept;

/// Takes the source's code if it is more severe, and then the text: the buffer itself if both
/// records have the same `resize` callback, else a copy. Returns whether the code was taken.
/// `*textOk` is as for `zuerr_setCodeAt`.
bool zuerr_merge(zuerr_Status* destination, zuerr_Status* source, bool* textOk) noexcept;

/// Replaces the text (null: "{}"), at most 2^31 - 3 characters long.
/// Returns what `jsonbuf_init` returns, or null.
char* zuerr_setJson(zuerr_Status* status, const char* text) noexcept;

/// Ensures a buffer for a text of length `room`, at most 2^31 - 3. Returns the position of the
/// text's closing bracket, or null.
char* zuerr_reserve(zuerr_Status* status, std::uint32_t room) noexcept;

/// Returns the position of the text's closing bracket, or null.
inline char* zuerr_findClosingBrace(zuerr_Status* status) noexcept {
  // Room for "{}", which every text has.
  return zuerr_reserve(status, 2);
}

/// Requests 2 * capacity - 2 bytes from the callback. Fails if the capacity is below 3 or above
/// 2^30. Returns the new address of `position`, or null.
char* zuerr_grow(zuerr_Status* status, char* position) noexcept;

/// Inserts a string member and grows the buffer if necessary. Returns the position after the
/// member, or null.
char* zuerr_addString(zuerr_Status* status, char* position, const char* key,
                      const char* value) noexcept;

/// Inserts "file", "line" and, if the site has one, "component". Returns the position after the
/// last member, or null.
char* zuerr_addSite(zuerr_Status* status, char* position, const zuerr_Site* site) noexcept;

}  // extern "C"

/// A record without a report.
inline constexpr zuerr_Status zuerr_initialStatus{0, 0, zuerr_defaultResize, nullptr};

/// Returns a grower for the buffer of `status`. It contains the pointer and must not outlive it.
JsonGrower zuerr_growerOf(zuerr_Status* status) noexcept;

/// Returns the text, or "" if there is none. Without a NUL the text ends at the capacity, with a
/// capacity of 0 at its NUL. Valid until the record changes.
std::string_view zuerr_text(const zuerr_Status& status) noexcept;

/// Releases the text with the record's callback. Does nothing without a callback.
void zuerr_release(zuerr_Status* status) noexcept;
