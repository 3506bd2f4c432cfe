#include "errors/json_text_buffer.h"

#include <gtest/gtest.h>

#include <functional>

#include "unit/exact_buffer.h"

namespace {

TEST(JsonTextBuffer, EscapesEveryByteAsAgreed) {
  const std::string letters = "\b\t\n\f\r\"\\";
  const std::string escaped = "btnfr\"\\";
  for (int byte = 1; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    std::string expected = text;
    char hex[8];
    if (const auto index = letters.find(text); index != std::string::npos) {
      expected = std::string("\\") + escaped[index];
    } else if (byte < 0x20 || byte == 0x7F) {
      std::snprintf(hex, sizeof hex, "\\u%04x", static_cast<unsigned>(byte));
      expected = hex;
    }
    const std::size_t length = jsonbuf_escapedLength(text.c_str());
    ASSERT_EQ(expected.size(), length) << byte;
    std::string written(length, '#');
    ASSERT_EQ(written.data() + length, jsonbuf_escape(written.data(), text.c_str())) << byte;
    ASSERT_EQ(expected, written) << byte;
  }
}

TEST(JsonTextBuffer, InitLaysTextOutOrFails) {
  struct {
    const char* own;
    const char* text;
    std::size_t size;
    std::ptrdiff_t last;  // -1: fails
  } const rows[] = {
      {"", "{}", 4, 1},        {"", "{}", 9, 1},         {"", "{}", 3, -1},
      {"", "{}", 0, -1},       {"", "", 2, 0},           {"", "", 1, -1},
      {"[12]", nullptr, 6, 3}, {"[12]", nullptr, 5, -1}, {"[12]", nullptr, 4, -1},
  };
  for (const auto& row : rows) {
    const std::unique_ptr<char[]> buffer(new char[row.size]);
    std::memset(buffer.get(), '#', row.size);
    std::memcpy(buffer.get(), row.own, std::min(row.size, std::strlen(row.own) + 1));
    const std::string before(buffer.get(), row.size);
    char* const last = jsonbuf_init(buffer.get(), row.size, row.text);
    SCOPED_TRACE(testing::Message()
                 << row.size << " bytes for " << (row.text ? row.text : row.own));
    if (row.last < 0) {
      EXPECT_EQ(nullptr, last);
      EXPECT_EQ(before, std::string(buffer.get(), row.size));
    } else {
      EXPECT_EQ(buffer.get() + row.last, last);
      EXPECT_STREQ(row.text ? row.text : row.own, buffer.get());
      EXPECT_EQ("text, zeros, J", ExactBuffer::layoutOf(buffer.get(), row.size));
    }
  }
}

TEST(JsonTextBuffer, FindEndAcceptsValidTexts) {
  // clang-format off
  const char* const texts[] = {
      "{}", "[]", "[ \t\n\r]", "{ }", "[[],{}]", R"({"a":{},"b":[{}]})", R"([{"":[]},[]])",
      R"({ "a" : 1 , "b" : [ true , false , null ] } )", R"(["}]","[{","\"}","\\"])",
      R"(["\"\/\\\b\f\n\r\t\uafAF\u0099"])", "[\"\x7f\xff\"]", "[0,12,-3,-,1.,1.5,-.5,00,1e5,1E5,1e+,1E-2,1.e+07,9]",
      R"({"a":-}  )",
  };
  // clang-format on
  for (const std::string text : texts) {
    const std::size_t end = text.find_last_of("]}");
    for (const char* tail : {"", "]", "}", ",x"}) {
      const ExactBuffer block(text + tail, 0);
      EXPECT_EQ(block.at(end), jsonbuf_findEnd(block.at(0))) << text << tail;
    }
  }
}

TEST(JsonTextBuffer, FindEndRejectsInvalidTexts) {
  // clang-format off
  const char* const texts[] = {
      "", " {}", "1", "\"a\"", "null", "{", "[", "{]", "[}", "[{]}", "[[]", "{\"a\":[}]", "[,]", "[1,]", "[,1]",
      "[1 2]", "[1,,2]", "{,}", "{1:2}", "{a:1}", "{a\":1}", R"({"a"})", R"({"a":})", R"({"a" 1})", R"({"a":1,})",
      R"({"a":1 "b":2})", R"({"a":1,,"b":2})", R"({"a)", R"(["a)", "[\"\n\"]", "[\"\x1f\"]", R"(["\)", R"(["\x"])",
      R"(["\u12"])", R"(["\u123g"])", R"(["\u123G"])", R"(["\u/123"])", R"(["\u:123"])", R"(["\u@123"])",
      R"(["\u`123"])", R"(["\u)", "[.5]", "[+1]", "[1e]", "[1e.]", "[1E]", "[--1]", "[1.2.3]", "[/]", "[:]",
      "[tru]", "[truex]", "[True]", "[falsy]", "[nul]", "[\v1]", "[1\f]", "{\"a\":1]", "[\"a\":1]",
      R"({"a":"b":1})", "['a']",
  };
  // clang-format on
  for (const char* text : texts) {
    const ExactBuffer block(text, 0);
    EXPECT_EQ(nullptr, jsonbuf_findEnd(block.at(0))) << text;
  }
}

TEST(JsonTextBuffer, FindEndFollowsAnyNesting) {
  const std::size_t depth = 1'000'000;
  const ExactBuffer open(std::string(depth, '['), 0);
  EXPECT_EQ(nullptr, jsonbuf_findEnd(open.at(0)));
  const ExactBuffer closed(std::string(depth, '[') + std::string(depth, ']'), 0);
  EXPECT_EQ(closed.at(2 * depth - 1), jsonbuf_findEnd(closed.at(0)));
}

/// Makes room for two characters and writes them.
char* insertXx(char* position) {
  char* const room = jsonbuf_makeRoom(position, 2);
  return room == nullptr ? nullptr : static_cast<char*>(std::memset(room, 'x', 2)) + 2;
}

// Each insert with more room than it needs, exactly as much, and less.
TEST(JsonTextBuffer, InsertsInPlaceOrChangesNothing) {
  using Insert = std::function<char*(char*)>;
  const auto string = [](const char* key, const char* value) -> Insert {
    return [=](char* position) { return jsonbuf_insertString(position, key, value); };
  };
  const auto number = [](const char* key, int value) -> Insert {
    return [=](char* position) { return jsonbuf_insertInt(position, key, value); };
  };
  const auto object = [](const char* key) -> Insert {
    return [=](char* position) { return jsonbuf_insertObject(position, key); };
  };
  // The insertion point is marked "^" in `before`, the returned position in `after`.
  struct {
    const char* before;
    Insert insert;
    const char* after;
  } const rows[] = {
      // clang-format off
      // at a closing bracket
      {"{^}", insertXx, "{xx^}"},                {"{ \t\r\n^}", insertXx, "{ \t\r\nxx^}"},
      {"{\"a\":1^}", insertXx, "{\"a\":1,xx^}"}, {"[1 ^]", insertXx, "[1 ,xx^]"},
      {"[[]^]", insertXx, "[[],xx^]"},           {"[[^]]", insertXx, "[[xx^]]"},
      {"[{^},1]", insertXx, "[{xx^},1]"},        {"{^]", insertXx, "{,xx^]"},
      // at the text's end, and before a comma
      {"^", insertXx, "xx^"},                    {"1^", insertXx, "1xx^"},
      {"[1^,2]", insertXx, "[1,xx^,2]"},
      // at an opening bracket
      {"^{}", insertXx, "{xx^}"},                {"^[ \n]", insertXx, "[xx^ \n]"},
      {"^[1]", insertXx, "[xx^,1]"},             {"^[[1],2]", insertXx, "[xx^,[1],2]"},
      {"^[{}]", insertXx, "[xx^,{}]"},           {"[^[]]", insertXx, "[[xx^]]"},
      {"^[}]", insertXx, "[xx^,}]"},             {"{\"a\":^{\"b\":[]}}", insertXx, "{\"a\":{xx^,\"b\":[]}}"},
      // members
      {"{^}", string("k", "v"), R"({"k":"v"^})"},         {"{\"a\":1^}", string("", ""), R"({"a":1,"":""^})"},
      {"[^]", string(nullptr, "v"), R"(["v"^])"},         {"[1^]", number(nullptr, 0), "[1,0^]"},
      {"{^}", string("\n", "\t\"\x01\xC3"), "{\"\\n\":\"\\t\\\"\\u0001\xC3\"^}"},
      {"{^}", number("k", -2147483647 - 1), R"({"k":-2147483648^})"},
      {"{^}", object("k\\"), R"({"k\\":{}^})"},           {"[1^]", object(nullptr), "[1,{}^]"},
      // clang-format on
  };
  for (const auto& row : rows) {
    const auto split = [](std::string text) {
      const std::size_t mark = text.find('^');
      return std::pair(text.erase(mark, 1), mark);
    };
    const auto [before, from] = split(row.before);
    const auto [after, to] = split(row.after);
    const std::size_t needed = after.size() - before.size();
    for (std::size_t room = 0; room <= needed + 2; ++room) {
      SCOPED_TRACE(testing::Message() << row.before << " with " << room << " free bytes");
      const ExactBuffer block(before, room);
      char* const position = row.insert(block.at(from));
      EXPECT_TRUE(block.isLaidOut());
      EXPECT_EQ(room < needed ? before : after, block.text());
      EXPECT_EQ(room < needed ? nullptr : block.at(to), position);
    }
  }
}

}  // namespace
