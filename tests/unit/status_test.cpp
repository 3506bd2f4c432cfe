#include "errors/status.h"

#include <gtest/gtest.h>

#include <vector>

#include "errors/library_exception.h"
#include "unit/exact_buffer.h"

namespace {

constexpr zuerr_Site site{"some/file", -7, "part", "some_error"};
constexpr zuerr_Site anonymousSite{"f", 0, nullptr, "e"};

/// A record with our callback, whose text is released at the end of the test.
struct OwnedStatus : zuerr_Status {
  explicit OwnedStatus(std::int32_t itsCode, const char* text = nullptr)
      : zuerr_Status(zuerr_initialStatus) {
    if (text != nullptr) zuerr_setJson(this, text);
    code = itsCode;
  }
  OwnedStatus(const OwnedStatus&) = delete;
  OwnedStatus& operator=(const OwnedStatus&) = delete;
  ~OwnedStatus() { zuerr_release(this); }
};

/// The sizes that were requested from a callback, which provides none.
using Requests = std::vector<std::uint32_t>;
Requests requests;
bool reject(zuerr_Status*, std::uint32_t newSize) {
  requests.push_back(newSize);
  return false;
}
zuerr_Status rejecting() {
  return {0, 0, reject, nullptr};
}

TEST(Status, DefaultResizeProvidesPowersOfTwo) {
  OwnedStatus status(0, "[1]");
  const std::pair<std::uint32_t, std::uint32_t> rows[] = {
      {1, 512}, {512, 512}, {513, 1024}, {1024, 1024}, {1025, 2048}, {65537, 131072}};
  for (const auto& [size, capacity] : rows) {
    char* const before = capacity == status.capacity ? status.json : nullptr;
    EXPECT_TRUE(zuerr_defaultResize(&status, size));
    EXPECT_EQ(capacity, status.capacity) << size;
    EXPECT_STREQ("[1]", status.json);
    EXPECT_EQ("text, zeros, J", ExactBuffer::layoutOf(status.json, capacity));
    EXPECT_TRUE(before == nullptr || before == status.json);
  }
  for (std::uint32_t size : {0x80000000U, 0x80000001U, 0xFFFFFFFFU})
    EXPECT_FALSE(zuerr_defaultResize(&status, size));
  EXPECT_EQ(131072U, status.capacity);
  for (int again = 0; again < 2; ++again) {
    EXPECT_TRUE(zuerr_defaultResize(&status, 0));
    EXPECT_TRUE(status.json == nullptr && status.capacity == 0);
  }
  EXPECT_TRUE(zuerr_defaultResize(&status, 1));
  EXPECT_STREQ("{}", status.json);
}

TEST(Status, CodeOnlyRisesInSeverity) {
  struct {
    std::int32_t before;
    std::int32_t code;
    bool taken;
  } const rows[] = {{0, 0, false},  {0, 5, true},  {0, -5, true},   {5, 7, false},
                    {5, 0, false},  {5, -3, true}, {-3, -9, false}, {-3, 5, false},
                    {-3, 0, false}, {1, -1, true}, {0, 1, true},    {0, -1, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.before << " given " << row.code);
    OwnedStatus status(row.before, "[1]");
    EXPECT_EQ(row.taken, zuerr_setCode(&status, row.code));
    EXPECT_EQ(row.taken ? row.code : row.before, status.code);
    EXPECT_STREQ(row.taken ? "{}" : "[1]", status.json);
  }
  OwnedStatus bare(0);
  EXPECT_TRUE(zuerr_setCode(&bare, -1));
  EXPECT_EQ(nullptr, bare.json);
}

TEST(Status, SetCodeAtDescribesTheSite) {
  OwnedStatus status(0), anonymous(0);
  zuerr_Status rejected = rejecting();
  bool ok = false;
  EXPECT_TRUE(zuerr_setCodeAt(&status, -4, &site, &ok) && ok);
  EXPECT_EQ(512U, status.capacity);
  EXPECT_STREQ(R"({"error_constant":"some_error","file":"some/file","line":-7,"component":"part"})",
               status.json);
  EXPECT_TRUE(!zuerr_setCodeAt(&status, -5, &anonymousSite, &(ok = false)) && ok &&
              status.code == -4);
  EXPECT_TRUE(zuerr_setCodeAt(&anonymous, 3, &anonymousSite, nullptr));
  EXPECT_STREQ(R"({"error_constant":"e","file":"f","line":0})", anonymous.json);
  EXPECT_TRUE(zuerr_setCodeAt(&rejected, -4, &site, &ok) && !ok && rejected.code == -4);
}

// The record grows at each member, and the text stays complete.
TEST(Status, GrowsForEveryMember) {
  for (std::size_t filled = 380; filled < 512; ++filled) {
    const std::string text = "{\"" + std::string(filled, 'x') + "\":1}";
    OwnedStatus status(0, text.c_str());
    char* position = zuerr_reserve(&status, 2);
    ASSERT_EQ(status.json + text.size() - 1, position);
    position = zuerr_addString(&status, position, "k", "v");
    position = zuerr_addSite(&status, position, &site);
    const std::string expected = text.substr(0, text.size() - 1) +
                                 R"(,"k":"v","file":"some/file","line":-7,"component":"part"})";
    ASSERT_EQ(expected, status.json);
    ASSERT_EQ(status.json + expected.size() - 1, position);
    ASSERT_EQ(expected.size() + 2 <= 512 ? 512U : 1024U, status.capacity);
    ASSERT_EQ("text, zeros, J", ExactBuffer::layoutOf(status.json, status.capacity));
  }
}

TEST(Status, AGrowerIsCalledUntilThereIsRoom) {
  OwnedStatus status(0, "{}");
  const JsonGrower grower = zuerr_growerOf(&status), none{nullptr, nullptr};
  const std::string large(5000, 'x');
  EXPECT_EQ(nullptr, jsonbuf_insertStringGrowing(status.json + 1, "k", large.c_str(), &none));
  EXPECT_EQ(nullptr, jsonbuf_insertObjectGrowing(nullptr, "k", &grower));
  char* const position = jsonbuf_insertObjectGrowing(status.json + 1, large.c_str(), &grower);
  jsonbuf_insertStringGrowing(position, "k", std::string("v\0w", 3), &grower);
  EXPECT_EQ("{\"" + large + R"(":{"k":"v"}})", status.json);
}

TEST(Status, FailedGrowthChangesNothing) {
  ExactBuffer block("{}", 0);
  zuerr_Status status{0, 4, reject, block.at(0)};
  EXPECT_EQ(nullptr, zuerr_addString(&status, block.at(1), "k", "v"));
  for (char* const position : {block.at(1), static_cast<char*>(nullptr)}) {
    EXPECT_EQ(nullptr, zuerr_addSite(&status, position, &anonymousSite));
  }
  EXPECT_EQ(nullptr, zuerr_setJson(&status, "[10]"));
  EXPECT_EQ("{}", block.text());
  // Nothing is added to a text that cannot be scanned.
  OwnedStatus broken(0, "{\"a\"}");
  EXPECT_EQ(nullptr, zuerr_reserve(&broken, 1));
  EXPECT_EQ(nullptr, zuerr_grow(&broken, broken.json));
  EXPECT_STREQ("{\"a\"}", broken.json);
}

/// Returns true without a larger buffer, or with a capacity and no buffer.
bool claim(zuerr_Status* status, std::uint32_t) {
  if (status->json == nullptr) status->capacity = 512;
  return true;
}

TEST(Status, ACallbackWithoutRoomIsAFailure) {
  const ExactBuffer block("{}", 0);
  zuerr_Status none{0, 0, claim, nullptr}, little{0, 4, claim, block.at(0)};
  for (zuerr_Status* const status : {&none, &little}) {
    EXPECT_EQ(nullptr, zuerr_setJson(status, "[1]"));
    EXPECT_EQ(nullptr, zuerr_reserve(status, 3));
  }
  EXPECT_EQ("{}", block.text());
}

// At their limits: twice the capacity minus 2, and the text with the room, each below 2^31.
TEST(Status, RequestsSizesWithinTheirLimits) {
  struct {
    std::uint32_t size;
    Requests growth;
    Requests room;
  } const rows[] = {
      {2, {}, {}},
      {3, {4}, {5}},
      {0x40000000, {0x7FFFFFFE}, {0x40000002}},
      {0x40000001, {}, {0x40000003}},
      {0x7FFFFFFD, {}, {0x7FFFFFFF}},
      {0x7FFFFFFE, {}, {}},
      {0xFFFFFFFF, {}, {}},
  };
  for (const auto& row : rows) {
    const ExactBuffer block("{}", 0);
    zuerr_Status growing{0, row.size, reject, block.at(0)}, reserving{0, 4, reject, block.at(0)};
    requests.clear();
    EXPECT_EQ(nullptr, zuerr_grow(&growing, block.at(1)));
    EXPECT_EQ(row.growth, requests) << row.size;
    requests.clear();
    EXPECT_EQ(row.size == 2 ? block.at(1) : nullptr, zuerr_reserve(&reserving, row.size));
    EXPECT_EQ(row.room, requests) << row.size;
  }
}

TEST(Status, MergeMovesTextUnderTheSameCallback) {
  OwnedStatus destination(1, "[1]"), source(-2, "[2]"), milder(-9, "[4]"), described(0, "[3]"),
      error(-1);
  char* const text = source.json;
  bool ok = false;
  EXPECT_TRUE(zuerr_merge(&destination, &source, &ok) && ok);
  EXPECT_TRUE(destination.code == -2 && destination.json == text && destination.capacity == 512);
  EXPECT_TRUE(source.code == -2 && source.json == nullptr && source.capacity == 0);
  // A code that is not taken changes neither.
  EXPECT_TRUE(!zuerr_merge(&destination, &milder, &(ok = false)) && ok);
  EXPECT_EQ(text, destination.json);
  EXPECT_STREQ("[4]", milder.json);
  // If there is no text to move, the destination's is released all the same.
  EXPECT_TRUE(zuerr_merge(&described, &error, nullptr));
  EXPECT_TRUE(described.json == nullptr && described.capacity == 0);
}

TEST(Status, MergeCopiesTextUnderAnotherCallback) {
  const ExactBuffer block("[2]", 0);
  zuerr_Status source{-2, 5, reject, block.at(0)}, rejected = rejecting();
  OwnedStatus destination(0, "[1]"), error(-3, "[3]");
  bool ok = false;
  EXPECT_TRUE(zuerr_merge(&destination, &source, &ok) && ok);
  EXPECT_STREQ("[2]", destination.json);
  EXPECT_TRUE(source.json == block.at(0) && source.capacity == 5);
  EXPECT_TRUE(zuerr_merge(&rejected, &error, &ok) && !ok && rejected.code == -3);
}

TEST(Status, ACopiedExceptionTakesTheText) {
  zuerr::Exception source;
  EXPECT_STREQ("", source.what());
  zuerr_setJson(&source.status, "[1]");
  source.status.code = -5;
  zuerr::Exception copy(source);
  EXPECT_STREQ("[1]", static_cast<const std::exception&>(copy).what());
  EXPECT_TRUE(copy.status.code == -5 && source.status.code == -5 && source.status.json == nullptr);
}

}  // namespace
