#pragma once

/// What the environment variables say.

#include <cstdint>
#include <optional>
#include <string>

namespace simulator {

struct InjectedFault {
  /// Empty: none.
  std::string operation;
  std::int32_t code = 0;
  /// The call that fails; 0: every call.
  std::uint64_t call = 0;
};

/// The environment variables of one operation.
struct Settings {
  std::int64_t delayNs = 0;
  /// Duration of an operation in simulated time; none in system time.
  std::optional<std::int64_t> stepNs;
  InjectedFault fault;
  std::string statePath;
};

/// Reads the variables: first the delay, which applies also if another variable is invalid. Throws
/// an `Error` for an invalid variable.
void readSettings(Settings& settings);

}  // namespace simulator
