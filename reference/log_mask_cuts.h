#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace oxSuperAPI {

/// Pieces of a text that something else is to take the place of; everything between them is copied byte for byte.
class TMaskCuts {
 public:
  void Hide(std::size_t Begin, std::size_t End) { Add(Begin, End, FromMark); }
  void Replace(std::size_t Begin, std::size_t End, std::string Text) {
    Add(Begin, End, static_cast<std::int32_t>(FTexts.size()));
    FTexts.push_back(std::move(Text));
  }
  bool IsEmpty() const { return FCuts.empty(); }
  /// Of pieces that overlap, the first counts; pieces that touch become one.
  std::string Apply(std::string_view Text);

 private:
  static constexpr std::int32_t FromMark = -1;
  struct TCut {
    std::size_t Begin;
    std::size_t End;
    std::int32_t Text;  ///< index in FTexts
  };
  void Add(std::size_t Begin, std::size_t End, std::int32_t Text) {
    if (Begin >= End) return;
    FSorted = FSorted && (FCuts.empty() || FCuts.back().Begin < Begin);
    FCuts.push_back({Begin, End, Text});
  }

  std::vector<TCut> FCuts;
  std::vector<std::string> FTexts;
  bool FSorted = true;
};

/// The end of the run of characters at `At` that names, tokens, e-mail addresses and numbers are made of; `At` itself
/// when there is none.
std::size_t EndOfWord(std::string_view Text, std::size_t At);

}  // namespace oxSuperAPI
