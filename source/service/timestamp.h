#pragma once

#include <cstddef>
#include <cstdint>

#pragma pack(push, 1)
/// A time in the client library's C interface: 17 bytes, unaligned, in the platform's byte order.
struct Timestamp {
  /// Whole seconds, without a sign.
  std::uint64_t seconds;
  /// Nanoseconds within the second.
  std::uint32_t nanoseconds;
  /// Fraction of a nanosecond, in the service's own unit.
  std::uint32_t fraction;
  /// Not 0 if the time is negative.
  std::uint8_t negative;
};
#pragma pack(pop)

static_assert(sizeof(Timestamp) == 17 && offsetof(Timestamp, seconds) == 0 &&
                  offsetof(Timestamp, nanoseconds) == 8 && offsetof(Timestamp, fraction) == 12 &&
                  offsetof(Timestamp, negative) == 16,
              "The client library has this layout: do not change the members.");
