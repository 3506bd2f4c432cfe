// Starts the tests of a program. They must not reach the real service, nor depend on the caller's environment.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <iostream>

#include "interface/orsksapi.h"

int main(int argc, char** argv) {
  // The program starts again, since static objects may have read the environment.
  for (char** variable = environ; *variable != nullptr; ++variable) {
    if (std::strncmp(*variable, "ORSK_", 5) != 0) continue;
    unsetenv(std::string(*variable, std::strcspn(*variable, "=")).c_str());
    execv("/proc/self/exe", argv);
  }
  testing::InitGoogleTest(&argc, argv);
  // A preloaded library takes precedence over any path.
  Dl_info found{};
  dladdr(reinterpret_cast<const void*>(orsksapi_getApiVersion), &found);
  const auto program = std::filesystem::canonical("/proc/self/exe");
  const auto library = std::filesystem::weakly_canonical(found.dli_fname);
  if (library != program && library.parent_path() != program.parent_path().parent_path() / "lib") {
    std::cerr << argv[0] << ": the client library is not from this build: " << library << '\n';
    return 1;
  }
  return RUN_ALL_TESTS();
}
