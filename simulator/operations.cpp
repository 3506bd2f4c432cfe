// The operations of the library's C interface.

#include <algorithm>

#include "interface/orsksapi.h"
#include "simulator/documents.h"
#include "simulator/perform.h"

using namespace simulator;

namespace {

Domain& createDomain(State& state, const Document& document, const std::string& timescaleUri) {
  const std::string uri = document.text("uri");
  const Domain domain{
      timescaleUri, {}, document.number("maxOffset_ns"), document.number("minSyncDuration_ms")};
  requireTimescale(state, timescaleUri);
  const auto [created, isNew] = state.domains.emplace(uri, domain);
  if (!isNew) throw Error(domainExists, uri);
  return created->second;
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
  perform("getApiVersion", &status, [](Operation&) {});
  zuerr_release(&status);
  return 1;
}

void orsksapi_loadResources(const char* name, const char* json, zuerr_Status* status) {
  perform("loadResources", status, [&](Operation& operation) {
    const std::string host = Document("networkDeviceParams", name, json).text("remoteHost");
    const bool loaded = operation.state.hosts.insert(host).second;
    if (!loaded) operation.warning.emplace(hostAlreadyLoaded, host);
  });
}

void orsksapi_unloadResources(const char* name, const char* json, zuerr_Status* status) {
  perform("unloadResources", status, [&](Operation& operation) {
    const std::string host = Document("networkDeviceParams", name, json).text("remoteHost");
    requireHost(operation.state, host);
    if (isInUse(operation.state, host)) throw Error(hostInUse, host);
    operation.state.hosts.erase(host);
  });
}

void orsksapi_timescale_getTime(const char* timescaleUri, Timestamp* time, zuerr_Status* status) {
  *time = performFor<Timestamp>("timescale_getTime", status, [&](Operation& operation) {
    requireTimescale(operation.state, timescaleUri);
    const std::int64_t ahead = offsetNs(operation.state, timescaleUri, operation.nowNs);
    return shifted({}, operation.nowNs + ahead);
  });
}

void orsksapi_getCurrentTimescale(const char* remoteHost, char* buffer, std::size_t size,
                                  zuerr_Status* status) {
  performText("getCurrentTimescale", buffer, size, status, [&](Operation& operation) {
    requireHost(operation.state, remoteHost);
    const Domain* const domain = domainOfDevice(operation.state, devicePrefix + remoteHost);
    const bool follows = domain != nullptr && domain->isRunning();
    return follows ? domain->timescaleUri : timescalePrefix + remoteHost;
  });
}

void orsksapi_timestampCorrelator_create(const char* name, const char* json, zuerr_Status* status) {
  perform("timestampCorrelator_create", status, [&](Operation& operation) {
    const Document document("linearCorrelatorParams", name, json);
    const Correlator created{document.text("timescaleUri1"), document.text("timescaleUri2"),
                             document.number("samplingIntervalMs"),
                             document.number("maxSampleSize")};
    requireTimescale(operation.state, created.timescaleUri1);
    requireTimescale(operation.state, created.timescaleUri2);
    if (created.timescaleUri1 == created.timescaleUri2) {
      throw Error(sameTimescale, created.timescaleUri1);
    }
    if (findCorrelator(operation.state, created.timescaleUri1, created.timescaleUri2) != nullptr) {
      throw Error(correlatorExists, created.timescaleUri1 + ", " + created.timescaleUri2);
    }
    operation.state.correlators.push_back(created);
  });
}

void orsksapi_timestampCorrelator_delete(const char* uri1, const char* uri2, zuerr_Status* status) {
  perform("timestampCorrelator_delete", status, [&](Operation& operation) {
    const Correlator deleted = requireCorrelator(operation.state, uri1, uri2);
    std::erase(operation.state.correlators, deleted);
  });
}

void orsksapi_timestampCorrelator_correlate(const char* srcTimescaleUri,
                                            const char* dstTimescaleUri, const Timestamp* srcTime,
                                            Timestamp* dstTime, zuerr_Status* status) {
  *dstTime =
      performFor<Timestamp>("timestampCorrelator_correlate", status, [&](Operation& operation) {
        requireCorrelator(operation.state, srcTimescaleUri, dstTimescaleUri);
        return shifted(*srcTime, offsetNs(operation.state, dstTimescaleUri, operation.nowNs) -
                                     offsetNs(operation.state, srcTimescaleUri, operation.nowNs));
      });
}

void orsksapi_syncDomain_create(const char* name, const char* json, zuerr_Status* status) {
  perform("syncDomain_create", status, [&](Operation& operation) {
    const Document document("syncDomainParams", name, json);
    createDomain(operation.state, document, document.text("timescaleUri"));
  });
}

bool orsksapi_syncDomain_start(const char* uri, std::uint32_t, zuerr_Status* status) {
  return performFor<bool>("syncDomain_start", status, [&](Operation& operation) {
    return start(requireDomain(operation.state, uri), false, operation.nowNs);
  });
}

void orsksapi_syncDomain_startV2(const char* uri, bool saveInitialCoherency,
                                 bool waitToBecomeCoherent, std::uint32_t timeout,
                                 zuerr_Status* status) {
  perform("syncDomain_startV2", status, [&](Operation& operation) {
    Domain& domain = requireDomain(operation.state, uri);
    const Domain before = domain;
    start(domain, saveInitialCoherency, operation.nowNs);
    if (!waitToBecomeCoherent) return;
    const std::int64_t mostNs = std::min(timeout * nsPerSecond, latestNs - operation.nowNs);
    const std::int64_t neededNs = domain.coherentFromNs() - operation.nowNs;
    operation.wait = {uri, std::clamp(neededNs, std::int64_t{0}, mostNs), neededNs > mostNs};
    if (operation.wait.timesOut) domain = before;
  });
}

void orsksapi_syncDomain_stop(const char* uri, zuerr_Status* status) {
  perform("syncDomain_stop", status, [&](Operation& operation) {
    Domain& domain = requireDomain(operation.state, uri);
    if (!domain.isRunning()) operation.warning.emplace(domainNotRunning, uri);
    domain.runningSince_ns = 0;
  });
}

void orsksapi_syncDomain_delete(const char* uri, zuerr_Status* status) {
  perform("syncDomain_delete", status, [&](Operation& operation) {
    if (requireDomain(operation.state, uri).isRunning()) throw Error(domainRunning, uri);
    operation.state.domains.erase(uri);
  });
}

void orsksapi_syncDomain_addSyncableDevice(const char* uri, const char* deviceUri,
                                           zuerr_Status* status) {
  perform("syncDomain_addSyncableDevice", status, [&](Operation& operation) {
    Domain& domain = requireDomain(operation.state, uri);
    requireFreeDevice(operation.state, deviceUri);
    domain.deviceUris.emplace_back(deviceUri);
  });
}

bool orsksapi_syncDomain_isCoherent(const char* uri, zuerr_Status* status) {
  return performFor<bool>("syncDomain_isCoherent", status, [&](Operation& operation) {
    return requireDomain(operation.state, uri).isCoherentAt(operation.nowNs);
  });
}

bool orsksapi_syncDomain_isCoherentSinceLastChecked(const char* uri, zuerr_Status* status) {
  return performFor<bool>(
      "syncDomain_isCoherentSinceLastChecked", status, [&](Operation& operation) {
        Domain& domain = requireDomain(operation.state, uri);
        const std::int64_t since = std::exchange(domain.checkedSince_ns, operation.nowNs);
        return domain.isCoherentAt(since == 0 ? operation.nowNs : since);
      });
}

void orsksapi_syncDomain_createAndAddDevices(const char* name, const char* json, char* buffer,
                                             std::size_t size, zuerr_Status* status) {
  performText("syncDomain_createAndAddDevices", buffer, size, status, [&](Operation& operation) {
    const Document document("syncDomainCreateAndAddRemoteDevicesParams", name, json);
    std::string timescaleUri = document.textOr(localTimescaleUri, "timescaleUri");
    Domain& domain = createDomain(operation.state, document, timescaleUri);
    for (const std::string& host : document.texts("remoteHosts")) {
      requireHost(operation.state, host);
      requireFreeDevice(operation.state, devicePrefix + host);
      domain.deviceUris.push_back(devicePrefix + host);
    }
    return timescaleUri;
  });
}

void orsksapi_getTimescaleInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getTimescaleInfo", buffer, size, status, [](Operation& operation) {
    nlohmann::json uris{localTimescaleUri};
    for (const std::string& host : operation.state.hosts) uris.push_back(timescalePrefix + host);
    return uris.dump(2);
  });
}

void orsksapi_getSyncableDeviceInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getSyncableDeviceInfo", buffer, size, status, [](Operation& operation) {
    nlohmann::json uris = nlohmann::json::array();
    for (const std::string& host : operation.state.hosts) uris.push_back(devicePrefix + host);
    return uris.dump(2);
  });
}

void orsksapi_getSyncDomainInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getSyncDomainInfo", buffer, size, status, [](Operation& operation) {
    nlohmann::json domains = operation.state.domains;
    for (const auto& [uri, domain] : operation.state.domains) {
      domains[uri]["coherent"] = domain.isCoherentAt(operation.nowNs);
    }
    return domains.dump(2);
  });
}

void orsksapi_getTimestampCorrelatorInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getTimestampCorrelatorInfo", buffer, size, status, [](Operation& operation) {
    return nlohmann::json(operation.state.correlators).dump(2);
  });
}
