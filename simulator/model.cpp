#include "simulator/model.h"

#include <algorithm>

#include "simulator/reports.h"

namespace simulator {

namespace {

/// Returns the host's name in a URI, or "" if there is none.
std::string hostInUri(const std::string& prefix, const std::string& uri) {
  return uri.starts_with(prefix) ? uri.substr(prefix.size()) : "";
}

/// Returns a number from -max to max that depends on the name alone: its FNV-1a hash, reduced to
/// the range.
std::int64_t derivedFrom(const std::string& name, std::int64_t max) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char byte : name) hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
  return static_cast<std::int64_t>(hash % static_cast<std::uint64_t>(2 * max + 1)) - max;
}

}  // namespace

bool isValid(const State& state) {
  const auto isMoment = [](std::int64_t ns) { return ns >= 0 && ns <= latestNs; };
  bool valid = state.clock_ns == 0 || state.clock_ns >= simulatedTimeStartNs;
  valid &= isMoment(state.clock_ns) && !state.hosts.contains("") && !state.domains.contains("") &&
           !state.calls.contains("");
  for (const auto& [uri, domain] : state.domains)
    valid &= isMoment(domain.runningSince_ns) && isMoment(domain.checkedSince_ns) &&
             !domain.timescaleUri.empty() && std::ranges::count(domain.deviceUris, "") == 0;
  for (const Correlator& known : state.correlators)
    valid &= !known.timescaleUri1.empty() && !known.timescaleUri2.empty();
  return valid;
}

void requireHost(const State& state, const std::string& host) {
  if (!state.hosts.contains(host)) throw Report{hostNotLoaded, host};
}

void requireTimescale(const State& state, const std::string& uri) {
  if (uri != localTimescaleUri && !state.hosts.contains(hostInUri(timescalePrefix, uri)))
    throw Report{timescaleUnknown, uri};
}

void requireFreeDevice(const State& state, const std::string& uri) {
  if (!state.hosts.contains(hostInUri(devicePrefix, uri))) throw Report{deviceUnknown, uri};
  if (domainOfDevice(state, uri) != nullptr) throw Report{deviceInUse, uri};
}

Domain& requireDomain(State& state, const std::string& uri) {
  const auto found = state.domains.find(uri);
  if (found == state.domains.end()) throw Report{domainUnknown, uri};
  return found->second;
}

bool isInUse(const State& state, const std::string& host) {
  const std::string uri = timescalePrefix + host;
  bool used = domainOfDevice(state, devicePrefix + host) != nullptr;
  for (const auto& [domainUri, domain] : state.domains) used |= domain.timescaleUri == uri;
  for (const Correlator& known : state.correlators)
    used |= known.timescaleUri1 == uri || known.timescaleUri2 == uri;
  return used;
}

const Domain* domainOfDevice(const State& state, const std::string& uri) {
  for (const auto& [domainUri, domain] : state.domains)
    if (std::ranges::count(domain.deviceUris, uri) > 0) return &domain;
  return nullptr;
}

std::int64_t offsetNs(const State& state, const std::string& timescaleUri, std::int64_t nowNs) {
  std::int64_t offset = 0;
  std::string uri = timescaleUri;
  // Domains may follow each other in a ring. The first clock that repeats keeps its own offset.
  std::set<std::string> followed;
  while (uri != localTimescaleUri) {
    const std::string host = hostInUri(timescalePrefix, uri);
    const Domain* const domain = domainOfDevice(state, devicePrefix + host);
    const bool follows = followed.insert(uri).second && domain != nullptr &&
                         domain->isCoherentAt(nowNs) && domain->timescaleUri != uri;
    if (!follows) return offset + derivedFrom(host, 10 * nsPerSecond);
    offset += derivedFrom(host, domain->maxOffset_ns);
    uri = domain->timescaleUri;
  }
  return offset;
}

Timestamp shifted(const Timestamp& time, std::int64_t ns) {
  // Units of 2^-32 ns, as in the fraction word: every time is a whole number of them.
  __extension__ using Ticks = __int128;
  constexpr Ticks ticksPerNs = Ticks{1} << 32;
  constexpr Ticks ticksPerSecond = ticksPerNs * nsPerSecond;

  if (time.nanoseconds >= nsPerSecond)
    throw Report{timeOutOfRange, std::to_string(time.nanoseconds) + " ns"};
  const Ticks given = time.seconds * ticksPerSecond + time.nanoseconds * ticksPerNs + time.fraction;
  const Ticks moved = (time.negative != 0 ? -given : given) + ns * ticksPerNs;
  const Ticks magnitude = moved < 0 ? -moved : moved;
  if (magnitude / ticksPerSecond > UINT64_MAX)
    throw Report{timeOutOfRange, std::to_string(time.seconds) + " s"};
  return {static_cast<std::uint64_t>(magnitude / ticksPerSecond),
          static_cast<std::uint32_t>(magnitude % ticksPerSecond / ticksPerNs),
          static_cast<std::uint32_t>(magnitude % ticksPerNs),
          static_cast<std::uint8_t>(moved < 0 ? 1 : 0)};
}

}  // namespace simulator
