#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "oxSuperAPI/host/uHostDatabase.h"
#include "oxSuperAPI/reference/db_cells.h"

namespace oxSuperAPI {

class TDBConnection;

/// The rows of a select, read into memory as a whole: no statement stays open behind them, so nothing is locked while
/// the caller thinks, and several queries can be open at a time on any database. Rows of one table can be changed when
/// its primary key is among the columns.
class OXSUPERAPI_EXPORT TDBRows final : public TADOQuery {
 public:
  /// `Table` is the one that Append and Edit write to; "" when the rows cannot be changed. `Connection` is borrowed.
  TDBRows(TDBConnection& Connection, std::string Table, TDBTable Rows)
      : FConnection(Connection), FTable(std::move(Table)), FRows(std::move(Rows)) {}

  bool Eof() const override { return FCurrent >= FRows.Rows.size(); }
  std::string FieldAsString(std::string_view Name) const override;
  std::int32_t FieldAsInteger(std::string_view Name) const override;
  TDateTime FieldAsDateTime(std::string_view Name) const override;
  void Append() override;
  void Edit() override;
  void SetField(std::string_view Name, const TDBValue& Value) override;
  void Post() override;

  /// To the next row; no effect at the end.
  void Next();
  /// As the database names them.
  const std::vector<std::string>& Columns() const { return FRows.Columns; }

 private:
  enum class TState : std::uint8_t { Browse, Append, Edit };

  std::size_t ColumnIndex(std::string_view Name) const;
  const TDBCell& Cell(std::string_view Name) const;
  void Start(TState State);

  TDBConnection& FConnection;
  std::string FTable;
  TDBTable FRows;
  std::size_t FCurrent = 0;
  TState FState = TState::Browse;
  std::vector<TDBParameter> FChanges;
};

/// What the reference host's database adapters have in common.
class OXSUPERAPI_EXPORT TDBConnection : public TADOConnection {
 public:
  std::unique_ptr<TADOQuery> Open(const TDBStatement& Statement) override { return OpenRows(Statement); }
  /// As `Open`, for callers that walk through several rows.
  virtual std::unique_ptr<TDBRows> OpenRows(const TDBStatement& Statement) = 0;

 protected:
  friend class TDBRows;
  /// Column and value of each part of a primary key.
  using TKey = std::vector<std::pair<std::string, TDBCell>>;

  /// The names of the key's columns; none when the table has no key.
  virtual std::vector<std::string> PrimaryKey(const std::string& Table) = 0;
  /// Both return the row as it then stands in the table, in the order of `Columns`.
  virtual std::vector<TDBCell> InsertRow(const std::string& Table, const std::vector<std::string>& Columns,
                                         const std::vector<TDBParameter>& Fields) = 0;
  /// Changes the row with this key. Raises when there is none any more.
  virtual std::vector<TDBCell> UpdateRow(const std::string& Table, const std::vector<std::string>& Columns,
                                         const std::vector<TDBParameter>& Fields, const TKey& Key) = 0;
};

}  // namespace oxSuperAPI
