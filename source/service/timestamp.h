#pragma once

#include <cstddef>
#include <cstdint>

#pragma pack(push, 1)
/// A time as the service library's C interface passes it: 17 bytes, unaligned, in the platform's
/// byte order.
struct Timestamp {
  /// Whole seconds, as a magnitude.
  std::uint64_t seconds;
  /// Nanoseconds within the second.
  std::uint32_t nanoseconds;
  /// A further sub-nanosecond word, in the library's own unit.
  std::uint32_t fraction;
  /// Nonzero when the time is negative.
  std::uint8_t negative;
};
#pragma pack(pop)

static_assert(sizeof(Timestamp) == 17 && offsetof(Timestamp, seconds) == 0 &&
                  offsetof(Timestamp, nanoseconds) == 8 && offsetof(Timestamp, fraction) == 12 &&
                  offsetof(Timestamp, negative) == 16,
              "The client library has this layout: do not change the members.");
