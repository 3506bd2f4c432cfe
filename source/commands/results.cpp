#include "commands/results.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

namespace {

/// Returns the error number of a write that failed after it was accepted, or 0. Network file
/// systems, quotas and FUSE report such a write when a descriptor of the file is closed, see
/// close(2).
int errorAtClose() {
  const int copy = dup(STDOUT_FILENO);
  return copy >= 0 && close(copy) != 0 ? errno : 0;
}

}  // namespace

void throwIfNotWritten(int error) {
  if (error == 0) error = errorAtClose();
  if (error == 0) return;
  throw std::runtime_error(std::string("standard output: ") + std::strerror(error));
}
