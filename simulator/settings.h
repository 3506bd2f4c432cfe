#pragma once

/// What the environment variables say.

#include <cstdint>
#include <optional>
#include <string>

namespace simulator {

/// The environment variables of one operation.
struct Settings {
  std::int64_t delayNs = 0;
  /// Duration of an operation in simulated time; none in system time.
  std::optional<std::int64_t> stepNs;
  /// The operation that fails; empty: none.
  std::string failing;
  std::int32_t code = 0;
  /// The call that fails; 0: every call.
  std::uint64_t call = 0;
  std::string statePath;
  /// Whether missing folders of the state are created: those of the default path.
  bool createsFolders = false;
};

/// Reads the variables: first the delay, which applies also if another variable is invalid. Throws
/// a `Report` for an invalid variable.
void readSettings(Settings& settings);

}  // namespace simulator
