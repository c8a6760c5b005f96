#include "oxSuperAPI/reference/db_sqlite.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <limits>
#include <utility>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/db_statement.h"
#include "oxSuperAPI/reference/private_file.h"

namespace oxSuperAPI {

namespace {

constexpr std::string_view What = "database";

/// More texts than that are not kept ready. The library has far fewer.
constexpr std::size_t MaxPrepared = 64;

/// The use of a kept statement: leaves it idle, with nothing bound.
struct TUse {
  sqlite3_stmt* const Statement;
  ~TUse() {
    sqlite3_reset(Statement);
    sqlite3_clear_bindings(Statement);
  }
};

// The text is borrowed by the statement, so `Value` has to outlive its use.
int Bind(sqlite3_stmt* Statement, int Index, const TDBValue& Value) {
  if (const auto* Number = std::get_if<std::int32_t>(&Value)) return sqlite3_bind_int(Statement, Index, *Number);
  if (const auto* Text = std::get_if<std::string>(&Value))
    return sqlite3_bind_text64(Statement, Index, Text->data(), Text->size(), SQLITE_STATIC, SQLITE_UTF8);
  if (const auto* Moment = std::get_if<TDateTime>(&Value)) {
    const std::string Text = FormatDateTime(*Moment);
    return sqlite3_bind_text64(Statement, Index, Text.data(), Text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
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
void TSQLiteConnection::TClose::operator()(sqlite3_stmt* Statement) const {
  sqlite3_finalize(Statement);
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

void TSQLiteConnection::ExecuteScript(const std::string& Script) {
  InTransaction([&] {
    const int Code = sqlite3_exec(FDatabase.get(), Script.c_str(), nullptr, nullptr, nullptr);
    if (Code != SQLITE_OK) Fail("script", Code);
  });
}

sqlite3_stmt* TSQLiteConnection::Prepared(std::string_view SQL) {
  std::string Text(SQL);
  if (const auto Found = FPrepared.find(Text); Found != FPrepared.end()) return Found->second.get();
  if (SQL.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    throw TDatabaseError("A statement is too long");
  sqlite3_stmt* Statement = nullptr;
  const char* Tail = nullptr;
  const int Code = sqlite3_prepare_v3(FDatabase.get(), SQL.data(), static_cast<int>(SQL.size()),
                                      SQLITE_PREPARE_PERSISTENT, &Statement, &Tail);
  TStatement Owner(Statement);
  if (Code != SQLITE_OK) Fail(SQL, Code);
  if (!Statement || !IsBlankSQL(SQL.substr(static_cast<std::size_t>(Tail - SQL.data()))))
    throw TDatabaseError("One statement at a time can be run");
  if (FPrepared.size() == MaxPrepared) FPrepared.clear();
  FPrepared.emplace(std::move(Text), std::move(Owner));
  return Statement;
}

TDBTable TSQLiteConnection::Run(std::string_view SQL, const std::vector<TDBValue>& Values) {
  sqlite3_stmt* const Statement = Prepared(SQL);
  const TUse Use{Statement};
  if (static_cast<std::size_t>(sqlite3_bind_parameter_count(Statement)) != Values.size())
    throw TDatabaseError("A statement's parameters have to be written \":Name\"");
  for (std::size_t Index = 0; Index < Values.size(); ++Index)
    if (const int Bound = Bind(Statement, static_cast<int>(Index) + 1, Values[Index]); Bound != SQLITE_OK)
      Fail(SQL, Bound);

  // Only after the first step: SQLite then prepares a kept statement anew when the tables have changed since.
  int Step = sqlite3_step(Statement);
  TDBTable Table;
  const int Columns = sqlite3_column_count(Statement);
  for (int Index = 0; Index < Columns; ++Index) Table.Columns.emplace_back(sqlite3_column_name(Statement, Index));
  for (; Step == SQLITE_ROW; Step = sqlite3_step(Statement)) {
    std::vector<TDBCell>& Row = Table.Rows.emplace_back();
    for (int Index = 0; Index < Columns; ++Index) Row.push_back(Column(Statement, Index));
  }
  if (Step != SQLITE_DONE) Fail(SQL, Step);
  return Table;
}

void TSQLiteConnection::InTransaction(const std::function<void()>& Work) {
  if (!sqlite3_get_autocommit(FDatabase.get())) return Work();
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
