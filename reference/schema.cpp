#include "oxSuperAPI/reference/schema.h"

#include <fmt/format.h>

#include <set>

#include "oxSuperAPI/generated/schema_text.h"
#include "oxSuperAPI/reference/db_error.h"

namespace oxSuperAPI {

namespace {

// Every column as "table.column".
std::set<std::string> Columns(TSQLiteConnection& Connection) {
  const std::unique_ptr<TDBRows> Rows =
      Connection.OpenRows({"select t.name || '.' || c.name as Name from sqlite_schema t, pragma_table_info(t.name) c "
                           "where t.type = 'table'",
                           {}});
  std::set<std::string> Names;
  for (; !Rows->Eof(); Rows->Next()) Names.insert(Rows->FieldAsString("Name"));
  return Names;
}

}  // namespace

void CreateSchema(TSQLiteConnection& Connection, TDatabaseRole Role) {
  Connection.ExecuteScript(Role == TDatabaseRole::Common ? SQLiteCommonSchema : SQLitePayrollSchema);
}

void CheckSchema(TSQLiteConnection& Connection, TDatabaseRole Role) {
  TSQLiteConnection Model = TSQLiteConnection::InMemory();
  CreateSchema(Model, Role);
  const std::set<std::string> Present = Columns(Connection);
  for (const std::string& Name : Columns(Model))
    if (!Present.contains(Name))
      throw TDatabaseError(fmt::format("The {} database lacks {}: run \"oxsuper init\"",
                                       Role == TDatabaseRole::Common ? "common" : "payroll", Name));
}

}  // namespace oxSuperAPI
