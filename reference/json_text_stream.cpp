#include "oxSuperAPI/reference/json_text_stream.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace oxSuperAPI {

namespace {

constexpr std::uint64_t Each(unsigned char Byte) {
  return 0x0101010101010101u * Byte;
}

std::uint64_t EightBytes(const char* From) {
  std::uint64_t Word = 0;
  std::memcpy(&Word, From, sizeof(Word));
  return Word;
}

/// The high bit of every byte that is zero, and of none below the lowest of them.
std::uint64_t Zeros(std::uint64_t Word) {
  return (Word - Each(1)) & ~Word & Each(0x80);
}

/// The high bit of the first byte that is a quote, a backslash, a control character or not ASCII.
std::uint64_t Specials(std::uint64_t Word) {
  const std::uint64_t Controls = (Word - Each(0x20)) & ~Word;
  return ((Word | Controls) & Each(0x80)) | Zeros(Word ^ Each('"')) | Zeros(Word ^ Each('\\'));
}

bool IsPlainASCII(char Byte) {
  const auto Value = static_cast<unsigned char>(Byte);
  return Value >= 0x20 && Value < 0x80 && Value != '"' && Value != '\\';
}

const char* EndOfPlainASCII(const char* From, const char* End) {
  while (End - From >= 8) {
    const std::uint64_t Found = Specials(EightBytes(From));
    if (Found == 0) {
      From += 8;
      continue;
    }
    if constexpr (std::endian::native == std::endian::little) return From + std::countr_zero(Found) / 8;
    break;
  }
  while (From != End && IsPlainASCII(*From)) ++From;
  return From;
}

// The end of plain text, as EndOfPlainText has it, where ASCII ends.
[[gnu::noinline]] const char* EndBeyondASCII(const char* From, const char* End) {
  while (From != End && static_cast<unsigned char>(*From) >= 0x80) {
    const std::size_t Length = SequenceLength({From, static_cast<std::size_t>(End - From)});
    if (Length == 0) break;
    From = EndOfPlainASCII(From + Length, End);
  }
  return From;
}

}  // namespace

std::size_t SequenceLength(std::string_view Text) {
  const auto Byte = [Text](std::size_t Index) { return static_cast<unsigned char>(Text[Index]); };
  const unsigned Lead = Byte(0);
  if (Lead < 0xC2 || Lead > 0xF4) return 0;
  const std::size_t Length = Lead < 0xE0 ? 2 : Lead < 0xF0 ? 3 : 4;
  if (Length > Text.size()) return 0;
  const unsigned Lowest = Lead == 0xE0 ? 0xA0 : Lead == 0xF0 ? 0x90 : 0x80;
  const unsigned Highest = Lead == 0xED ? 0x9F : Lead == 0xF4 ? 0x8F : 0xBF;
  if (Byte(1) < Lowest || Byte(1) > Highest) return 0;
  for (std::size_t Index = 2; Index < Length; ++Index)
    if ((Byte(Index) & 0xC0) != 0x80) return 0;
  return Length;
}

const char* EndOfPlainText(const char* From, const char* End) {
  From = EndOfPlainASCII(From, End);
  return From == End || static_cast<unsigned char>(*From) < 0x80 ? From : EndBeyondASCII(From, End);
}

// Comes where a string begins, and behind a number.
char* TJSONTextStream::PutBegin() {
  const char* const Start = FAt;
  FStrings->Unescaped = nullptr;
  if (Start != FBegin && Start[-1] == '"') {
    const char* const Stop = EndOfPlainText(Start, FEnd);
    if (Stop != FEnd && *Stop == '\\') return Unescape(Stop);
    // What is no UTF-8 is read as the end of the text, which makes the string one without an end.
    FAt = Stop != FEnd && static_cast<unsigned char>(*Stop) >= 0x80 ? FEnd : Stop;
  }
  return const_cast<char*>(Start);
}

char* TJSONTextStream::Unescape(const char* FirstEscape) {
  const char* Stop = FirstEscape;
  while (Stop != FEnd && *Stop == '\\') Stop = EndOfPlainText(Stop + (FEnd - Stop > 1 ? 2 : 1), FEnd);
  const bool IsWhole = Stop != FEnd && *Stop == '"';
  // No escape is shorter than what it stands for; one more for the NUL that the reader puts behind the string.
  FStrings->Buffer.assign(FAt, Stop);
  FStrings->Buffer.push_back('\0');
  FStrings->Unescaped = FStrings->Buffer.data() + (FirstEscape - FAt);
  FAt = IsWhole ? FirstEscape : FEnd;
  return FStrings->Buffer.data();
}

// Indentation mostly: a line break and many blanks.
void TJSONTextStream::SkipManyBlanks() {
  const char* At = FAt;
  while (At != FEnd && IsBlank(*At)) {
    ++At;
    while (FEnd - At >= 8) {
      const std::uint64_t Others = EightBytes(At) ^ Each(' ');
      if (Others != 0) {
        if constexpr (std::endian::native == std::endian::little) At += std::countr_zero(Others) / 8;
        break;
      }
      At += 8;
    }
  }
  FAt = At;
}

}  // namespace oxSuperAPI
