#include "payrun/losses.h"

#include <charconv>
#include <cmath>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"

namespace oxSuperAPI {
namespace {

bool IsZero(std::string_view Text) {
  double Number = 1;
  const auto [End, Problem] = std::from_chars(Text.data(), Text.data() + Text.size(), Number);
  return Problem == std::errc() && End == Text.data() + Text.size() && std::abs(Number) < 0.01;
}

void Collect(const TJSONValue& Value, const std::string& Path, TSaidValues& Values) {
  if (const TJSONObject* Object = Value.AsObject()) {
    for (const TJSONPair& Member : Object->Members())
      Collect(Member.Value(), (Path.empty() ? "" : Path + ".").append(Member.Name()), Values);
  } else if (const TJSONArray* Array = Value.AsArray()) {
    for (std::size_t Index = 0; Index < Array->Count(); ++Index)
      Collect(*Array->At(Index), Path + "[" + std::to_string(Index) + "]", Values);
  } else {
    const std::string_view Text = TBeamAPIHelper::TextOf(&Value);
    const bool Silent = Text.empty() || (!Value.AsBoolean() && IsZero(Text));
    if (!Silent) Values.emplace(Path, Text);  // where a name repeats, the first member counts
  }
}

}  // namespace

TSaidValues SaidValues(const TJSONValue& Document) {
  TSaidValues Values;
  Collect(Document, "", Values);
  return Values;
}

std::vector<std::string> LostPaths(const TSaidValues& File, const TSaidValues& Written) {
  std::vector<std::string> Lost;
  for (const auto& [Path, Text] : File)
    if (!Written.contains(Path)) Lost.push_back(Path);
  return Lost;
}

}  // namespace oxSuperAPI
