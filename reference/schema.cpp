#include "oxSuperAPI/reference/schema.h"

#include <fmt/format.h>

#include "oxSuperAPI/generated/schema_text.h"
#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/schema_check.h"

namespace oxSuperAPI {

namespace {

const char* SchemaText(TSQLDialect Dialect, TDatabaseRole Role) {
  const bool Common = Role == TDatabaseRole::Common;
  if (Dialect == TSQLDialect::SQLite) return Common ? SQLiteCommonSchema : SQLitePayrollSchema;
  return Common ? SQLServerCommonSchema : SQLServerPayrollSchema;
}

}  // namespace

void CreateSchema(TDBConnection& Connection, TDatabaseRole Role) {
  Connection.ExecuteScript(SchemaText(Connection.Dialect(), Role));
}

void CheckSchema(TDBConnection& Connection, TDatabaseRole Role) {
  const std::vector<TSchemaFinding> Findings = FindSchemaProblems(Connection, Role);
  if (Findings.empty()) return;
  throw TDatabaseError(fmt::format("{} (in the {} database): {}", Findings[0].Problem,
                                   Role == TDatabaseRole::Common ? "common" : "payroll", Findings[0].Advice));
}

}  // namespace oxSuperAPI
