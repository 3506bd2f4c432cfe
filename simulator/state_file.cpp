#include "simulator/state_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "simulator/strict_json.h"

namespace simulator {

namespace {

/// Length in bytes of the longest text that is read or written.
constexpr std::size_t longestText = std::size_t{64} << 20;

[[noreturn]] void failWith(const std::string& path, const char* why = std::strerror(errno)) {
  throw Report{stateUnusable, path + ": " + why};
}

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Opens a regular file that belongs to the effective user and has one hard link.
File openOwn(const std::string& path, int flags) {
  const int number = open(path.c_str(), flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
  File file(number < 0 ? nullptr : fdopen(number, flags == O_RDONLY ? "r" : "r+"), std::fclose);
  struct stat status {};
  const int failure = !file || fstat(number, &status) != 0 ? errno : 0;
  if (failure == ELOOP) lstat(path.c_str(), &status);
  if (S_ISLNK(status.st_mode)) failWith(path, "is a symbolic link");
  if (failure != 0) failWith(path, std::strerror(failure));
  if (!S_ISREG(status.st_mode)) failWith(path, "is not a regular file");
  if (status.st_uid != geteuid()) failWith(path, "belongs to another user");
  if (status.st_nlink > 1) failWith(path, "has more than one hard link");
  return file;
}

/// Returns the state in a file's text: each value of its type and in its range, each member once,
/// and nothing else. Throws `damaged` for any other text.
State stateOf(const std::string& text, const Report& damaged) {
  using nlohmann::json;
  if (text.size() > longestText || text.find('\0') != std::string::npos) throw Report(damaged);
  try {
    json whole = parseStrictly(text, damaged);
    whole.emplace("clock_ns", 0);  // Version 1.0.0 had none.
    std::ranges::sort(whole.at("hosts").get_ref<json::array_t&>());
    State state = whole.get<State>();
    // The texts differ if a value was converted, dropped or repeated.
    if (!isValid(state) || json(state).dump() != whole.dump()) throw Report(damaged);
    return state;
  } catch (const json::exception&) {
    throw Report(damaged);  // Not JSON, or a value of another type.
  }
}

}  // namespace

void createFolders(const std::string& path) {
  for (auto end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1)) {
    const std::string folder = path.substr(0, end);
    if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) failWith(folder);
  }
}

std::unique_ptr<std::FILE, int (*)(std::FILE*)> lockState(const std::string& path) {
  File lock = openOwn(path + ".lock", O_RDWR | O_CREAT);
  while (flock(fileno(lock.get()), LOCK_EX) != 0)
    if (errno != EINTR) failWith(path + ".lock");
  return lock;
}

State readState(const std::string& path) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0 && errno == ENOENT) return {};
  const File file = openOwn(path, O_RDONLY);
  if (fstat(fileno(file.get()), &status) != 0) failWith(path);
  std::string text(std::min(static_cast<std::size_t>(status.st_size), longestText + 1), '\0');
  text.resize(std::fread(text.data(), 1, text.size(), file.get()));
  if (std::ferror(file.get()) != 0) failWith(path);
  return stateOf(text, Report{stateDamaged, path});
}

void writeState(const std::string& path, const State& state) {
  const std::string text = nlohmann::json(state).dump(2) + '\n';
  if (text.size() > longestText) failWith(path, std::strerror(EFBIG));
  const std::string temporary = path + ".new";
  // A killed process may have left one.
  const File file = openOwn(temporary, O_RDWR | O_CREAT);
  const int number = fileno(file.get());
  const bool written = fchmod(number, 0600) == 0 && ftruncate(number, 0) == 0 &&
                       std::fputs(text.c_str(), file.get()) >= 0 && std::fflush(file.get()) == 0 &&
                       fsync(number) == 0 && rename(temporary.c_str(), path.c_str()) == 0;
  if (written) return;
  const char* const why = std::strerror(errno);
  unlink(temporary.c_str());
  failWith(path, why);
}

}  // namespace simulator
