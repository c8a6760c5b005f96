#include "json.h"

namespace sandbox {

const json::value* At(const json::value* value, std::string_view key) {
  if (value == nullptr || !value->is_object()) return nullptr;
  return value->get_object().if_contains(key);
}

std::string_view TextAt(const json::value* value, std::string_view key) {
  const json::value* member = At(value, key);
  return member != nullptr && member->is_string() ? View(member->get_string()) : std::string_view();
}

const json::array& ListAt(const json::value* value, std::string_view key) {
  static const json::array empty;
  const json::value* member = At(value, key);
  return member != nullptr && member->is_array() ? member->get_array() : empty;
}

json::value Parse(std::string_view text, std::string& problem, json::storage_ptr storage) {
  json::error_code error;
  json::value value = json::parse(text, error, std::move(storage));
  problem = error ? error.message() : std::string();
  return error ? json::value() : value;
}

}  // namespace sandbox
