#pragma once

#include "oxSuperAPI/reference/db_cells.h"
#include "oxSuperAPI/reference/odbc_handle.h"

namespace oxSuperAPI {

// For the ODBC adapter alone; not for hosts.

/// A call that the driver refused: its records are with the statement's handle.
struct TODBCFailure {};

/// Reads what an executed statement gave, all of its results, so that no late error is missed; the rows of the first
/// result that has columns are kept. Raises TODBCFailure, and TDatabaseError for a driver that breaks the rules.
TDBTable ReadODBCResults(SQLHSTMT Statement, SQLRETURN Executed);

}  // namespace oxSuperAPI
