#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "oxSuperAPI/host/uHostDatabase.h"
#include "oxSuperAPI/reference/db_cells.h"
#include "oxSuperAPI/reference/db_connection.h"

namespace oxSuperAPI {

/// The rows of a select, read into memory as a whole: no statement stays open behind them, so nothing is locked while
/// the caller thinks, and several queries can be open at a time on any database. Rows of one table can be changed: the
/// one with the row's primary key, and where the table has none, the one row that the select's condition finds.
class OXSUPERAPI_EXPORT TDBRows final : public TADOQuery {
 public:
  /// `Rows` are what `Select` gave on `Connection`, which is borrowed. `Table` is the one that Append and Edit write
  /// to;
  /// "" when the rows cannot be changed.
  TDBRows(TDBConnection& Connection, TDBStatement Select, std::string Table, TDBTable Rows);

  bool Eof() const override { return FCurrent >= FRows.Rows.size(); }
  std::string FieldAsString(std::string_view Name) const override;
  std::int32_t FieldAsInteger(std::string_view Name) const override;
  TDateTime FieldAsDateTime(std::string_view Name) const override;
  void Append() override;
  void Edit() override;
  void SetField(std::string_view Name, TDBValue Value) override;
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
  TDBRowPlace Place() const;

  TDBConnection& FConnection;
  TDBStatement FSelect;
  std::string FTable;
  TDBTable FRows;
  std::size_t FCurrent = 0;
  TState FState = TState::Browse;
  TDBFields FChanges;
};

}  // namespace oxSuperAPI
