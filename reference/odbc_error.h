#pragma once

#include <optional>
#include <string>
#include <vector>

#include "oxSuperAPI/reference/db_connection.h"
#include "oxSuperAPI/reference/odbc_handle.h"

namespace oxSuperAPI {

// For the ODBC adapter alone; not for hosts.

/// One record that a driver left with a handle.
struct TODBCDiagnostic {
  std::string State;  ///< SQLSTATE
  int Native = 0;     ///< the database's own code
  std::string Text;   ///< may quote values, so it is shown only where that is ruled out

  /// A remark, not an error.
  bool IsRemark() const { return State.starts_with("01") || State.starts_with("00"); }
};

/// The records of the last call on a handle, as many as are of use.
std::vector<TODBCDiagnostic> ODBCDiagnostics(SQLSMALLINT Kind, SQLHANDLE Handle);

/// What an error text says beside its codes.
struct TODBCErrorContext {
  std::string Where;                        ///< "update of T, database D"
  std::optional<TSQLDialect> Dialect = {};  ///< none while connecting
  bool IsLost = false;                      ///< the connection is of no use any more
  std::string Password = {};                ///< a driver's text that holds it is not shown
};

/// Raises TDatabaseError for the first record that is an error.
[[noreturn]] void FailODBC(const std::vector<TODBCDiagnostic>& Records, const TODBCErrorContext& Context);

}  // namespace oxSuperAPI
