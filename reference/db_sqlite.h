#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "oxSuperAPI/reference/db_rows.h"

struct sqlite3;
struct sqlite3_stmt;

namespace oxSuperAPI {

/// A database in one SQLite file that belongs to its owner alone. `dbo.X` and `X` name the same table, and statements
/// of the form "if exists (...) update ... else insert ..." run as they stand, in one transaction
/// (docs/adr/0003-reference-databases.md). Errors are TDatabaseError.
class OXSUPERAPI_EXPORT TSQLiteConnection final : public TDBConnection {
 public:
  /// Opens an existing file. Another program's lock is waited for, as long as `BusyTimeout`.
  explicit TSQLiteConnection(const std::string& FileName,
                             std::chrono::milliseconds BusyTimeout = std::chrono::seconds(5));
  /// A private database in memory, gone with the connection.
  static TSQLiteConnection InMemory();
  /// Makes an empty database file, rights 0600. Raises when the name is taken.
  static void CreateFile(const std::string& FileName);

  TSQLiteConnection(const TSQLiteConnection&) = delete;
  TSQLiteConnection& operator=(const TSQLiteConnection&) = delete;
  ~TSQLiteConnection() override = default;

  void ExecuteScript(const std::string& Script) override;
  void InTransaction(const std::function<void()>& Work) override;
  TSQLDialect Dialect() const override { return TSQLDialect::SQLite; }

 protected:
  bool ReturnsRows() const override { return true; }
  TDBTable Run(std::string_view SQL, const std::vector<TDBValue>& Values) override;

 private:
  struct TClose {
    void operator()(sqlite3* Database) const;
    void operator()(sqlite3_stmt* Statement) const;
  };
  using TStatement = std::unique_ptr<sqlite3_stmt, TClose>;
  struct TInMemory {};
  explicit TSQLiteConnection(TInMemory);

  void OpenDatabase(const char* FileName, int Flags);
  void Prepare(std::chrono::milliseconds BusyTimeout);
  sqlite3_stmt* Prepared(std::string_view SQL);
  [[noreturn]] void Fail(std::string_view SQL, int Code) const;

  std::string FFileName;
  std::unique_ptr<sqlite3, TClose> FDatabase;
  std::unordered_map<std::string, TStatement> FPrepared;  ///< by text; idle, with nothing bound
};

}  // namespace oxSuperAPI
