#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "oxSuperAPI/reference/db_rows.h"

struct sqlite3;

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

  /// Raises when the statement is more than a single select.
  std::unique_ptr<TDBRows> OpenRows(const TDBStatement& Statement) override;
  void Execute(const TDBStatement& Statement) override;
  /// Runs several statements without parameters, all or none of them.
  void ExecuteScript(const std::string& Script);

 protected:
  std::vector<std::string> PrimaryKey(const std::string& Table) override;
  std::vector<TDBCell> InsertRow(const std::string& Table, const std::vector<std::string>& Columns,
                                 const std::vector<TDBParameter>& Fields) override;
  std::vector<TDBCell> UpdateRow(const std::string& Table, const std::vector<std::string>& Columns,
                                 const std::vector<TDBParameter>& Fields, const TKey& Key) override;

 private:
  struct TClose {
    void operator()(sqlite3* Database) const;
  };
  struct TInMemory {};
  explicit TSQLiteConnection(TInMemory);

  void OpenDatabase(const char* FileName, int Flags);
  void Prepare(std::chrono::milliseconds BusyTimeout);
  TDBTable Run(std::string_view SQL, const std::vector<TDBCell>& Values, bool SelectOnly = false);
  TDBTable RunNamed(std::string_view SQL, const std::vector<TDBParameter>& Parameters, bool SelectOnly = false);
  template <class Body>
  void InTransaction(Body Work);
  [[noreturn]] void Fail(std::string_view SQL, int Code) const;

  std::string FFileName;
  std::unique_ptr<sqlite3, TClose> FDatabase;
};

}  // namespace oxSuperAPI
