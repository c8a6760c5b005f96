#include "output.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "payrun/cells.h"

namespace oxSuperAPI {
namespace {

std::function<std::string(std::string_view)>& Mask() {
  static std::function<std::string(std::string_view)> Function;
  return Function;
}

void Write(std::FILE* File, std::string_view Text) {
  if (Mask()) {
    const std::string Masked = Mask()(Text);
    std::fwrite(Masked.data(), 1, Masked.size(), File);
  } else {
    std::fwrite(Text.data(), 1, Text.size(), File);
  }
}

/// The code point at `At`, which moves behind it; a byte that is no UTF-8 counts as itself.
unsigned NextCodePoint(std::string_view Text, std::size_t& At) {
  const auto Byte = [&](std::size_t Index) { return static_cast<unsigned char>(Text[Index]); };
  const unsigned Lead = Byte(At++);
  const int Following = Lead < 0xC2 ? 0 : Lead < 0xE0 ? 1 : Lead < 0xF0 ? 2 : Lead < 0xF5 ? 3 : 0;
  unsigned Result = Following == 0 ? Lead : Lead & (0x3Fu >> Following);
  for (int Index = 0; Index < Following && At < Text.size() && (Byte(At) & 0xC0) == 0x80; ++Index)
    Result = (Result << 6) | (Byte(At++) & 0x3Fu);
  return Result;
}

bool IsCombining(unsigned Point) {
  return (Point >= 0x300 && Point < 0x370) || (Point >= 0x20D0 && Point < 0x2100) ||
         (Point >= 0xFE00 && Point < 0xFE10) || (Point >= 0x200B && Point < 0x2010);
}

bool IsWide(unsigned Point) {
  return (Point >= 0x1100 && Point < 0x1160) || (Point >= 0x2E80 && Point < 0xA4D0) ||
         (Point >= 0xAC00 && Point < 0xD7A4) || (Point >= 0xF900 && Point < 0xFB00) ||
         (Point >= 0xFF00 && Point < 0xFF61) || (Point >= 0x1F300 && Point < 0x1FAFF) ||
         (Point >= 0x20000 && Point < 0x3FFFE);
}

}  // namespace

void MaskOutput(std::function<std::string(std::string_view)> Function) {
  Mask() = std::move(Function);
}

void PrintText(std::string_view Text) {
  Write(stdout, Text);
}

void PrintLine(std::string_view Line) {
  Write(stdout, std::string(Line) + "\n");
}

void PrintDocument(const TJSONObject& Document) {
  PrintLine(PrintJSON(Document, TJSONLayout::Pretty));
}

void Note(std::string_view Line) {
  std::fflush(stdout);  // both in their order when they go to one place
  Write(stderr, std::string(Line) + "\n");
}

std::string Printable(std::string_view Text, bool Multiline) {
  std::string Result;
  for (std::size_t At = 0; At < Text.size();) {
    const std::size_t Begin = At;
    const unsigned Point = NextCodePoint(Text, At);
    const bool Break = Multiline && (Point == '\n' || Point == '\t');
    if (Multiline && Point == '\r') continue;
    if (!Break && (Point < 0x20 || (Point >= 0x7F && Point < 0xA0)))
      Result += '?';
    else
      Result += Text.substr(Begin, At - Begin);
  }
  return Result;
}

std::size_t DisplayWidth(std::string_view Text) {
  std::size_t Width = 0;
  for (std::size_t At = 0; At < Text.size();) {
    const unsigned Point = NextCodePoint(Text, At);
    Width += IsCombining(Point) ? 0 : IsWide(Point) ? 2 : 1;
  }
  return Width;
}

std::int64_t CentsOf(double Dollars) {
  constexpr double Most = 9e15;  // far from the ends of the type, and every whole number up to it is a double
  return std::isnan(Dollars) ? 0 : std::llround(std::clamp(Dollars * 100, -Most, Most));
}

std::string FormatDollars(std::int64_t Cents) {
  std::string Text = FormatCents(std::abs(Cents));
  for (std::size_t At = Text.size() - 3; At > 3; At -= 3) Text.insert(At - 3, ",");
  return (Cents < 0 ? "-" : "") + Text;
}

std::string Counted(std::size_t Count, const std::string& Word, const std::string& Plural) {
  return std::to_string(Count) + " " + (Count == 1 ? Word : Plural.empty() ? Word + "s" : Plural);
}

TTable::TTable(std::vector<std::string> Headers) : FHeaders(std::move(Headers)) {
  for (std::string& Header : FHeaders) {
    FRight.push_back(Header.starts_with('>'));
    if (FRight.back()) Header.erase(0, 1);
  }
}

void TTable::Add(std::vector<std::string> Cells) {
  Cells.resize(FHeaders.size());
  for (std::string& Cell : Cells) Cell = Printable(Cell);
  FRows.push_back(std::move(Cells));
}

TTable::TWidths TTable::Widths() const {
  TWidths Result(FPrinted);
  Result.resize(FHeaders.size());
  for (std::size_t Column = 0; Column < FHeaders.size(); ++Column) {
    Result[Column] = std::max(Result[Column], DisplayWidth(FHeaders[Column]));
    for (const auto& Row : FRows) Result[Column] = std::max(Result[Column], DisplayWidth(Row[Column]));
  }
  return Result;
}

std::string TTable::Line(const std::vector<std::string>& Cells, const TWidths& Widths) const {
  std::string Result;
  for (std::size_t Column = 0; Column < Cells.size(); ++Column) {
    const std::string Padding(Widths[Column] - DisplayWidth(Cells[Column]), ' ');
    if (Column > 0) Result += "  ";
    Result += FRight[Column] ? Padding + Cells[Column] : Cells[Column] + Padding;
  }
  return Result.erase(Result.find_last_not_of(' ') + 1);
}

void TTable::Print(std::size_t Indent) const {
  if (IsEmpty()) return;
  const TWidths Columns = Widths();
  const std::string Margin(Indent, ' ');
  PrintLine(Margin + Line(FHeaders, Columns));
  for (const auto& Row : FRows) PrintLine(Margin + Line(Row, Columns));
}

void TTable::PrintOn() {
  if (IsEmpty()) return;
  const TWidths Columns = Widths();
  if (FPrinted.empty()) PrintLine(Line(FHeaders, Columns));
  for (const auto& Row : FRows) PrintLine(Line(Row, Columns));
  FPrinted = Columns;
  FRows.clear();
}

TProgress::TProgress(std::string_view Text) : FShown(::isatty(STDERR_FILENO) == 1) {
  if (!FShown) return;
  std::fflush(stdout);
  Write(stderr, std::string(Text) + " ...");
  std::fflush(stderr);
}

TProgress::~TProgress() {
  if (FShown) Write(stderr, "\r\033[K");
}

void AddText(TJSONObject& Object, std::string Name, std::string Value) {
  Object.Append(std::move(Name), TJSONValue(std::move(Value)));
}

void AddNumber(TJSONObject& Object, std::string Name, std::int64_t Value) {
  Object.Append(std::move(Name), TJSONValue(TJSONNumber{std::to_string(Value)}));
}

void AddFlag(TJSONObject& Object, std::string Name, bool Value) {
  Object.Append(std::move(Name), TJSONValue(Value));
}

void AddDollars(TJSONObject& Object, std::string Name, std::int64_t Cents) {
  Object.Append(std::move(Name), TJSONValue(TJSONNumber{FormatCents(Cents)}));
}

}  // namespace oxSuperAPI
