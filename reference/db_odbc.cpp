#include "oxSuperAPI/reference/db_odbc.h"

#include <array>
#include <utility>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/db_script.h"
#include "oxSuperAPI/reference/db_statement.h"
#include "oxSuperAPI/reference/odbc_link.h"

namespace oxSuperAPI {

namespace {

constexpr int Deadlock = 1205;  // the server has rolled everything back already

// Another program was in the way. The same statement would succeed now: with the row that the other program inserted,
// "if exists" takes its other branch.
bool IsCollision(const TDatabaseError& Error, bool IsIfExists) {
  return Error.Code() == Deadlock || (IsIfExists && (Error.Code() == 2601 || Error.Code() == 2627));
}

}  // namespace

TODBCConnection::TODBCConnection(std::string ConnectionString, TODBCOptions Options)
    : FConnectionString(std::move(ConnectionString)), FOptions(Options) {
  Connect();
}

TODBCConnection::~TODBCConnection() = default;

void TODBCConnection::Connect() {
  FLink = std::make_unique<TODBCLink>(FConnectionString, FOptions);
  FDialect = FLink->Dialect();
}

void TODBCConnection::MakeReady() {
  if (FInTransaction || (FLink && FLink->Answers())) return;
  FLink.reset();
  Connect();
}

std::unique_ptr<TDBRows> TODBCConnection::OpenRows(const TDBStatement& Statement) {
  MakeReady();
  return TDBConnection::OpenRows(Statement);
}

void TODBCConnection::Execute(const TDBStatement& Statement) {
  try {
    TDBConnection::Execute(Statement);
  } catch (const TDatabaseError& Error) {
    const bool IsIfExists = SplitIfExists(Statement.SQL).has_value();
    if (FInTransaction || !FUndone || !IsCollision(Error, IsIfExists)) throw;
    TDBConnection::Execute(Statement);
  }
}

void TODBCConnection::ExecuteScript(const std::string& Script) {
  InTransaction([&] {
    for (const std::string& Piece : Dialect() == TSQLDialect::SQLite ? SplitStatements(Script) : SplitBatches(Script))
      Run(Piece, {});
  });
}

void TODBCConnection::InTransaction(const std::function<void()>& Work) {
  if (FInTransaction) return Work();
  MakeReady();
  FUndone = false;
  try {
    FLink->Begin();
  } catch (...) {
    FLink.reset();  // begun or not, nobody knows
    throw;
  }
  FInTransaction = true;
  try {
    Work();
  } catch (const TDatabaseError& Error) {
    RollBack();
    FUndone = FUndone || Error.Code() == Deadlock;
    throw;
  } catch (...) {
    RollBack();
    throw;
  }
  FInTransaction = false;
  try {
    FLink->Commit();
  } catch (const TDatabaseError& Error) {
    FLink.reset();
    throw TDatabaseError(
        std::string(Error.what()) + "; whether the change was made is not known: look before you repeat it",
        Error.Code(), Error.SQLState());
  }
}

void TODBCConnection::RollBack() noexcept {
  // The first error is the one to tell. A connection that cannot even undo is given up: the database undoes what a lost
  // connection has begun.
  FInTransaction = false;
  try {
    FLink->Rollback();
    FUndone = true;
  } catch (...) {
    FLink.reset();
  }
}

TDBTable TODBCConnection::Run(std::string_view SQL, const std::vector<TDBValue>& Values) {
  return FLink->Run(SQL, Values);
}

}  // namespace oxSuperAPI
