#include <algorithm>
#include <optional>

#include "oxSuperAPI/reference/json_reading.h"

namespace oxSuperAPI {

namespace {

/// The code unit of the "\uXXXX" with which `Text` begins.
std::optional<unsigned> EscapedUnit(std::string_view Text) {
  if (Text.size() < 6 || Text[0] != '\\' || Text[1] != 'u') return std::nullopt;
  unsigned Unit = 0;
  for (const char Digit : Text.substr(2, 4)) {
    const std::size_t Value =
        std::string_view("0123456789abcdef").find(static_cast<char>(Digit >= 'A' && Digit <= 'F' ? Digit + 32 : Digit));
    if (Value == std::string_view::npos) return std::nullopt;
    Unit = Unit * 16 + static_cast<unsigned>(Value);
  }
  return Unit;
}
bool IsFirstHalf(std::optional<unsigned> Unit) {
  return Unit && *Unit >= 0xD800 && *Unit <= 0xDBFF;
}
bool IsSecondHalf(std::optional<unsigned> Unit) {
  return Unit && *Unit >= 0xDC00 && *Unit <= 0xDFFF;
}

/// -? (0 | [1-9][0-9]*) (. [0-9]+)? ([eE] [+-]? [0-9]+)?
bool IsNumber(std::string_view Text) {
  const auto Skip = [&](std::string_view Any) {
    const bool Found = !Text.empty() && Any.find(Text[0]) != std::string_view::npos;
    if (Found) Text.remove_prefix(1);
    return Found;
  };
  const auto SkipDigits = [&] {
    const std::size_t End = std::min(Text.find_first_not_of("0123456789"), Text.size());
    Text.remove_prefix(End);
    return End > 0;
  };
  Skip("-");
  if (!Skip("0") && !SkipDigits()) return false;
  if (Skip(".") && !SkipDigits()) return false;
  if (Skip("eE")) {
    Skip("+-");
    if (!SkipDigits()) return false;
  }
  return Text.empty();
}

}  // namespace

std::string RepairJSON(std::string_view Text, std::vector<std::string>& Numbers) {
  std::string Result;
  Result.reserve(Text.size());
  bool InString = false;
  for (std::size_t At = 0; At < Text.size();) {
    std::string_view Piece = Text.substr(At, 1);
    std::string Written(Piece);
    if (InString && Piece[0] == '\\') {
      const auto Unit = EscapedUnit(Text.substr(At));
      const bool IsPair = IsFirstHalf(Unit) && IsSecondHalf(EscapedUnit(Text.substr(At + 6)));
      Written = Piece = Text.substr(At, IsPair ? 12 : Unit ? 6 : 2);
      if (IsFirstHalf(Unit) && !IsPair) Written = "\\uFFFD";
    } else if (Piece[0] == '"') {
      InString = !InString;
    } else if (!InString && (Piece[0] == '-' || (Piece[0] >= '0' && Piece[0] <= '9'))) {
      Piece = Text.substr(At, Text.find_first_not_of("+-.0123456789eE", At) - At);
      Written = Piece;
      if (IsNumber(Piece)) {
        Numbers.emplace_back(Piece);
        Written = "0" + std::string(Piece.size() - 1, ' ');
      }
    }
    Result += Written;
    At += Piece.size();
  }
  return Result;
}

}  // namespace oxSuperAPI
