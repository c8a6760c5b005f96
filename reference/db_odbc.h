#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "oxSuperAPI/reference/db_rows.h"

namespace oxSuperAPI {

class TODBCLink;

/// How long a database may take.
struct TODBCOptions {
  /// To let us in, and for one statement. What a driver does not support is not in force. @{
  std::chrono::seconds LoginTimeout{15};
  std::chrono::seconds QueryTimeout{60};
  /// @}
};

/// A database behind an ODBC driver: SQL Server through FreeTDS or the vendor's driver, or SQLite
/// (docs/adr/0006-sql-server-through-odbc.md). One statement is active at a time, whatever queries are open.
///
/// A connection that is found dead before a statement has started is opened again, once. Inside a transaction it never
/// is, and a statement that may have run is never run again. Errors are TDatabaseError with SQLSTATE and native code,
/// without parameters and without the password.
class OXSUPERAPI_EXPORT TODBCConnection final : public TDBConnection {
 public:
  /// `ConnectionString` is what the driver manager understands ("Driver=FreeTDS;Server=...").
  explicit TODBCConnection(std::string ConnectionString, TODBCOptions Options = {});
  TODBCConnection(const TODBCConnection&) = delete;
  TODBCConnection& operator=(const TODBCConnection&) = delete;
  ~TODBCConnection() override;

  std::unique_ptr<TDBRows> OpenRows(const TDBStatement& Statement) override;
  /// A second attempt is made when another program inserted the same row at the same moment, or was in the way
  /// otherwise (deadlock), and the database is known to have undone the first attempt.
  void Execute(const TDBStatement& Statement) override;
  void ExecuteScript(const std::string& Script) override;
  void InTransaction(const std::function<void()>& Work) override;
  TSQLDialect Dialect() const override { return FDialect; }

 protected:
  TDBTable Run(std::string_view SQL, const std::vector<TDBValue>& Values) override;

 private:
  void Connect();
  void MakeReady();
  void RollBack() noexcept;

  std::string FConnectionString;
  TODBCOptions FOptions;
  std::unique_ptr<TODBCLink> FLink;  ///< null after it was lost
  TSQLDialect FDialect = TSQLDialect::SQLServer;
  bool FInTransaction = false;
  bool FUndone = false;  ///< the last transaction is known to have left nothing behind
};

}  // namespace oxSuperAPI
