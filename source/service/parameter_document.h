#pragma once

/// The JSON documents in which the service library takes its parameters.
///
/// A document is one flat object without blanks. Texts go into it byte for byte, unescaped: what
/// they do to its syntax is between the user and the library.

#include <cstdint>
#include <string>
#include <string_view>

struct ParameterDocument {
  /// The document's type name, which is passed beside it.
  std::string name;
  std::string json;
};

/// Names a remote host, for loading and unloading its resources.
ParameterDocument networkDeviceParams(std::string_view remoteHost);

/// Describes a sync domain. The timescale is always a string, even if its text is "null".
ParameterDocument syncDomainParams(std::string_view uri, std::string_view timescaleUri,
                                   std::uint32_t maxOffsetNs, std::uint32_t minSyncDurationMs);

/// Describes a sync domain and the hosts whose devices it starts with. `remoteHosts` is JSON as it
/// stands. A `timescaleUri` of "null", in any letter case, leaves the choice to the service.
ParameterDocument syncDomainCreateAndAddRemoteDevicesParams(std::string_view uri,
                                                            std::string_view timescaleUri,
                                                            std::string_view remoteHosts,
                                                            std::uint32_t maxOffsetNs,
                                                            std::uint32_t minSyncDurationMs);

/// Describes a correlator of two timescales.
ParameterDocument linearCorrelatorParams(std::string_view timescaleUri1,
                                         std::string_view timescaleUri2,
                                         std::uint32_t samplingIntervalMs,
                                         std::uint32_t maxSampleSize);
