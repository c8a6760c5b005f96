#pragma once

#include <string>
#include <string_view>

namespace oxSuperAPI {

/// UTF-8 as UTF-16. A byte that belongs to no character becomes U+FFFD, so that no text is lost for the sake of one.
std::u16string ToUTF16(std::string_view Text);

/// UTF-16 that arrives in pieces, as UTF-8. A pair of surrogates may be split over two pieces; one that stands alone
/// becomes U+FFFD.
class TUTF8Builder {
 public:
  /// The next piece.
  void Add(std::u16string_view Piece);
  /// The whole text. Nothing may be added afterwards.
  std::string Finish();

 private:
  void AddCodePoint(char32_t CodePoint);

  std::string FText;
  char16_t FHigh = 0;  ///< the first half of a pair whose second half has not come yet
};

/// A whole text.
std::string ToUTF8(std::u16string_view Text);

}  // namespace oxSuperAPI
