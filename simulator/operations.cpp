// The operations of the library's C interface: each is its work on the state, and its answer.

#include <algorithm>
#include <chrono>
#include <thread>

#include "documents.h"
#include "orsksapi.h"
#include "perform.h"

using namespace simulator;

namespace {

std::int64_t systemTimeNs() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

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
bool start(Domain& domain, bool saveInitialCoherency) {
  if (domain.isRunning()) return false;
  domain.runningSince_ns = systemTimeNs();
  domain.checkedSince_ns = saveInitialCoherency ? domain.runningSince_ns : 0;
  return true;
}

void waitForCoherency(const Domain& domain, const std::string& uri, std::uint32_t timeoutS) {
  const std::chrono::nanoseconds needed(domain.coherentFromNs() - systemTimeNs());
  const std::chrono::nanoseconds most = std::chrono::seconds(timeoutS);
  std::this_thread::sleep_for(std::min(needed, most));
  if (needed > most) throw Refusal(timedOut, uri);
}

std::string listed(const nlohmann::json& objects) {
  return objects.dump(2);
}

}  // namespace

std::uint32_t orsksapi_getApiVersion() {
  return 1;
}

void orsksapi_loadResources(const char* name, const char* json, zuerr_Status* status) {
  perform("loadResources", status, [&](State& state) {
    const std::string host = remoteHostOf(name, json);
    const bool loaded = state.hosts.insert(host).second;
    if (!loaded) leave(status, hostAlreadyLoaded, host.c_str());
  });
}

void orsksapi_unloadResources(const char* name, const char* json, zuerr_Status* status) {
  perform("unloadResources", status, [&](State& state) {
    const std::string host = remoteHostOf(name, json);
    requireHost(state, host);
    if (isInUse(state, host)) throw Refusal(hostInUse, host);
    state.hosts.erase(host);
  });
}

void orsksapi_timescale_getTime(const char* timescaleUri, Timestamp* time, zuerr_Status* status) {
  *time = {};
  perform("timescale_getTime", status, [&](State& state) {
    requireTimescale(state, timescaleUri);
    const std::int64_t now = systemTimeNs();
    *time = shifted({}, now + offsetNs(state, timescaleUri, now));
  });
}

void orsksapi_getCurrentTimescale(const char* remoteHost, char* buffer, std::size_t size,
                                  zuerr_Status* status) {
  performText("getCurrentTimescale", buffer, size, status, [&](State& state) {
    requireHost(state, remoteHost);
    const Domain* const domain = domainOfDevice(state, deviceUriOf(remoteHost));
    const bool follows = domain != nullptr && domain->isRunning();
    return follows ? domain->timescaleUri : timescaleUriOf(remoteHost);
  });
}

void orsksapi_timestampCorrelator_create(const char* name, const char* json, zuerr_Status* status) {
  perform("timestampCorrelator_create", status, [&](State& state) {
    const Document document("linearCorrelatorParams", name, json);
    const Correlator created{document.text("timescaleUri1"), document.text("timescaleUri2"),
                             document.number("samplingIntervalMs"),
                             document.number("maxSampleSize")};
    requireTimescale(state, created.timescaleUri1);
    requireTimescale(state, created.timescaleUri2);
    if (created.timescaleUri1 == created.timescaleUri2) {
      throw Refusal(sameTimescale, created.timescaleUri1);
    }
    if (findCorrelator(state, created.timescaleUri1, created.timescaleUri2) !=
        state.correlators.end()) {
      throw Refusal(correlatorExists, created.timescaleUri1 + ", " + created.timescaleUri2);
    }
    state.correlators.push_back(created);
  });
}

void orsksapi_timestampCorrelator_delete(const char* uri1, const char* uri2, zuerr_Status* status) {
  perform("timestampCorrelator_delete", status,
          [&](State& state) { state.correlators.erase(requireCorrelator(state, uri1, uri2)); });
}

void orsksapi_timestampCorrelator_correlate(const char* srcTimescaleUri,
                                            const char* dstTimescaleUri, const Timestamp* srcTime,
                                            Timestamp* dstTime, zuerr_Status* status) {
  *dstTime = {};
  perform("timestampCorrelator_correlate", status, [&](State& state) {
    requireCorrelator(state, srcTimescaleUri, dstTimescaleUri);
    const std::int64_t now = systemTimeNs();
    *dstTime = shifted(
        *srcTime, offsetNs(state, dstTimescaleUri, now) - offsetNs(state, srcTimescaleUri, now));
  });
}

void orsksapi_syncDomain_create(const char* name, const char* json, zuerr_Status* status) {
  perform("syncDomain_create", status, [&](State& state) {
    const Document document("syncDomainParams", name, json);
    createDomain(state, document, document.text("timescaleUri"), {});
  });
}

bool orsksapi_syncDomain_start(const char* uri, std::uint32_t, zuerr_Status* status) {
  bool started = false;
  const bool done = perform("syncDomain_start", status, [&](State& state) {
    started = start(requireDomain(state, uri), false);
  });
  return done && started;
}

void orsksapi_syncDomain_startV2(const char* uri, bool saveInitialCoherency,
                                 bool waitToBecomeCoherent, std::uint32_t timeout,
                                 zuerr_Status* status) {
  perform("syncDomain_startV2", status, [&](State& state) {
    Domain& domain = requireDomain(state, uri);
    start(domain, saveInitialCoherency);
    if (waitToBecomeCoherent) waitForCoherency(domain, uri, timeout);
  });
}

void orsksapi_syncDomain_stop(const char* uri, zuerr_Status* status) {
  perform("syncDomain_stop", status, [&](State& state) {
    Domain& domain = requireDomain(state, uri);
    if (!domain.isRunning()) leave(status, domainNotRunning, uri);
    domain.runningSince_ns = 0;
  });
}

void orsksapi_syncDomain_delete(const char* uri, zuerr_Status* status) {
  perform("syncDomain_delete", status, [&](State& state) {
    if (requireDomain(state, uri).isRunning()) throw Refusal(domainRunning, uri);
    state.domains.erase(uri);
  });
}

void orsksapi_syncDomain_addSyncableDevice(const char* uri, const char* deviceUri,
                                           zuerr_Status* status) {
  perform("syncDomain_addSyncableDevice", status, [&](State& state) {
    Domain& domain = requireDomain(state, uri);
    requireFreeDevice(state, deviceUri);
    domain.deviceUris.emplace_back(deviceUri);
  });
}

bool orsksapi_syncDomain_isCoherent(const char* uri, zuerr_Status* status) {
  bool coherent = false;
  perform("syncDomain_isCoherent", status,
          [&](State& state) { coherent = requireDomain(state, uri).isCoherentAt(systemTimeNs()); });
  return coherent;
}

bool orsksapi_syncDomain_isCoherentSinceLastChecked(const char* uri, zuerr_Status* status) {
  bool coherent = false;
  const bool done = perform("syncDomain_isCoherentSinceLastChecked", status, [&](State& state) {
    Domain& domain = requireDomain(state, uri);
    const std::int64_t now = systemTimeNs();
    coherent = domain.isCoherentAt(domain.checkedSince_ns == 0 ? now : domain.checkedSince_ns);
    domain.checkedSince_ns = now;
  });
  return done && coherent;
}

void orsksapi_syncDomain_createAndAddDevices(const char* name, const char* json, char* buffer,
                                             std::size_t size, zuerr_Status* status) {
  performText("syncDomain_createAndAddDevices", buffer, size, status, [&](State& state) {
    const Document document("syncDomainCreateAndAddRemoteDevicesParams", name, json);
    std::string timescaleUri = document.textOr(localTimescaleUri, "timescaleUri");
    std::vector<std::string> deviceUris;
    for (const std::string& host : document.texts("remoteHosts")) {
      requireHost(state, host);
      requireFreeDevice(state, deviceUriOf(host));
      const bool twice = std::count(deviceUris.begin(), deviceUris.end(), deviceUriOf(host)) > 0;
      if (twice) throw Refusal(deviceInUse, deviceUriOf(host));
      deviceUris.push_back(deviceUriOf(host));
    }
    createDomain(state, document, timescaleUri, deviceUris);
    return timescaleUri;
  });
}

void orsksapi_getTimescaleInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getTimescaleInfo", buffer, size, status, [](State& state) {
    std::vector<std::string> uris{localTimescaleUri};
    for (const std::string& host : state.hosts) uris.push_back(timescaleUriOf(host));
    return listed(uris);
  });
}

void orsksapi_getSyncableDeviceInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getSyncableDeviceInfo", buffer, size, status, [](State& state) {
    std::vector<std::string> uris;
    for (const std::string& host : state.hosts) uris.push_back(deviceUriOf(host));
    return listed(uris);
  });
}

void orsksapi_getSyncDomainInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getSyncDomainInfo", buffer, size, status, [](State& state) {
    nlohmann::json domains = state.domains;
    for (const auto& [uri, domain] : state.domains) {
      domains[uri]["coherent"] = domain.isCoherentAt(systemTimeNs());
    }
    return listed(domains);
  });
}

void orsksapi_getTimestampCorrelatorInfo(char* buffer, std::size_t size, zuerr_Status* status) {
  performText("getTimestampCorrelatorInfo", buffer, size, status,
              [](State& state) { return listed(state.correlators); });
}
