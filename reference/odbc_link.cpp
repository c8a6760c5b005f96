#include "oxSuperAPI/reference/odbc_link.h"

#include <fmt/format.h>

#include <algorithm>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/db_statement.h"
#include "oxSuperAPI/reference/odbc_bind.h"
#include "oxSuperAPI/reference/odbc_error.h"
#include "oxSuperAPI/reference/odbc_fetch.h"
#include "oxSuperAPI/reference/odbc_string.h"
#include "oxSuperAPI/reference/utf16.h"

namespace oxSuperAPI {

namespace {

SQLPOINTER Seconds(std::chrono::seconds Time) {
  return ODBCNumber(static_cast<std::uintptr_t>(std::max<std::int64_t>(Time.count(), 0)));
}

}  // namespace

TODBCLink::TODBCLink(const std::string& ConnectionString, const TODBCOptions& Options)
    : FOptions(Options),
      FDescription(DescribeODBCDatabase(ConnectionString)),
      FEnvironment(SQL_NULL_HANDLE),
      FConnection(FEnvironment.get()) {
  if (!FConnection.get()) throw TDatabaseError("The ODBC driver manager cannot be used");
  Connect(ToUTF16(ConnectionString), ODBCPassword(ConnectionString));
}

TODBCLink::~TODBCLink() {
  if (FConnected) SQLDisconnect(FConnection.get());
}

void TODBCLink::Connect(std::u16string ConnectionString, const std::string& Password) {
  SQLHDBC const Connection = FConnection.get();
  if (ConnectionString.size() > 4096) throw TDatabaseError("An ODBC connection string is too long");
  // What a driver does not know is not in force; that is no reason to go without a database.
  SQLSetConnectAttrW(Connection, SQL_ATTR_LOGIN_TIMEOUT, Seconds(FOptions.LoginTimeout), 0);
  SQLSetConnectAttrW(Connection, SQL_ATTR_CONNECTION_TIMEOUT, Seconds(FOptions.QueryTimeout), 0);
  const SQLRETURN Code =
      SQLDriverConnectW(Connection, nullptr, ODBCText(ConnectionString),
                        static_cast<SQLSMALLINT>(ConnectionString.size()), nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  if (!SQL_SUCCEEDED(Code))
    FailODBC(ODBCDiagnostics(SQL_HANDLE_DBC, Connection),
             {.Where = fmt::format("opening database {}", FDescription), .Password = Password});
  FConnected = true;
  char16_t Name[64] = {};
  SQLSMALLINT Bytes = 0;
  if (SQL_SUCCEEDED(SQLGetInfoW(Connection, SQL_DBMS_NAME, Name, sizeof(Name) - sizeof(*Name), &Bytes)) &&
      SameName(ToUTF8(Name), "SQLite"))
    FDialect = TSQLDialect::SQLite;
}

bool TODBCLink::IsDead() const {
  SQLULEN Dead = SQL_CD_FALSE;
  SQLGetConnectAttrW(FConnection.get(), SQL_ATTR_CONNECTION_DEAD, &Dead, sizeof(SQLUINTEGER), nullptr);
  return Dead == SQL_CD_TRUE;
}

bool TODBCLink::Answers() {
  if (IsDead()) return false;
  try {
    // Another number each time: an answer that belongs to an earlier question is none.
    FQuestion = (FQuestion + 1) % 10;
    const TDBTable Answer = RunWithin(FOptions.LoginTimeout, fmt::format("select {}", FQuestion), {});
    return Answer.Rows.size() == 1 && CellAsInteger(Answer.Rows[0].at(0), "answer") == FQuestion;
  } catch (const TDatabaseError&) {
    return false;
  }
}

TDBTable TODBCLink::Run(std::string_view SQL, const std::vector<TDBValue>& Values) {
  return RunWithin(FOptions.QueryTimeout, SQL, Values);
}

TDBTable TODBCLink::RunWithin(std::chrono::seconds Timeout, std::string_view SQL, const std::vector<TDBValue>& Values) {
  const TODBCHandle<SQL_HANDLE_STMT> Handle(FConnection.get());
  SQLHSTMT const Statement = Handle.get();
  if (!Statement) Fail(SQL_HANDLE_DBC, FConnection.get(), SQL);
  SQLSetStmtAttrW(Statement, SQL_ATTR_QUERY_TIMEOUT, Seconds(Timeout), 0);
  std::u16string Text = ToUTF16(FDialect == TSQLDialect::SQLite ? WithoutSchema(SQL) : std::string(SQL));
  const auto Length = static_cast<SQLINTEGER>(Text.size());
  TODBCParameters Parameters(Values);
  try {
    if (Values.empty()) return ReadODBCResults(Statement, SQLExecDirectW(Statement, ODBCText(Text), Length));
    if (!SQL_SUCCEEDED(SQLPrepareW(Statement, ODBCText(Text), Length)) || !Parameters.BindTo(Statement))
      throw TODBCFailure();
    return ReadODBCResults(Statement, SQLExecute(Statement));
  } catch (const TODBCFailure&) {
    Fail(SQL_HANDLE_STMT, Statement, SQL);
  }
}

// As statements, not through the driver manager's own calls: those know no time-out, and a server that never answers a
// commit would hold the program for ever.
void TODBCLink::Begin() {
  // SQLite waits for the lock at the start or not at all.
  Run(FDialect == TSQLDialect::SQLite ? "begin immediate" : "begin transaction", {});
}

void TODBCLink::Commit() {
  Run(FDialect == TSQLDialect::SQLite ? "commit" : "commit transaction", {});
}

void TODBCLink::Rollback() {
  // The server has rolled back already after some errors.
  Run(FDialect == TSQLDialect::SQLite ? "rollback" : "if @@trancount > 0 rollback transaction", {});
}

void TODBCLink::Fail(SQLSMALLINT Kind, SQLHANDLE Handle, std::string_view SQL) const {
  FailODBC(ODBCDiagnostics(Kind, Handle), {.Where = fmt::format("{}, database {}", DescribeSQL(SQL), FDescription),
                                           .Dialect = FDialect,
                                           .IsLost = IsDead()});
}

}  // namespace oxSuperAPI
