#pragma once

/// The JSON documents with the parameters of a library call.
///
/// A document is one flat object without blanks. Texts go into it byte for byte and unescaped. The
/// service reports an invalid document.

#include <cstdint>
#include <string>
#include <string_view>

struct ParameterDocument {
  /// The document's type, which is passed together with it.
  std::string name;
  std::string json;
};

/// Returns the document for loading and unloading a host.
ParameterDocument networkDeviceParams(std::string_view remoteHost);

/// Returns the document for creating a sync domain. The timescale is always a string, even "null".
ParameterDocument syncDomainParams(std::string_view uri, std::string_view timescaleUri,
                                   std::uint32_t maxOffsetNs, std::uint32_t minSyncDurationMs);

/// Returns the document for creating a sync domain with the devices of hosts. `remoteHosts` is JSON
/// and is passed unchanged. For a `timescaleUri` of "null", in any letter case, the service
/// chooses.
ParameterDocument syncDomainCreateAndAddRemoteDevicesParams(std::string_view uri,
                                                            std::string_view timescaleUri,
                                                            std::string_view remoteHosts,
                                                            std::uint32_t maxOffsetNs,
                                                            std::uint32_t minSyncDurationMs);

/// Returns the document for creating a correlator of two timescales.
ParameterDocument linearCorrelatorParams(std::string_view timescaleUri1,
                                         std::string_view timescaleUri2,
                                         std::uint32_t samplingIntervalMs,
                                         std::uint32_t maxSampleSize);
