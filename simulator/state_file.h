#pragma once

#include <string>

#include "model.h"

namespace simulator {

/// The file that a state lasts in, locked against every other user while this object lives.
/// Throws a `Refusal` for whatever goes wrong.
class StateFile {
 public:
  /// Finds the file's place in the environment and waits for the lock.
  StateFile();
  StateFile(const StateFile&) = delete;
  StateFile& operator=(const StateFile&) = delete;
  ~StateFile();

  /// Returns an empty state if there is no file yet. Leaves a damaged file as it is.
  State read() const;

  /// Replaces the whole file or nothing, whenever the process may be killed.
  void write(const State& state) const;

 private:
  std::string path_;
  int lock_;
};

}  // namespace simulator
