#include "oxSuperAPI/foundation/uBeamCompactText.h"

#include <algorithm>
#include <limits>
#include <new>

#include "oxSuperAPI/host/uHostJsonEscaping.h"

namespace oxSuperAPI {

namespace {

// Whether nothing in the two needs an escape.
template <class Word>
bool NeedNoEscape(Word First, Word Last) {
  if constexpr (sizeof(Word) == sizeof(std::uint64_t)) return (FindJSONEscape(First) | FindJSONEscape(Last)) == 0;
  constexpr unsigned Bits = 8 * sizeof(Word);
  constexpr std::uint64_t Blanks = Bits < 32 ? 0x2020202020202020 << (2 * Bits % 64) : 0;
  return FindJSONEscape(Blanks | std::uint64_t{Last} << (Bits % 64) | First) == 0;
}

}  // namespace

// A text of one to two words is its first and its last word, which overlap. Both are read before either is written, as
// `Content` may refer into this text.
template <class Word>
inline bool TBeamText::TakeEnds(std::string_view Content) noexcept {
  Word First, Last;
  char* const End = FBytes + Content.size();
  std::memcpy(&First, Content.data(), sizeof First);
  std::memcpy(&Last, Content.data() + Content.size() - sizeof Last, sizeof Last);
  if (!NeedNoEscape(First, Last)) return false;
  std::memcpy(FBytes, &First, sizeof First);
  std::memcpy(End - sizeof Last, &Last, sizeof Last);
  *End = '\0';
  FBytes[Tag] = static_cast<char>(Tag - Content.size());
  return true;
}

// In place, if it fits in and needs no escape; else nothing is changed.
inline bool TBeamText::TakeShort(std::string_view Content) noexcept {
  if (Content.size() >= sizeof(std::uint64_t)) return Content.size() <= Tag && TakeEnds<std::uint64_t>(Content);
  if (Content.size() >= sizeof(std::uint32_t)) return TakeEnds<std::uint32_t>(Content);
  if (Content.size() >= sizeof(std::uint16_t)) return TakeEnds<std::uint16_t>(Content);
  if (Content.size() == 1) return TakeEnds<std::uint8_t>(Content);
  FBytes[0] = '\0';
  FBytes[Tag] = MaxInPlace;
  return true;
}

void TBeamText::Take(std::string_view Content) {
  if (!TakeShort(Content)) TakeLong(Content);
}

void TBeamText::Replace(std::string_view Content) {
  TBeamText Copy(Content);  // before what `Content` may refer into is released
  Swap(Copy);
}

void TBeamText::TakeLong(std::string_view Content) {
  if (Content.size() > std::numeric_limits<std::uint32_t>::max())
    throw TBeamRangeError("A text of 4 GB or more does not fit into a record");
  const auto Size = static_cast<std::uint32_t>(Content.size());
  const std::size_t Copied = (Content.size() + CopySlack - 1) / CopySlack * CopySlack;
  const std::size_t Room = std::max(Copied, Content.size() + 1);
  char* const Block = static_cast<char*>(::operator new(sizeof Size + Room));
  char* const Text = Block + sizeof Size;
  std::memcpy(Block, &Size, sizeof Size);
  const bool IsPlain = CopyPlainJSON(Text, Content);
  std::fill(Text + Size, Text + Room, '\0');
  std::memcpy(FBytes, &Block, sizeof Block);
  FBytes[Tag] = IsPlain ? Long : LongToEscape;
}

void TBeamText::Release() noexcept {
  ::operator delete(Block());
}

std::string TBeamText::Concatenated(std::string_view Left, std::string_view Right) {
  std::string Result;
  Result.reserve(Left.size() + Right.size());
  Result.append(Left);
  return Result.append(Right);
}

}  // namespace oxSuperAPI
