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
#include <memory>
#include <set>

#include "simulator/errors.h"

namespace simulator {

namespace {

/// Length in bytes of the longest text that is read or written.
constexpr std::size_t longestText = std::size_t{64} << 20;

/// The nesting of a domain's device list: state, domains, domain, list.
constexpr int deepestNesting = 4;

[[noreturn]] void failWith(const std::string& path, int failure = errno) {
  const std::string what = path + ": " + std::strerror(failure);
  // Deleted, or created by a process with a newer lock.
  if (failure == ENOENT || failure == EEXIST) throw StateDeleted(stateUnusable, what);
  throw Error(stateUnusable, what);
}

std::filesystem::path statePath() {
  const auto variable = [](const char* name) {
    const char* const value = std::getenv(name);
    return std::filesystem::path(value == nullptr ? "" : value);
  };
  if (auto path = variable("ORSK_SIMULATOR_STATE"); !path.empty()) {
    const std::string name = path.filename();
    if (name.empty() || name == "." || name == "..") failWith(path, EISDIR);
    return path;
  }
  // A relative XDG_STATE_HOME counts as unset, as for every XDG base directory.
  auto folder = variable("XDG_STATE_HOME");
  if (!folder.is_absolute()) {
    if (variable("HOME").empty()) throw Error(stateUnusable, "HOME is not set");
    folder = variable("HOME") / ".local" / "state";
  }
  return folder / "orskapp" / "simulator.json";
}

/// Opens a regular file that belongs to the effective user and has one hard link.
Descriptor openOwn(const std::string& path, int flags) {
  Descriptor file(open(path.c_str(), flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
  struct stat status {};
  const int failure = file.number < 0 || fstat(file.number, &status) != 0 ? errno : 0;
  if (failure == ELOOP) lstat(path.c_str(), &status);
  const auto require = [&](bool holds, const char* otherwise) {
    if (!holds) throw Error(stateUnusable, path + ": " + otherwise);
  };
  require(!S_ISLNK(status.st_mode), "is a symbolic link");
  if (failure != 0) failWith(path, failure);
  require(S_ISREG(status.st_mode), "is not a regular file");
  require(status.st_uid == geteuid(), "belongs to another user");
  require(status.st_nlink <= 1, "has more than one hard link");
  if (status.st_nlink == 0) failWith(path, ENOENT);
  return file;
}

/// Opens the lock. Creates a missing lock and its folders if `ifMissing` says so.
Descriptor openLock(const std::filesystem::path& path, StateFile::IfMissing ifMissing) {
  if (ifMissing == StateFile::IfMissing::fail) return openOwn(path, O_RDWR);
  std::filesystem::path folder;
  for (const auto& part : path.parent_path()) mkdir((folder /= part).c_str(), 0700);
  return openOwn(path, O_RDWR | O_CREAT);
}

/// Requires that `path` still names this open file.
void requireNamed(const Descriptor& file, const std::string& path) {
  struct stat open {
  }, named{};
  const bool isNamed = fstat(file.number, &open) == 0 && lstat(path.c_str(), &named) == 0 &&
                       open.st_dev == named.st_dev && open.st_ino == named.st_ino;
  if (!isNamed) failWith(path, ENOENT);
}

/// Returns the state in a file's text: each value of its type and in its range, each member once,
/// and nothing else. Throws `damaged` for any other text.
State stateOf(const std::string& text, const Error& damaged) {
  using nlohmann::json;
  if (text.size() > longestText || text.find('\0') != std::string::npos) throw Error(damaged);
  std::vector<std::set<std::string>> names;
  // The parser accepts repeated members and any depth, but the handling of its result is recursive.
  const auto check = [&](int depth, json::parse_event_t event, const json& parsed) {
    if (event == json::parse_event_t::object_start) names.emplace_back();
    if (event == json::parse_event_t::object_end) names.pop_back();
    const bool isKey = event == json::parse_event_t::key;
    const bool isRepeated = isKey && !names.back().insert(parsed).second;
    if (isRepeated || depth > deepestNesting) throw Error(damaged);
    return true;
  };
  try {
    json whole = json::parse(text, check);
    whole.emplace("clock_ns", 0);  // Version 1.0.0 had none.
    std::ranges::sort(whole.at("hosts").get_ref<json::array_t&>());
    State state = whole.get<State>();
    // The texts differ if a value was converted, dropped or repeated.
    if (!isValid(state) || json(state).dump() != whole.dump()) throw Error(damaged);
    return state;
  } catch (const json::exception&) {
    throw Error(damaged);  // Not JSON, or a value of another type.
  }
}

}  // namespace

StateFile::StateFile(IfMissing ifMissing)
    : path_(statePath()), lock_(openLock(path_ + ".lock", ifMissing)) {
  while (flock(lock_.number, LOCK_EX) != 0) {
    if (errno != EINTR) failWith(path_ + ".lock");
  }
  requireNamed(lock_, path_ + ".lock");
}

State StateFile::read() {
  struct stat status {};
  if (lstat(path_.c_str(), &status) != 0 && errno == ENOENT) return {};
  state_.emplace(openOwn(path_, O_RDONLY));
  std::string text;
  char block[4096];
  ssize_t size = 0;
  while (text.size() <= longestText && (size = ::read(state_->number, block, sizeof block)) > 0) {
    text.append(block, static_cast<std::size_t>(size));
  }
  if (size < 0) failWith(path_);
  return stateOf(text, Error(stateDamaged, path_));
}

void StateFile::write(const State& state) const {
  const std::string text = nlohmann::json(state).dump(2) + '\n';
  if (text.size() > longestText) failWith(path_, EFBIG);
  const std::string temporary = path_ + ".new",
                    folder = path_.substr(0, path_.rfind('/') + 1) + '.';
  // A killed process may have left one.
  if (unlink(temporary.c_str()) != 0 && errno != ENOENT) failWith(temporary);
  const Descriptor file = openOwn(temporary, O_WRONLY | O_CREAT | O_EXCL);
  const std::unique_ptr<const char, int (*)(const char*)> unlinkedAtEnd(temporary.c_str(), unlink);
  if (dprintf(file.number, "%s", text.c_str()) < 0 || fsync(file.number) != 0) failWith(path_);
  // A process with a newer lock uses the same temporary file.
  requireNamed(lock_, path_ + ".lock");
  if (state_) requireNamed(*state_, path_);
  requireNamed(file, temporary);
  if (rename(temporary.c_str(), path_.c_str()) != 0) failWith(path_);
  // Nothing below reports an error: the new state is in place.
  fsync(Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)).number);
}

}  // namespace simulator
