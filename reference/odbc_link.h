#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "oxSuperAPI/reference/db_connection.h"
#include "oxSuperAPI/reference/db_odbc.h"
#include "oxSuperAPI/reference/odbc_handle.h"

namespace oxSuperAPI {

/// One connection to a database through the driver manager, from its opening to its end. What to do when it is lost is
/// not decided here. For the ODBC adapter alone; errors are TDatabaseError.
class TODBCLink {
 public:
  /// Connects.
  TODBCLink(const std::string& ConnectionString, const TODBCOptions& Options);
  TODBCLink(const TODBCLink&) = delete;
  TODBCLink& operator=(const TODBCLink&) = delete;
  /// The database rolls back what an open transaction has done.
  ~TODBCLink();

  /// Asks the database, so that a connection that died while nobody used it is found before a statement depends on it.
  bool Answers();

  /// Runs one statement or batch, with a value for each "?" in it.
  TDBTable Run(std::string_view SQL, const std::vector<TDBValue>& Values);

  /// A transaction. `Commit` may fail with its outcome unknown. @{
  void Begin();
  void Commit();
  void Rollback();
  /// @}

  /// By what the driver says it leads to.
  TSQLDialect Dialect() const { return FDialect; }

 private:
  void Connect(std::u16string ConnectionString, const std::string& Password);
  bool IsDead() const;
  TDBTable RunWithin(std::chrono::seconds Timeout, std::string_view SQL, const std::vector<TDBValue>& Values);
  [[noreturn]] void Fail(SQLSMALLINT Kind, SQLHANDLE Handle, std::string_view SQL) const;

  TODBCOptions FOptions;
  std::string FDescription;
  TODBCHandle<SQL_HANDLE_ENV> FEnvironment;
  TODBCHandle<SQL_HANDLE_DBC> FConnection;
  bool FConnected = false;
  int FQuestion = 0;
  TSQLDialect FDialect = TSQLDialect::SQLServer;
};

}  // namespace oxSuperAPI
