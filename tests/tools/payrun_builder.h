#pragma once

#include <map>
#include <string>
#include <vector>

#include "../reference/temporary_directory.h"
#include "payrun/columns.h"
#include "payrun/payrun.h"

namespace oxSuperAPI {

/// Cells by column letters.
using TCells = std::map<std::string, std::string>;

/// A row that passes every check: 500.00 for one member.
inline TCells GoodRow() {
  return {{"A", "1"},
          {"F", "51824753556"},
          {"G", "Lyrebird Pty Ltd"},
          {"L", "0255501234"},
          {"M", "51824753556"},
          {"O", "062000"},
          {"P", "10203040"},
          {"Q", "Lyrebird Trust"},
          {"R", "21412330117"},
          {"S", "HBR0001AU"},
          {"T", "Harbour Fund"},
          {"V", "DirectCredit"},
          {"AD", "51824753556"},
          {"AF", "Lyrebird Pty Ltd"},
          {"AH", "123456782"},
          {"AK", "Nguyễn"},
          {"AO", "1984-03-19"},
          {"BF", "2026-07-01"},
          {"BG", "2026-07-14"},
          {"BH", "500.00"}};
}

inline TCells With(TCells Row, const TCells& Changes) {
  for (const auto& [Column, Cell] : Changes) Row[Column] = Cell;
  return Row;
}

/// A file of these rows. `FirstRow` takes the place of the version row.
inline std::string PayRunText(const std::vector<TCells>& Rows,
                              const std::string& FirstRow = "VERSION,1.0,NEGATIVES SUPPORTED,false,FILE ID,F-1") {
  std::string Text = FirstRow + "\n\n";
  for (const TColumn& Column : Columns) Text += std::string(Column.Number == 1 ? "" : ",") + Column.Header;
  for (const TCells& Row : Rows) {
    Text += "\n";
    for (const TColumn& Column : Columns) {
      const auto Found = Row.find(ColumnLetters(Column.Number));
      if (Column.Number > 1) Text += ",";
      if (Found != Row.end()) Text += Found->second;
    }
  }
  return Text;
}

/// "error 4/AH" for each finding: severity, line, column.
inline std::string Places(const TPayRun& Run) {
  static constexpr const char* Names[] = {"error", "warning", "remark"};
  std::string Result;
  for (const TFinding& Finding : Run.Findings)
    Result += (Result.empty() ? "" : ", ") + std::string(Names[static_cast<std::size_t>(Finding.Severity)]) + " " +
              std::to_string(Finding.Line) + "/" + ColumnLetters(Finding.Column);
  return Result;
}

}  // namespace oxSuperAPI
