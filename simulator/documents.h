#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "simulator/errors.h"

namespace simulator {

/// A parameter document. Each function throws an `Error` for what is wrong in the document.
class Document {
 public:
  /// Checks the document's type name and that it is a JSON object.
  Document(const std::string& expectedName, const char* name, const char* json)
      : document_(nlohmann::json::parse(json, nullptr, false)) {
    if (expectedName != name) throw Error(wrongDocumentType, name);
    if (!document_.is_object()) throw Error(documentNotJson, json);
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
    if (!value.is_string() || value.get_ref<const std::string&>().empty())
      throw Error(memberOfWrongType, key);
    return value.get<std::string>();
  }

  const nlohmann::json& member(const char* key) const {
    if (!document_.contains(key)) throw Error(memberMissing, key);
    return document_.at(key);
  }

  nlohmann::json document_;
};

}  // namespace simulator
