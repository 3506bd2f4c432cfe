#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/strict_json.h"

namespace simulator {

/// A parameter document that was received; the console's `ParameterDocument` is one that is sent.
/// Each function throws a `Report` for what is wrong in the document.
class Document {
 public:
  /// Checks the document's type name, and that it is a JSON object with at most `count` members.
  Document(const std::string& expectedName, std::size_t count, const char* name, const char* json)
      : document_(parseStrictly(json, Report{memberUnknown, json})) {
    if (expectedName != name) throw Report{wrongDocumentType, name};
    if (!document_.is_object()) throw Report{documentNotJson, json};
    if (document_.size() > count) throw Report{memberUnknown, json};
  }

  /// Returns a string member that is not empty.
  std::string text(const char* key) const { return textOf(member(key), key); }
  bool isNull(const char* key) const { return member(key).is_null(); }

  std::uint32_t number(const char* key) const {
    const nlohmann::json& value = member(key);
    if (!value.is_number_unsigned() || value > UINT32_MAX) throw Report{memberOfWrongType, key};
    return value.get<std::uint32_t>();
  }

  /// Returns an array of strings that are not empty.
  std::vector<std::string> texts(const char* key) const {
    if (!member(key).is_array()) throw Report{memberOfWrongType, key};
    std::vector<std::string> result;
    for (const auto& element : member(key)) result.push_back(textOf(element, key));
    return result;
  }

 private:
  static std::string textOf(const nlohmann::json& value, const char* key) {
    if (!value.is_string() || value.get<std::string>().empty())
      throw Report{memberOfWrongType, key};
    return value;
  }

  const nlohmann::json& member(const char* key) const {
    if (!document_.contains(key)) throw Report{memberMissing, key};
    return document_.at(key);
  }

  nlohmann::json document_;
};

}  // namespace simulator
