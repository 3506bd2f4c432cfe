// The library's C interface, for what the program never sends: other document types, members that
// are missing or wrong, and buffers that are too small.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstring>
#include <filesystem>

#include "errors/library_exception.h"
#include "orsksapi.h"

namespace {

class Simulator : public testing::Test {
 protected:
  Simulator() {
    std::string pattern = std::filesystem::temp_directory_path() / "orskapp-test-XXXXXX";
    folder_ = mkdtemp(pattern.data());
    setenv("ORSK_SIMULATOR_STATE", (folder_ / "state.json").c_str(), 1);
  }
  ~Simulator() override { std::filesystem::remove_all(folder_); }

  /// Returns the code that `call` leaves, 0 for none.
  template <typename Call>
  std::int32_t codeOf(Call call) {
    try {
      zuerr::ScopedStatus status;
      call(&status);
    } catch (const zuerr::ExceptionBase& error) {
      return error.status.code;
    }
    return 0;
  }

 private:
  std::filesystem::path folder_;
};

TEST_F(Simulator, RefusesDocuments) {
  struct {
    const char* name;
    const char* json;
    std::int32_t code;
  } const rows[] = {
      {"networkDeviceParams", R"({"remoteHost":"h"})", 0},
      {"networkDeviceParam", R"({"remoteHost":"h"})", -61001},
      {"", R"({"remoteHost":"h"})", -61001},
      {"networkDeviceParams", "", -61002},
      {"networkDeviceParams", "[]", -61002},
      {"networkDeviceParams", R"({"remoteHost":"h"}})", -61002},
      {"networkDeviceParams", "{}", -61003},
      {"networkDeviceParams", R"({"remotehost":"h"})", -61003},
      {"networkDeviceParams", R"({"remoteHost":1})", -61004},
      {"networkDeviceParams", R"({"remoteHost":null})", -61004},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.code, codeOf([&](zuerr_Status* status) { orsksapi_loadResources(row.name, row.json, status); }))
        << row.name << row.json;
  }
  const char* const numbers[] = {"-1", "4294967296", "1.5", "\"1\"", "null"};
  for (const std::string number : numbers) {
    const std::string json = R"({"uri":"d","timescaleUri":"timescale:local","maxOffset_ns":)" + number +
                             R"(,"minSyncDuration_ms":4294967295})";
    EXPECT_EQ(-61004, codeOf([&](zuerr_Status* status) {
      orsksapi_syncDomain_create("syncDomainParams", json.c_str(), status);
    })) << json;
  }
}

TEST_F(Simulator, TerminatesWhateverBufferItIsGiven) {
  constexpr std::string_view expected = "[\n  \"timescale:local\"\n]";
  for (std::size_t size = 0; size <= expected.size() + 2; ++size) {
    const std::unique_ptr<char[]> buffer(new char[size]);
    std::fill_n(buffer.get(), size, '#');
    const std::int32_t code =
        codeOf([&](zuerr_Status* status) { orsksapi_getTimescaleInfo(buffer.get(), size, status); });
    const bool fits = size > expected.size();
    EXPECT_EQ(fits ? 0 : -61018, code);
    if (size > 0) {
      EXPECT_EQ(fits ? expected : "", buffer.get()) << size;
    }
  }
  // A domain whose timescale does not fit the buffer is not created.
  char none[1] = {'#'};
  const char* const json = R"({"uri":"d","timescaleUri":null,"remoteHosts":[],)"
                           R"("maxOffset_ns":0,"minSyncDuration_ms":0})";
  const char* const name = "syncDomainCreateAndAddRemoteDevicesParams";
  EXPECT_EQ(-61018, codeOf([&](zuerr_Status* status) {
    orsksapi_syncDomain_createAndAddDevices(name, json, none, sizeof none, status);
  }));
  EXPECT_EQ('\0', none[0]);
  EXPECT_EQ(-61010, codeOf([&](zuerr_Status* status) { orsksapi_syncDomain_stop("d", status); }));
}

}  // namespace
