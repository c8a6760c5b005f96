#pragma once

#include <string>
#include <vector>

#include "oxSuperAPI/reference/schema.h"

namespace oxSuperAPI {

/// Something about a database's tables that would make the library fail.
struct TSchemaFinding {
  /// What is wrong, and what an administrator does about it. @{
  std::string Problem;
  std::string Advice;
  /// @}
};

/// Compares a database with what the library needs: tables, columns, the types and lengths that matter, the unique key
/// and the collation under which enciphered values are looked up, the rights of the user. Nothing is changed. Wider
/// columns, and further ones, do not matter. Raises TDatabaseError when the database cannot be asked.
OXSUPERAPI_EXPORT std::vector<TSchemaFinding> FindSchemaProblems(TDBConnection& Connection, TDatabaseRole Role);

}  // namespace oxSuperAPI
