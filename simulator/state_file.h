#pragma once

#include <sys/types.h>

#include <string>
#include <utility>

#include "simulator/model.h"

namespace simulator {

/// An open file that is closed with its scope; a negative number: none.
struct Descriptor {
  explicit Descriptor(int opened) noexcept : number(opened) {}
  Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor();

  int number;
};

/// Thrown when state and lock were removed under a run, which must then begin again.
struct StateRemoved {};

/// The file that a state lasts in, locked against every other user while this object lives.
/// Throws a `Refusal` for whatever goes wrong.
class StateFile {
 public:
  /// Finds the file's place in the environment and waits for the lock.
  StateFile();

  /// Returns an empty state if there is no file yet. Leaves a damaged file as it is.
  State read();

  /// Replaces the whole file or nothing, whenever the process may be killed. Throws `StateRemoved`
  /// when another run may be at work on a new state. Once the file is replaced nothing fails.
  void write(const State& state) const;

 private:
  std::string path_;
  std::string folder_;
  std::string lockPath_;
  Descriptor lock_;
  /// The file's permissions, for the one that replaces it.
  mode_t mode_ = 0600;
};

}  // namespace simulator
