#pragma once

#include <array>
#include <string>

#include "payrun/columns.h"
#include "payrun/csv.h"
#include "payrun/payrun.h"

namespace oxSuperAPI {

/// Collects what reading a file brings up besides the batches.
class TPayRunNotes {
 public:
  explicit TPayRunNotes(TPayRun& Run) : FRun(Run) {}

  void Add(TFindingSeverity Severity, const TPayRunRow& Row, std::size_t Column, std::string Reason);
  void AddForFile(TFindingSeverity Severity, std::size_t Line, std::size_t Column, std::string Reason);
  /// Rows with the same column and reason share one entry.
  void AddNotSent(const TPayRunRow& Row, std::size_t Column, const std::string& Reason);

 private:
  TPayRun& FRun;
};

/// Reads and checks every cell of `Cells`; a cell that cannot be used is a finding and counts as empty.
TPayRunRow ReadRow(const TCSVRow& Cells, bool Negatives, const TPayRunOptions& Options, TPayRunNotes& Notes);

/// A fund without a USI is self-managed: its account and service address travel with it.
inline bool IsSelfManaged(const TPayRunRow& Row) {
  return Row.FundUSI.empty() && !Row.FundABN.empty();
}

/// "row 4 (LINE ID 1)"
std::string RowName(std::size_t Line, const std::string& LineId);

}  // namespace oxSuperAPI
