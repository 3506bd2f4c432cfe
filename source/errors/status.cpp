#include "errors/status.h"

#include <bit>
#include <cstdlib>
#include <cstring>
#include <string>

#include "errors/insert_growing.h"

namespace {

/// With its NUL and the end mark a text stays below 2^31 bytes.
constexpr std::uint32_t longestText = 0x7FFF'FFFD;
constexpr std::uint32_t firstRejectedSize = 0x8000'0000;
constexpr std::uint32_t smallestBuffer = 512;
constexpr std::uint32_t largestThatGrows = 0x4000'0000;

/// Ensures room for a text of `length` characters, its NUL and the end mark. A callback that
/// returns true without that room is a failure too.
bool ensureRoom(zuerr_Status* status, std::size_t length) {
  if (length > longestText) return false;
  const auto size = static_cast<std::uint32_t>(length) + 2;
  if (size > status->capacity && !status->resize(status, size)) return false;
  return status->capacity >= size && status->json != nullptr;
}

/// Writes `text` into a buffer of `size` bytes. Returns what `jsonbuf_init` returns, or null.
char* initText(char* buffer, std::uint32_t size, std::string_view text) {
  if (text.size() >= size) return nullptr;
  std::char_traits<char>::move(buffer, text.data(), text.size());
  buffer[text.size()] = '\0';
  return jsonbuf_init(buffer, size, nullptr);
}

char* setText(zuerr_Status* status, std::string_view text) {
  if (!ensureRoom(status, text.size())) return nullptr;
  return initText(status->json, status->capacity, text);
}

constexpr std::string_view emptyText = "{}";

std::string_view textOrEmptyObject(const zuerr_Status& status) {
  return status.json == nullptr ? emptyText : zuerr_text(status);
}

void setIfGiven(bool* textOk, bool ok) {
  if (textOk != nullptr) *textOk = ok;
}

}  // namespace

bool zuerr_defaultResize(zuerr_Status* status, std::uint32_t newSize) noexcept {
  if (newSize == 0) {
    std::free(status->json);
    status->capacity = 0;
    status->json = nullptr;
    return true;
  }
  if (newSize <= status->capacity) return true;
  if (newSize >= firstRejectedSize) return false;
  const std::string_view text = textOrEmptyObject(*status);
  // A text without its NUL cannot be kept.
  if (status->capacity > 0 && text.size() == status->capacity) return false;
  const std::uint32_t size = newSize <= smallestBuffer ? smallestBuffer : std::bit_ceil(newSize);
  auto* const buffer = static_cast<char*>(std::malloc(size));
  if (buffer == nullptr) return false;
  if (initText(buffer, size, text) == nullptr) {
    std::free(buffer);
    return false;
  }
  std::free(status->json);
  status->capacity = size;
  status->json = buffer;
  return true;
}

bool zuerr_setCode(zuerr_Status* status, std::int32_t code) noexcept {
  const bool moreSevere = status->code == 0 ? code != 0 : status->code > 0 && code < 0;
  if (!moreSevere) return false;
  status->code = code;
  if (status->json != nullptr) zuerr_setJson(status, nullptr);
  return true;
}

bool zuerr_setCodeAt(zuerr_Status* status, std::int32_t code, const zuerr_Site* site,
                     bool* textOk) noexcept {
  const bool taken = zuerr_setCode(status, code);
  setIfGiven(textOk, true);
  if (!taken) return false;
  char* position = zuerr_setJson(status, nullptr);
  position = zuerr_addString(status, position, "error_constant", site->errorConstant);
  position = zuerr_addSite(status, position, site);
  if (position == nullptr) setIfGiven(textOk, false);
  return true;
}

bool zuerr_merge(zuerr_Status* destination, zuerr_Status* source, bool* textOk) noexcept {
  const bool taken = zuerr_setCode(destination, source->code);
  setIfGiven(textOk, true);
  if (!taken) return false;
  if (destination->resize == source->resize) {
    destination->resize(destination, 0);
    destination->capacity = source->capacity;
    destination->json = source->json;
    if (source->json != nullptr) {
      source->capacity = 0;
      source->json = nullptr;
    }
  } else if (setText(destination, textOrEmptyObject(*source)) == nullptr) {
    setIfGiven(textOk, false);
  }
  return true;
}

char* zuerr_setJson(zuerr_Status* status, const char* text) noexcept {
  return setText(status, text == nullptr ? emptyText : text);
}

char* zuerr_reserve(zuerr_Status* status, std::uint32_t room) noexcept {
  return ensureRoom(status, room) ? jsonbuf_findEnd(status->json) : nullptr;
}

// NOLINTNEXTLINE(readability-non-const-parameter): positions are what the C interface says.
char* zuerr_grow(zuerr_Status* status, char* position) noexcept {
  if (position == nullptr) return nullptr;
  if (status->capacity <= 2 || status->capacity > largestThatGrows) return nullptr;
  const std::ptrdiff_t offset = position - status->json;
  const std::uint32_t room = (status->capacity - 2) * 2;
  return zuerr_reserve(status, room) == nullptr ? nullptr : status->json + offset;
}

char* zuerr_addString(zuerr_Status* status, char* position, const char* key,
                      const char* value) noexcept {
  const JsonGrower grower = zuerr_growerOf(status);
  return jsonbuf_insertStringGrowing(position, key, value, &grower);
}

char* zuerr_addSite(zuerr_Status* status, char* position, const zuerr_Site* site) noexcept {
  const JsonGrower grower = zuerr_growerOf(status);
  position = zuerr_addString(status, position, "file", site->file);
  position = insertGrowing(position, &grower,
                           [site](char* at) { return jsonbuf_insertInt(at, "line", site->line); });
  if (site->component == nullptr) return position;
  return zuerr_addString(status, position, "component", site->component);
}

JsonGrower zuerr_growerOf(zuerr_Status* status) noexcept {
  const auto grow = [](char* position, void* context) {
    return zuerr_grow(static_cast<zuerr_Status*>(context), position);
  };
  return {grow, status};
}

std::string_view zuerr_text(const zuerr_Status& status) noexcept {
  if (status.json == nullptr) return "";
  if (status.capacity == 0) return status.json;
  return {status.json, strnlen(status.json, status.capacity)};
}

void zuerr_release(zuerr_Status* status) noexcept {
  if (status->json != nullptr && status->resize != nullptr) status->resize(status, 0);
}
