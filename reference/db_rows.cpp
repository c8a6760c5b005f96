#include "oxSuperAPI/reference/db_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/db_statement.h"

namespace oxSuperAPI {

TDBRows::TDBRows(TDBConnection& Connection, TDBStatement Select, std::string Table, TDBTable Rows)
    : FConnection(Connection), FSelect(std::move(Select)), FTable(std::move(Table)), FRows(std::move(Rows)) {}

std::string TDBRows::FieldAsString(std::string_view Name) const {
  return CellAsString(Cell(Name));
}
std::int32_t TDBRows::FieldAsInteger(std::string_view Name) const {
  return CellAsInteger(Cell(Name), Name);
}
TDateTime TDBRows::FieldAsDateTime(std::string_view Name) const {
  return CellAsDateTime(Cell(Name), Name);
}

void TDBRows::Next() {
  if (!Eof()) ++FCurrent;
  FState = TState::Browse;
}

void TDBRows::Append() {
  Start(TState::Append);
}

void TDBRows::Edit() {
  if (Eof()) throw TDatabaseError("There is no row to change");
  Start(TState::Edit);
}

void TDBRows::Start(TState State) {
  if (FTable.empty()) throw TDatabaseError("Rows that do not come from one table alone cannot be changed");
  FState = State;
  FChanges = {};
}

void TDBRows::SetField(std::string_view Name, TDBValue Value) {
  if (FState == TState::Browse) throw TDatabaseError("A field can be set only after Append or Edit");
  const std::string& Column = FRows.Columns[ColumnIndex(Name)];
  const auto Earlier = std::ranges::find(FChanges.Names, Column);
  if (Earlier != FChanges.Names.end()) {
    FChanges.Values[static_cast<std::size_t>(Earlier - FChanges.Names.begin())] = std::move(Value);
    return;
  }
  FChanges.Names.push_back(Column);
  FChanges.Values.push_back(std::move(Value));
}

void TDBRows::Post() {
  if (FState == TState::Browse) throw TDatabaseError("There is no row to post: call Append or Edit first");
  if (FChanges.Names.empty()) throw TDatabaseError("A row without any field cannot be posted");
  if (FState == TState::Append) {
    FRows.Rows.push_back(FConnection.InsertRow(FTable, FRows.Columns, FChanges));
    FCurrent = FRows.Rows.size() - 1;
  } else {
    FRows.Rows[FCurrent] = FConnection.UpdateRow(FTable, FRows.Columns, FChanges, Place());
  }
  FState = TState::Browse;
}

TDBRowPlace TDBRows::Place() const {
  TDBRowPlace Place;
  for (const std::string& Column : FConnection.PrimaryKey(FTable)) Place.Key.push_back({Column, ToValue(Cell(Column))});
  if (!Place.Key.empty()) return Place;
  Place.Condition = {WhereClause(FSelect.SQL), FSelect.Parameters};
  if (Place.Condition.SQL.empty())
    throw TDatabaseError(
        fmt::format("Rows of {} cannot be changed: the table has no primary key, the select no condition", FTable));
  return Place;
}

std::size_t TDBRows::ColumnIndex(std::string_view Name) const {
  for (std::size_t Index = 0; Index < FRows.Columns.size(); ++Index)
    if (SameName(FRows.Columns[Index], Name)) return Index;
  throw TDatabaseError(fmt::format("{} has no column {}", FTable.empty() ? "The select" : FTable, Name));
}

const TDBCell& TDBRows::Cell(std::string_view Name) const {
  const std::size_t Column = ColumnIndex(Name);
  if (Eof()) throw TDatabaseError("There is no row to read from");
  return FRows.Rows[FCurrent].at(Column);
}

}  // namespace oxSuperAPI
