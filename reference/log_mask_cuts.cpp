#include "oxSuperAPI/reference/log_mask_cuts.h"

#include <algorithm>
#include <array>

#include "oxSuperAPI/reference/log_masking.h"

namespace oxSuperAPI {

namespace {

constexpr std::array<bool, 256> WordCharacters = [] {
  std::array<bool, 256> Result{};
  for (int Each = 0; Each < 256; ++Each)
    Result[static_cast<std::size_t>(Each)] =
        (Each >= '0' && Each <= '9') || (Each >= 'a' && Each <= 'z') || (Each >= 'A' && Each <= 'Z') || Each >= 0x80;
  for (const char Each : std::string_view("_-.~+%@")) Result[static_cast<unsigned char>(Each)] = true;
  return Result;
}();

}  // namespace

std::string TMaskCuts::Apply(std::string_view Text) {
  if (!FSorted)
    std::ranges::stable_sort(FCuts, [](const TCut& Left, const TCut& Right) {
      return Left.Begin != Right.Begin ? Left.Begin < Right.Begin : Left.End > Right.End;
    });
  std::string Result;
  Result.reserve(Text.size());
  std::size_t At = 0;
  bool First = true;
  for (const TCut& Cut : FCuts) {
    if (First || Cut.Begin > At) {
      First = false;
      Result.append(Text, At, Cut.Begin - At);
      Result.append(Cut.Text == FromMark ? HiddenMark : FTexts[static_cast<std::size_t>(Cut.Text)]);
    }
    At = std::max(At, Cut.End);
  }
  return Result.append(Text.substr(std::min(At, Text.size())));
}

std::size_t EndOfWord(std::string_view Text, std::size_t At) {
  while (At < Text.size() && WordCharacters[static_cast<unsigned char>(Text[At])]) ++At;
  return At;
}

}  // namespace oxSuperAPI
