#include "simulator/settings.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>

#include "orsksapi_operations.h"
#include "simulator/model.h"
#include "simulator/reports.h"

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
  if (!readNumber(text, text + std::strlen(text), milliseconds))
    throw Report{badVariable, variable + '=' + text};
  return milliseconds * nsPerMs;
}

/// Reads "operation=code" or "operation=code@N".
void readFault(Settings& settings) {
  const char* const text = std::getenv("ORSK_SIMULATOR_FAIL");
  if (text == nullptr) return;
  const char* const end = text + std::strlen(text);
  const char* const equals = std::find(text, end, '=');
  const char* const at = std::find(equals, end, '@');
  settings.failing.assign(text, equals);
  std::string names;
  bool known = false;
  for (const std::string name : orsksapiOperations) {
    // It has no status record, in which a fault could be reported.
    if (name == "getApiVersion") continue;
    names += ' ' + name;
    known |= name == settings.failing;
  }
  const bool code = equals != end && readNumber(equals + 1, at, settings.code) && settings.code < 0;
  const bool call = at == end || (readNumber(at + 1, end, settings.call) && settings.call > 0);
  if (known && code && call) return;
  const std::string value = std::string("ORSK_SIMULATOR_FAIL=") + text;
  throw Report{badVariable, known ? value : value + " names none of" + names};
}

std::string defaultStatePath() {
  const std::string file = "/orskapp/simulator.json";
  // A relative XDG_STATE_HOME counts as unset, as for every XDG base directory.
  const char* folder = std::getenv("XDG_STATE_HOME");
  if (folder != nullptr && *folder == '/') return folder + file;
  folder = std::getenv("HOME");
  if (folder == nullptr || *folder == '\0') throw Report{stateUnusable, "HOME is not set"};
  return std::string(folder) + "/.local/state" + file;
}

void readStatePath(Settings& settings) {
  const char* const given = std::getenv("ORSK_SIMULATOR_STATE");
  settings.createsFolders = given == nullptr;
  settings.statePath = given == nullptr ? defaultStatePath() : given;
  const std::string& path = settings.statePath;
  const std::string name = path.substr(path.rfind('/') + 1);
  // Another state may have its lock or its temporary file there.
  if (path.empty() || name.ends_with(".lock") || name.ends_with(".new"))
    throw Report{badVariable, "ORSK_SIMULATOR_STATE=" + path};
  if (name.empty() || name == "." || name == "..")
    throw Report{stateUnusable, path + ": " + std::strerror(EISDIR)};
}

}  // namespace

void readSettings(Settings& settings) {
  settings.delayNs = readMilliseconds("ORSK_SIMULATOR_DELAY_MS").value_or(0);
  settings.stepNs = readMilliseconds("ORSK_SIMULATOR_STEP_MS");
  readFault(settings);
  readStatePath(settings);
}

}  // namespace simulator
