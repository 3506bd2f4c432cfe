#pragma once

/// The state file. State, its lock and its temporary file lie side by side and are regular files of
/// the effective user. Each function throws a `Report` for any failure.

#include <sys/stat.h>

#include <cstdio>
#include <memory>
#include <string>

#include "simulator/model.h"

namespace simulator {

/// Held while files are created: they get their mode whatever the user's umask is, also if the
/// process is killed.
struct Umask {
  ~Umask() { umask(before); }
  const mode_t before = umask(0077);
};

/// Creates the missing folders of a file.
void createFolders(const std::string& path);

/// Waits until no other process has the lock. Creates a missing lock. The lock ends with the
/// result; its file is never deleted.
std::unique_ptr<std::FILE, int (*)(std::FILE*)> lockState(const std::string& path);

/// Returns an empty state if there is no file. Does not change a damaged file. Needs no lock, since
/// a change replaces the file.
State readState(const std::string& path);

/// Replaces the whole file or nothing, even if the process is killed. Returns normally once the
/// file is replaced. Needs the lock.
void writeState(const std::string& path, const State& state);

}  // namespace simulator
