#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "oxSuperAPI/testing/uFakeJsonParser.h"

namespace oxSuperAPI {

/// The value of a document that a test spells out; a slip in it ends the test.
inline TJSONValue Document(std::string_view Text) {
  std::unique_ptr<TJSONValue> Value = TFakeJSONParser().Parse(Text);
  if (!Value) throw std::invalid_argument("Not JSON: " + std::string(Text));
  return std::move(*Value);
}

inline std::string ReplaceFirst(std::string_view Text, std::string_view Old, std::string_view New) {
  std::string Result(Text);
  const std::size_t At = Result.find(Old);
  if (At == std::string::npos) throw std::invalid_argument("Not in the document: " + std::string(Old));
  return Result.replace(At, Old.size(), New);
}

}  // namespace oxSuperAPI
