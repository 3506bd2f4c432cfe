#include "state_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "outcomes.h"

namespace simulator {

namespace {

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

[[noreturn]] void failWith(const std::string& path) {
  throw Refusal(stateUnusable, path + ": " + std::strerror(errno));
}

void writeAndSync(const std::string& path, const std::string& text) {
  std::FILE* const file = std::fopen(path.c_str(), "we");
  if (file == nullptr) failWith(path);
  const bool written =
      std::fputs(text.c_str(), file) >= 0 && std::fflush(file) == 0 && fsync(fileno(file)) == 0;
  const int failure = errno;
  std::fclose(file);
  errno = failure;
  if (!written) failWith(path);
}

}  // namespace

StateFile::StateFile() {
  const std::filesystem::path path = std::filesystem::absolute(statePath());
  path_ = path;
  std::error_code ignored;  // The lock below tells what is wrong with the folder.
  std::filesystem::create_directories(path.parent_path(), ignored);
  // The state itself is replaced by every write, so another file holds the lock.
  const std::string lockPath = path_ + ".lock";
  lock_ = open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (lock_ < 0) failWith(lockPath);
  while (flock(lock_, LOCK_EX) != 0) {
    if (errno == EINTR) continue;
    const int failure = errno;
    close(lock_);
    errno = failure;
    failWith(lockPath);
  }
}

StateFile::~StateFile() {
  close(lock_);
}

State StateFile::read() const {
  if (access(path_.c_str(), F_OK) != 0 && errno == ENOENT) return {};
  try {
    std::ifstream file(path_, std::ios::binary);
    if (!file) failWith(path_);
    return nlohmann::json::parse(file).get<State>();
  } catch (const std::ios_base::failure&) {
    failWith(path_);
  } catch (const nlohmann::json::exception&) {
    throw Refusal(stateDamaged, path_);
  }
}

void StateFile::write(const State& state) const {
  const std::string temporary = path_ + ".new";
  writeAndSync(temporary, nlohmann::json(state).dump(2) + "\n");
  if (rename(temporary.c_str(), path_.c_str()) != 0) failWith(path_);
  const int folder = open(std::filesystem::path(path_).parent_path().c_str(), O_RDONLY | O_CLOEXEC);
  fsync(folder);
  close(folder);
}

}  // namespace simulator
