#pragma once

#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "simulator/reports.h"

namespace simulator {

/// Returns the parsed text, in which no object repeats a member and no text contains a NUL. Throws
/// `invalid` for any other JSON, also if it is nested more than four times, as deeply as a state:
/// the handling of the result is recursive. If the text is not JSON, the result is discarded.
inline nlohmann::json parseStrictly(const std::string& text, const Report& invalid) {
  using nlohmann::json;
  std::vector<std::set<std::string>> names;
  const auto check = [&](int depth, json::parse_event_t event, const json& parsed) {
    if (event == json::parse_event_t::object_start) names.emplace_back();
    if (event == json::parse_event_t::object_end) names.pop_back();
    const bool isNew = event != json::parse_event_t::key || names.back().insert(parsed).second;
    const auto* const value = parsed.get_ptr<const std::string*>();
    const bool hasNul = value != nullptr && value->find('\0') != std::string::npos;
    if (!isNew || hasNul || depth > 4) throw Report(invalid);
    return true;
  };
  return json::parse(text, check, false);
}

}  // namespace simulator
