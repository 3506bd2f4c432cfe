#pragma once

/// The simulated service's objects and clocks, and their rules. A violated rule is thrown as an
/// `Report`.
///
/// A moment is a number of nanoseconds since 1970, from 0 to `latestNs`. The members of the
/// structures have the names that the state file and the lists use.

#include <algorithm>
#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "service/timestamp.h"

namespace simulator {

inline constexpr std::int64_t nsPerMs = 1'000'000;
inline constexpr std::int64_t nsPerSecond = 1'000'000'000;

/// The end of time, in the year 2255: a moment plus a duration or an offset stays within 64 bits.
inline constexpr std::int64_t latestNs = 9'000'000'000'000'000'000;
/// The start of simulated time: 2026-01-01 00:00:00 UTC.
inline constexpr std::int64_t simulatedTimeStartNs = 1'767'225'600 * nsPerSecond;

/// Returns `momentNs + ns`, at least 1 and at most `latestNs`.
constexpr std::int64_t addClamped(std::int64_t momentNs, std::int64_t ns) {
  return ns > latestNs - momentNs ? latestNs : std::max(momentNs + ns, std::int64_t{1});
}

struct Domain {
  std::string timescaleUri;
  std::vector<std::string> deviceUris;
  std::uint32_t maxOffset_ns = 0;
  std::uint32_t minSyncDuration_ms = 0;
  /// 0 while stopped.
  std::int64_t runningSince_ns = 0;
  /// Start of the interval that the next query covers; 0: the moment of the query.
  std::int64_t checkedSince_ns = 0;

  bool operator==(const Domain&) const = default;
  bool isRunning() const { return runningSince_ns != 0; }
  /// Returns the moment at which a running domain becomes coherent.
  std::int64_t coherentFromNs() const { return runningSince_ns + minSyncDuration_ms * nsPerMs; }
  bool isCoherentAt(std::int64_t ns) const { return isRunning() && ns >= coherentFromNs(); }
};

struct Correlator {
  std::string timescaleUri1;
  std::string timescaleUri2;
  std::uint32_t samplingIntervalMs = 0;
  std::uint32_t maxSampleSize = 0;

  bool operator==(const Correlator&) const = default;
};

/// Everything that the state file keeps.
struct State {
  std::set<std::string> hosts;
  std::map<std::string, Domain> domains;
  std::vector<Correlator> correlators;
  /// The number of calls of each operation that a fault "@N" counts.
  std::map<std::string, std::uint64_t> calls;
  /// The present moment in simulated time; 0 in system time.
  std::int64_t clock_ns = 0;

  bool operator==(const State&) const = default;
};

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Domain, timescaleUri, deviceUris, maxOffset_ns,
                                   minSyncDuration_ms, runningSince_ns, checkedSince_ns)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Correlator, timescaleUri1, timescaleUri2, samplingIntervalMs,
                                   maxSampleSize)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(State, hosts, domains, correlators, calls, clock_ns)

/// Returns whether each text and moment is in its range. Does not check whether the objects fit
/// together.
bool isValid(const State& state);

inline constexpr const char* localTimescaleUri = "timescale:local";
/// What precedes a host's name in the URI of its timescale and of its device.
inline const std::string timescalePrefix = "timescale://";
inline const std::string devicePrefix = "device://";

void requireHost(const State& state, const std::string& host);
void requireTimescale(const State& state, const std::string& uri);
/// Requires that the device exists and is in no sync domain.
void requireFreeDevice(const State& state, const std::string& uri);
Domain& requireDomain(State& state, const std::string& uri);
/// Returns a test for the correlator of two timescales, in either order.
inline auto relates(const std::string& uri1, const std::string& uri2) {
  return [=](const Correlator& known) {
    return std::minmax(known.timescaleUri1, known.timescaleUri2) == std::minmax(uri1, uri2);
  };
}

/// Returns whether a sync domain or a correlator uses the host.
bool isInUse(const State& state, const std::string& host);
/// Returns the domain that a device is in, or null.
const Domain* domainOfDevice(const State& state, const std::string& uri);

/// Returns how far a timescale is ahead of the local one. A host's clock has an offset of its own,
/// derived from the host's name. While its device is in a coherent domain it follows the domain's
/// timescale, with a deviation derived from the name and the domain's limit.
std::int64_t offsetNs(const State& state, const std::string& timescaleUri, std::int64_t nowNs);

/// Returns `time` moved by `ns`.
Timestamp shifted(const Timestamp& time, std::int64_t ns);

}  // namespace simulator
