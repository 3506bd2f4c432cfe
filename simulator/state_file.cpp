#include "simulator/state_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <set>

#include "simulator/outcomes.h"

namespace simulator {

namespace {

[[noreturn]] void failWith(const std::string& path, int failure = errno) {
  throw Refusal(stateUnusable, path + ": " + std::strerror(failure));
}

std::filesystem::path statePath() {
  const auto variable = [](const char* name) {
    const char* const value = std::getenv(name);
    return std::filesystem::path(value == nullptr ? "" : value);
  };
  if (auto path = variable("ORSK_SIMULATOR_STATE"); !path.empty()) return path;
  // A relative XDG_STATE_HOME counts as unset, as for every XDG base directory.
  auto folder = variable("XDG_STATE_HOME");
  if (!folder.is_absolute()) {
    if (variable("HOME").empty()) throw Refusal(stateUnusable, "HOME is not set");
    folder = variable("HOME") / ".local" / "state";
  }
  return folder / "orskapp" / "simulator.json";
}

/// The place itself, behind all symbolic links, so that one state has one lock.
std::filesystem::path resolvedStatePath() {
  const std::filesystem::path named = statePath();
  try {
    std::filesystem::path path = std::filesystem::absolute(named);
    for (int links = 0; std::filesystem::is_symlink(path); ++links) {
      if (links == 40) failWith(named, ELOOP);  // As the kernel: path_resolution(7).
      path = path.parent_path() / std::filesystem::read_symlink(path);
    }
    return path;
  } catch (const std::filesystem::filesystem_error& error) {
    failWith(named, error.code().value());
  }
}

/// Makes the folders that are missing. What goes wrong shows when the lock is opened.
std::string madeFolder(const std::filesystem::path& folder) {
  std::filesystem::path made;
  for (const auto& part : folder) mkdir((made /= part).c_str(), 0700);
  return folder;
}

/// The permissions of an open file, which must be one that holds text.
mode_t modeOfRegular(int file, const std::string& path) {
  struct stat status {};
  if (file < 0 || fstat(file, &status) != 0) failWith(path);
  if (S_ISDIR(status.st_mode)) failWith(path, EISDIR);
  if (!S_ISREG(status.st_mode)) throw Refusal(stateUnusable, path + ": Not a regular file");
  return status.st_mode & 07777;
}

/// Whether `path` still names this open file.
bool isNamed(int file, const std::string& path) {
  struct stat open {
  }, named{};
  return fstat(file, &open) == 0 && lstat(path.c_str(), &named) == 0 &&
         open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

Descriptor locked(const std::string& path) {
  for (;;) {
    Descriptor file(
        open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
    modeOfRegular(file.number, path);
    while (flock(file.number, LOCK_EX) != 0) {
      if (errno != EINTR) failWith(path);
    }
    if (isNamed(file.number, path)) return file;
  }
}

/// What a file's text holds, if every value has its type and range, is there once and nothing else
/// is.
std::optional<State> stateOf(const std::string& text) {
  using nlohmann::json;
  // The parser would keep the last of several members with one name.
  std::vector<std::set<std::string>> names;
  bool onlyOnce = true;
  const auto watch = [&](int, json::parse_event_t event, const json& parsed) {
    if (event == json::parse_event_t::object_start) names.emplace_back();
    if (event == json::parse_event_t::object_end) names.pop_back();
    if (event == json::parse_event_t::key) onlyOnce &= names.back().insert(parsed).second;
    return true;
  };
  try {
    json whole = json::parse(text, watch);
    whole.emplace("clock_ns", 0);  // Version 1.0.0 had none.
    std::ranges::sort(whole.at("hosts").get_ref<json::array_t&>());
    State state = whole.get<State>();
    // A value that was converted, dropped or repeated does not come out as it went in.
    if (!onlyOnce || !isSound(state) || json(state).dump() != whole.dump()) return {};
    return state;
  } catch (const json::exception&) {
    return {};  // Not JSON, or a value of another type.
  }
}

/// Removes a file at the end, unless it is kept.
class Removal {
 public:
  explicit Removal(const char* name) : name_(name) {}
  Removal(const Removal&) = delete;
  Removal& operator=(const Removal&) = delete;
  ~Removal() {
    if (name_ != nullptr) unlink(name_);
  }
  void keep() { name_ = nullptr; }

 private:
  const char* name_;
};

}  // namespace

Descriptor::~Descriptor() {
  if (number >= 0) close(number);
}

StateFile::StateFile()
    : path_(resolvedStatePath()),
      folder_(madeFolder(std::filesystem::path(path_).parent_path())),
      lockPath_(path_ + ".lock"),
      lock_(locked(lockPath_)) {}

State StateFile::read() {
  const Descriptor file(open(path_.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (file.number < 0 && errno == ENOENT) return {};
  mode_ = modeOfRegular(file.number, path_);
  std::string text;
  char block[4096];
  ssize_t size = 0;
  while ((size = ::read(file.number, block, sizeof block)) > 0) {
    text.append(block, static_cast<std::size_t>(size));
  }
  if (size < 0) failWith(path_);
  if (std::optional<State> state = stateOf(text)) return *state;
  throw Refusal(stateDamaged, path_);
}

void StateFile::write(const State& state) const {
  const std::string text = nlohmann::json(state).dump(2) + '\n';
  std::string name = path_ + ".XXXXXX";
  const Descriptor file(mkostemp(name.data(), O_CLOEXEC));
  if (file.number < 0) failWith(path_);
  Removal temporary(name.c_str());
  const bool written = dprintf(file.number, "%s", text.c_str()) >= 0 &&
                       fchmod(file.number, mode_) == 0 && fsync(file.number) == 0;
  if (!written) failWith(path_);
  if (!isNamed(lock_.number, lockPath_)) throw StateRemoved();
  if (rename(name.c_str(), path_.c_str()) != 0) failWith(path_);
  temporary.keep();
  const Descriptor folder(open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  fsync(folder.number);
}

}  // namespace simulator
