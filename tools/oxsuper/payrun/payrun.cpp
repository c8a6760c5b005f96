#include "payrun/payrun.h"

#include <algorithm>
#include <set>

#include "oxSuperAPI/foundation/uBeamText.h"
#include "payrun/rows.h"
#include "payrun/tree.h"

namespace oxSuperAPI {
namespace {

using enum TFindingSeverity;

/// Six cells: VERSION, 1.0, NEGATIVES SUPPORTED, false, FILE ID, <file id>. The labels are not always there.
void ReadVersionRow(const TCSVRow& Row, TPayRun& Run, TPayRunNotes& Notes) {
  constexpr std::size_t MaxFileId = 20;
  const std::string& Version = Row.Cell(1);
  const bool Labelled = Row.Cell(0).empty() || SameText(Row.Cell(0), "VERSION");
  if (!Labelled || Version.empty())
    return Notes.AddForFile(Error, Row.Line, 0, "this is no SAFF file: the first row has to begin VERSION,1.0");
  if (Version != "1.0" && Version != "1")
    Notes.AddForFile(Error, Row.Line, 2, "version \"" + Version + "\" is not supported, only 1.0");

  const std::string& Negatives = Row.Cell(3);
  const TCellValue Flag = Negatives.empty() ? TCellValue{} : ReadCell(TForm::Flag, Negatives);
  if (!Flag.Error.empty()) Notes.AddForFile(Error, Row.Line, 4, "NEGATIVES SUPPORTED: " + Flag.Error);
  Run.NegativesSupported = Flag.Text == "true";

  Run.FileId = Row.Cell(5);
  const TCellValue FileId = Run.FileId.empty() ? TCellValue{} : ReadCell(TForm::Identifier, Run.FileId);
  if (!FileId.Error.empty()) Notes.AddForFile(Error, Row.Line, 6, "FILE ID: " + FileId.Error);
  if (Run.FileId.size() > MaxFileId) Notes.AddForFile(Error, Row.Line, 6, "FILE ID: at most 20 characters");
}

/// Names in the wild differ in case, blanks and spelling; only a name that belongs to another column is an error, since
/// then columns were moved and amounts would land in the wrong place.
void CheckHeaderRow(const TCSVRow& Row, TPayRunNotes& Notes) {
  const auto Plain = [](std::string_view Name) {
    std::string Result;
    for (const char Each : UpperCase(Name))
      if (Each != ' ' && Each != '-' && Each != '_') Result += Each;
    return Result;
  };
  std::set<std::string> Known;
  for (const TColumn& Column : Columns) Known.insert(Plain(Column.Header));
  if (Row.IsEmpty()) return Notes.AddForFile(Error, Row.Line, 0, "the third row has to hold the column names");
  for (const TColumn& Column : Columns) {
    const std::string& Name = Row.Cell(Column.Number - 1);
    if (Name.empty() || Plain(Name) == Plain(Column.Header)) continue;
    const std::string Text = "is called \"" + Name + "\", expected is \"" + Column.Header + "\"";
    if (Known.contains(Plain(Name)))
      Notes.AddForFile(Error, Row.Line, Column.Number, Text + ": columns were moved, added or removed");
    else
      Notes.AddForFile(Warning, Row.Line, Column.Number, Text + "; it is read by its position");
  }
  if (Row.Cells.size() > ColumnCount)
    Notes.AddForFile(Remark, Row.Line, 0, "columns behind EC are not part of SAFF 1.0 and are ignored");
}

}  // namespace

TPayRun ReadPayRun(std::string Text, const TPayRunOptions& Options) {
  TPayRun Run;
  TPayRunNotes Notes(Run);
  TCSVReader Reader(std::move(Text));
  TCSVRow Cells;
  if (!Reader.Next(Cells)) {
    Notes.AddForFile(Error, 0, 0, "the file is empty");
    return Run;
  }
  ReadVersionRow(Cells, Run, Notes);
  Reader.Next(Cells);  // category names: of no use, and different in every file
  if (!Reader.Next(Cells)) Notes.AddForFile(Error, 0, 0, "the three header rows of SAFF 1.0 are not complete");
  CheckHeaderRow(Cells, Notes);
  if (HasErrors(Run.Findings)) return Run;  // the rows below would only repeat it, a hundred times

  TBatchBuilder Builder(Options, Notes);
  std::map<std::string, std::size_t> LineIds;
  std::size_t Rows = 0;
  while (Reader.Next(Cells)) {
    if (Cells.IsEmpty()) continue;
    ++Rows;
    TPayRunRow Row = ReadRow(Cells, Run.NegativesSupported, Options, Notes);
    const auto [First, Unique] = LineIds.emplace(Row.LineId, Row.Line);
    if (!Row.LineId.empty() && !Unique)
      Notes.Add(Error, Row, 1, "the LINE ID stands in row " + std::to_string(First->second) + " already");
    Builder.Add(std::move(Row));
  }
  if (Rows == 0) Notes.AddForFile(Error, 0, 0, "the file has no rows below its headers");
  Run.Batches = Builder.Finish();
  std::stable_sort(Run.NotSent.begin(), Run.NotSent.end(),
                   [](const TNotSent& Left, const TNotSent& Right) { return Left.Column < Right.Column; });
  return Run;
}

}  // namespace oxSuperAPI
