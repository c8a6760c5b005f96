#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include "payrun/rows.h"

namespace oxSuperAPI {

/// Puts rows together: an employer for each business number, inside it a fund for each fund identity, inside that a
/// member for each row, in file order. Rows that disagree about the sender, or without the option to split about the
/// payer or the method of payment, are errors that name both rows.
class TBatchBuilder {
 public:
  TBatchBuilder(const TPayRunOptions& Options, TPayRunNotes& Notes) : FOptions(Options), FNotes(Notes) {}

  void Add(TPayRunRow Row);
  /// The batches of all rows, checked as a whole.
  std::vector<TPayRunBatch> Finish();

 private:
  /// The rows of one batch, with the values that they share.
  struct TGroup {
    TPayRunRow Shared;                             ///< sender and payer columns
    std::array<std::string, ColumnCount> Origins;  ///< name of the row that a shared column's value came from
    std::vector<TPayRunRow> Rows;
  };

  bool Agrees(TPayRunRow& Row, TGroup& Group) const;
  void Merge(TPayRunRow& Row, TGroup& Group);
  TPayRunBatch Build(TGroup& Group);
  void CheckShared(TGroup& Group);
  void CheckPayments(const TGroup& Group, const TPayRunBatch& Batch);

  const TPayRunOptions& FOptions;
  TPayRunNotes& FNotes;
  std::vector<TPayRunRow> FRows;
};

}  // namespace oxSuperAPI
