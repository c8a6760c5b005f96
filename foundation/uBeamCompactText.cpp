#include "oxSuperAPI/foundation/uBeamCompactText.h"

#include <limits>
#include <new>

namespace oxSuperAPI {

void TBeamText::TakeLong(std::string_view Content) {
  // Until the block is there, this is an empty text: nothing of another one's may be released.
  FBytes[Tag] = MaxInPlace;
  if (Content.size() > std::numeric_limits<std::uint32_t>::max())
    throw TBeamRangeError("A text of 4 GB or more does not fit into a record");
  const auto Size = static_cast<std::uint32_t>(Content.size());
  char* const Block = static_cast<char*>(::operator new(sizeof Size + Size + 1));
  std::memcpy(Block, &Size, sizeof Size);
  std::memcpy(Block + sizeof Size, Content.data(), Size);
  Block[sizeof Size + Size] = '\0';
  std::memcpy(FBytes, &Block, sizeof Block);
  FBytes[Tag] = Long;
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
