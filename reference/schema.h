#pragma once

#include <cstdint>

#include "oxSuperAPI/reference/db_sqlite.h"

namespace oxSuperAPI {

/// The common database is shared by several companies; each company has a payroll database of its own.
enum class TDatabaseRole : std::uint8_t { Common, Payroll };

/// Makes the tables that are missing, as reference/schema/ lays them down. What exists stays as it is.
OXSUPERAPI_EXPORT void CreateSchema(TSQLiteConnection& Connection, TDatabaseRole Role);

/// Raises TDatabaseError, naming the first table or column that is missing. Further tables and columns do not matter.
OXSUPERAPI_EXPORT void CheckSchema(TSQLiteConnection& Connection, TDatabaseRole Role);

}  // namespace oxSuperAPI
