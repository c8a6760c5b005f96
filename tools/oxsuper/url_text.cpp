#include "url_text.h"

namespace oxSuperAPI {

std::string EscapedForURL(std::string_view Text) {
  static constexpr std::string_view Kept = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_~";
  static constexpr char Digits[] = "0123456789ABCDEF";
  // "." and ".." alone are steps through the path, not segments of it.
  const bool HasDots = Text.find_first_not_of('.') != std::string_view::npos;
  std::string Result;
  for (const char Each : Text) {
    if (Kept.find(Each) != std::string_view::npos || (Each == '.' && HasDots)) {
      Result += Each;
      continue;
    }
    const auto Byte = static_cast<unsigned char>(Each);
    Result += '%';
    Result += Digits[Byte >> 4];
    Result += Digits[Byte & 0xF];
  }
  return Result;
}

}  // namespace oxSuperAPI
