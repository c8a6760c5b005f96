#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "oxSuperAPI/host/uHostDatabase.h"
#include "oxSuperAPI/reference/db_cells.h"
#include "oxSuperAPI/reference/db_statement.h"

namespace oxSuperAPI {

class TDBRows;

/// Which SQL a database understands, whatever leads to it.
enum class TSQLDialect : std::uint8_t { SQLite, SQLServer };

/// What follows a select with "order by" so that it gives no more rows than the parameter `Count`, a name without its
/// colon, says.
OXSUPERAPI_EXPORT std::string LimitClause(TSQLDialect Dialect, std::string_view Count);

/// Where a row that is to be changed stands.
struct TDBRowPlace {
  /// Its primary key; where that is empty, the condition that finds it and no other row. @{
  std::vector<TDBParameter> Key;
  TDBStatement Condition;
  /// @}
};

/// The fields of a row that are written, each with a value.
struct TDBFields {
  /// As many values as names. @{
  std::vector<std::string> Names;
  std::vector<TDBValue> Values;
  /// @}
};

/// What the reference host's database adapters have in common: the statements of the library run as they stand, an
/// update without a condition narrowed (docs/adr/0003-reference-databases.md); rows are posted. Errors are
/// TDatabaseError.
class OXSUPERAPI_EXPORT TDBConnection : public TADOConnection {
 public:
  /// As `OpenRows`.
  std::unique_ptr<TADOQuery> Open(const TDBStatement& Statement) override;
  /// Raises for anything but a single select.
  virtual std::unique_ptr<TDBRows> OpenRows(const TDBStatement& Statement);
  void Execute(const TDBStatement& Statement) override;
  /// Runs several statements without parameters, all or none of them.
  virtual void ExecuteScript(const std::string& Script) = 0;

  /// Runs `Work` in one transaction: what it changes on this connection happens as a whole, or not at all when `Work`
  /// raises. Within another transaction it becomes a part of that.
  virtual void InTransaction(const std::function<void()>& Work) = 0;

  /// What statements of your own have to be written for.
  virtual TSQLDialect Dialect() const = 0;

 protected:
  friend class TDBRows;

  /// Whether "insert ... returning" gives rows. Where it does not, they are selected behind the insert.
  virtual bool ReturnsRows() const { return false; }
  /// Runs one statement or batch, with a value for each "?" in it, and gives the rows of its first result that has any.
  /// The values may be long: they are borrowed, not copied.
  virtual TDBTable Run(std::string_view SQL, const std::vector<TDBValue>& Values) = 0;

 private:
  /// What the text of a select says, so that the call log's is looked through once and not for every row.
  struct TSelect {
    TPositionalSQL Positional;
    std::string Table;  ///< that its rows can be changed in; "" for none
  };
  /// An insert, made from the names that it is for. The last one is kept: the rows of the call log are all alike.
  struct TInsert {
    std::string Table;
    std::vector<std::string> Columns;
    std::vector<std::string> Names;
    std::string SQL;
    std::string SelectBehind;          ///< gives the columns that have no value; "" when the insert itself does
    std::vector<std::size_t> Sources;  ///< for each column its value's index; past the values for what is given back
  };

  const TSelect& Understand(const std::string& SQL);
  const TInsert& MakeInsert(const std::string& Table, const std::vector<std::string>& Columns,
                            const std::vector<std::string>& Names);
  TDBTable RunNamed(std::string_view SQL, const std::vector<TDBParameter>& Parameters);
  std::vector<std::string> PrimaryKey(const std::string& Table);
  // Both return the row as it then stands in the table, in the order of `Columns`. An insert that succeeds moves the
  // values into it.
  std::vector<TDBCell> InsertRow(const std::string& Table, const std::vector<std::string>& Columns, TDBFields& Fields);
  std::vector<TDBCell> UpdateRow(const std::string& Table, const std::vector<std::string>& Columns,
                                 const TDBFields& Fields, TDBRowPlace Place);

  std::unordered_map<std::string, TSelect> FSelects;
  TInsert FInsert;
};

}  // namespace oxSuperAPI
