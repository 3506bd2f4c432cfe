// The simulator's C interface: what the program never sends, and what it ignores.

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <functional>

#include "errors/status.h"
#include "interface/orsksapi.h"

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

  /// Returns the status code of `call`.
  static std::int32_t codeOf(const Call& call) {
    zuerr_Status status = zuerr_initialStatus;
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

}  // namespace
