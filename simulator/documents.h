#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "simulator/outcomes.h"

namespace simulator {

/// A parameter document as it arrived. Every reading throws a `Refusal` that says what is wrong.
class Document {
 public:
  /// Checks the document's type name and that it is a JSON object.
  Document(const std::string& expectedName, const char* name, const char* json)
      : document_(nlohmann::json::parse(json, nullptr, false)) {
    if (expectedName != name) throw Refusal(wrongDocumentType, name);
    if (!document_.is_object()) throw Refusal(documentNotJson, json);
  }

  /// A string member that is not empty.
  std::string text(const char* key) const { return textOf(member(key), key); }

  /// The same, or `ifNull` where the member is null.
  std::string textOr(const char* ifNull, const char* key) const {
    return member(key).is_null() ? ifNull : text(key);
  }

  std::uint32_t number(const char* key) const {
    const nlohmann::json& value = member(key);
    if (!value.is_number_unsigned() || value > UINT32_MAX) throw Refusal(memberOfWrongType, key);
    return value.get<std::uint32_t>();
  }

  /// An array of strings that are not empty.
  std::vector<std::string> texts(const char* key) const {
    if (!member(key).is_array()) throw Refusal(memberOfWrongType, key);
    std::vector<std::string> result;
    for (const auto& element : member(key)) result.push_back(textOf(element, key));
    return result;
  }

 private:
  static std::string textOf(const nlohmann::json& value, const char* key) {
    if (!value.is_string() || value.get_ref<const std::string&>().empty())
      throw Refusal(memberOfWrongType, key);
    return value.get<std::string>();
  }

  const nlohmann::json& member(const char* key) const {
    if (!document_.contains(key)) throw Refusal(memberMissing, key);
    return document_.at(key);
  }

  nlohmann::json document_;
};

}  // namespace simulator
