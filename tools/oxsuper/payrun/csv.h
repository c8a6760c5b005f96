#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace oxSuperAPI {

/// One record of a CSV text. Cells are trimmed UTF-8.
struct TCSVRow {
  std::size_t Line = 0;  ///< where the record begins, from 1
  std::vector<std::string> Cells;

  /// "" beyond the last cell: exporters leave trailing empty cells out.
  const std::string& Cell(std::size_t Index) const;
  bool IsEmpty() const;
};

/// Reads the CSV that payroll packages and spreadsheets write: with or without a byte order mark, UTF-8 or
/// Windows-1252, CR LF or LF, comma or semicolon, cells quoted or bare. One row at a time, so that a large file
/// is never held twice.
class TCSVReader {
 public:
  /// Raises TBeamError for a text that is in neither encoding (UTF-16, binary).
  explicit TCSVReader(std::string Text);
  /// False at the end. Raises TBeamError when a quoted cell is never closed. Empty lines are rows without content.
  bool Next(TCSVRow& Row);

 private:
  std::string ReadQuoted();
  std::string ReadBare();

  std::string FText;
  std::size_t FPosition = 0;
  std::size_t FLine = 1;
  char FDelimiter = ',';
};

/// Whether `Text` is well-formed UTF-8.
bool IsUTF8(std::string_view Text);
/// `Text`, one byte a character in Windows-1252, as UTF-8. Raises TBeamError for the five bytes that it does not use.
std::string FromWindows1252(std::string_view Text);
/// Without white space and control characters at both ends, no-break spaces included.
std::string TrimCell(std::string_view Text);

}  // namespace oxSuperAPI
