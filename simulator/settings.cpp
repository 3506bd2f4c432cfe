#include "simulator/settings.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>

#include "orsksapi_operations.h"
#include "simulator/errors.h"
#include "simulator/model.h"

namespace simulator {

namespace {

/// Returns whether the whole text is a number that is in range.
template <typename Number>
bool readNumber(const char* begin, const char* end, Number& number) {
  const auto [stopped, error] = std::from_chars(begin, end, number);
  return error == std::errc() && stopped == end;
}

std::optional<std::int64_t> readMilliseconds(const std::string& variable) {
  const char* const text = std::getenv(variable.c_str());
  if (text == nullptr) return {};
  std::uint32_t milliseconds = 0;
  const bool valid = readNumber(text, text + std::strlen(text), milliseconds);
  if (!valid) throw Error(badVariable, variable + '=' + text);
  return milliseconds * nsPerMs;
}

/// Reads "operation=code" or "operation=code@N".
InjectedFault readFault() {
  const char* const text = std::getenv("ORSK_SIMULATOR_FAIL");
  if (text == nullptr) return {};
  const char* const end = text + std::strlen(text);
  const char* const equals = std::find(text, end, '=');
  const char* const at = std::find(equals, end, '@');
  InjectedFault fault{{text, equals}};
  std::string names;
  bool known = false;
  for (const std::string name : orsksapiOperations) {
    // It has no status record, in which a fault could be reported.
    if (name == "getApiVersion") continue;
    names += ' ' + name;
    known |= name == fault.operation;
  }
  const bool code = equals != end && readNumber(equals + 1, at, fault.code) && fault.code < 0;
  const bool call = at == end || (readNumber(at + 1, end, fault.call) && fault.call > 0);
  if (known && code && call) return fault;
  const std::string value = std::string("ORSK_SIMULATOR_FAIL=") + text;
  throw Error(badVariable, known ? value : value + " names none of" + names);
}

/// Returns the path of the state file.
std::string statePath() {
  if (const char* const path = std::getenv("ORSK_SIMULATOR_STATE")) {
    const std::string name =
        std::strrchr(path, '/') == nullptr ? path : std::strrchr(path, '/') + 1;
    // Another state may have its lock or its temporary file there.
    const bool isReserved = name.ends_with(".lock") || name.ends_with(".new");
    if (*path == '\0' || isReserved) {
      throw Error(badVariable, std::string("ORSK_SIMULATOR_STATE=") + path);
    }
    if (name.empty() || name == "." || name == "..")
      throw Error(stateUnusable, std::string(path) + ": " + std::strerror(EISDIR));
    return path;
  }
  const std::string file = "/orskapp/simulator.json";
  // A relative XDG_STATE_HOME counts as unset, as for every XDG base directory.
  const char* folder = std::getenv("XDG_STATE_HOME");
  if (folder != nullptr && *folder == '/') return folder + file;
  folder = std::getenv("HOME");
  if (folder == nullptr || *folder == '\0') throw Error(stateUnusable, "HOME is not set");
  return std::string(folder) + "/.local/state" + file;
}

}  // namespace

void readSettings(Settings& settings) {
  settings.delayNs = readMilliseconds("ORSK_SIMULATOR_DELAY_MS").value_or(0);
  settings.stepNs = readMilliseconds("ORSK_SIMULATOR_STEP_MS");
  settings.fault = readFault();
  settings.statePath = statePath();
}

}  // namespace simulator
