#pragma once

#include <cstdint>

#include "oxSuperAPI/reference/db_connection.h"

namespace oxSuperAPI {

/// The common database is shared by several companies; each company has a payroll database of its own.
enum class TDatabaseRole : std::uint8_t { Common, Payroll };

/// Makes the tables that are missing, as reference/schema/ lays them down. What exists stays as it is.
OXSUPERAPI_EXPORT void CreateSchema(TDBConnection& Connection, TDatabaseRole Role);

/// Raises TDatabaseError for the first thing that FindSchemaProblems (schema_check.h) finds.
OXSUPERAPI_EXPORT void CheckSchema(TDBConnection& Connection, TDatabaseRole Role);

}  // namespace oxSuperAPI
