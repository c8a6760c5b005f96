#include "oxSuperAPI/reference/utf16.h"

#include <utility>

namespace oxSuperAPI {

namespace {

constexpr char32_t Replacement = 0xFFFD;

// Takes one character from the front; a byte that begins none is taken alone.
char32_t TakeCodePoint(std::string_view& Text) {
  const auto Byte = [&](std::size_t At) { return static_cast<unsigned char>(Text[At]); };
  const unsigned First = Byte(0);
  const std::size_t Length = First < 0x80   ? 1
                             : First < 0xC2 ? 0
                             : First < 0xE0 ? 2
                             : First < 0xF0 ? 3
                             : First < 0xF5 ? 4
                                            : 0;
  char32_t CodePoint = Length == 1 ? First : Length == 0 ? Replacement : First & (0x7FU >> Length);
  bool Whole = Length > 0 && Length <= Text.size();
  for (std::size_t At = 1; Whole && At < Length; ++At) {
    Whole = (Byte(At) & 0xC0U) == 0x80;
    CodePoint = CodePoint << 6 | (Byte(At) & 0x3FU);
  }
  constexpr char32_t Least[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool Surrogate = CodePoint >= 0xD800 && CodePoint < 0xE000;
  if (!Whole || CodePoint < Least[Length] || CodePoint > 0x10FFFF || Surrogate) {
    Text.remove_prefix(1);
    return Replacement;
  }
  Text.remove_prefix(Length);
  return CodePoint;
}

bool IsHigh(char16_t Unit) {
  return Unit >= 0xD800 && Unit < 0xDC00;
}
bool IsLow(char16_t Unit) {
  return Unit >= 0xDC00 && Unit < 0xE000;
}

}  // namespace

std::u16string ToUTF16(std::string_view Text) {
  std::u16string Result;
  Result.reserve(Text.size());
  while (!Text.empty()) {
    const char32_t CodePoint = TakeCodePoint(Text);
    if (CodePoint < 0x10000) {
      Result += static_cast<char16_t>(CodePoint);
    } else {
      Result += static_cast<char16_t>(0xD800 + ((CodePoint - 0x10000) >> 10));
      Result += static_cast<char16_t>(0xDC00 + (CodePoint & 0x3FF));
    }
  }
  return Result;
}

void TUTF8Builder::Add(std::u16string_view Piece) {
  for (const char16_t Unit : Piece) {
    const char16_t High = std::exchange(FHigh, 0);
    if (High && IsLow(Unit)) {
      AddCodePoint(0x10000 + ((High - 0xD800U) << 10) + (Unit - 0xDC00U));
      continue;
    }
    if (High) AddCodePoint(Replacement);
    if (IsHigh(Unit))
      FHigh = Unit;
    else
      AddCodePoint(IsLow(Unit) ? Replacement : Unit);
  }
}

std::string TUTF8Builder::Finish() {
  if (std::exchange(FHigh, 0)) AddCodePoint(Replacement);
  return std::move(FText);
}

void TUTF8Builder::AddCodePoint(char32_t CodePoint) {
  const auto Append = [this](char32_t Byte) { FText += static_cast<char>(Byte); };
  if (CodePoint < 0x80) return Append(CodePoint);
  if (CodePoint < 0x800) {
    Append(0xC0 | CodePoint >> 6);
  } else {
    if (CodePoint < 0x10000) {
      Append(0xE0 | CodePoint >> 12);
    } else {
      Append(0xF0 | CodePoint >> 18);
      Append(0x80 | (CodePoint >> 12 & 0x3F));
    }
    Append(0x80 | (CodePoint >> 6 & 0x3F));
  }
  Append(0x80 | (CodePoint & 0x3F));
}

std::string ToUTF8(std::u16string_view Text) {
  TUTF8Builder Builder;
  Builder.Add(Text);
  return Builder.Finish();
}

}  // namespace oxSuperAPI
