#include "errors/status.h"

#include <bit>
#include <cstdlib>
#include <cstring>

#include "errors/insert_growing.h"

namespace {

/// Room for the end mark and the text's NUL is added to this, so that no size reaches 2^31.
constexpr std::uint32_t longestText = 0x7FFF'FFFD;
constexpr std::uint32_t firstRefusedSize = 0x8000'0000;
constexpr std::uint32_t smallestBuffer = 512;

/// Has the record's callback provide `size` bytes. A callback that says it did but did not is a
/// failure too: callers count on the room.
bool ensureCapacity(zuerr_Status* status, std::uint32_t size) {
  if (size > status->capacity && !status->resize(status, size)) return false;
  return status->capacity >= size && status->json != nullptr;
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
  if (newSize >= firstRefusedSize) return false;
  const std::uint32_t size = newSize <= smallestBuffer ? smallestBuffer : std::bit_ceil(newSize);
  auto* const buffer = static_cast<char*>(std::malloc(size));
  if (buffer == nullptr) return false;
  if (jsonbuf_init(buffer, size, status->json == nullptr ? "{}" : status->json) == nullptr) {
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
  } else if (zuerr_setJson(destination, source->json) == nullptr) {
    setIfGiven(textOk, false);
  }
  return true;
}

char* zuerr_setJson(zuerr_Status* status, const char* text) noexcept {
  if (text == nullptr) text = "{}";
  const std::size_t length = std::strlen(text);
  if (length > longestText) return nullptr;
  if (!ensureCapacity(status, static_cast<std::uint32_t>(length) + 2)) return nullptr;
  return jsonbuf_init(status->json, status->capacity, text);
}

char* zuerr_reserve(zuerr_Status* status, std::uint32_t room) noexcept {
  if (room > longestText || !ensureCapacity(status, room + 2)) return nullptr;
  return jsonbuf_findEnd(status->json);
}

// NOLINTNEXTLINE(readability-non-const-parameter): positions are what the C interface says.
char* zuerr_grow(zuerr_Status* status, char* position) noexcept {
  if (position == nullptr) return nullptr;
  const std::ptrdiff_t offset = position - status->json;
  // For a capacity below 2 or above 2^30 this wraps: what comes out is not more than there is, or
  // more than zuerr_reserve allows. Neither is asked for.
  const std::uint32_t room = (status->capacity - 2) * 2;
  if (room + 2 <= status->capacity) return nullptr;
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

void zuerr_release(zuerr_Status* status) noexcept {
  if (status->json != nullptr && status->resize != nullptr) status->resize(status, 0);
}
