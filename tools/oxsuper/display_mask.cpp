#include "display_mask.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "oxSuperAPI/foundation/uBeamText.h"

namespace oxSuperAPI {
namespace {

constexpr std::string_view Mark = "(hidden)";

/// What stands before a value, in lower case. A value of JSON or of a form follows a quote, a colon or an equals sign.
/// "token" is the one of a participant's sign-up. What a response says about an element of a batch may be a tax file
/// number: the pair's name "elementvalue" is followed by its value, in the payload's text with escaped quotes.
constexpr std::array<std::string_view, 9> Keys{"access_token", "refresh_token",           "id_token",
                                               "\"pin\"",      "taxfilenumber",           "client_secret",
                                               "\"token\"",    R"(elementvalue","value)", R"(elementvalue\",\"value)"};
constexpr std::string_view Bearer = "bearer ";

bool IsOneOf(char Each, std::string_view List) {
  return List.find(Each) != std::string_view::npos;
}

/// The end of the value that begins at `At`: of a quoted one its closing quote, of a bare one the next delimiter.
std::size_t EndOfValue(std::string_view Text, std::size_t At, bool Quoted) {
  // Inside a JSON string the opening quote was escaped, and so is the closing one.
  if (Quoted && At >= 2 && Text[At - 2] == '\\') return std::min(Text.find(R"(\")", At), Text.size());
  for (; At < Text.size(); ++At) {
    if (Quoted && Text[At] == '\\') {
      ++At;
      continue;
    }
    if (Quoted ? Text[At] == '"' : IsOneOf(Text[At], " \t\r\n,;&}\"")) return At;
  }
  return Text.size();
}

}  // namespace

std::string HideForDisplay(const std::string& Text) {
  const std::string Lower = LowerCase(Text);
  std::string Result;
  std::size_t Copied = 0;
  const auto Hide = [&](std::size_t Begin, std::size_t End) {
    if (Begin >= End) return;
    Result.append(Text, Copied, Begin - Copied).append(Mark);
    Copied = End;
  };
  for (std::size_t At = 0; At < Lower.size();) {
    const std::string_view Rest = std::string_view(Lower).substr(At);
    if (Rest.starts_with(Bearer)) {
      const std::size_t Begin = At + Bearer.size();
      At = EndOfValue(Text, Begin, false);
      Hide(Begin, At);
      continue;
    }
    std::size_t Length = 0;
    for (const std::string_view Key : Keys)
      if (Rest.starts_with(Key)) Length = Key.size();
    if (Length == 0) {
      ++At;
      continue;
    }
    std::size_t Begin = At + Length;
    if (Begin < Text.size() && Text[Begin] == '\\') ++Begin;  // JSON inside a JSON string
    if (Begin < Text.size() && Text[Begin] == '"') ++Begin;
    while (Begin < Text.size() && IsOneOf(Text[Begin], " \t\r\n:=\\")) ++Begin;
    const bool Quoted = Begin < Text.size() && Text[Begin] == '"';
    Begin += Quoted;
    At = EndOfValue(Text, Begin, Quoted);
    Hide(Begin, At);
  }
  return Result.append(Text, Copied);
}

}  // namespace oxSuperAPI
