#include "oxSuperAPI/foundation/uBeamText.h"

#include <algorithm>

namespace oxSuperAPI {

namespace {

// Bytes of the valid UTF-8 sequence at the front of Text, or 1 when its first byte starts none.
std::size_t SequenceLength(std::string_view Text) {
  const auto Byte = [Text](std::size_t Index) { return static_cast<unsigned char>(Text[Index]); };
  const unsigned Lead = Byte(0);
  const std::size_t Length = Lead < 0xC2 || Lead > 0xF4 ? 1 : Lead < 0xE0 ? 2 : Lead < 0xF0 ? 3 : 4;
  if (Length > Text.size()) return 1;
  for (std::size_t Index = 1; Index < Length; ++Index)
    if ((Byte(Index) & 0xC0) != 0x80) return 1;
  // Overlong forms, surrogates, and what lies beyond U+10FFFF.
  if (Lead == 0xE0 && Byte(1) < 0xA0) return 1;
  if (Lead == 0xED && Byte(1) > 0x9F) return 1;
  if (Lead == 0xF0 && Byte(1) < 0x90) return 1;
  if (Lead == 0xF4 && Byte(1) > 0x8F) return 1;
  return Length;
}

// UTF-16 code units of a sequence of so many bytes.
std::size_t UnitsOf(std::size_t SequenceBytes) {
  return SequenceBytes == 4 ? 2 : 1;
}

char UpperCaseOf(char Letter) {
  return Letter >= 'a' && Letter <= 'z' ? static_cast<char>(Letter - 'a' + 'A') : Letter;
}
char LowerCaseOf(char Letter) {
  return Letter >= 'A' && Letter <= 'Z' ? static_cast<char>(Letter - 'A' + 'a') : Letter;
}

}  // namespace

std::string_view Trim(std::string_view Text) {
  const auto IsBlank = [](char Letter) { return static_cast<unsigned char>(Letter) <= 0x20; };
  while (!Text.empty() && IsBlank(Text.front())) Text.remove_prefix(1);
  while (!Text.empty() && IsBlank(Text.back())) Text.remove_suffix(1);
  return Text;
}

std::string UpperCase(std::string_view Text) {
  std::string Result(Text);
  std::ranges::transform(Result, Result.begin(), UpperCaseOf);
  return Result;
}

std::string LowerCase(std::string_view Text) {
  std::string Result(Text);
  std::ranges::transform(Result, Result.begin(), LowerCaseOf);
  return Result;
}

bool SameText(std::string_view Left, std::string_view Right) {
  return std::ranges::equal(Left, Right, {}, LowerCaseOf, LowerCaseOf);
}

std::size_t CharacterCount(std::string_view Text) {
  std::size_t Count = 0;
  while (!Text.empty()) {
    const std::size_t Bytes = SequenceLength(Text);
    Count += UnitsOf(Bytes);
    Text.remove_prefix(Bytes);
  }
  return Count;
}

std::string_view Characters(std::string_view Text, std::size_t First, std::size_t Count) {
  std::size_t Skip = First > 0 ? First - 1 : 0;
  while (Skip > 0 && !Text.empty()) {
    const std::size_t Bytes = SequenceLength(Text);
    const std::size_t Units = UnitsOf(Bytes);
    // The cut goes through a pair: the half behind it is one of the wanted characters, and is left out.
    if (Units > Skip && Count > 0) --Count;
    Skip -= std::min(Skip, Units);
    Text.remove_prefix(Bytes);
  }
  std::size_t End = 0;
  while (End < Text.size()) {
    const std::size_t Bytes = SequenceLength(Text.substr(End));
    if (UnitsOf(Bytes) > Count) break;
    Count -= UnitsOf(Bytes);
    End += Bytes;
  }
  return Text.substr(0, End);
}

std::string_view FirstCharacters(std::string_view Text, std::size_t Count) {
  return Characters(Text, 1, Count);
}

std::string GUIDToString(const TGUID& GUID) {
  static constexpr char Hex[] = "0123456789ABCDEF";
  std::string Result = "{";
  for (std::size_t Index = 0; Index < GUID.size(); ++Index) {
    if (Index == 4 || Index == 6 || Index == 8 || Index == 10) Result += '-';
    Result += Hex[GUID[Index] >> 4];
    Result += Hex[GUID[Index] & 15];
  }
  return Result += '}';
}

}  // namespace oxSuperAPI
