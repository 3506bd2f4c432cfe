#pragma once

/// The error-status record of the service library's C interface, shared with it byte for byte.
///
/// Contract between the record's owner and whoever reports in it:
/// 1. The owner makes the record with code 0, no text and its own `resize` callback, and keeps it
///    alive for the call. The reporter gets its text buffer through the record's `resize`.
/// 2. Code 0 is success, above 0 a warning, below 0 an error. It only rises in severity: the first
///    error, and its text, stay.
/// 3. `json` is null or a text buffer of `capacity` bytes laid out as json_text_buffer.h says.
/// 4. The owner releases the text through the record's `resize` with size 0, whichever callback
///    the record holds by then.
///
/// No operation throws or prints; failure is a false or null result that leaves the text valid.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "errors/json_text_buffer.h"

extern "C" {

struct zuerr_Status;

/// Releases or enlarges a record's text buffer.
/// - New size 0: releases the buffer; `capacity` becomes 0 and `json` null; returns true.
/// - New size up to `capacity`: nothing to do; returns true.
/// - Otherwise: provides a buffer of at least the new size that holds the same text ("{}" if there
///   was none) and releases the old one; returns false, with the record unchanged, if it cannot.
using zuerr_ResizeFn = bool (*)(zuerr_Status* status, std::uint32_t newSize);

/// Plain data, so that it is the C library's own structure; see `zuerr_initialStatus`.
struct zuerr_Status {
  std::int32_t code;
  /// Size of the text buffer in bytes; 0 when there is none.
  std::uint32_t capacity;
  zuerr_ResizeFn resize;
  /// The text buffer, or null.
  char* json;
};

static_assert(sizeof(zuerr_Status) == 24 && offsetof(zuerr_Status, code) == 0 &&
                  offsetof(zuerr_Status, capacity) == 4 && offsetof(zuerr_Status, resize) == 8 &&
                  offsetof(zuerr_Status, json) == 16,
              "The client library has this layout: do not change the members.");

/// One place where an error is raised. The texts live as long as the program.
struct zuerr_Site {
  const char* file;
  int line;
  /// Null when the site names none.
  const char* component;
  const char* errorConstant;
};

/// The program's `zuerr_ResizeFn`: buffers from `malloc` of at least 512 bytes, always a power of
/// two. Refuses sizes with the top bit set (2^31 and above).
bool zuerr_defaultResize(zuerr_Status* status, std::uint32_t newSize) noexcept;

/// Takes `code` if it is more severe than the record's; a text of the milder outcome becomes "{}".
/// Returns whether the code was taken.
bool zuerr_setCode(zuerr_Status* status, std::int32_t code) noexcept;

/// As `zuerr_setCode`, and describes the error by its site. `*textOk` (may be null) tells whether
/// the whole description could be written; the code stays taken if not.
bool zuerr_setCodeAt(zuerr_Status* status, std::int32_t code, const zuerr_Site* site,
                     bool* textOk) noexcept;

/// Takes the source's code, if it is more severe, and with it the source's text: its very buffer
/// when both records share one `resize` callback (the source is left without), else a copy.
/// Returns whether the code was taken; `*textOk` as in `zuerr_setCodeAt`.
bool zuerr_merge(zuerr_Status* destination, zuerr_Status* source, bool* textOk) noexcept;

/// Replaces the text (null: "{}"), at most 2^31 - 3 characters long.
/// Returns what `jsonbuf_init` returns, or null.
char* zuerr_setJson(zuerr_Status* status, const char* text) noexcept;

/// Makes the buffer large enough for a text of `room` characters, at most 2^31 - 3.
/// Returns the position of the text's closing bracket, or null.
char* zuerr_reserve(zuerr_Status* status, std::uint32_t room) noexcept;

/// Doubles the buffer. Returns `position`, a position in the old buffer, in the new one, or null.
char* zuerr_grow(zuerr_Status* status, char* position) noexcept;

/// Inserts a string member, growing the buffer as needed.
/// Returns the position just after the member, or null.
char* zuerr_addString(zuerr_Status* status, char* position, const char* key,
                      const char* value) noexcept;

/// Inserts "file", "line" and, if the site names one, "component".
/// Returns the position after the last member, or null.
char* zuerr_addSite(zuerr_Status* status, char* position, const zuerr_Site* site) noexcept;

}  // extern "C"

/// The state of a record that nothing has been reported in.
inline constexpr zuerr_Status zuerr_initialStatus{0, 0, zuerr_defaultResize, nullptr};

/// The grower that enlarges `status`'s buffer; it holds the pointer and must not outlive it.
JsonGrower zuerr_growerOf(zuerr_Status* status) noexcept;

/// Returns the text, or "" if there is none. A library may omit the text's NUL, then this ends at
/// the capacity, or the capacity, then it ends at the NUL. Valid until the record changes.
std::string_view zuerr_text(const zuerr_Status& status) noexcept;

/// Releases the text, if there is one, through the record's own callback.
void zuerr_release(zuerr_Status* status) noexcept;
