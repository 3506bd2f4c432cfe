#include "main/options.h"

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "diagnostics/reported_places.h"
#include "errors/library_exception.h"

namespace {

constexpr std::int32_t invalidParameterCode = -52005;

constexpr zuerr_Site siteAt(int line) {
  return {reported::sourceFile, line, reported::componentName, "zuapalerr_invalidParameter"};
}

constexpr zuerr_Site invalidOptionSite = siteAt(reported::invalidOptionLine);
constexpr zuerr_Site consecutiveOptionsSite = siteAt(reported::consecutiveOptionsLine);

struct DebugMember {
  const char* key;
  const char* value;
};

/// Throws an error at `site` with the members in "orskconsoleapp_debug".
[[noreturn]] void throwOptionError(const zuerr_Site& site,
                                   std::initializer_list<DebugMember> members) {
  zuerr::Exception error;
  zuerr_Status* const status = &error.status;
  if (zuerr_setCodeAt(status, invalidParameterCode, &site, nullptr)) {
    const JsonGrower grower = zuerr_growerOf(status);
    char* position = zuerr_findClosingBrace(status);
    position = jsonbuf_insertObjectGrowing(position, "orskconsoleapp_debug", &grower);
    for (const DebugMember& member : members) {
      position = jsonbuf_insertStringGrowing(position, member.key, member.value, &grower);
    }
    jsonbuf_leaveObject(position);
  }
  throw zuerr::Exception(error);
}

[[noreturn]] void throwInvalidOption(const char* word) {
  throwOptionError(invalidOptionSite,
                   {{"message", "Encountered invalid command option."}, {"option", word}});
}

[[noreturn]] void throwConsecutiveOptions(const char* first, const char* second) {
  throwOptionError(
      consecutiveOptionsSite,
      {{"message",
        "Command options are each expected to have a value, but two options found consecutively."},
       {"firstOption", first},
       {"secondOption", second}});
}

}  // namespace

OptionMap readOptions(std::span<const char* const> words) {
  OptionMap options;
  const char* pendingName = nullptr;
  for (const char* const word : words) {
    if (std::string_view(word).starts_with("--")) {
      const char* const name = word + 2;
      if (*name == '\0' || *name == '-') throwInvalidOption(word);
      if (pendingName != nullptr) throwConsecutiveOptions(pendingName, name);
      pendingName = name;
    } else if (pendingName != nullptr) {
      options.emplace(pendingName, word);
      pendingName = nullptr;
    }
  }
  return options;
}
