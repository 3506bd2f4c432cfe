#include "simulator/model.h"

#include <algorithm>
#include <utility>

#include "simulator/outcomes.h"

namespace simulator {

namespace {

const std::string timescalePrefix = "timescale://";
const std::string devicePrefix = "device://";

/// The host's name in a URI, or "", which no host has.
std::string hostBehind(const std::string& prefix, const std::string& uri) {
  return uri.starts_with(prefix) ? uri.substr(prefix.size()) : "";
}

/// A number from -most to most that a name always gives: FNV-1a over its bytes, cut to the range.
std::int64_t derivedFrom(const std::string& name, std::int64_t most) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char byte : name) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
  }
  return static_cast<std::int64_t>(hash % static_cast<std::uint64_t>(2 * most + 1)) - most;
}

}  // namespace

bool isSound(const State& state) {
  const auto isMoment = [](std::int64_t ns) { return ns >= 0 && ns <= latestNs; };
  bool sound = isMoment(state.clock_ns) && !state.hosts.contains("") && !state.domains.contains("");
  for (const auto& [uri, domain] : state.domains) {
    sound &= isMoment(domain.runningSince_ns) && isMoment(domain.checkedSince_ns) &&
             !domain.timescaleUri.empty() && std::ranges::count(domain.deviceUris, "") == 0;
  }
  for (const Correlator& known : state.correlators) {
    sound &= !known.timescaleUri1.empty() && !known.timescaleUri2.empty();
  }
  return sound;
}

std::string timescaleUriOf(const std::string& host) {
  return timescalePrefix + host;
}

std::string deviceUriOf(const std::string& host) {
  return devicePrefix + host;
}

void requireHost(const State& state, const std::string& host) {
  if (!state.hosts.contains(host)) throw Refusal(hostNotLoaded, host);
}

void requireTimescale(const State& state, const std::string& uri) {
  const bool known =
      uri == localTimescaleUri || state.hosts.contains(hostBehind(timescalePrefix, uri));
  if (!known) throw Refusal(timescaleUnknown, uri);
}

void requireFreeDevice(const State& state, const std::string& uri) {
  if (!state.hosts.contains(hostBehind(devicePrefix, uri))) throw Refusal(deviceUnknown, uri);
  if (domainOfDevice(state, uri) != nullptr) throw Refusal(deviceInUse, uri);
}

Domain& requireDomain(State& state, const std::string& uri) {
  const auto found = state.domains.find(uri);
  if (found == state.domains.end()) throw Refusal(domainUnknown, uri);
  return found->second;
}

std::vector<Correlator>::iterator findCorrelator(State& state, const std::string& uri1,
                                                 const std::string& uri2) {
  return std::ranges::find_if(state.correlators, [&](const Correlator& known) {
    return std::minmax(known.timescaleUri1, known.timescaleUri2) == std::minmax(uri1, uri2);
  });
}

std::vector<Correlator>::iterator requireCorrelator(State& state, const std::string& uri1,
                                                    const std::string& uri2) {
  const auto found = findCorrelator(state, uri1, uri2);
  if (found == state.correlators.end()) throw Refusal(correlatorUnknown, uri1 + ", " + uri2);
  return found;
}

bool isInUse(const State& state, const std::string& host) {
  const std::string uri = timescaleUriOf(host);
  bool used = domainOfDevice(state, deviceUriOf(host)) != nullptr;
  for (const auto& [domainUri, domain] : state.domains) used |= domain.timescaleUri == uri;
  for (const Correlator& known : state.correlators) {
    used |= known.timescaleUri1 == uri || known.timescaleUri2 == uri;
  }
  return used;
}

const Domain* domainOfDevice(const State& state, const std::string& uri) {
  for (const auto& [domainUri, domain] : state.domains) {
    if (std::count(domain.deviceUris.begin(), domain.deviceUris.end(), uri) > 0) return &domain;
  }
  return nullptr;
}

void moveMoments(State& state, std::int64_t byNs) {
  for (auto& [uri, domain] : state.domains) {
    for (std::int64_t* const moment : {&domain.runningSince_ns, &domain.checkedSince_ns}) {
      if (*moment != 0) *moment = std::clamp(*moment + byNs, std::int64_t{1}, latestNs);
    }
  }
}

std::int64_t offsetNs(const State& state, const std::string& timescaleUri, std::int64_t nowNs) {
  std::int64_t offset = 0;
  std::string uri = timescaleUri;
  // Where domains follow each other in a ring, the first clock that comes round keeps its own
  // offset.
  std::set<std::string> followed;
  while (uri != localTimescaleUri) {
    const std::string host = hostBehind(timescalePrefix, uri);
    const Domain* const domain = domainOfDevice(state, deviceUriOf(host));
    const bool follows = followed.insert(uri).second && domain != nullptr &&
                         domain->isCoherentAt(nowNs) && domain->timescaleUri != uri;
    if (!follows) return offset + derivedFrom(host, 10 * nsPerSecond);
    offset += derivedFrom(host, domain->maxOffset_ns);
    uri = domain->timescaleUri;
  }
  return offset;
}

Timestamp shifted(const Timestamp& time, std::int64_t ns) {
  // Units of 2^-32 ns, the fraction word's, in which every time is whole.
  __extension__ using Ticks = __int128;
  constexpr Ticks ticksPerNs = Ticks{1} << 32;
  constexpr Ticks ticksPerSecond = ticksPerNs * nsPerSecond;

  if (time.nanoseconds >= nsPerSecond) {
    throw Refusal(timeOutOfRange, std::to_string(time.nanoseconds) + " ns");
  }
  const Ticks given = time.seconds * ticksPerSecond + time.nanoseconds * ticksPerNs + time.fraction;
  const Ticks moved = (time.negative != 0 ? -given : given) + ns * ticksPerNs;
  const Ticks magnitude = moved < 0 ? -moved : moved;
  if (magnitude / ticksPerSecond > UINT64_MAX) {
    throw Refusal(timeOutOfRange, std::to_string(time.seconds) + " s");
  }
  return {static_cast<std::uint64_t>(magnitude / ticksPerSecond),
          static_cast<std::uint32_t>(magnitude % ticksPerSecond / ticksPerNs),
          static_cast<std::uint32_t>(magnitude % ticksPerNs),
          static_cast<std::uint8_t>(moved < 0 ? 1 : 0)};
}

}  // namespace simulator
