#include "errors/status.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <vector>

#include "unit/block.h"

namespace {

constexpr zuerr_Site site{"some/file", -7, "part", "some_error"};
constexpr zuerr_Site anonymousSite{"f", 0, nullptr, "e"};

/// A record with our callback, whose text is released at the end of the test.
struct OwnedStatus : zuerr_Status {
  OwnedStatus() : zuerr_Status(zuerr_initialStatus) {}
  explicit OwnedStatus(const char* text) : OwnedStatus() { zuerr_setJson(this, text); }
  OwnedStatus(const OwnedStatus&) = delete;
  OwnedStatus& operator=(const OwnedStatus&) = delete;
  ~OwnedStatus() { zuerr_release(this); }
};

/// Sizes that a callback was asked for; it provides none of them.
std::vector<std::uint32_t> requests;
bool refuse(zuerr_Status*, std::uint32_t newSize) {
  requests.push_back(newSize);
  return false;
}
bool claim(zuerr_Status* status, std::uint32_t newSize) {
  return !refuse(status, newSize);
}

TEST(Status, DefaultResizeProvidesPowersOfTwoAndKeepsTheText) {
  OwnedStatus status("[1]");
  const std::pair<std::uint32_t, std::uint32_t> rows[] = {{1, 512},     {512, 512},   {513, 1024},
                                                          {1024, 1024}, {1025, 2048}, {65537, 131072}};
  for (const auto& [size, capacity] : rows) {
    char* const before = capacity == status.capacity ? status.json : nullptr;
    EXPECT_TRUE(zuerr_defaultResize(&status, size));
    EXPECT_EQ(capacity, status.capacity) << size;
    EXPECT_STREQ("[1]", status.json);
    EXPECT_EQ("text, zeros, J", Block::layoutOf(status.json, capacity));
    if (before != nullptr) {
      EXPECT_EQ(before, status.json);
    }
  }
  for (std::uint32_t size : {0x80000000U, 0x80000001U, 0xFFFFFFFFU}) {
    EXPECT_FALSE(zuerr_defaultResize(&status, size));
    EXPECT_EQ(131072U, status.capacity);
  }
  for (int again = 0; again < 2; ++again) {
    EXPECT_TRUE(zuerr_defaultResize(&status, 0));
    EXPECT_TRUE(status.json == nullptr && status.capacity == 0);
  }
  EXPECT_TRUE(zuerr_defaultResize(&status, 1));
  EXPECT_STREQ("{}", status.json);
}

// A text longer than its record says cannot come from us, but a library hands such records back.
TEST(Status, DefaultResizeRefusesTextThatDoesNotFit) {
  OwnedStatus status(std::string(600, 'x').c_str());
  status.capacity = 100;
  char* const before = status.json;
  EXPECT_FALSE(zuerr_defaultResize(&status, 512));
  EXPECT_EQ(before, status.json);
  EXPECT_EQ(100U, status.capacity);
}

TEST(Status, CodeOnlyRisesInSeverity) {
  struct {
    std::int32_t before;
    std::int32_t code;
    bool taken;
  } const rows[] = {{0, 0, false},  {0, 5, true},    {0, -5, true},  {5, 7, false},  {5, 0, false},
                    {5, -3, true},  {-3, -9, false}, {-3, 5, false}, {-3, 0, false}, {1, -1, true},
                    {-1, 1, false}, {0, 1, true},    {0, -1, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.before << " given " << row.code);
    OwnedStatus status("[1]");
    status.code = row.before;
    EXPECT_EQ(row.taken, zuerr_setCode(&status, row.code));
    EXPECT_EQ(row.taken ? row.code : row.before, status.code);
    EXPECT_STREQ(row.taken ? "{}" : "[1]", status.json);
  }
  OwnedStatus bare;
  EXPECT_TRUE(zuerr_setCode(&bare, -1));
  EXPECT_EQ(nullptr, bare.json);
}

TEST(Status, SetCodeAtDescribesTheSite) {
  OwnedStatus status;
  bool ok = false;
  EXPECT_TRUE(zuerr_setCodeAt(&status, -4, &site, &ok));
  EXPECT_TRUE(ok);
  EXPECT_EQ(512U, status.capacity);
  EXPECT_STREQ(R"({"error_constant":"some_error","file":"some/file","line":-7,"component":"part"})", status.json);
  ok = false;
  EXPECT_FALSE(zuerr_setCodeAt(&status, -5, &anonymousSite, &ok));
  EXPECT_TRUE(ok);
  EXPECT_EQ(-4, status.code);

  OwnedStatus anonymous;
  EXPECT_TRUE(zuerr_setCodeAt(&anonymous, 3, &anonymousSite, nullptr));
  EXPECT_STREQ(R"({"error_constant":"e","file":"f","line":0})", anonymous.json);

  zuerr_Status refused{0, 0, refuse, nullptr};
  EXPECT_TRUE(zuerr_setCodeAt(&refused, -4, &site, &ok));
  EXPECT_FALSE(ok);
  EXPECT_EQ(-4, refused.code);
  EXPECT_TRUE(zuerr_setCodeAt(&(refused = {0, 0, refuse, nullptr}), -4, &site, nullptr));
}

// Whatever is added last before the buffer is full, the record grows and the text stays whole.
TEST(Status, GrowsForEveryMember) {
  for (std::size_t filled = 380; filled < 512; ++filled) {
    const std::string text = "{\"" + std::string(filled, 'x') + "\":1}";
    OwnedStatus status(text.c_str());
    char* position = zuerr_reserve(&status, 2);
    ASSERT_EQ(status.json + text.size() - 1, position);
    position = zuerr_addString(&status, position, "k", "v");
    position = zuerr_addSite(&status, position, &site);
    const std::string expected =
        text.substr(0, text.size() - 1) + R"(,"k":"v","file":"some/file","line":-7,"component":"part"})";
    ASSERT_EQ(expected, status.json);
    ASSERT_EQ(status.json + expected.size() - 1, position);
    ASSERT_EQ(expected.size() + 2 <= 512 ? 512U : 1024U, status.capacity);
    ASSERT_EQ("text, zeros, J", Block::layoutOf(status.json, status.capacity));
  }
}

TEST(Status, FailedGrowthChangesNothing) {
  Block block("{}", 0);
  zuerr_Status status{0, 4, refuse, block.at(0)};
  EXPECT_EQ(nullptr, zuerr_addString(&status, block.at(1), "k", "v"));
  EXPECT_EQ(nullptr, zuerr_addSite(&status, block.at(1), &anonymousSite));
  EXPECT_EQ(nullptr, zuerr_addSite(&status, nullptr, &anonymousSite));
  EXPECT_EQ(nullptr, zuerr_setJson(&status, "[10]"));
  EXPECT_EQ("{}", block.text());
  // A text that cannot be scanned gets nothing added.
  OwnedStatus broken("{\"a\"}");
  EXPECT_EQ(nullptr, zuerr_reserve(&broken, 1));
  EXPECT_EQ(nullptr, zuerr_grow(&broken, broken.json));
  EXPECT_STREQ("{\"a\"}", broken.json);
}

TEST(Status, SetJsonTakesTextOrEmptyObject) {
  OwnedStatus status;
  const char* last = zuerr_setJson(&status, "[12]");
  EXPECT_EQ(status.json + 3, last);
  EXPECT_STREQ("[12]", status.json);
  last = zuerr_setJson(&status, nullptr);
  EXPECT_EQ(status.json + 1, last);
  EXPECT_STREQ("{}", status.json);
  EXPECT_EQ("text, zeros, J", Block::layoutOf(status.json, status.capacity));
  EXPECT_NE(nullptr, zuerr_setJson(&status, std::string(510, 'x').c_str()));
  EXPECT_EQ(512U, status.capacity);
  EXPECT_NE(nullptr, zuerr_setJson(&status, std::string(511, 'x').c_str()));
  EXPECT_EQ(1024U, status.capacity);
}

// Which sizes a record of some capacity asks its callback for, when growing and when reserving.
TEST(Status, RequestsAreCountedInUnsignedArithmetic) {
  using Requests = std::vector<std::uint32_t>;
  struct {
    std::uint32_t capacity;
    Requests grow;
  } const growths[] = {
      {0, {}},
      {1, {}},
      {2, {}},
      {4, {6}},
      {512, {1022}},
      {1024, {2046}},
      {0x40000000, {0x7FFFFFFE}},
      {0x40000001, {}},
      {0x80000000, {}},
      {0x80000001, {}},
      {0x80000002, {}},
      {0xC0000000, {}},
      {0xFFFFFFFF, {}},
  };
  for (const zuerr_ResizeFn callback : {refuse, claim}) {
    for (const auto& row : growths) {
      Block block("{}", 0);
      zuerr_Status status{0, row.capacity, callback, block.at(0)};
      requests.clear();
      EXPECT_EQ(nullptr, zuerr_grow(&status, block.at(1))) << row.capacity;
      EXPECT_EQ(row.grow, requests) << row.capacity;
    }
  }
  struct {
    std::uint32_t room;
    Requests expected;
  } const reservations[] = {{0, {}},          {2, {}},          {3, {5}},        {0x7FFFFFFD, {0x7FFFFFFF}},
                            {0x7FFFFFFE, {}}, {0xFFFFFFFE, {}}, {0xFFFFFFFF, {}}};
  for (const auto& row : reservations) {
    Block block("{}", 0);
    zuerr_Status status{0, 4, refuse, block.at(0)};
    requests.clear();
    EXPECT_EQ(row.room <= 2 ? block.at(1) : nullptr, zuerr_reserve(&status, row.room)) << row.room;
    EXPECT_EQ(row.expected, requests) << row.room;
  }
  zuerr_Status empty{0, 4, refuse, nullptr};
  EXPECT_EQ(nullptr, zuerr_reserve(&empty, 2));
  EXPECT_EQ(nullptr, zuerr_grow(&empty, nullptr));
}

// The longest text is asked room for, one byte more is not; 2 GiB of address space on a few pages.
TEST(Status, SetJsonRefusesTextsNearTwoGibibytes) {
  constexpr std::size_t chunk = std::size_t{1} << 20, length = 0x7FFFFFFD, size = std::size_t{1} << 31;
  const int file = memfd_create("text", 0);
  ASSERT_EQ(0, ftruncate(file, chunk));
  auto* const text =
      static_cast<char*>(mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0));
  ASSERT_NE(MAP_FAILED, static_cast<void*>(text));
  for (std::size_t offset = 0; offset < size; offset += chunk) {
    const bool last = offset + chunk == size;
    ASSERT_NE(MAP_FAILED, mmap(text + offset, chunk, PROT_READ | PROT_WRITE,
                               MAP_FIXED | (last ? MAP_PRIVATE : MAP_SHARED), file, 0));
  }
  std::memset(text, 'x', chunk);
  text[length + 1] = '\0';
  zuerr_Status status{0, 0, refuse, nullptr};
  requests.clear();
  EXPECT_EQ(nullptr, zuerr_setJson(&status, text));
  text[length] = '\0';
  EXPECT_EQ(nullptr, zuerr_setJson(&status, text));
  EXPECT_EQ(std::vector<std::uint32_t>{0x7FFFFFFF}, requests);
  munmap(text, size);
  close(file);
}

TEST(Status, MergeMovesTextUnderTheSameCallback) {
  OwnedStatus destination("[1]"), source("[2]");
  source.code = -2;
  destination.code = 1;
  char* const text = source.json;
  bool ok = false;
  EXPECT_TRUE(zuerr_merge(&destination, &source, &ok));
  EXPECT_TRUE(ok);
  EXPECT_EQ(-2, destination.code);
  EXPECT_EQ(text, destination.json);
  EXPECT_EQ(512U, destination.capacity);
  EXPECT_EQ(nullptr, source.json);
  EXPECT_EQ(0U, source.capacity);
  EXPECT_EQ(-2, source.code);

  // A milder code leaves both.
  OwnedStatus milder("[4]");
  milder.code = -9;
  EXPECT_FALSE(zuerr_merge(&destination, &milder, &(ok = false)));
  EXPECT_TRUE(ok);
  EXPECT_EQ(text, destination.json);
  EXPECT_STREQ("[4]", milder.json);

  // Without a text to move, the destination's goes all the same.
  OwnedStatus error, described("[3]");
  error.code = -1;
  EXPECT_TRUE(zuerr_merge(&described, &error, nullptr));
  EXPECT_EQ(nullptr, described.json);
  EXPECT_EQ(0U, described.capacity);
}

TEST(Status, MergeCopiesTextUnderAnotherCallback) {
  Block block("[2]", 0);
  zuerr_Status source{-2, 5, refuse, block.at(0)};
  OwnedStatus destination("[1]");
  bool ok = false;
  EXPECT_TRUE(zuerr_merge(&destination, &source, &ok));
  EXPECT_TRUE(ok);
  EXPECT_STREQ("[2]", destination.json);
  EXPECT_EQ(block.at(0), source.json);
  EXPECT_EQ(5U, source.capacity);

  zuerr_Status refused{0, 0, refuse, nullptr};
  OwnedStatus error("[3]");
  error.code = -3;
  EXPECT_TRUE(zuerr_merge(&refused, &error, &ok));
  EXPECT_FALSE(ok);
  EXPECT_EQ(-3, refused.code);
  EXPECT_TRUE(zuerr_merge(&(refused = {0, 0, refuse, nullptr}), &error, nullptr));
}

// A text without its NUL is copied up to the capacity, also where a page ends behind it.
TEST(Status, CopiesNoMoreThanTheCapacity) {
  const std::size_t page = static_cast<std::size_t>(getpagesize());
  auto* const pages =
      static_cast<char*>(mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
  std::memset(pages, 'x', page);
  mprotect(pages, 2 * page, PROT_NONE);
  mprotect(pages, page, PROT_READ);
  char* const text = pages + page - 5;
  for (const zuerr_ResizeFn callback : {refuse, zuerr_ResizeFn{nullptr}}) {
    zuerr_Status source{-3, 5, callback, text};
    OwnedStatus destination;
    bool textOk = false;
    EXPECT_TRUE(zuerr_merge(&destination, &source, &textOk) && textOk);
    EXPECT_STREQ("xxxxx", destination.json);
    EXPECT_EQ(text, source.json);
  }
  zuerr_Status growing{-3, 5, zuerr_defaultResize, static_cast<char*>(std::malloc(5))};
  std::memset(growing.json, 'y', 5);
  EXPECT_FALSE(zuerr_defaultResize(&growing, 6));
  EXPECT_EQ(5U, growing.capacity);
  zuerr_release(&growing);
  munmap(pages, 2 * page);
}

}  // namespace
