#include "oxSuperAPI/reference/editor_text.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "oxSuperAPI/reference/json_problem.h"

namespace oxSuperAPI {

namespace {

/// Bytes that cannot be shown are shown as this code point and the following 255.
constexpr char32_t FirstStandIn = 0xF700;
constexpr std::size_t MaxIndent = 64;  // so that deep nesting cannot make a text grow beyond measure

struct TCharacter {
  std::size_t Length;  ///< in bytes; 1 for a byte that is not part of valid UTF-8
  char32_t Code;       ///< 0 for such a byte
};

TCharacter CharacterAt(std::string_view Text) {
  const auto Byte = [&](std::size_t At) { return At < Text.size() ? static_cast<unsigned char>(Text[At]) : 0u; };
  const unsigned First = Byte(0);
  if (First < 0x80) return {1, First};
  const std::size_t Length = First < 0xC2 ? 0 : First < 0xE0 ? 2 : First < 0xF0 ? 3 : First < 0xF5 ? 4 : 0;
  char32_t Code = First & (0x7Fu >> Length);
  for (std::size_t At = 1; At < Length; ++At) {
    if ((Byte(At) & 0xC0) != 0x80) return {1, 0};
    Code = Code << 6 | (Byte(At) & 0x3F);
  }
  const bool TooShort = (Length == 3 && Code < 0x800) || (Length == 4 && Code < 0x10000);
  const bool NoCharacter = (Code >= 0xD800 && Code <= 0xDFFF) || Code > 0x10FFFF;
  return Length == 0 || TooShort || NoCharacter ? TCharacter{1, 0} : TCharacter{Length, Code};
}

bool CanBeShown(char32_t Code) {
  if (Code < 0x20) return Code == '\t' || Code == '\n';
  const bool Control = Code >= 0x7F && Code <= 0x9F;
  const bool Separator = Code == 0x2028 || Code == 0x2029;
  const bool Direction = (Code >= 0x202A && Code <= 0x202E) || (Code >= 0x2066 && Code <= 0x2069);
  const bool StandIn = Code >= FirstStandIn && Code <= FirstStandIn + 0xFF;
  const bool NoCharacter = (Code >= 0xFDD0 && Code <= 0xFDEF) || (Code & 0xFFFE) == 0xFFFE;
  return !(Control || Separator || Direction || StandIn || NoCharacter);
}

std::string StandInFor(char Byte) {
  const unsigned Value = static_cast<unsigned char>(Byte);
  return {'\xEF', static_cast<char>(0x9C + (Value >> 6)), static_cast<char>(0x80 + (Value & 0x3F))};
}

/// The bytes for the stand-ins, and the body's own line ends.
std::string WithoutStandIns(std::string_view Text, std::string_view LineEnd) {
  std::string Result;
  for (std::size_t At = 0; At < Text.size();) {
    const TCharacter Next = CharacterAt(Text.substr(At));
    if (Next.Code == '\n')
      Result += LineEnd;
    else if (Next.Code >= FirstStandIn && Next.Code <= FirstStandIn + 0xFF)
      Result += static_cast<char>(Next.Code - FirstStandIn);
    else
      Result += Text.substr(At, Next.Length);
    At += Next.Length;
  }
  return Result;
}

/// Goes through a body in steps: `Take(Bytes, Shown)` says that so many bytes of it are shown in that way.
template <class Function>
void ShowText(std::string_view Body, Function Take) {
  while (!Body.empty()) {
    const TCharacter Next = CharacterAt(Body);
    std::size_t Bytes = Next.Length;
    if (Body.starts_with("\r\n")) {
      Take(Bytes = 2, "\n");
    } else if (CanBeShown(Next.Code)) {
      Take(Bytes, Body.substr(0, Bytes));
    } else {
      std::string StandIns;
      for (const char Byte : Body.substr(0, Bytes)) StandIns += StandInFor(Byte);
      Take(Bytes, StandIns);
    }
    Body.remove_prefix(Bytes);
  }
}

/// As ShowText, for valid JSON: only what stands between its tokens is shown in another way.
template <class Function>
void ShowJSON(std::string_view Body, Function Take) {
  std::size_t Depth = 0;
  const auto NewLine = [&Depth] { return "\n" + std::string(std::min(2 * Depth, MaxIndent), ' '); };
  while (!Body.empty()) {
    const char First = Body[0];
    if (First == '"') {
      std::size_t End = 1;
      while (End < Body.size() && Body[End] != '"') End += Body[End] == '\\' ? 2 : 1;
      End = std::min(End + 1, Body.size());
      ShowText(Body.substr(0, End), Take);
      Body.remove_prefix(End);
      continue;
    }
    const std::size_t Next = std::min(Body.find_first_not_of(" \t\r\n", 1), Body.size() - 1);
    const bool IsOpening = First == '{' || First == '[';
    if (IsOpening && (Body[Next] == '}' || Body[Next] == ']')) {
      Take(Next + 1, std::string{First, Body[Next]});
      Body.remove_prefix(Next + 1);
      continue;
    }
    if (First == '}' || First == ']') {
      --Depth;
      Take(1, NewLine() + First);
    } else if (IsOpening) {
      ++Depth;
      Take(1, First + NewLine());
    } else if (First == ',') {
      Take(1, First + NewLine());
    } else if (First == ':') {
      Take(1, std::string(": "));
    } else if (First == ' ' || First == '\t' || First == '\r' || First == '\n') {
      Take(1, std::string());
    } else {
      Take(1, Body.substr(0, 1));
    }
    Body.remove_prefix(1);
  }
}

template <class Function>
void Show(std::string_view Body, bool IsJSON, Function Take) {
  IsJSON ? ShowJSON(Body, Take) : ShowText(Body, Take);
}

}  // namespace

TEditorText::TEditorText(TStringList Lines) : FLines(std::move(Lines)) {
  const std::string Body = FLines.Text();
  FIsJSON = !FindJSONProblem(Body);
  FShown.reserve(Body.size() + Body.size() / 4);
  Show(Body, FIsJSON, [this](std::size_t, std::string_view Shown) { FShown += Shown; });
}

TStringList TEditorText::Edited(std::string_view Text) const {
  if (Text == FShown) return FLines;
  const std::size_t Shorter = std::min(Text.size(), FShown.size());
  const auto Same = std::mismatch(FShown.begin(), FShown.begin() + static_cast<std::ptrdiff_t>(Shorter), Text.begin());
  const std::size_t Front = static_cast<std::size_t>(Same.first - FShown.begin());
  std::size_t Back = 0;
  while (Back < Shorter - Front && FShown[FShown.size() - 1 - Back] == Text[Text.size() - 1 - Back]) ++Back;

  // The change is widened to whole steps, so that both its ends have a place in the body.
  struct TPlace {
    std::size_t InBody = 0, InShown = 0;
  };
  TPlace First, Last, Here;
  bool LastFound = false;
  const std::string Body = FLines.Text();
  const auto Look = [&] {
    if (Here.InShown <= Front) First = Here;
    if (LastFound && Last.InBody >= First.InBody) return;
    LastFound = Here.InShown >= FShown.size() - Back;
    Last = Here;
  };
  Look();
  Show(Body, FIsJSON, [&](std::size_t Bytes, std::string_view Shown) {
    Here.InBody += Bytes;
    Here.InShown += Shown.size();
    Look();
  });

  const std::string_view Changed =
      Text.substr(First.InShown, Text.size() - (FShown.size() - Last.InShown) - First.InShown);
  const std::string_view LineEnd = Body.find("\r\n") == std::string::npos ? "\n" : "\r\n";
  TStringList Result;
  Result.SetText(Body.substr(0, First.InBody) + WithoutStandIns(Changed, LineEnd) + Body.substr(Last.InBody));
  return Result;
}

}  // namespace oxSuperAPI
