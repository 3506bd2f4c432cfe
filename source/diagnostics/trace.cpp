#include "diagnostics/trace.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "diagnostics/reported_places.h"

namespace {

constexpr std::size_t bufferSize = 512;
constexpr std::size_t lastIndex = bufferSize - 1;

char* writeBytes(char* position, std::size_t room, const char* text, std::size_t length) {
  if (room == 0) return position;
  const std::size_t written = std::min(length, room - 1);
  std::copy_n(text, written, position);
  position[written] = '\0';
  return position + written;
}

char* writeText(char* position, std::size_t room, const char* text) {
  return writeBytes(position, room, text, std::strlen(text));
}

/// Writes `text` right-aligned in a column, or the end of a longer text.
char* writeColumn(char* position, std::size_t room, const char* text, int columnWidth, char fill) {
  const auto width = static_cast<std::size_t>(std::max(columnWidth, 0));
  const std::size_t length = std::strlen(text);
  if (length > width) return writeBytes(position, room, text + (length - width), width);
  for (std::size_t blank = length; blank < width && room > 1; ++blank, --room) *position++ = fill;
  return writeBytes(position, room, text, length);
}

char* writeOpening(char* position, std::size_t room, const orskdbg_VarLine*) {
  return writeText(position, room, "[");
}

char* writeComponent(char* position, std::size_t room, const orskdbg_VarLine*) {
  return writeColumn(position, room, reported::componentName, orskdbg_componentWidth, ' ');
}

char* writeSeparator(char* position, std::size_t room, const orskdbg_VarLine*) {
  return writeText(position, room, "|");
}

char* writeFile(char* position, std::size_t room, const orskdbg_VarLine* context) {
  return writeColumn(position, room, context->file, orskdbg_fileWidth, ' ');
}

char* writeLineNumber(char* position, std::size_t room, const orskdbg_VarLine* context) {
  char digits[16];
  std::snprintf(digits, sizeof digits, "%d", context->line);
  return writeColumn(position, room, digits, orskdbg_lineWidth, '0');
}

char* writeClosing(char* position, std::size_t room, const orskdbg_VarLine*) {
  return writeText(position, room, "] ");
}

constexpr orskdbg_PrefixWriter defaultPrefixWriters[] = {
    writeOpening,   writeComponent,  writeSeparator, writeFile,
    writeSeparator, writeLineNumber, writeClosing,   nullptr,
};

/// Does nothing: the dispatcher that asserted reports the error.
void returnToDispatcher(const orskdbg_VarLine*, const char*) {}

void writeToStandardError(const char* line) {
  std::fputs(line, stderr);
  // The client library may have made the stream buffered.
  std::fflush(stderr);
}

}  // namespace

void (*orskdbg_assertHandler)(const orskdbg_VarLine*, const char*) = returnToDispatcher;
const orskdbg_PrefixWriter* orskdbg_prefixWriters = defaultPrefixWriters;
int orskdbg_lineWidth = 4;
int orskdbg_fileWidth = 32;
int orskdbg_componentWidth = 10;
void (*orskdbg_write)(const char*) = writeToStandardError;
int (*orskdbg_format)(char*, std::size_t, const char*, std::va_list) = std::vsnprintf;

void orskdbg_VarLine::operator()(const char* format, ...) const {
  char buffer[bufferSize] = "";
  char* const end = buffer + bufferSize;
  char* const textLimit = buffer + lastIndex - std::min(std::strlen(terminator), lastIndex);

  char* position = buffer;
  for (const orskdbg_PrefixWriter* writer = orskdbg_prefixWriters; *writer != nullptr; ++writer) {
    position = (*writer)(position, static_cast<std::size_t>(end - position), this);
  }
  std::va_list arguments;
  va_start(arguments, format);
  orskdbg_format(position, static_cast<std::size_t>(end - position), format, arguments);
  va_end(arguments);
  *textLimit = '\0';

  position = buffer + std::strlen(buffer);
  writeText(position, static_cast<std::size_t>(end - position), terminator);
  orskdbg_write(buffer);
}

void orskdbg_printf(const char* format, ...) {
  char buffer[bufferSize] = "";
  std::va_list arguments;
  va_start(arguments, format);
  orskdbg_format(buffer, bufferSize, format, arguments);
  va_end(arguments);
  buffer[lastIndex] = '\0';
  orskdbg_write(buffer);
}

void orskdbg_assertFailed(const orskdbg_AssertPlace& place, const char* expression) {
  orskdbg_printf("[%s|%s|%d] !!ASSERT!!\n", reported::componentName, place.file, place.line);
  const orskdbg_VarLine traceLine{place.file, place.line, "\n"};
  traceLine("%s", expression);
// The message is the format. All messages are constants of the program that asserts.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
  traceLine(place.message);
#pragma GCC diagnostic pop
  orskdbg_assertHandler(&traceLine, expression);
}
