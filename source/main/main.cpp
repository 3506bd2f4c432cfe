#include "main/console.h"
#include "output/standard_streams.h"

namespace {

// The loader calls it before the client library's constructors, which may open files already.
using Preparation = void (*)();
[[gnu::section(".preinit_array"), gnu::used]] const Preparation preparation =
    protectStandardStreams;

}  // namespace

int main(int argc, char** argv) {
  return runConsole(argc, argv);
}
