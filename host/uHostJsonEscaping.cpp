#include "oxSuperAPI/host/uHostJsonEscaping.h"

namespace oxSuperAPI {

namespace {

// The letter behind the backslash; 'u' for the long form, 0 for a byte that stands as it is.
constexpr char EscapeLetter(unsigned char Byte) {
  switch (Byte) {
    case '"':
      return '"';
    case '\\':
      return '\\';
    case '\b':
      return 'b';
    case '\f':
      return 'f';
    case '\n':
      return 'n';
    case '\r':
      return 'r';
    case '\t':
      return 't';
    default:
      return Byte < 0x20 ? 'u' : '\0';
  }
}

}  // namespace

std::size_t EscapedJSONSize(std::string_view Text) {
  if (CopyPlainJSON(nullptr, Text)) return Text.size();
  std::size_t Size = Text.size();
  for (const char Each : Text)
    if (const char Letter = EscapeLetter(static_cast<unsigned char>(Each)))
      Size += Letter == 'u' ? MaxEscapedByte - 1 : 1;
  return Size;
}

char* WriteEscapesToo(char* Out, std::string_view Text) {
  static constexpr char Hex[] = "0123456789abcdef";
  for (const char Each : Text) {
    const auto Byte = static_cast<unsigned char>(Each);
    const char Letter = EscapeLetter(Byte);
    if (Letter) *Out++ = '\\';
    *Out++ = Letter ? Letter : Each;
    if (Letter != 'u') continue;
    for (const char Digit : {'0', '0', Hex[Byte >> 4], Hex[Byte & 15]}) *Out++ = Digit;
  }
  return Out;
}

}  // namespace oxSuperAPI
