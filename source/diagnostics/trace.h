#pragma once

/// Trace lines on standard error, and the program's assertion.
///
/// All output uses the hooks below, which are read without locking: set them before the first line.
/// A line has at most 511 characters and is truncated.

#include <cstdarg>
#include <cstddef>
#include <cstdint>

/// The place of a trace line, and its end. The texts must outlive it.
struct orskdbg_VarLine {
  const char* file;
  std::int32_t line;
  const char* terminator;

  /// Writes one line: the prefix, the message formatted as by printf(3), the terminator.
  __attribute__((format(printf, 2, 3))) void operator()(const char* format, ...) const;
};

/// A trace context for lines that are stored. The program has no object of it.
class orskdbg_VarLineToBuffer : public orskdbg_VarLine {};
static_assert(sizeof(orskdbg_VarLine) == sizeof(orskdbg_VarLineToBuffer),
              "Other code is compiled against this layout.");

/// Writes a part of a line's prefix and a NUL at `position`, where `room` bytes are left. Returns
/// the position of the NUL.
using orskdbg_PrefixWriter = char* (*)(char* position, std::size_t room,
                                       const orskdbg_VarLine* context);

/// Called after the lines of a failed assertion. If it returns, the program continues after the
/// assertion.
extern void (*orskdbg_assertHandler)(const orskdbg_VarLine* context, const char* expression);
/// The writers of a line's prefix, then a null pointer.
extern const orskdbg_PrefixWriter* orskdbg_prefixWriters;
/// Widths of the prefix's columns in characters.
extern int orskdbg_lineWidth;
extern int orskdbg_fileWidth;
extern int orskdbg_componentWidth;
/// Writes a line.
extern void (*orskdbg_write)(const char* line);
/// Formats as vsnprintf(3).
extern int (*orskdbg_format)(char* buffer, std::size_t size, const char* format,
                             std::va_list arguments);

/// Writes one line without a prefix, formatted as by printf(3).
__attribute__((format(printf, 1, 2))) void orskdbg_printf(const char* format, ...);

/// The reported place of an assertion.
struct orskdbg_AssertPlace {
  const char* file;
  std::int32_t line;
  /// A format as of printf(3), without arguments.
  const char* message;
};

/// Returns the place to report for a message: where the assertion stands.
constexpr orskdbg_AssertPlace orskdbg_placeOf(const char* message, const char* file,
                                              std::int32_t line) {
  return {file, line, message};
}

/// Returns a fixed place as it is.
constexpr orskdbg_AssertPlace orskdbg_placeOf(const orskdbg_AssertPlace& place, const char*,
                                              std::int32_t) {
  return place;
}

/// Reports a failed assertion in three lines and calls the handler.
void orskdbg_assertFailed(const orskdbg_AssertPlace& place, const char* expression);

/// Reports a failed assertion if `condition` is false. `message` is a format as of printf(3),
/// without arguments, or a fixed `orskdbg_AssertPlace`, which is reported instead of the file and
/// line of the assertion.
#define ORSK_ASSERT(condition, message)                                               \
  ((condition) ? static_cast<void>(0)                                                 \
               : orskdbg_assertFailed(orskdbg_placeOf((message), __FILE__, __LINE__), \
                                      "ASSERT(" #condition ")"))
