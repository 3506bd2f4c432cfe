#include <unistd.h>

#include <cstdlib>
#include <exception>

#include "main/console.h"
#include "output/standard_streams.h"

namespace {

// The loader calls this before the client library's constructors, which may open files.
using Preparation = void (*)();
[[gnu::section(".preinit_array"), gnu::used]] const Preparation preparation =
    protectStandardStreams;

}  // namespace

// Replaces the C++ runtime's terminate handler, whose demangler would be a quarter of the program.
// NOLINTNEXTLINE(bugprone-reserved-identifier, cert-dcl*): the runtime's name, see libstdc++'s
// manual.
void __gnu_cxx::__verbose_terminate_handler() {
  writeLine(STDERR_FILENO, "ERROR: The program was terminated by an exception.");
  std::abort();
}

int main(int argc, char** argv) {
  return runConsole(argc, argv);
}
