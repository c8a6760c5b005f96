#include "oxSuperAPI/reference/log_mask_unicode.h"

#include <array>

namespace oxSuperAPI {

std::optional<unsigned> HexValue(std::string_view Digits, std::size_t Count) {
  if (Digits.size() != Count) return {};
  unsigned Value = 0;
  for (const char Each : Digits) {
    const char Lower = static_cast<char>(Each | 0x20);
    if (Each >= '0' && Each <= '9')
      Value = Value * 16 + static_cast<unsigned>(Each - '0');
    else if (Lower >= 'a' && Lower <= 'f')
      Value = Value * 16 + static_cast<unsigned>(Lower - 'a' + 10);
    else
      return {};
  }
  return Value;
}

void AppendUTF8(std::string& Text, unsigned Point) {
  const auto Add = [&](unsigned Byte) { Text += static_cast<char>(Byte); };
  const auto Follow = [&](unsigned Shift) { Add(0x80 | ((Point >> Shift) & 0x3F)); };
  if (Point < 0x80) {
    Add(Point);
  } else if (Point < 0x800) {
    Add(0xC0 | (Point >> 6));
    Follow(0);
  } else if (Point < 0x10000) {
    Add(0xE0 | (Point >> 12));
    Follow(6);
    Follow(0);
  } else {
    Add(0xF0 | (Point >> 18));
    Follow(12);
    Follow(6);
    Follow(0);
  }
}

std::string UnescapeJSON(std::string_view Escaped) {
  constexpr std::string_view Letters = "\"\\/bfnrt";
  constexpr std::string_view Meant = "\"\\/\b\f\n\r\t";
  std::string Result;
  Result.reserve(Escaped.size());
  for (std::size_t At = 0; At < Escaped.size(); ++At) {
    if (Escaped[At] != '\\' || At + 1 == Escaped.size()) {
      Result += Escaped[At];
      continue;
    }
    const char Letter = Escaped[++At];
    const auto Unit = [&](std::size_t From) {
      return Escaped.substr(From, 2) == "\\u" ? HexValue(Escaped.substr(From + 2, 4), 4) : std::nullopt;
    };
    if (const std::size_t Which = Letters.find(Letter); Which != Letters.npos) {
      Result += Meant[Which];
    } else if (std::optional<unsigned> Point = Letter == 'u' ? Unit(At - 1) : std::nullopt) {
      At += 4;
      const auto Low = *Point >= 0xD800 && *Point < 0xDC00 && At + 1 < Escaped.size() ? Unit(At + 1) : std::nullopt;
      if (Low && *Low >= 0xDC00 && *Low < 0xE000) {
        Point = 0x10000 + ((*Point - 0xD800) << 10) + (*Low - 0xDC00);
        At += 6;
      }
      AppendUTF8(Result, *Point);
    } else {
      Result.append({'\\', Letter});
    }
  }
  return Result;
}

std::string EscapeJSON(std::string_view Text) {
  constexpr std::string_view Hex = "0123456789abcdef";
  std::string Result;
  Result.reserve(Text.size() + Text.size() / 8);
  for (std::size_t At = 0; At < Text.size(); ++At) {
    const auto Byte = static_cast<unsigned char>(Text[At]);
    const auto Next = static_cast<unsigned char>(At + 1 < Text.size() ? Text[At + 1] : 0);
    if (Byte == '"' || Byte == '\\') {
      Result.append({'\\', Text[At]});
    } else if (Byte < 0x20) {
      Result.append("\\u00").append({Hex[Byte >> 4], Hex[Byte & 15]});
    } else if (Byte == 0xED && Next >= 0xA0 && At + 2 < Text.size()) {  // a lone half of a surrogate pair
      const unsigned Point = 0xD000u | ((Next & 0x3Fu) << 6) | (static_cast<unsigned char>(Text[At + 2]) & 0x3Fu);
      Result.append("\\u");
      for (int Shift = 12; Shift >= 0; Shift -= 4) Result += Hex[(Point >> Shift) & 15];
      At += 2;
    } else {
      Result += Text[At];
    }
  }
  return Result;
}

}  // namespace oxSuperAPI
