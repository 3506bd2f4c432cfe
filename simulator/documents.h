#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "simulator/errors.h"

namespace simulator {

/// Returns the parsed text, in which no object repeats a member and no text contains a NUL. Throws
/// `invalid` for any other JSON, also if it is nested more than four times, as deeply as a state:
/// the handling of the result is recursive. If the text is not JSON, the result is discarded.
inline nlohmann::json parseStrictly(const std::string& text, const Error& invalid) {
  using nlohmann::json;
  std::vector<std::set<std::string>> names;
  const auto check = [&](int depth, json::parse_event_t event, const json& parsed) {
    if (event == json::parse_event_t::object_start) names.emplace_back();
    if (event == json::parse_event_t::object_end) names.pop_back();
    const bool isKey = event == json::parse_event_t::key;
    const bool isRepeated = isKey && !names.back().insert(parsed).second;
    const auto* const value = parsed.get_ptr<const std::string*>();
    const bool hasNul = value != nullptr && value->find('\0') != std::string::npos;
    if (isRepeated || hasNul || depth > 4) throw Error(invalid);
    return true;
  };
  return json::parse(text, check, false);
}

/// A parameter document that was received; the console's `ParameterDocument` is one that is sent.
/// Each function throws an `Error` for what is wrong in the document.
class Document {
 public:
  /// Checks the document's type name, and that it is a JSON object with at most `count` members.
  Document(const std::string& expectedName, std::size_t count, const char* name, const char* json)
      : document_(parseStrictly(json, Error(memberUnknown, json))) {
    if (expectedName != name) throw Error(wrongDocumentType, name);
    if (!document_.is_object()) throw Error(documentNotJson, json);
    if (document_.size() > count) throw Error(memberUnknown, json);
  }

  /// Returns a string member that is not empty.
  std::string text(const char* key) const { return textOf(member(key), key); }

  /// Returns a string member that is not empty, or `ifNull` if the member is null.
  std::string textOr(const char* ifNull, const char* key) const {
    return member(key).is_null() ? ifNull : text(key);
  }

  std::uint32_t number(const char* key) const {
    const nlohmann::json& value = member(key);
    if (!value.is_number_unsigned() || value > UINT32_MAX) throw Error(memberOfWrongType, key);
    return value.get<std::uint32_t>();
  }

  /// Returns an array of strings that are not empty.
  std::vector<std::string> texts(const char* key) const {
    if (!member(key).is_array()) throw Error(memberOfWrongType, key);
    std::vector<std::string> result;
    for (const auto& element : member(key)) result.push_back(textOf(element, key));
    return result;
  }

 private:
  static std::string textOf(const nlohmann::json& value, const char* key) {
    if (!value.is_string() || value.get<std::string>().empty()) throw Error(memberOfWrongType, key);
    return value;
  }

  const nlohmann::json& member(const char* key) const {
    if (!document_.contains(key)) throw Error(memberMissing, key);
    return document_.at(key);
  }

  nlohmann::json document_;
};

}  // namespace simulator
