// The operations of the library's C interface: each is its work on the state, and its answer.

#include <algorithm>

#include "interface/orsksapi.h"
#include "simulator/documents.h"
#include "simulator/perform.h"

using namespace simulator;

namespace {

std::string remoteHostOf(const char* name, const char* json) {
  return Document("networkDeviceParams", name, json).text("remoteHost");
}

void createDomain(State& state, const Document& document, const std::string& timescaleUri,
                  const std::vector<std::string>& deviceUris) {
  const std::string uri = document.text("uri");
  const Domain domain{timescaleUri, deviceUris, document.number("maxOffset_ns"),
                      document.number("minSyncDuration_ms")};
  requireTimescale(state, timescaleUri);
  if (!state.domains.emplace(uri, domain).second) throw Refusal(domainExists, uri);
}

/// Returns false if the domain was running already.
bool start(Domain& domain, bool saveInitialCoherency, std::int64_t nowNs) {
  if (domain.isRunning()) return false;
  domain.runningSince_ns = nowNs;
  domain.checkedSince_ns = saveInitialCoherency ? nowNs : 0;
  return true;
}

/// Starts a domain whose coherency the caller waits for, if that comes within the time-out.
void startAndWait(Operation& operation, const std::string& uri, bool saveInitialCoherency,
                  std::int64_t timeoutNs) {
  Domain domain = requireDomain(operation.state, uri);
  start(domain, saveInitialCoherency, operation.nowNs);
  const std::int64_t neededNs =
      std::max(domain.coherentFromNs() - operation.nowNs, std::int64_t{0});
  operation.waitNs = std::min(neededNs, timeoutNs);
  if (neededNs > timeoutNs) {
    operation.look = [uri](const State&, bool waitIsOver) {
      if (waitIsOver) throw Refusal(timedOut, uri);
    };
    return;
  }
  requireDomain(operation.state, uri) = domain;
  operation.look = [uri, since = domain.runningSince_ns](const State& state, bool) {
    const auto found = state.domains.find(uri);
    const bool runsOn = found != state.domains.end() && found->second.runningSince_ns == since;
    if (!runsOn) throw Refusal(domainStopped, uri);
  };
}

std::string listed(const nlohmann::json& objects) {
  return objects.dump(2);
}

}  // namespace

// Without a status it cannot be refused, but it takes its time as the others do.
std::uint32_t orsksapi_getApiVersion() {
  zuerr_Status status = zuerr_initialStatus;
  perform("getApiVersion", &status, [](Operation&) {});
  zuerr_release(&status);
  return 1;
}

void orsksapi_loadResources(const char* name, const char* json, zuerr_Status* status) {
  perform("loadResources", status, [&](Operation& operation) {
    const std::string host = remoteHostOf(name, json);
    const bool loaded = operation.state.hosts.insert(host).second;
    if (!loaded) operation.warning.emplace(hostAlreadyLoaded, host);
  });
}

void orsksapi_unloadResources(const char* name, const char* json, zuerr_Status* status) {
  perform("unloadResources", status, [&](Operation& operation) {
    const std::string host = remoteHostOf(name, json);
    requireHost(operation.state, host);
    if (isInUse(operation.state, host)) throw Refusal(hostInUse, host);
    operation.state.hosts.erase(host);
  });
}

void orsksapi_timescale_getTime(const char* timescaleUri, Timestamp* time, zuerr_Status* status) {
  Timestamp read{};
  const bool done = perform("timescale_getTime", status, [&](Operation& operation) {
    requireTimescale(operation.state, timescaleUri);
    const std::int64_t ahead = offsetNs(operation.state, timescaleUri, operation.nowNs);
    read = shifted({}, operation.nowNs + ahead);
  });
  *time = done ? read : Timestamp{};
}

void orsksapi_getCurrentTimescale(const char* remoteHost, char* buffer, std::size_t size,
                                  zuerr_Status* status) {
  performText("getCurrentTimescale", buffer, size, status, [&](Operation& operation) {
    requireHost(operation.state, remoteHost);
    const Domain* const domain = domainOfDevice(operation.state, deviceUriOf(remoteHost));
    const bool follows = domain != nullptr && domain->isRunning();
    return follows ? domain->timescaleUri : timescaleUriOf(remoteHost);
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
      throw Refusal(sameTimescale, created.timescaleUri1);
    }
    if (findCorrelator(operation.state, created.timescaleUri1, created.timescaleUri2) !=
        operation.state.correlators.end()) {
      throw Refusal(correlatorExists, created.timescaleUri1 + ", " + created.timescaleUri2);
    }
    operation.state.correlators.push_back(created);
  });
}

void orsksapi_timestampCorrelator_delete(const char* uri1, const char* uri2, zuerr_Status* status) {
  perform("timestampCorrelator_delete", status, [&](Operation& operation) {
    operation.state.correlators.erase(requireCorrelator(operation.state, uri1, uri2));
  });
}

void orsksapi_timestampCorrelator_correlate(const char* srcTimescaleUri,
                                            const char* dstTimescaleUri, const Timestamp* srcTime,
                                            Timestamp* dstTime, zuerr_Status* status) {
  Timestamp moved{};
  const bool done = perform("timestampCorrelator_correlate", status, [&](Operation& operation) {
    requireCorrelator(operation.state, srcTimescaleUri, dstTimescaleUri);
    moved = shifted(*srcTime, offsetNs(operation.state, dstTimescaleUri, operation.nowNs) -
                                  offsetNs(operation.state, srcTimescaleUri, operation.nowNs));
  });
  *dstTime = done ? moved : Timestamp{};
}

void orsksapi_syncDomain_create(const char* name, const char* json, zuerr_Status* status) {
  perform("syncDomain_create", status, [&](Operation& operation) {
    const Document document("syncDomainParams", name, json);
    createDomain(operation.state, document, document.text("timescaleUri"), {});
  });
}

bool orsksapi_syncDomain_start(const char* uri, std::uint32_t, zuerr_Status* status) {
  bool started = false;
  const bool done = perform("syncDomain_start", status, [&](Operation& operation) {
    started = start(requireDomain(operation.state, uri), false, operation.nowNs);
  });
  return done && started;
}

void orsksapi_syncDomain_startV2(const char* uri, bool saveInitialCoherency,
                                 bool waitToBecomeCoherent, std::uint32_t timeout,
                                 zuerr_Status* status) {
  perform("syncDomain_startV2", status, [&](Operation& operation) {
    if (waitToBecomeCoherent) {
      startAndWait(operation, uri, saveInitialCoherency, timeout * nsPerSecond);
    } else {
      start(requireDomain(operation.state, uri), saveInitialCoherency, operation.nowNs);
    }
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
    if (requireDomain(operation.state, uri).isRunning()) throw Refusal(domainRunning, uri);
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
  bool coherent = false;
  const bool done = perform("syncDomain_isCoherent", status, [&](Operation& operation) {
    coherent = requireDomain(operation.state, uri).isCoherentAt(operation.nowNs);
  });
  return done && coherent;
}

bool orsksapi_syncDomain_isCoherentSinceLastChecked(const char* uri, zuerr_Status* status) {
  bool coherent = false;
  const bool done =
      perform("syncDomain_isCoherentSinceLastChecked", status, [&](Operation& operation) {
        Domain& domain = requireDomain(operation.state, uri);
        const std::int64_t since = domain.checkedSince_ns;
        coherent = domain.isCoherentAt(since == 0 ? operation.nowNs : since);
        domain.checkedSince_ns = operation.nowNs;
      });
  return done && coherent;
}

void orsksapi_syncDomain_createAndAddDevices(const char* name, const char* json, char* buffer,
                                             std::size_t size, zuerr_Status* status) {
  performText("syncDomain_createAndAddDevices", buffer, size, status, [&](Operation& operation) {
    const Document document("syncDomainCreateAndAddRemoteDevicesParams", name, json);
    std::string timescaleUri = document.textOr(localTimescaleUri, "timescaleUri");
    std::vector<std::string> deviceUris;
    for (const std::string& host : document.texts("remoteHosts")) {
      requireHost(operation.state, host);
      requireFreeDevice(operation.state, deviceUriOf(host));
      const bool twice = std::count(deviceUris.begin(), deviceUris.end(), deviceUriOf(host)) > 0;
      if (twice) throw Refusal(deviceInUse, deviceUriOf(host));
      deviceUris.push_back(deviceUriOf(host));
    }
    createDomain(operation.state, document, timescaleUri, deviceUris);
    return timescaleUri;
  });
}

void orsksapi_getTimescaleInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getTimescaleInfo", buffer, size, status, [](Operation& operation) {
    std::vector<std::string> uris{localTimescaleUri};
    for (const std::string& host : operation.state.hosts) uris.push_back(timescaleUriOf(host));
    return listed(uris);
  });
}

void orsksapi_getSyncableDeviceInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getSyncableDeviceInfo", buffer, size, status, [](Operation& operation) {
    nlohmann::json uris = nlohmann::json::array();
    for (const std::string& host : operation.state.hosts) uris.push_back(deviceUriOf(host));
    return listed(uris);
  });
}

void orsksapi_getSyncDomainInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getSyncDomainInfo", buffer, size, status, [](Operation& operation) {
    nlohmann::json domains = operation.state.domains;
    for (const auto& [uri, domain] : operation.state.domains) {
      domains[uri]["coherent"] = domain.isCoherentAt(operation.nowNs);
    }
    return listed(domains);
  });
}

void orsksapi_getTimestampCorrelatorInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getTimestampCorrelatorInfo", buffer, size, status,
              [](Operation& operation) { return listed(operation.state.correlators); });
}
