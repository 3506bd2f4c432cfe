// The simulator's C interface: what the program never sends or ignores, failing allocations, killed processes.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>

#include "errors/status.h"
#include "in_process/failing_allocations.h"
#include "interface/orsksapi.h"
#include "service/timestamp.h"

namespace {

using Call = std::function<void(zuerr_Status*)>;

std::string withDuration(std::string text, const std::string& duration) {
  return text.replace(text.find("5000"), 4, duration);
}

constexpr const char* domain =
    R"({"uri":"d","timescaleUri":"timescale:local","maxOffset_ns":0,"minSyncDuration_ms":5000})";

class Simulator : public testing::Test {
 protected:
  Simulator() {
    std::string pattern = std::filesystem::temp_directory_path() / "orskapp-test-XXXXXX";
    folder_ = mkdtemp(pattern.data());
    setenv("ORSK_SIMULATOR_STATE", state().c_str(), 1);
    setenv("ORSK_SIMULATOR_STEP_MS", "1", 1);
  }
  ~Simulator() override { std::filesystem::remove_all(folder_); }

  std::filesystem::path state() const { return folder_ / "state.json"; }

  std::string stateText() const {
    std::ostringstream text;
    text << std::ifstream(state()).rdbuf();
    return text.str();
  }

  /// Replaces the state; for an empty text deletes it.
  void setState(const std::string& text) const {
    std::filesystem::remove(state());
    if (!text.empty()) std::ofstream(state()) << text;
  }

  /// Returns the status code of `call`.
  static std::int32_t codeOf(const Call& call) {
    zuerr_Status status = zuerr_initialStatus;
    errno = ENOENT;  // A caller's errno means nothing to the library.
    call(&status);
    zuerr_release(&status);
    return status.code;
  }

  static std::int32_t load(const char* json, const char* name = "networkDeviceParams") {
    return codeOf([&](zuerr_Status* status) { orsksapi_loadResources(name, json, status); });
  }

 private:
  std::filesystem::path folder_;
};

TEST_F(Simulator, RejectsDocuments) {
  const std::pair<const char*, std::int32_t> rows[] = {
      {R"({"remoteHost":"h"})", 0},
      {"", -61002},
      {"[]", -61002},
      {R"({"remoteHost":"h"}})", -61002},
      {"{}", -61003},
      {R"({"remotehost":"h"})", -61003},
      {R"({"remoteHost":1})", -61004},
      {R"({"remoteHost":null})", -61004},
  };
  for (const auto& [json, code] : rows) EXPECT_EQ(code, load(json)) << json;
  for (const char* name : {"", "networkDeviceParam"}) EXPECT_EQ(-61001, load(R"({"remoteHost":"h"})", name));
  for (const std::string number : {"-1", "4294967296", "1.5", "\"1\"", "null"}) {
    const std::string json = withDuration(domain, number);
    EXPECT_EQ(-61004,
              codeOf([&](zuerr_Status* s) { orsksapi_syncDomain_create("syncDomainParams", json.c_str(), s); }));
  }
}

// A text that does not fit is an error, and the operation changes nothing.
TEST_F(Simulator, TerminatesEveryBuffer) {
  constexpr std::string_view expected = "[\n  \"timescale:local\"\n]";
  for (std::size_t size = 0; size <= expected.size() + 2; ++size) {
    const std::unique_ptr<char[]> buffer(new char[size]);
    std::fill_n(buffer.get(), size, '#');
    const bool fits = size > expected.size();
    EXPECT_EQ(fits ? 0 : -61018, codeOf([&](zuerr_Status* s) { orsksapi_getTimescaleInfo(buffer.get(), size, s); }));
    EXPECT_TRUE(size == 0 || (fits ? expected : "") == buffer.get()) << size;
  }
  char none[1] = {'#'};
  EXPECT_EQ(-61018, codeOf([&](zuerr_Status* s) {
    orsksapi_syncDomain_createAndAddDevices(
        "syncDomainCreateAndAddRemoteDevicesParams",
        R"({"uri":"d","timescaleUri":null,"remoteHosts":[],"maxOffset_ns":0,"minSyncDuration_ms":0})", none, 1, s);
  }));
  EXPECT_EQ('\0', none[0]);
  EXPECT_EQ(-61010, codeOf([&](zuerr_Status* s) { orsksapi_syncDomain_stop("d", s); }));
}

TEST_F(Simulator, Warns) {
  const auto stop = [](zuerr_Status* status) { orsksapi_syncDomain_stop("d", status); };
  EXPECT_EQ(0, load(R"({"remoteHost":"h"})"));
  EXPECT_EQ(61001, load(R"({"remoteHost":"h"})"));
  EXPECT_EQ(0, codeOf([](zuerr_Status* s) { orsksapi_syncDomain_create("syncDomainParams", domain, s); }));
  EXPECT_EQ(61002, codeOf(stop));
  EXPECT_EQ(0, codeOf([](zuerr_Status* s) { orsksapi_syncDomain_start("d", 0, s); }));
  EXPECT_EQ(0, codeOf(stop));
}

// An error of a rule, or of the state file, zeroes a time and leaves no file open.
TEST_F(Simulator, ErrorsHaveNoResult) {
  const Timestamp untouched{1, 2, 3, 4}, zero{};
  const auto descriptors = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
  const auto open = descriptors();
  for (const bool unusable : {false, true}) {
    if (unusable) std::filesystem::create_directory(state());
    Timestamp time = untouched, moved = untouched;
    EXPECT_EQ(unusable ? -61019 : -61007, codeOf([&](zuerr_Status* s) { orsksapi_timescale_getTime("u", &time, s); }));
    codeOf([&](zuerr_Status* s) { orsksapi_timestampCorrelator_correlate("u", "v", &zero, &moved, s); });
    EXPECT_TRUE(std::memcmp(&time, &zero, sizeof time) == 0 && std::memcmp(&moved, &zero, sizeof time) == 0);
    std::filesystem::remove(state());
  }
  EXPECT_EQ(open, descriptors());
}

constexpr const char* host = R"({"remoteHost":"h"})";

/// The code if the JSON library aborts: its destructors allocate.
constexpr std::int32_t aborted = INT32_MIN;

/// Returns the status code of `call` if its N-th allocation fails, or nothing if it makes fewer.
std::optional<std::int32_t> codeWithFailingAllocation(std::size_t number, const Call& call) {
  auto* const code = static_cast<std::int32_t*>(
      mmap(nullptr, sizeof(std::int32_t), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  *code = aborted;
  const pid_t child = fork();
  if (child == 0) {
    std::signal(SIGABRT, [](int) { _exit(0); });
    close(STDERR_FILENO);
    zuerr_Status status = zuerr_initialStatus;
    allocationsUntilFailure = number;
    countAllocations(true);
    call(&status);
    *code = status.code;
    _exit(allocationsUntilFailure > 0 ? 1 : 0);
  }
  int exit = 0;
  waitpid(child, &exit, 0);
  const std::int32_t left = *code;
  munmap(code, sizeof *code);
  return exit == 0 ? std::optional(left) : std::nullopt;
}

/// Kills a process when it enters the N-th system call of `call`. Returns false if it makes fewer.
bool killedAtSystemCall(int number, const Call& call) {
  const pid_t child = fork();
  if (child == 0) {
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    raise(SIGSTOP);
    zuerr_Status status = zuerr_initialStatus;
    call(&status);
    _exit(0);
  }
  int status = 0;
  // Each system call stops the process twice.
  for (int stop = 0; stop < 2 * number && waitpid(child, &status, 0) == child && !WIFEXITED(status); ++stop) {
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
  }
  if (WIFEXITED(status)) return false;
  kill(child, SIGKILL);
  waitpid(child, &status, 0);
  return true;
}

// With each allocation failing in turn, an operation reports an error and has changed nothing, or it is done. If the
// look after a wait fails, that is an error, and the domain stays started.
TEST_F(Simulator, OutOfMemoryIsAnError) {
  codeOf([](zuerr_Status* s) { orsksapi_syncDomain_create("syncDomainParams", domain, s); });
  const std::string before = withDuration(stateText(), "1");
  unsetenv("ORSK_SIMULATOR_STEP_MS");
  int unchanged = 0, failedLooks = 0;
  for (std::size_t number = 1;; ++number) {
    setState(before);
    const auto left =
        codeWithFailingAllocation(number, [](zuerr_Status* s) { orsksapi_syncDomain_startV2("d", true, true, 9, s); });
    if (!left) break;
    const bool started = stateText().find(R"("runningSince_ns": 0)") == std::string::npos;
    EXPECT_TRUE(started || (*left < 0 && stateText() == before)) << "allocation " << number << ": " << *left;
    unchanged += *left == -61022 && !started;
    failedLooks += *left == -61022 && started;
  }
  EXPECT_TRUE(unchanged > 20 && failedLooks > 20);
}

// A process that is killed at any system call leaves the old state or the new one, and at most one temporary file,
// which the next operation removes.
TEST_F(Simulator, AKilledProcessLeavesTheOldStateOrTheNew) {
  ASSERT_EQ(0, load(R"({"remoteHost":"first"})"));
  const std::string before = stateText();
  ASSERT_EQ(0, load(host));
  const std::string after = stateText();
  int olds = 0, news = 0;
  for (int number = 1;; ++number) {
    setState(before);
    if (!killedAtSystemCall(number, [](zuerr_Status* s) { orsksapi_loadResources("networkDeviceParams", host, s); })) {
      break;
    }
    const std::string now = stateText();
    EXPECT_TRUE(now == before || now == after) << "system call " << number << ": " << now;
    ++(now == before ? olds : news);
    EXPECT_GE(3, std::distance(std::filesystem::directory_iterator(state().parent_path()), {})) << number;
  }
  EXPECT_GT(olds, 10);
  EXPECT_GT(news, 1);
  EXPECT_EQ(61001, load(host));
  EXPECT_FALSE(std::filesystem::exists(state().string() + ".new"));
}

}  // namespace
