#pragma once

#include <boost/json.hpp>
#include <string>
#include <string_view>

namespace sandbox {

namespace json = boost::json;

/// The member `key` of an object; null when `value` is null, no object, or has no such member.
const json::value* At(const json::value* value, std::string_view key);

/// The text member `key`; empty when it is missing or no text. The view lives as long as the document.
std::string_view TextAt(const json::value* value, std::string_view key);

/// The array member `key`; an empty array when it is missing or no array.
const json::array& ListAt(const json::value* value, std::string_view key);

inline std::string_view View(const json::string& text) {
  return {text.data(), text.size()};
}
inline std::string Text(const json::string& text) {
  return {text.data(), text.size()};
}

/// Parses one document. Of members with the same name the later one wins. Null value and `problem` set on failure.
json::value Parse(std::string_view text, std::string& problem, json::storage_ptr storage = {});

}  // namespace sandbox
