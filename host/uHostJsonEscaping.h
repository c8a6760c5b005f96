#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

/// The content of JSON strings, between the quotes: `"`, `\` and the control characters are escaped, all else stands as
/// it is. Nearly every text needs no escape, so eight bytes are looked at in one go.
namespace oxSuperAPI {

/// A byte becomes at most "\u001f".
inline constexpr std::size_t MaxEscapedByte = 6;

/// Whether a byte cannot stand in JSON as it is.
constexpr bool NeedsJSONEscape(char Byte) {
  return static_cast<unsigned char>(Byte) < 0x20 || Byte == '"' || Byte == '\\';
}

/// Not 0 when one of eight bytes needs an escape. The three terms have the high bit of a byte set where it is below
/// 0x20, where it is `"` and where it is `\`; a borrow can only add a bit above a byte that has one already.
constexpr std::uint64_t FindJSONEscape(std::uint64_t Bytes) {
  constexpr std::uint64_t Ones = 0x0101010101010101, High = 0x8080808080808080;
  const std::uint64_t Quote = Bytes ^ (Ones * '"'), Backslash = Bytes ^ (Ones * '\\');
  return (((Bytes - Ones * 0x20) & ~Bytes) | ((Quote - Ones) & ~Quote) | ((Backslash - Ones) & ~Backslash)) & High;
}

/// Whether no byte of `Text` needs an escape; what was copied to `Out`, if there is one, is then right. Words overlap
/// rather than read or write beyond the text.
[[gnu::always_inline]] inline bool CopyPlainJSON(char* Out, std::string_view Text) {
  const auto Copy = [&]<class Word>(std::size_t Position, Word Bytes) -> std::uint64_t {
    std::memcpy(&Bytes, Text.data() + Position, sizeof Bytes);
    if (Out) std::memcpy(Out + Position, &Bytes, sizeof Bytes);
    return Bytes;
  };
  const std::size_t Size = Text.size();
  if (Size >= 8) {
    std::uint64_t Found = FindJSONEscape(Copy(Size - 8, std::uint64_t{}));
    for (std::size_t Position = 0; Position + 8 < Size; Position += 8)
      Found |= FindJSONEscape(Copy(Position, std::uint64_t{}));
    return Found == 0;
  }
  if (Size >= 4) return !FindJSONEscape(Copy(0, std::uint32_t{}) | Copy(Size - 4, std::uint32_t{}) << 32);
  if (Size == 0) return true;
  constexpr std::uint64_t Blanks = 0x2020202020000000;
  return !FindJSONEscape(Copy(0, std::uint8_t{}) | Copy(Size / 2, std::uint8_t{}) << 8 |
                         Copy(Size - 1, std::uint8_t{}) << 16 | Blanks);
}

/// Bytes that `Text` takes once it is escaped.
OXSUPERAPI_EXPORT std::size_t EscapedJSONSize(std::string_view Text);

/// Writes `Text` escaped to `Out`, which has room for it, and gives the end of what was written. @{
OXSUPERAPI_EXPORT char* WriteEscapesToo(char* Out, std::string_view Text);
inline char* WriteEscapedJSON(char* Out, std::string_view Text) {
  return CopyPlainJSON(Out, Text) ? Out + Text.size() : WriteEscapesToo(Out, Text);
}
/// @}

}  // namespace oxSuperAPI
