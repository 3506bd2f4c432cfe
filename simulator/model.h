#pragma once

/// What the stand-in service knows, and the rules of its objects and clocks. Whatever a rule
/// refuses is thrown as a `Refusal`.
///
/// A moment is a number of nanoseconds since 1970, from 0 to `latestNs`. Members of the structures
/// are named as they stand in the state file and in the lists.

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "service/timestamp.h"

namespace simulator {

/// In the year 2255: whatever is added to a moment below stays within 64 bits.
inline constexpr std::int64_t latestNs = 9'000'000'000'000'000'000;
inline constexpr std::int64_t nsPerMs = 1'000'000;
inline constexpr std::int64_t nsPerSecond = 1'000'000'000;

struct Domain {
  std::string timescaleUri;
  std::vector<std::string> deviceUris;
  std::uint32_t maxOffset_ns = 0;
  std::uint32_t minSyncDuration_ms = 0;
  /// 0 while stopped.
  std::int64_t runningSince_ns = 0;
  /// From when the next `isCoherentSinceLastChecked` answers; 0: for its own moment only.
  std::int64_t checkedSince_ns = 0;

  bool operator==(const Domain&) const = default;
  bool isRunning() const { return runningSince_ns != 0; }
  /// When a running domain becomes coherent.
  std::int64_t coherentFromNs() const { return runningSince_ns + minSyncDuration_ms * nsPerMs; }
  bool isCoherentAt(std::int64_t momentNs) const {
    return isRunning() && momentNs >= coherentFromNs();
  }
};

struct Correlator {
  std::string timescaleUri1;
  std::string timescaleUri2;
  std::uint32_t samplingIntervalMs = 0;
  std::uint32_t maxSampleSize = 0;

  bool operator==(const Correlator&) const = default;
};

/// Everything that lasts from one run to the next.
struct State {
  std::set<std::string> hosts;
  std::map<std::string, Domain> domains;
  std::vector<Correlator> correlators;
  /// How often each operation was called that is to fail at its N-th call.
  std::map<std::string, std::uint64_t> calls;
  /// The present moment where a script rules the time; 0 where the system's clock does.
  std::int64_t clock_ns = 0;

  bool operator==(const State&) const = default;
};

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Domain, timescaleUri, deviceUris, maxOffset_ns,
                                   minSyncDuration_ms, runningSince_ns, checkedSince_ns)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Correlator, timescaleUri1, timescaleUri2, samplingIntervalMs,
                                   maxSampleSize)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(State, hosts, domains, correlators, calls, clock_ns)

/// Whether every text and moment of a state is one that an operation could have left.
bool isSound(const State& state);

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

/// Moves the moments of running domains, which keep how long they have been running.
void moveMoments(State& state, std::int64_t byNs);

/// What a timescale is ahead of the local one at the moment `nowNs`. A host's clock has an offset
/// of its own that its name gives, unless its device is in a coherent domain: then it follows the
/// domain's timescale, as far from it as its name and the domain's limit give.
std::int64_t offsetNs(const State& state, const std::string& timescaleUri, std::int64_t nowNs);

/// `time` moved by `ns`.
Timestamp shifted(const Timestamp& time, std::int64_t ns);

}  // namespace simulator
