#include "commands/results.h"

#include <cstring>
#include <string>

void throwIfNotWritten(int error) {
  if (error == 0) return;
  throw std::runtime_error(std::string("standard output: ") + std::strerror(error));
}
