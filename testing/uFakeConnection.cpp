#include "oxSuperAPI/testing/uFakeConnection.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "oxSuperAPI/testing/uFakeNames.h"

namespace oxSuperAPI {

/// One open select: a copy of its first row, and of the row that Append or Edit started.
class TFakeQuery final : public TADOQuery {
 public:
  TFakeQuery(TFakeConnection& Connection, TFakeDatabase::TSelection Selection)
      : FConnection(Connection),
        FTableName(Selection.pTable->Name),
        FColumns(std::move(Selection.Columns)),
        FCurrent(std::move(Selection.FirstRow)) {
    ++FConnection.FOpenQueries;
  }
  ~TFakeQuery() override { --FConnection.FOpenQueries; }
  TFakeQuery(const TFakeQuery&) = delete;
  TFakeQuery& operator=(const TFakeQuery&) = delete;

  bool Eof() const override {
    FConnection.Faults.Check("Eof");
    return !FCurrent;
  }

  std::string FieldAsString(std::string_view Name) const override {
    FConnection.Faults.Check("FieldAsString");
    return ValueAsText(Field(Name));
  }
  std::int32_t FieldAsInteger(std::string_view Name) const override {
    FConnection.Faults.Check("FieldAsInteger");
    return ValueAsInteger(Field(Name));
  }
  TDateTime FieldAsDateTime(std::string_view Name) const override {
    FConnection.Faults.Check("FieldAsDateTime");
    return ValueAsDateTime(Field(Name));
  }

  void Append() override {
    FConnection.Faults.Check("Append");
    Start(TFakeRow(Table().Columns.size()), false);
  }

  void Edit() override {
    FConnection.Faults.Check("Edit");
    if (!FCurrent) throw TBeamError("There is no current row to edit");
    Start(*FCurrent, true);
  }

  void SetField(std::string_view Name, TDBValue Value) override {
    FConnection.FieldsSet.push_back({std::string(Name), Value});
    FConnection.Faults.Check("SetField");
    if (!FPending) throw TBeamError("A field is set without Append or Edit");
    const TFakeTable& Target = Table();
    const std::size_t Column = ColumnOf(Name);
    Target.WritableColumn(Name);
    FPending->at(Column) = Target.Convert(Column, Value);
  }

  void Post() override {
    FConnection.Faults.Check("Post");
    if (!FPending) throw TBeamError("Nothing is posted: neither Append nor Edit came before");
    if (FEditing) {
      PostEdited();
    } else {
      PostAppended();
    }
    FPending.reset();
  }

 private:
  TFakeTable& Table() const { return FConnection.FDatabase.Table(FTableName); }

  std::size_t ColumnOf(std::string_view Name) const {
    const std::size_t Column = Table().ColumnIndex(Name);
    if (std::find(FColumns.begin(), FColumns.end(), Column) == FColumns.end())
      throw TBeamError("The select has no column '" + std::string(Name) + "'");
    return Column;
  }

  const TDBValue& Field(std::string_view Name) const {
    const std::size_t Column = ColumnOf(Name);
    const std::optional<TFakeRow>& Row = FPending ? FPending : FCurrent;
    if (!Row) throw TBeamError("Field '" + std::string(Name) + "' is read, but there is no current row");
    return Row->at(Column);
  }

  void Start(TFakeRow Row, bool Editing) {
    if (FPending) throw TBeamError("The row that was started before has not been posted");
    FPending = std::move(Row);
    FEditing = Editing;
  }

  void PostAppended() {
    TFakeTable& Target = Table();
    std::vector<std::pair<std::string, TDBValue>> Values;
    for (std::size_t Column = 0; Column < Target.Columns.size(); ++Column)
      if (Target.Columns[Column].Kind != TFakeColumnKind::Identity)
        Values.emplace_back(Target.Columns[Column].Name, FPending->at(Column));
    Target.Add(Values);
    FCurrent = Target.Rows.back();
  }

  void PostEdited() {
    TFakeTable& Target = Table();
    std::vector<TFakeRow> Changed = Target.Rows;
    const auto Row = std::find(Changed.begin(), Changed.end(), *FCurrent);
    if (Row == Changed.end())
      throw TBeamError("Row cannot be located for updating: it was changed or deleted since it was read");
    *Row = *FPending;
    Target.CheckUnique(Changed);
    Target.Rows = std::move(Changed);
    FCurrent = FPending;
  }

  TFakeConnection& FConnection;
  const std::string FTableName;
  const std::vector<std::size_t> FColumns;
  std::optional<TFakeRow> FCurrent;
  std::optional<TFakeRow> FPending;
  bool FEditing = false;
};

std::unique_ptr<TADOQuery> TFakeConnection::Open(const TDBStatement& Statement) {
  Statements.push_back(Statement);
  Faults.Check("Open");
  return std::make_unique<TFakeQuery>(*this, FDatabase.Select(Statement));
}

void TFakeConnection::Execute(const TDBStatement& Statement) {
  Statements.push_back(Statement);
  Faults.Check("Execute");
  FDatabase.Execute(Statement);
}

}  // namespace oxSuperAPI
