#include "oxSuperAPI/reference/db_sqlite.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <limits>
#include <utility>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/db_statement.h"
#include "oxSuperAPI/reference/private_file.h"

namespace oxSuperAPI {

static_assert(SQLITE_VERSION_NUMBER >= 3035000, "insert ... returning needs SQLite 3.35");

namespace {

constexpr std::string_view What = "database";

struct TFinalize {
  void operator()(sqlite3_stmt* Statement) const { sqlite3_finalize(Statement); }
};
using TStatement = std::unique_ptr<sqlite3_stmt, TFinalize>;

std::string Quoted(std::string_view Name) {
  std::string Result = "\"";
  for (const char Character : Name) Result.append(Character == '"' ? 2 : 1, Character);
  return Result + '"';
}

std::string Joined(const std::vector<std::string>& Pieces, std::string_view Between) {
  return fmt::format("{}", fmt::join(Pieces, Between));
}

std::vector<std::string> QuotedAll(const std::vector<std::string>& Names) {
  std::vector<std::string> Result;
  for (const std::string& Name : Names) Result.push_back(Quoted(Name));
  return Result;
}

// The text is borrowed by the statement, so `Cell` has to outlive it.
int Bind(sqlite3_stmt* Statement, int Index, const TDBCell& Cell) {
  if (const auto* Number = std::get_if<std::int64_t>(&Cell)) return sqlite3_bind_int64(Statement, Index, *Number);
  if (const auto* Number = std::get_if<double>(&Cell)) return sqlite3_bind_double(Statement, Index, *Number);
  if (const auto* Text = std::get_if<std::string>(&Cell))
    return sqlite3_bind_text64(Statement, Index, Text->data(), Text->size(), SQLITE_STATIC, SQLITE_UTF8);
  return sqlite3_bind_null(Statement, Index);
}

TDBCell Column(sqlite3_stmt* Statement, int Index) {
  switch (sqlite3_column_type(Statement, Index)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      return std::int64_t{sqlite3_column_int64(Statement, Index)};
    case SQLITE_FLOAT:
      return sqlite3_column_double(Statement, Index);
    default: {
      // The bytes first: asking for the size may convert.
      const void* const Bytes = sqlite3_column_blob(Statement, Index);
      const auto Size = static_cast<std::size_t>(sqlite3_column_bytes(Statement, Index));
      return Bytes ? std::string(static_cast<const char*>(Bytes), Size) : std::string();
    }
  }
}

}  // namespace

void TSQLiteConnection::TClose::operator()(sqlite3* Database) const {
  sqlite3_close_v2(Database);
}

TSQLiteConnection::TSQLiteConnection(const std::string& FileName, std::chrono::milliseconds BusyTimeout)
    : FFileName(FileName) {
  CheckPrivateFile(FileName, What);
  OpenDatabase(FileName.c_str(), SQLITE_OPEN_READWRITE);
  Prepare(BusyTimeout);
}

TSQLiteConnection::TSQLiteConnection(TInMemory) : FFileName("(in memory)") {
  OpenDatabase(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY);
  Prepare({});
}

TSQLiteConnection TSQLiteConnection::InMemory() {
  return TSQLiteConnection(TInMemory{});
}

void TSQLiteConnection::CreateFile(const std::string& FileName) {
  CreatePrivateFile(FileName, What, {});
}

void TSQLiteConnection::OpenDatabase(const char* FileName, int Flags) {
  sqlite3* Database = nullptr;
  const int Code = sqlite3_open_v2(FileName, &Database, Flags | SQLITE_OPEN_EXRESCODE, nullptr);
  FDatabase.reset(Database);  // a handle comes also with a failure
  if (Code != SQLITE_OK) Fail("open", Code);
}

void TSQLiteConnection::Prepare(std::chrono::milliseconds BusyTimeout) {
  sqlite3* const Database = FDatabase.get();
  sqlite3_busy_timeout(Database, static_cast<int>(BusyTimeout.count()));
  // The statements are written for another database: "dbo" is what its default schema is called there. A misspelt
  // quoted column name must be an error, not a text.
  sqlite3_db_config(Database, SQLITE_DBCONFIG_MAINDBNAME, "dbo");
  sqlite3_db_config(Database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(Database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_db_config(Database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(Database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  Run("pragma journal_mode = wal", {});
  Run("pragma synchronous = full", {});  // what was posted survives a power cut
}

std::unique_ptr<TDBRows> TSQLiteConnection::OpenRows(const TDBStatement& Statement) {
  TDBTable Rows = RunNamed(Statement.SQL, Statement.Parameters, true);
  return std::make_unique<TDBRows>(*this, SelectedTable(Statement.SQL), std::move(Rows));
}

void TSQLiteConnection::Execute(const TDBStatement& Statement) {
  const std::optional<TIfExists> Parts = SplitIfExists(Statement.SQL);
  InTransaction([&] {
    if (!Parts)
      RunNamed(Statement.SQL, Statement.Parameters);
    else if (!RunNamed(Parts->Probe, Statement.Parameters, true).Rows.empty())
      RunNamed(Parts->Then, Statement.Parameters);
    else if (!IsBlankSQL(Parts->Else))
      RunNamed(Parts->Else, Statement.Parameters);
  });
}

void TSQLiteConnection::ExecuteScript(const std::string& Script) {
  InTransaction([&] {
    const int Code = sqlite3_exec(FDatabase.get(), Script.c_str(), nullptr, nullptr, nullptr);
    if (Code != SQLITE_OK) Fail("script", Code);
  });
}

std::vector<std::string> TSQLiteConnection::PrimaryKey(const std::string& Table) {
  const TDBTable Found =
      Run("select name from pragma_table_info(?) where pk > 0 order by pk", {TDBCell(BareTableName(Table))});
  std::vector<std::string> Names;
  for (const std::vector<TDBCell>& Row : Found.Rows) Names.push_back(CellAsString(Row.at(0)));
  return Names;
}

std::vector<TDBCell> TSQLiteConnection::InsertRow(const std::string& Table, const std::vector<std::string>& Columns,
                                                  const std::vector<TDBParameter>& Fields) {
  std::vector<std::string> Names;
  std::vector<TDBCell> Values;
  for (const TDBParameter& Field : Fields) {
    Names.push_back(Quoted(Field.Name));
    Values.push_back(ToCell(Field.Value));
  }
  const std::vector<std::string> Marks(Names.size(), "?");
  const std::string SQL = fmt::format("insert into {} ({}) values ({}) returning {}", Table, Joined(Names, ", "),
                                      Joined(Marks, ", "), Joined(QuotedAll(Columns), ", "));
  return Run(SQL, Values).Rows.at(0);
}

std::vector<TDBCell> TSQLiteConnection::UpdateRow(const std::string& Table, const std::vector<std::string>& Columns,
                                                  const std::vector<TDBParameter>& Fields, const TKey& Key) {
  std::vector<std::string> Assignments;
  std::vector<std::string> Conditions;
  std::vector<TDBCell> Values;
  for (const TDBParameter& Field : Fields) {
    Assignments.push_back(Quoted(Field.Name) + " = ?");
    Values.push_back(ToCell(Field.Value));
  }
  for (const auto& [Name, Cell] : Key) {
    Conditions.push_back(Quoted(Name) + " = ?");
    Values.push_back(Cell);
  }
  const std::string SQL = fmt::format("update {} set {} where {} returning {}", Table, Joined(Assignments, ", "),
                                      Joined(Conditions, " and "), Joined(QuotedAll(Columns), ", "));
  TDBTable Changed = Run(SQL, Values);
  if (Changed.Rows.empty())
    throw TDatabaseError(fmt::format("The row of {} was changed or deleted by another program: load it again", Table));
  return std::move(Changed.Rows.front());
}

TDBTable TSQLiteConnection::RunNamed(std::string_view SQL, const std::vector<TDBParameter>& Parameters,
                                     bool SelectOnly) {
  const TPositionalSQL Positional = ToPositional(SQL);
  std::vector<TDBCell> Values;
  for (const std::string& Name : Positional.Names) Values.push_back(ToCell(ParameterValue(Parameters, Name)));
  return Run(Positional.SQL, Values, SelectOnly);
}

TDBTable TSQLiteConnection::Run(std::string_view SQL, const std::vector<TDBCell>& Values, bool SelectOnly) {
  if (SQL.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    throw TDatabaseError("A statement is too long");
  sqlite3_stmt* Prepared = nullptr;
  const char* Tail = nullptr;
  const int Code = sqlite3_prepare_v2(FDatabase.get(), SQL.data(), static_cast<int>(SQL.size()), &Prepared, &Tail);
  const TStatement Statement(Prepared);
  if (Code != SQLITE_OK) Fail(SQL, Code);
  if (!Prepared || !IsBlankSQL(SQL.substr(static_cast<std::size_t>(Tail - SQL.data()))))
    throw TDatabaseError("One statement at a time can be run");
  if (SelectOnly && (!sqlite3_stmt_readonly(Prepared) || sqlite3_column_count(Prepared) == 0))
    throw TDatabaseError("A query has to be a select");
  if (static_cast<std::size_t>(sqlite3_bind_parameter_count(Prepared)) != Values.size())
    throw TDatabaseError("A statement's parameters have to be written \":Name\"");
  for (std::size_t Index = 0; Index < Values.size(); ++Index)
    if (const int Bound = Bind(Prepared, static_cast<int>(Index) + 1, Values[Index]); Bound != SQLITE_OK)
      Fail(SQL, Bound);

  TDBTable Table;
  const int Columns = sqlite3_column_count(Prepared);
  for (int Index = 0; Index < Columns; ++Index) Table.Columns.emplace_back(sqlite3_column_name(Prepared, Index));
  int Step = SQLITE_ROW;
  while ((Step = sqlite3_step(Prepared)) == SQLITE_ROW) {
    std::vector<TDBCell>& Row = Table.Rows.emplace_back();
    for (int Index = 0; Index < Columns; ++Index) Row.push_back(Column(Prepared, Index));
  }
  if (Step != SQLITE_DONE) Fail(SQL, Step);
  return Table;
}

template <class Body>
void TSQLiteConnection::InTransaction(Body Work) {
  // Immediate: the lock is waited for here, at the start; a read that turns into a write could not wait.
  Run("begin immediate", {});
  try {
    Work();
    Run("commit", {});
  } catch (...) {
    // SQLite has rolled back already after some errors.
    if (!sqlite3_get_autocommit(FDatabase.get())) sqlite3_exec(FDatabase.get(), "rollback", nullptr, nullptr, nullptr);
    throw;
  }
}

void TSQLiteConnection::Fail(std::string_view SQL, int Code) const {
  // The message names tables and columns. Values are bound, so none can stand in it.
  const char* const Message = FDatabase ? sqlite3_errmsg(FDatabase.get()) : sqlite3_errstr(Code);
  const int Kind = Code & 0xff;
  const char* const Advice =
      Kind == SQLITE_BUSY || Kind == SQLITE_LOCKED ? "; another program holds it: try again" : "";
  throw TDatabaseError(
      fmt::format("SQLite error {} ({}) in {}, database {}{}", Code, Message, DescribeSQL(SQL), FFileName, Advice),
      Code);
}

}  // namespace oxSuperAPI
