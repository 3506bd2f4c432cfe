// orskapp-rehearse [COMMAND [ARGUMENT...]]: runs a command, or the user's shell, in which orskapp
// is the simulator, see orskapp-rehearse(1). Its own failures have the statuses of env(1): 125,
// 126, 127.

#include <sys/auxv.h>
#include <sys/wait.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>

namespace {

using std::filesystem::path;

[[noreturn]] void fail(const std::string& what, int error = errno) {
  throw std::system_error(error, std::generic_category(), what);
}

void requireFile(const path& file, int access) {
  if (::access(file.c_str(), access) != 0) fail(file);
  if (!is_regular_file(file)) fail(file, EISDIR);
}

/// Requires that a list of folders with these separators can contain `folder`.
void requireNone(const char* separators, const std::string& folder) {
  if (folder.find_first_of(separators) == std::string::npos) return;
  fail(folder + ": contains one of " + separators, EINVAL);
}

/// Sets a variable that the environment may contain several times.
void setVariable(const char* name, const std::string& value) {
  unsetenv(name);
  if (setenv(name, value.c_str(), 1) != 0) fail(name);
}

/// A new folder in TMPDIR or /tmp, which is deleted with its scope.
class Folder {
 public:
  Folder() {
    const char* const parent = std::getenv("TMPDIR");
    path_ =
        canonical(path(parent == nullptr || *parent == '\0' ? "/tmp" : parent)) / "orskapp-XXXXXX";
    requireNone(":", path_);
    if (mkdtemp(path_.data()) == nullptr) fail(path_);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code error;
    remove_all(path(path_), error);
    if (error)
      std::fprintf(stderr, "orskapp-rehearse: %s: %s\n", path_.c_str(), error.message().c_str());
  }

  const std::string& name() const { return path_; }

 private:
  std::string path_;
};

/// Makes `orskapp` the simulator for the programs that this process starts. The folder is first in
/// PATH, and an installed program takes the simulator's library.
void enter(const Folder& folder) {
  // The path by which this program was started: there may be no /proc.
  const path here = canonical(path(std::bit_cast<const char*>(getauxval(AT_EXECFN)))).parent_path();
  const path program = here / "orskapp-simulated";
  const path library = canonical(here / ORSKAPP_SIMULATOR_FOLDER);
  requireFile(program, X_OK);
  requireFile(library / "liborsksapi.so.1", R_OK);
  requireNone(":;$", library);
  create_symlink(program, folder.name() + "/orskapp");

  const char* const searched = std::getenv("PATH");
  setVariable("PATH", folder.name() + ':' +
                          (searched == nullptr ? "/usr/local/bin:/usr/bin:/bin" : searched));
  setVariable("LD_LIBRARY_PATH", library);
  unsetenv("LD_PRELOAD");
  unsetenv("LD_AUDIT");
  // The caller may have a state of its own, as an outer rehearsal has.
  if (setenv("ORSK_SIMULATOR_STATE", (folder.name() + "/state.json").c_str(), 0) != 0)
    fail("environment");
}

/// Runs the command, or the shell if there is none. Passes on the signals in `awaited`, which are
/// blocked. Returns the command's status, or 128 and the number of a signal.
int run(char** command, const sigset_t& awaited, const sigset_t& unblocked) {
  const char* const shell = std::getenv("SHELL");
  std::string name = shell == nullptr || *shell == '\0' ? "/bin/sh" : shell;
  char* shellCommand[] = {name.data(), nullptr};
  char** const arguments = *command == nullptr ? shellCommand : command;
  const pid_t child = fork();
  if (child < 0) fail("fork");
  if (child == 0) {
    sigprocmask(SIG_SETMASK, &unblocked, nullptr);
    execvp(*arguments, arguments);
    const int error = errno;
    std::fprintf(stderr, "orskapp-rehearse: %s: %s\n", *arguments, std::strerror(error));
    _exit(error == ENOENT ? 127 : 126);
  }
  int received = 0;
  for (;;) {
    siginfo_t signal;
    const int number = sigwaitinfo(&awaited, &signal);
    if (number == SIGCHLD) {
      int status = 0;
      if (waitpid(child, &status, WNOHANG) != child) continue;
      if (received != 0) return 128 + received;
      return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    }
    if (number < 0) continue;
    received = number;
    // The terminal signals the command too.
    if (signal.si_code <= 0) kill(child, number);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && *argv[1] == '-') {
    const bool asked = std::strcmp(argv[1], "--help") == 0;
    std::fputs("usage: orskapp-rehearse [COMMAND [ARGUMENT...]]\n", asked ? stdout : stderr);
    return asked ? 0 : 125;
  }
  try {
    // From the start, so that a signal never leaves the folder.
    sigset_t awaited, unblocked;
    sigemptyset(&awaited);
    for (const int number : {SIGCHLD, SIGHUP, SIGINT, SIGTERM}) sigaddset(&awaited, number);
    sigprocmask(SIG_BLOCK, &awaited, &unblocked);
    // If the caller ignores it, there is no status.
    std::signal(SIGCHLD, SIG_DFL);

    const Folder folder;
    enter(folder);
    return run(argv + 1, awaited, unblocked);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "orskapp-rehearse: %s\n", error.what());
    return 125;
  }
}
