#pragma once

/// What the stand-in service knows, and the rules of its objects and clocks. Whatever a rule
/// refuses is thrown as a `Refusal`.

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "service/timestamp.h"

namespace simulator {

struct Domain {
  std::string timescaleUri;
  std::vector<std::string> deviceUris;
  std::uint32_t maxOffset_ns = 0;
  std::uint32_t minSyncDuration_ms = 0;
  /// System time in nanoseconds; 0 while stopped.
  std::int64_t runningSince_ns = 0;
  /// From when the next `isCoherentSinceLastChecked` answers, as `runningSince_ns`; 0: for its
  /// moment only.
  std::int64_t checkedSince_ns = 0;

  bool isRunning() const { return runningSince_ns != 0; }
  /// When a running domain becomes coherent.
  std::int64_t coherentFromNs() const;
  bool isCoherentAt(std::int64_t nowNs) const { return isRunning() && nowNs >= coherentFromNs(); }
};

struct Correlator {
  std::string timescaleUri1;
  std::string timescaleUri2;
  std::uint32_t samplingIntervalMs = 0;
  std::uint32_t maxSampleSize = 0;
};

/// Everything that lasts from one run to the next. `calls` counts the calls of operations that are
/// to fail at their N-th.
struct State {
  std::set<std::string> hosts;
  std::map<std::string, Domain> domains;
  std::vector<Correlator> correlators;
  std::map<std::string, std::uint64_t> calls;
};

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Domain, timescaleUri, deviceUris, maxOffset_ns,
                                   minSyncDuration_ms, runningSince_ns, checkedSince_ns)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Correlator, timescaleUri1, timescaleUri2, samplingIntervalMs,
                                   maxSampleSize)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(State, hosts, domains, correlators, calls)

inline constexpr const char* localTimescaleUri = "timescale:local";
std::string timescaleUriOf(const std::string& host);
std::string deviceUriOf(const std::string& host);

void requireHost(const State& state, const std::string& host);
void requireTimescale(const State& state, const std::string& uri);
/// The device exists and is in no sync domain.
void requireFreeDevice(const State& state, const std::string& uri);
Domain& requireDomain(State& state, const std::string& uri);
/// The correlator of two timescales, in either order, or the end.
std::vector<Correlator>::iterator findCorrelator(State& state, const std::string& uri1,
                                                 const std::string& uri2);
std::vector<Correlator>::iterator requireCorrelator(State& state, const std::string& uri1,
                                                    const std::string& uri2);

/// Whether a sync domain or a correlator has to do with the host.
bool isInUse(const State& state, const std::string& host);
/// Returns the domain that a device is in, or null.
const Domain* domainOfDevice(const State& state, const std::string& uri);

/// What a timescale is ahead of the system's clock at the moment `nowNs`. A host's clock has an
/// offset of its own that its name gives, unless its device is in a coherent domain: then it
/// follows the domain's timescale, as far from it as its name and the domain's limit give.
std::int64_t offsetNs(const State& state, const std::string& timescaleUri, std::int64_t nowNs);

/// `time` moved by `ns`.
Timestamp shifted(const Timestamp& time, std::int64_t ns);

}  // namespace simulator
