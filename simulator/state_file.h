#pragma once

#include <unistd.h>

#include <optional>
#include <string>
#include <utility>

#include "simulator/errors.h"
#include "simulator/model.h"

namespace simulator {

/// An open file that is closed with its scope; a negative number: none.
struct Descriptor {
  explicit Descriptor(int opened) noexcept : number(opened) {}
  Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor() {
    if (number >= 0) close(number);
  }

  int number;
};

/// Thrown if the state or its lock was deleted during an operation, which must then start again.
struct StateDeleted : Error {
  using Error::Error;
};

/// The state file, locked for one process while this object lives. State, lock and the temporary
/// file beside them are regular files of the effective user. Throws an `Error` for any failure.
class StateFile {
 public:
  enum class IfMissing { create, fail };

  /// Finds the path in the environment and waits for the lock. Creates a missing lock and its
  /// folders, or throws `StateDeleted`.
  explicit StateFile(IfMissing ifMissing);

  /// Returns an empty state if there is no file. Does not change a damaged file.
  State read();

  /// Replaces the whole file or nothing, even if the process is killed. Returns normally once the
  /// file is replaced.
  void write(const State& state) const;

 private:
  std::string path_;
  Descriptor lock_;
  std::optional<Descriptor> state_;
};

}  // namespace simulator
