#include "service/parameter_document.h"

#include <initializer_list>

namespace {

struct Member {
  std::string_view key;
  /// As it stands in the document.
  std::string value;
};

std::string quoted(std::string_view text) {
  return '"' + std::string(text) + '"';
}

std::string object(std::initializer_list<Member> members) {
  std::string json = "{";
  for (const Member& member : members) {
    if (json.size() > 1) json += ',';
    json += quoted(member.key) + ':' + member.value;
  }
  return json + '}';
}

}  // namespace

ParameterDocument networkDeviceParams(std::string_view remoteHost) {
  return {"networkDeviceParams", object({
                                     {"remoteHost", quoted(remoteHost)},
                                 })};
}
