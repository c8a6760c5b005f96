#pragma once

#include <algorithm>
#include <string_view>

namespace oxSuperAPI {

/// Whether two database names are the same: letter case (ASCII) does not count.
inline bool SameName(std::string_view Left, std::string_view Right) {
  const auto Lower = [](char Byte) { return Byte >= 'A' && Byte <= 'Z' ? static_cast<char>(Byte | 0x20) : Byte; };
  return std::equal(Left.begin(), Left.end(), Right.begin(), Right.end(),
                    [&](char A, char B) { return Lower(A) == Lower(B); });
}

}  // namespace oxSuperAPI
