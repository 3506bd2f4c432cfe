#include "service/parameter_document.h"

#include <algorithm>
#include <initializer_list>

namespace {

struct Member {
  std::string_view key;
  /// JSON.
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

bool isNull(std::string_view text) {
  const auto isLetter = [](char typed, char capital) {
    return typed == capital || typed == capital - 'A' + 'a';
  };
  constexpr std::string_view null = "NULL";
  return std::ranges::equal(text, null, isLetter);
}

}  // namespace

// clang-format off

ParameterDocument networkDeviceParams(std::string_view remoteHost) {
  return {"networkDeviceParams", object({
      {"remoteHost", quoted(remoteHost)},
  })};
}

ParameterDocument syncDomainParams(std::string_view uri, std::string_view timescaleUri,
                                   std::uint32_t maxOffsetNs, std::uint32_t minSyncDurationMs) {
  return {"syncDomainParams", object({
      {"uri",                quoted(uri)},
      {"timescaleUri",       quoted(timescaleUri)},
      {"maxOffset_ns",       std::to_string(maxOffsetNs)},
      {"minSyncDuration_ms", std::to_string(minSyncDurationMs)},
  })};
}

ParameterDocument syncDomainCreateAndAddRemoteDevicesParams(std::string_view uri,
                                                            std::string_view timescaleUri,
                                                            std::string_view remoteHosts,
                                                            std::uint32_t maxOffsetNs,
                                                            std::uint32_t minSyncDurationMs) {
  return {"syncDomainCreateAndAddRemoteDevicesParams", object({
      {"uri",                quoted(uri)},
      {"remoteHosts",        std::string(remoteHosts)},
      {"maxOffset_ns",       std::to_string(maxOffsetNs)},
      {"minSyncDuration_ms", std::to_string(minSyncDurationMs)},
      {"timescaleUri",       isNull(timescaleUri) ? "null" : quoted(timescaleUri)},
  })};
}

ParameterDocument linearCorrelatorParams(std::string_view timescaleUri1,
                                         std::string_view timescaleUri2,
                                         std::uint32_t samplingIntervalMs,
                                         std::uint32_t maxSampleSize) {
  return {"linearCorrelatorParams", object({
      {"timescaleUri1",      quoted(timescaleUri1)},
      {"timescaleUri2",      quoted(timescaleUri2)},
      {"samplingIntervalMs", std::to_string(samplingIntervalMs)},
      {"maxSampleSize",      std::to_string(maxSampleSize)},
  })};
}

// clang-format on
