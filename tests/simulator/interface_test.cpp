// The simulator's C interface: what the program never sends, and what it ignores.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "errors/status.h"
#include "interface/orsksapi.h"

namespace {

class Simulator : public testing::Test {
 protected:
  Simulator() { setenv("ORSK_SIMULATOR_STATE", (std::string(mkdtemp(folder_.data())) + "/state").c_str(), 1); }
  ~Simulator() override { std::filesystem::remove_all(folder_); }

  /// Returns the status code of `call`.
  static std::int32_t codeOf(const std::function<void(zuerr_Status*)>& call) {
    zuerr_Status status = zuerr_initialStatus;
    call(&status);
    zuerr_release(&status);
    return status.code;
  }

  static std::int32_t load(const char* json, const char* name = "networkDeviceParams") {
    return codeOf([&](zuerr_Status* status) { orsksapi_loadResources(name, json, status); });
  }

 private:
  std::string folder_ = std::filesystem::temp_directory_path() / "orskapp-test-XXXXXX";
};

TEST_F(Simulator, ReportsInvalidDocumentsAndWarnings) {
  struct {
    const char* json;
    std::int32_t code;
  } const rows[] = {
      {R"({"remoteHost":"h"})", 0},      {R"({"remoteHost":"h"})", 61001},   {"[]", -61002}, {"{}", -61003},
      {R"({"remotehost":"h"})", -61003}, {R"({"remoteHost":null})", -61004},
  };
  for (const auto& row : rows) EXPECT_EQ(row.code, load(row.json)) << row.json;
  EXPECT_EQ(-61001, load(R"({"remoteHost":"h"})", "networkDeviceParam"));
}

// A text that does not fit is an error and leaves an empty text.
TEST_F(Simulator, TerminatesEveryBuffer) {
  const std::string list = "[\n  \"timescale:local\"\n]";
  for (const std::size_t size : {list.size() + 1, list.size(), std::size_t{1}, std::size_t{0}}) {
    const std::unique_ptr<char[]> buffer(new char[size]);
    std::fill_n(buffer.get(), size, '#');
    const bool fits = size > list.size();
    EXPECT_EQ(fits ? 0 : -61018,
              codeOf([&](zuerr_Status* status) { orsksapi_getTimescaleInfo(buffer.get(), size, status); }));
    EXPECT_TRUE(size == 0 || (fits ? list : "") == buffer.get()) << size;
  }
}

}  // namespace
