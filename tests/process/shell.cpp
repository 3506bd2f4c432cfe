#include "process/shell.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace {

/// A folder of its own for one run.
struct Scratch {
  Scratch() {
    std::string pattern = std::filesystem::temp_directory_path() / "orskapp-test-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no scratch folder");
    path = pattern;
  }
  ~Scratch() { std::filesystem::remove_all(path); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  std::string read(const char* name) const {
    std::ostringstream content;
    content << std::ifstream(path / name, std::ios::binary).rdbuf();
    return content.str();
  }

  std::filesystem::path path;
};

}  // namespace

ShellOutcome runShell(const std::string& line) {
  const Scratch scratch;
  const std::string log = "ORSK_TEST_LOG=" + (scratch.path / "calls").string();
  const char* const runnerVariable = std::getenv("ORSK_TEST_RUNNER");
  const std::string runner = std::string("ORSK_TEST_RUNNER=") + (runnerVariable == nullptr ? "" : runnerVariable);
  const char* const arguments[] = {"bash", "--norc", "-c", line.c_str(), nullptr};
  const std::string state = "ORSK_SIMULATOR_STATE=" + (scratch.path / "state.json").string();
  const std::string folder = "SCRATCH=" + scratch.path.string();
  const char* const environment[] = {"PATH=" ORSK_TEST_BIN ":/usr/bin:/bin",
                                     "LC_ALL=C",
                                     "LD_LIBRARY_PATH=" ORSK_TEST_LIBRARY,
                                     "BASH_ENV=" ORSK_TEST_ROOT "/tests/cases/functions.bash",
                                     runner.c_str(),
                                     log.c_str(),
                                     state.c_str(),
                                     folder.c_str(),
                                     "ROOT=" ORSK_TEST_ROOT,
                                     "CALLING_LINES=" ORSK_TEST_CALLING_LINES,
                                     nullptr};

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  const auto redirect = [&](int descriptor, const char* name, int flags) {
    posix_spawn_file_actions_addopen(&actions, descriptor, name, flags, 0600);
  };
  redirect(0, "/dev/null", O_RDONLY);
  redirect(1, (scratch.path / "output").c_str(), O_WRONLY | O_CREAT);
  redirect(2, (scratch.path / "errors").c_str(), O_WRONLY | O_CREAT);
  pid_t child = 0;
  const int failure = posix_spawn(&child, "/bin/bash", &actions, nullptr, const_cast<char* const*>(arguments),
                                  const_cast<char* const*>(environment));
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  if (failure != 0 || waitpid(child, &status, 0) != child) throw std::runtime_error("no shell");
  return {scratch.read("output"), scratch.read("errors"), scratch.read("calls"),
          WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status)};
}
