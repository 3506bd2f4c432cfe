// orskapp-rehearse [--] [COMMAND [ARGUMENT...]]: prepares an environment in which orskapp is the
// simulator, and becomes the command, or the user's shell, see orskapp-rehearse(1). Its own
// failures have the statuses of env(1): 125, 126, 127.

#include <poll.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
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

/// Returns a variable's value, or `otherwise` if it is not set or empty.
const char* environment(const char* name, const char* otherwise) {
  const char* const value = std::getenv(name);
  return value == nullptr || *value == '\0' ? otherwise : value;
}

/// Sets a variable that the environment may contain several times.
void setVariable(const char* name, const std::string& value) {
  unsetenv(name);
  if (setenv(name, value.c_str(), 1) != 0) fail(name);
}

/// Makes `orskapp` the simulator for whatever inherits the environment, by the link that is first
/// in PATH. An installed program that is called by its path takes the simulator's library.
void enter() {
  // A script that names this program in its first line is the path of AT_EXECFN.
  const path here = canonical(path("/proc/self/exe")).parent_path();
  const path library = canonical(here / ORSKAPP_SIMULATOR_FOLDER);
  requireFile(library / "liborsksapi.so.1", R_OK);
  requireFile(library / "bin/orskapp", X_OK);
  if (library.string().find_first_of(":;$") != std::string::npos)
    fail(library.string() + ": contains one of :;$", EINVAL);

  const char* const searched = std::getenv("PATH");
  setVariable("PATH", (library / "bin").string() + ':' +
                          (searched == nullptr ? "/usr/local/bin:/usr/bin:/bin" : searched));
  setVariable("LD_LIBRARY_PATH", library);
  setVariable("ORSKAPP_REHEARSAL", "1");
  unsetenv("LD_PRELOAD");
  unsetenv("LD_AUDIT");
}

/// Waits for the end of the process, then deletes the folder. Ignores errors.
[[noreturn]] void deleteAfter(int process, const std::string& folder) {
  pollfd ended{process, POLLIN, 0};
  while (poll(&ended, 1, -1) < 0 && errno == EINTR) {
  }
  // A job that still runs would create files beside those that are being deleted.
  const path deleted = folder + ".deleted";
  std::error_code ignored;
  rename(folder, deleted, ignored);
  remove_all(deleted, ignored);
  _exit(0);
}

/// Starts a process that deletes the folder when this process has ended, however that happens. This
/// process may become another program meanwhile.
void deleteAtEnd(const std::string& folder) {
  const auto process = static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0));
  if (process < 0) fail("pidfd_open");
  // The caller may ignore it: then there is no status.
  const auto handler = std::signal(SIGCHLD, SIG_DFL);
  const pid_t child = fork();
  if (child < 0) fail("fork");
  if (child == 0) {
    // It shares nothing with the command: no terminal, no folder and no stream, whose end a reader
    // may wait for. It is no child of the command, which may wait for all of those.
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, nullptr);
    setsid();
    if (chdir("/") != 0 || dup2(process, STDIN_FILENO) < 0) _exit(1);
    closefrom(STDIN_FILENO + 1);
    const pid_t grandchild = fork();
    if (grandchild == 0) deleteAfter(STDIN_FILENO, folder);
    _exit(grandchild < 0 ? 1 : 0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  std::signal(SIGCHLD, handler);
  if (status != 0) fail("fork", EAGAIN);
}

/// Creates a folder for the state in TMPDIR or /tmp, and deletes it at the end.
void createState() {
  std::uint64_t number = 0;
  if (getrandom(&number, sizeof number, 0) != sizeof number) fail("getrandom");
  const path parent = canonical(path(environment("TMPDIR", "/tmp")));
  const std::string folder = parent / ("orskapp-" + std::to_string(number));
  // First, so that nothing remains if this process is killed.
  deleteAtEnd(folder);
  const mode_t before = umask(0);
  const int result = mkdir(folder.c_str(), 0700);
  umask(before);
  if (result != 0) fail(folder);
  setVariable("ORSK_SIMULATOR_STATE", folder + "/state.json");
}

int printUsage(std::FILE* stream, int status) {
  std::fputs("usage: orskapp-rehearse [--] [COMMAND [ARGUMENT...]]\n", stream);
  return std::fflush(stream) == 0 ? status : 125;
}

}  // namespace

int main(int argc, char** argv) {
  char** command = argv + (argc > 0 ? 1 : 0);
  if (*command != nullptr && **command == '-') {
    const std::string_view option = *command++;
    if (option == "--help" || option == "-h") return printUsage(stdout, 0);
    if (option != "--") return printUsage(stderr, 125);
  }
  try {
    enter();
    // The caller may have a state of its own, as an outer rehearsal has.
    if (std::getenv("ORSK_SIMULATOR_STATE") == nullptr) createState();
    std::string shell = environment("SHELL", "/bin/sh");
    char* shellCommand[] = {shell.data(), nullptr};
    if (*command == nullptr) {
      command = shellCommand;
      if (isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0)
        std::fputs("orskapp is the simulator in this shell; exit ends the rehearsal.\n", stderr);
    }
    execvp(*command, command);
    const int error = errno;
    std::fprintf(stderr, "orskapp-rehearse: %s: %s\n", *command, std::strerror(error));
    return error == ENOENT ? 127 : 126;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "orskapp-rehearse: %s\n", error.what());
    return 125;
  }
}
