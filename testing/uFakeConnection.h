#pragma once

#include <memory>
#include <vector>

#include "oxSuperAPI/host/uHostDatabase.h"
#include "oxSuperAPI/testing/uFakeDatabase.h"
#include "oxSuperAPI/testing/uFault.h"

namespace oxSuperAPI {

/// A connection to a database in memory. Its queries are stricter than a server's: reading a field without a current
/// row, setting one without Append or Edit, and posting nothing raise TBeamError. Posting a row that was changed or
/// deleted since it was read raises as well.
class TFakeConnection : public TADOConnection {
 public:
  /// The database is not owned; several connections may share one.
  explicit TFakeConnection(TFakeDatabase& Database) : FDatabase(Database) {}

  /// The operations of the connection and of all its queries.
  TFaults Faults{"Open",   "Execute", "Eof",      "FieldAsString", "FieldAsInteger", "FieldAsDateTime",
                 "Append", "Edit",    "SetField", "Post"};
  /// Every statement that was opened or executed, those that failed included.
  std::vector<TDBStatement> Statements;
  /// Fields set by queries, in order, whether or not the row was posted.
  std::vector<TDBParameter> FieldsSet;

  /// Queries that are still alive.
  int OpenQueries() const { return FOpenQueries; }

  std::unique_ptr<TADOQuery> Open(const TDBStatement& Statement) override;
  void Execute(const TDBStatement& Statement) override;

 private:
  friend class TFakeQuery;
  TFakeDatabase& FDatabase;
  int FOpenQueries = 0;
};

}  // namespace oxSuperAPI
