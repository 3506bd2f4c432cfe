// Sequences of inserts into a record whose growth fails at chosen moments. After every step the
// text parses and holds what was inserted, the buffer is laid out as agreed, and a step that failed
// has changed nothing.

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "errors/status.h"

namespace {

using Json = nlohmann::ordered_json;

/// Bytes that say which callbacks fail.
std::vector<bool> failures;

bool resizeAtWill(zuerr_Status* status, std::uint32_t size) {
  const bool fails = size != 0 && !failures.empty() && failures.back();
  if (size != 0 && !failures.empty()) failures.pop_back();
  return !fails && zuerr_defaultResize(status, size);
}

void check(bool condition) {
  if (!condition) abort();
}

std::string wholeBuffer(const zuerr_Status& status) {
  return {status.json, status.capacity};
}

void checkLayout(const zuerr_Status& status) {
  const std::size_t length = strnlen(status.json, status.capacity);
  check(length + 2 <= status.capacity);
  for (std::size_t index = length; index + 1 < status.capacity; ++index) {
    check(status.json[index] == '\0');
  }
  check(status.json[status.capacity - 1] == 'J');
}

/// Reads the fuzzer's bytes as choices and texts.
struct Choices {
  const std::uint8_t* data;
  std::size_t size;

  std::uint8_t byte() {
    if (size == 0) return 0;
    --size;
    return *data++;
  }

  /// A text without NUL; what is not UTF-8 the yardstick could not hold.
  std::string text() {
    std::string result(byte() % 64U * (byte() % 16U == 0 ? 20U : 1U), 'x');
    for (std::size_t index = 0; index < result.size() && index < 8; ++index) {
      result[index] = static_cast<char>(1 + byte() % 127U);
    }
    return result;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Choices choices{data, size};
  failures.clear();
  for (int bits = choices.byte(); bits > 0; bits >>= 1) failures.push_back((bits & 1) != 0);

  zuerr_Status status{0, 0, resizeAtWill, nullptr};
  const JsonGrower grower = zuerr_growerOf(&status);
  char* position = zuerr_setJson(&status, nullptr);
  if (position == nullptr) {
    check(status.json == nullptr);
    return 0;
  }
  Json expected = Json::object();
  // The objects that the position is in, outermost first.
  std::vector<Json*> open{&expected};
  for (int step = 0; choices.size > 0 && step < 200; ++step) {
    // A key of its own for every member, since the yardstick keeps one of each.
    const std::string key = std::to_string(step) + choices.text();
    const std::string before = status.json;
    char* inserted = nullptr;
    const std::uint8_t kind = choices.byte() % 5;
    if (kind == 0) {
      const std::string value = choices.text();
      inserted = zuerr_addString(&status, position, key.c_str(), value.c_str());
      if (inserted != nullptr) (*open.back())[key] = value;
    } else if (kind == 1) {
      const int value = static_cast<int>(choices.byte() * 0x01010101U);
      inserted = jsonbuf_insertInt(position, key.c_str(), value);
      if (inserted != nullptr) (*open.back())[key] = value;
    } else if (kind == 2) {
      inserted = jsonbuf_insertObjectGrowing(position, key.c_str(), &grower);
      if (inserted != nullptr) {
        (*open.back())[key] = Json::object();
        open.push_back(&(*open.back())[key]);
      }
    } else if (kind == 3) {
      const std::string whole = wholeBuffer(status);
      inserted = jsonbuf_insertObject(position, key.c_str());
      if (inserted != nullptr) (*open.back())[key] = Json::object();
      check(inserted != nullptr || whole == wholeBuffer(status));
    } else if (open.size() > 1) {
      inserted = jsonbuf_leaveObject(position);
      open.pop_back();
    }
    checkLayout(status);
    if (inserted == nullptr) {
      check(before == status.json);
      // A failed growth may have moved the buffer before: go on at the end of the outermost object.
      position = zuerr_reserve(&status, 2);
      open.resize(1);
      check(position != nullptr && position[1] == '\0');
      continue;
    }
    position = inserted;
    check(*position == '}');
    check(Json::parse(status.json) == expected);
  }
  zuerr_release(&status);
  return 0;
}
