#include "oxSuperAPI/foundation/uBeamCompactText.h"

#include <algorithm>
#include <limits>
#include <new>

#include "oxSuperAPI/host/uHostJsonEscaping.h"

namespace oxSuperAPI {

void TBeamText::Take(std::string_view Content) {
  if (Content.size() > Tag || !CopyPlainJSON(FBytes, Content)) return TakeLong(Content);
  FBytes[Tag] = static_cast<char>(Tag - Content.size());
}

void TBeamText::TakeLong(std::string_view Content) {
  // Until the block is there, this is an empty text: nothing of another one's may be released.
  FBytes[Tag] = MaxInPlace;
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
