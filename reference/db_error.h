#pragma once

#include <string>
#include <utility>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// A database that could not do what it was asked. `what()` names the code, the statement's kind, the table and the
/// database; never a parameter or a column's content.
class OXSUPERAPI_EXPORT TDatabaseError : public TBeamError {
 public:
  /// `Text` must hold no parameter and no column's content.
  explicit TDatabaseError(const std::string& Text, int Code = 0, std::string SQLState = {})
      : TBeamError(Text), FCode(Code), FSQLState(std::move(SQLState)) {}
  /// The database's own (extended) result code; 0 when the adapter itself refused.
  int Code() const { return FCode; }
  /// The five characters by which ODBC classes errors; "" when the error does not come from ODBC.
  const std::string& SQLState() const { return FSQLState; }

 private:
  int FCode;
  std::string FSQLState;
};

}  // namespace oxSuperAPI
