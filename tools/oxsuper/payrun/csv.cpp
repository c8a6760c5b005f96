#include "payrun/csv.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view NoBreakSpace = "\xC2\xA0";

void AppendUTF8(std::string& Out, unsigned CodePoint) {
  if (CodePoint < 0x80) {
    Out += static_cast<char>(CodePoint);
  } else if (CodePoint < 0x800) {
    Out += static_cast<char>(0xC0 | (CodePoint >> 6));
    Out += static_cast<char>(0x80 | (CodePoint & 0x3F));
  } else {
    Out += static_cast<char>(0xE0 | (CodePoint >> 12));
    Out += static_cast<char>(0x80 | ((CodePoint >> 6) & 0x3F));
    Out += static_cast<char>(0x80 | (CodePoint & 0x3F));
  }
}

/// The delimiter that stands more often, outside quotes, in the first three lines: the header rows hold both rarely.
char FindDelimiter(std::string_view Text) {
  std::size_t Commas = 0, Semicolons = 0, Lines = 0;
  bool Quoted = false;
  for (const char Each : Text) {
    if (Each == '"') Quoted = !Quoted;
    if (Quoted) continue;
    if (Each == ',') ++Commas;
    if (Each == ';') ++Semicolons;
    if (Each == '\n' && ++Lines == 3) break;
  }
  return Semicolons > Commas ? ';' : ',';
}

}  // namespace

bool IsUTF8(std::string_view Text) {
  const auto Byte = [&](std::size_t Index) { return static_cast<std::uint8_t>(Text[Index]); };
  for (std::size_t At = 0; At < Text.size();) {
    const std::uint8_t Lead = Byte(At);
    const std::size_t Length = Lead < 0x80   ? 1
                               : Lead < 0xC2 ? 0
                               : Lead < 0xE0 ? 2
                               : Lead < 0xF0 ? 3
                               : Lead < 0xF5 ? 4
                                             : 0;
    if (Length == 0 || Text.size() - At < Length) return false;
    for (std::size_t Next = At + 1; Next < At + Length; ++Next)
      if ((Byte(Next) & 0xC0) != 0x80) return false;
    if ((Lead == 0xE0 && Byte(At + 1) < 0xA0) || (Lead == 0xED && Byte(At + 1) >= 0xA0) ||
        (Lead == 0xF0 && Byte(At + 1) < 0x90) || (Lead == 0xF4 && Byte(At + 1) >= 0x90))
      return false;  // overlong, surrogate, beyond U+10FFFF
    At += Length;
  }
  return true;
}

std::string FromWindows1252(std::string_view Text) {
  // 0x80 to 0x9F; elsewhere the byte is the code point. 0 marks the bytes that the encoding does not use.
  static constexpr std::array<unsigned, 32> High{0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                                 0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
  std::string Result;
  Result.reserve(Text.size() + Text.size() / 16);
  for (const char Each : Text) {
    const auto Byte = static_cast<std::uint8_t>(Each);
    const unsigned CodePoint = Byte >= 0x80 && Byte < 0xA0 ? High[Byte - 0x80u] : Byte;
    if (CodePoint == 0)
      throw TBeamError("The file is neither UTF-8 nor Windows-1252: save it as \"CSV UTF-8\" and try again");
    AppendUTF8(Result, CodePoint);
  }
  return Result;
}

std::string TrimCell(std::string_view Text) {
  const auto Blank = [](char Each) { return static_cast<std::uint8_t>(Each) <= ' '; };
  for (bool Changed = true; Changed;) {
    Changed = false;
    while (!Text.empty() && Blank(Text.front())) Text.remove_prefix(1), Changed = true;
    while (!Text.empty() && Blank(Text.back())) Text.remove_suffix(1), Changed = true;
    while (Text.starts_with(NoBreakSpace)) Text.remove_prefix(NoBreakSpace.size()), Changed = true;
    while (Text.ends_with(NoBreakSpace)) Text.remove_suffix(NoBreakSpace.size()), Changed = true;
  }
  return std::string(Text);
}

const std::string& TCSVRow::Cell(std::size_t Index) const {
  static const std::string Empty;
  return Index < Cells.size() ? Cells[Index] : Empty;
}

bool TCSVRow::IsEmpty() const {
  return std::all_of(Cells.begin(), Cells.end(), [](const std::string& Each) { return Each.empty(); });
}

TCSVReader::TCSVReader(std::string Text) : FText(std::move(Text)) {
  if (FText.find('\0') != std::string::npos)
    throw TBeamError("The file is no text in UTF-8 or Windows-1252: save it as \"CSV UTF-8\" and try again");
  if (!IsUTF8(FText)) FText = FromWindows1252(FText);
  if (FText.starts_with(ByteOrderMark)) FPosition = ByteOrderMark.size();
  FDelimiter = FindDelimiter(FText);
}

bool TCSVReader::Next(TCSVRow& Row) {
  Row.Line = FLine;
  Row.Cells.clear();
  if (FPosition >= FText.size()) return false;
  while (true) {
    const bool Quoted = FPosition < FText.size() && FText[FPosition] == '"';
    Row.Cells.push_back(TrimCell(Quoted ? ReadQuoted() : ReadBare()));
    if (FPosition >= FText.size()) return true;
    if (FText[FPosition++] == FDelimiter) continue;
    ++FLine;  // the line feed, or a lone carriage return, that ended the record
    return true;
  }
}

/// From the opening quote up to the delimiter or line end behind the closing one.
std::string TCSVReader::ReadQuoted() {
  const std::size_t Opened = FLine;
  std::string Result;
  while (true) {
    const std::size_t Quote = FText.find('"', FPosition + 1);
    if (Quote == std::string::npos)
      throw TBeamError("Line " + std::to_string(Opened) + ": a quoted cell begins here and is never closed");
    const std::string_view Piece(FText.data() + FPosition + 1, Quote - FPosition - 1);
    FLine += static_cast<std::size_t>(std::count(Piece.begin(), Piece.end(), '\n'));
    Result += Piece;
    FPosition = Quote + 1;
    if (FPosition >= FText.size() || FText[FPosition] != '"') break;
    Result += '"';
  }
  return Result + ReadBare();
}

/// Up to, not including, the next delimiter or line feed.
std::string TCSVReader::ReadBare() {
  const char Ends[] = {FDelimiter, '\n'};
  const std::size_t End = std::min(FText.find_first_of(Ends, FPosition, 2), FText.size());
  std::string Result = FText.substr(FPosition, End - FPosition);
  FPosition = End;
  return Result;
}

}  // namespace oxSuperAPI
