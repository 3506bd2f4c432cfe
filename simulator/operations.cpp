// The operations of the library's C interface.

#include <algorithm>

#include "interface/orsksapi.h"
#include "simulator/documents.h"
#include "simulator/perform.h"

using namespace simulator;

namespace {

using Text = const char*;
using Status = zuerr_Status*;

Domain& createDomain(State& state, const Document& document, const std::string& timescaleUri) {
  const std::string uri = document.text("uri");
  const Domain domain{
      timescaleUri, {}, document.number("maxOffset_ns"), document.number("minSyncDuration_ms")};
  requireTimescale(state, timescaleUri);
  const auto [created, isNew] = state.domains.emplace(uri, domain);
  if (!isNew) throw Report{domainExists, uri};
  return created->second;
}

std::string hostIn(Text name, Text json) {
  return Document("networkDeviceParams", 1, name, json).text("remoteHost");
}

/// Returns a list of URIs.
std::string listOf(nlohmann::json uris, const std::string& prefix, const State& state) {
  for (const std::string& host : state.hosts) uris.push_back(prefix + host);
  return uris.dump(2);
}

/// Returns false if the domain was running already.
bool start(Domain& domain, bool saveInitialCoherency, std::int64_t nowNs) {
  if (domain.isRunning()) return false;
  domain.runningSince_ns = nowNs;
  domain.checkedSince_ns = saveInitialCoherency ? nowNs : 0;
  return true;
}

}  // namespace

// Cannot fail (no status); delay and step apply.
std::uint32_t orsksapi_getApiVersion() {
  zuerr_Status status = zuerr_initialStatus;
  perform(__func__, &status, [](Operation&) {});
  zuerr_release(&status);
  return 1;
}

void orsksapi_loadResources(Text name, Text json, Status status) {
  perform(__func__, status, [&](Operation& operation) {
    const std::string host = hostIn(name, json);
    if (!operation.state.hosts.insert(host).second) throw Report{hostAlreadyLoaded, host};
  });
}

void orsksapi_unloadResources(Text name, Text json, Status status) {
  perform(__func__, status, [&](Operation& operation) {
    const std::string host = hostIn(name, json);
    requireHost(operation.state, host);
    if (isInUse(operation.state, host)) throw Report{hostInUse, host};
    operation.state.hosts.erase(host);
  });
}

void orsksapi_timescale_getTime(Text timescaleUri, Timestamp* time, Status status) {
  *time = perform(__func__, status, [&](Operation& operation) {
    requireTimescale(operation.state, timescaleUri);
    return shifted({}, operation.nowNs + offsetNs(operation.state, timescaleUri, operation.nowNs));
  });
}

void orsksapi_getCurrentTimescale(Text remoteHost, char* buffer, std::size_t size, Status status) {
  performText(__func__, buffer, size, status, [&](Operation& operation) {
    requireHost(operation.state, remoteHost);
    const Domain* const domain = domainOfDevice(operation.state, devicePrefix + remoteHost);
    const bool follows = domain != nullptr && domain->isRunning();
    return follows ? domain->timescaleUri : timescalePrefix + remoteHost;
  });
}

void orsksapi_timestampCorrelator_create(Text name, Text json, Status status) {
  perform(__func__, status, [&](Operation& operation) {
    const Document document("linearCorrelatorParams", 4, name, json);
    const std::string uri1 = document.text("timescaleUri1"), uri2 = document.text("timescaleUri2");
    State& state = operation.state;
    requireTimescale(state, uri1);
    requireTimescale(state, uri2);
    if (uri1 == uri2) throw Report{sameTimescale, uri1};
    if (std::ranges::any_of(state.correlators, relates(uri1, uri2)))
      throw Report{correlatorExists, uri1 + ", " + uri2};
    state.correlators.push_back(
        {uri1, uri2, document.number("samplingIntervalMs"), document.number("maxSampleSize")});
  });
}

void orsksapi_timestampCorrelator_delete(Text uri1, Text uri2, Status status) {
  perform(__func__, status, [&](Operation& operation) {
    if (std::erase_if(operation.state.correlators, relates(uri1, uri2)) == 0)
      throw Report{correlatorUnknown, std::string(uri1) + ", " + uri2};
  });
}

void orsksapi_timestampCorrelator_correlate(Text srcTimescaleUri, Text dstTimescaleUri,
                                            const Timestamp* srcTime, Timestamp* dstTime,
                                            Status status) {
  *dstTime = perform(__func__, status, [&](Operation& operation) {
    const State& state = operation.state;
    if (std::ranges::none_of(state.correlators, relates(srcTimescaleUri, dstTimescaleUri)))
      throw Report{correlatorUnknown, std::string(srcTimescaleUri) + ", " + dstTimescaleUri};
    return shifted(*srcTime, offsetNs(state, dstTimescaleUri, operation.nowNs) -
                                 offsetNs(state, srcTimescaleUri, operation.nowNs));
  });
}

void orsksapi_syncDomain_create(Text name, Text json, Status status) {
  perform(__func__, status, [&](Operation& operation) {
    const Document document("syncDomainParams", 4, name, json);
    createDomain(operation.state, document, document.text("timescaleUri"));
  });
}

bool orsksapi_syncDomain_start(Text uri, std::uint32_t, Status status) {
  return perform(__func__, status, [&](Operation& operation) {
    return start(requireDomain(operation.state, uri), false, operation.nowNs);
  });
}

void orsksapi_syncDomain_startV2(Text uri, bool saveInitialCoherency, bool waitToBecomeCoherent,
                                 std::uint32_t timeout, Status status) {
  perform(__func__, status, [&](Operation& operation) {
    Domain& domain = requireDomain(operation.state, uri);
    start(domain, saveInitialCoherency, operation.nowNs);
    if (!waitToBecomeCoherent) return;
    const std::int64_t maxNs = std::min(timeout * nsPerSecond, latestNs - operation.nowNs);
    const std::int64_t neededNs = domain.coherentFromNs() - operation.nowNs;
    operation.waitFor = uri;
    operation.waitNs = std::clamp(neededNs, std::int64_t{0}, maxNs);
    if (neededNs > maxNs) throw Report{timedOut, uri};
  });
}

void orsksapi_syncDomain_stop(Text uri, Status status) {
  perform(__func__, status, [&](Operation& operation) {
    Domain& domain = requireDomain(operation.state, uri);
    if (!domain.isRunning()) throw Report{domainNotRunning, uri};
    domain.runningSince_ns = 0;
  });
}

void orsksapi_syncDomain_delete(Text uri, Status status) {
  perform(__func__, status, [&](Operation& operation) {
    if (requireDomain(operation.state, uri).isRunning()) throw Report{domainRunning, uri};
    operation.state.domains.erase(uri);
  });
}

void orsksapi_syncDomain_addSyncableDevice(Text uri, Text deviceUri, Status status) {
  perform(__func__, status, [&](Operation& operation) {
    Domain& domain = requireDomain(operation.state, uri);
    requireFreeDevice(operation.state, deviceUri);
    domain.deviceUris.emplace_back(deviceUri);
  });
}

bool orsksapi_syncDomain_isCoherent(Text uri, Status status) {
  return perform(__func__, status, [&](Operation& operation) {
    return requireDomain(operation.state, uri).isCoherentAt(operation.nowNs);
  });
}

bool orsksapi_syncDomain_isCoherentSinceLastChecked(Text uri, Status status) {
  return perform(__func__, status, [&](Operation& operation) {
    Domain& domain = requireDomain(operation.state, uri);
    const std::int64_t since = std::exchange(domain.checkedSince_ns, operation.nowNs);
    // A system clock may have been set back.
    return domain.isCoherentAt(since == 0 ? operation.nowNs : std::min(since, operation.nowNs));
  });
}

void orsksapi_syncDomain_createAndAddDevices(Text name, Text json, char* buffer, std::size_t size,
                                             Status status) {
  performText(__func__, buffer, size, status, [&](Operation& operation) {
    const Document document("syncDomainCreateAndAddRemoteDevicesParams", 5, name, json);
    std::string timescaleUri = localTimescaleUri;
    if (!document.isNull("timescaleUri")) timescaleUri = document.text("timescaleUri");
    Domain& domain = createDomain(operation.state, document, timescaleUri);
    for (const std::string& host : document.texts("remoteHosts")) {
      requireHost(operation.state, host);
      requireFreeDevice(operation.state, devicePrefix + host);
      domain.deviceUris.push_back(devicePrefix + host);
    }
    return timescaleUri;
  });
}

void orsksapi_getTimescaleInfo(char* buffer, std::size_t size, Status status) {
  performText(__func__, buffer, size, status, [](Operation& operation) {
    return listOf({localTimescaleUri}, timescalePrefix, operation.state);
  });
}

void orsksapi_getSyncableDeviceInfo(char* buffer, std::size_t size, Status status) {
  performText(__func__, buffer, size, status, [](Operation& operation) {
    return listOf(nlohmann::json::array(), devicePrefix, operation.state);
  });
}

void orsksapi_getSyncDomainInfo(char* buffer, std::size_t size, Status status) {
  performText(__func__, buffer, size, status, [](Operation& operation) {
    nlohmann::json domains = operation.state.domains;
    for (const auto& [uri, domain] : operation.state.domains) {
      domains[uri]["coherent"] = domain.isCoherentAt(operation.nowNs);
    }
    return domains.dump(2);
  });
}

void orsksapi_getTimestampCorrelatorInfo(char* buffer, std::size_t size, Status status) {
  performText(__func__, buffer, size, status, [](Operation& operation) {
    return nlohmann::json(operation.state.correlators).dump(2);
  });
}
