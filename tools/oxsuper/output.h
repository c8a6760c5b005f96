#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "oxSuperAPI/host/uHostJson.h"

/// Results go to standard output, everything else to standard error. Text of the service or of a file is made harmless
/// to a terminal on the way.
namespace oxSuperAPI {

/// From now on every text passes through this on its way out: it takes credentials of this process from what the
/// service says. May be called from anywhere that prints.
void MaskOutput(std::function<std::string(std::string_view)> Mask);

/// A piece of the result, as it is.
void PrintText(std::string_view Text);
/// A line of the result.
void PrintLine(std::string_view Line = {});
/// The whole result, for machines.
void PrintDocument(const TJSONObject& Document);
/// A line for the person that is not part of the result.
void Note(std::string_view Line);

/// Control characters as "?", except line feeds and tabs where `Multiline` allows them.
std::string Printable(std::string_view Text, bool Multiline = false);
/// Columns that the text takes on a terminal.
std::size_t DisplayWidth(std::string_view Text);

/// Whole cents of dollars as the service sends them; what does not fit is the nearest that does.
std::int64_t CentsOf(double Dollars);
/// "1,234.50" of 123450.
std::string FormatDollars(std::int64_t Cents);
/// "1 batch", "3 batches": `Plural` stands for the whole word when it does not just add an "s".
std::string Counted(std::size_t Count, const std::string& Word, const std::string& Plural = {});

/// An aligned table for people. Cells of a column that is right-aligned are amounts or counts.
class TTable {
 public:
  /// A name that begins with ">" is right-aligned.
  explicit TTable(std::vector<std::string> Headers);
  void Add(std::vector<std::string> Cells);
  bool IsEmpty() const { return FRows.empty(); }
  /// Nothing at all when there is no row.
  void Print(std::size_t Indent = 0) const;
  /// Prints the rows added since the last time and forgets them, for a table that goes on: the headers come once, and
  /// no column gets narrower.
  void PrintOn();

 private:
  using TWidths = std::vector<std::size_t>;
  /// Of the headers, the rows and what was printed before.
  TWidths Widths() const;
  std::string Line(const std::vector<std::string>& Cells, const TWidths& Widths) const;

  std::vector<std::string> FHeaders;
  std::vector<bool> FRight;
  std::vector<std::vector<std::string>> FRows;
  TWidths FPrinted;  ///< the widths of what stands on the screen; empty before the first row
};

/// A line on standard error while a request is under way, on a terminal only; gone when it is over.
class TProgress {
 public:
  explicit TProgress(std::string_view Text);
  ~TProgress();
  TProgress(const TProgress&) = delete;
  TProgress& operator=(const TProgress&) = delete;

 private:
  bool FShown = false;
};

// Short forms for the documents of --json.
void AddText(TJSONObject& Object, std::string Name, std::string Value);
void AddNumber(TJSONObject& Object, std::string Name, std::int64_t Value);
void AddFlag(TJSONObject& Object, std::string Name, bool Value);
/// Dollars with two decimals, as a JSON number.
void AddDollars(TJSONObject& Object, std::string Name, std::int64_t Cents);

}  // namespace oxSuperAPI
