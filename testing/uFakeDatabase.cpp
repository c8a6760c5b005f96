#include "oxSuperAPI/testing/uFakeDatabase.h"

#include <algorithm>

#include "oxSuperAPI/testing/uFakeNames.h"
#include "oxSuperAPI/testing/uFakeSQL.h"
#include "oxSuperAPI/testing/uFakeTable.h"

namespace oxSuperAPI {

namespace {

/// Runs one parsed statement with its parameters. Every name is checked even when no row needs it, as a server does
/// before it starts.
class TRun {
 public:
  TRun(TFakeDatabase& Database, const TParsedSQL& Parsed, const std::vector<TDBParameter>& Parameters)
      : FDatabase(Database), FParameters(Parameters) {
    const auto Has = [](const auto& Names, const std::string& Name) {
      return std::find(Names.begin(), Names.end(), Name) != Names.end();
    };
    std::vector<std::string> Bound;
    for (const TDBParameter& Parameter : Parameters) {
      if (!Has(Parsed.Parameters, Parameter.Name))
        throw TBeamError("SQL: the statement has no parameter :" + Parameter.Name);
      if (Has(Bound, Parameter.Name)) throw TBeamError("SQL: parameter :" + Parameter.Name + " is bound twice");
      Bound.push_back(Parameter.Name);
    }
    for (const std::string& Name : Parsed.Parameters)
      if (!Has(Bound, Name)) throw TBeamError("SQL: parameter :" + Name + " has no value");
  }

  TFakeDatabase::TSelection Select(const TSQLSelect& Statement) {
    TFakeTable& Table = FDatabase.Table(Statement.Table);
    TFakeDatabase::TSelection Result{&Table, {}, {}};
    for (const std::string& Column : Statement.Columns) Result.Columns.push_back(Table.ColumnIndex(Column));
    if (Statement.Columns.empty())
      for (std::size_t Column = 0; Column < Table.Columns.size(); ++Column) Result.Columns.push_back(Column);
    CheckNames(Table, Statement.Where);
    const auto Row = std::find_if(Table.Rows.begin(), Table.Rows.end(),
                                  [&](const TFakeRow& One) { return Matches(Table, One, Statement.Where); });
    if (Row != Table.Rows.end()) Result.FirstRow = *Row;
    return Result;
  }

  void Change(const TSQLUpdate& Statement) {
    TFakeTable& Table = FDatabase.Table(Statement.Table);
    CheckNames(Table, Statement.Where);
    std::vector<std::size_t> Targets;
    for (const auto& [Column, Value] : Statement.Assignments) {
      Targets.push_back(Table.WritableColumn(Column));
      CheckName(Table, Value);
    }
    std::vector<TFakeRow> Changed = Table.Rows;
    for (TFakeRow& Row : Changed) {
      if (!Matches(Table, Row, Statement.Where)) continue;
      const TFakeRow Before = Row;
      for (std::size_t Index = 0; Index < Targets.size(); ++Index)
        Row.at(Targets[Index]) =
            Table.Convert(Targets[Index], ValueOf(Table, &Before, Statement.Assignments[Index].second));
    }
    Table.CheckUnique(Changed);
    Table.Rows = std::move(Changed);
  }

  void Change(const TSQLInsert& Statement) {
    TFakeTable& Table = FDatabase.Table(Statement.Table);
    std::vector<std::pair<std::string, TDBValue>> Values;
    for (std::size_t Index = 0; Index < Statement.Columns.size(); ++Index)
      Values.emplace_back(Statement.Columns[Index], ValueOf(Table, nullptr, Statement.Values[Index]));
    Table.Add(Values);
  }

  void Change(const TSQLIfExists& Statement) {
    const TSQLChange* pChange = &Statement.Then;
    if (!Select(Statement.Probe).FirstRow) pChange = Statement.Else ? &*Statement.Else : nullptr;
    if (pChange) std::visit([&](const auto& One) { Change(One); }, *pChange);
  }

  void Change(const TSQLSelect&) { throw TBeamError("SQL: a select is opened, not executed"); }

 private:
  static void CheckName(const TFakeTable& Table, const TSQLOperand& Operand) {
    if (const auto* Column = std::get_if<TSQLColumn>(&Operand)) Table.ColumnIndex(Column->Name);
  }
  static void CheckNames(const TFakeTable& Table, const TSQLWhere& Where) {
    for (const TSQLCondition& Condition : Where) {
      CheckName(Table, Condition.Left);
      CheckName(Table, Condition.Right);
    }
  }

  TDBValue ValueOf(const TFakeTable& Table, const TFakeRow* pRow, const TSQLOperand& Operand) const {
    if (const auto* Value = std::get_if<TDBValue>(&Operand)) return *Value;
    if (const auto* Parameter = std::get_if<TSQLParameter>(&Operand)) {
      for (const TDBParameter& Bound : FParameters)
        if (Bound.Name == Parameter->Name) return Bound.Value;
      return {};
    }
    const std::string& Name = std::get<TSQLColumn>(Operand).Name;
    if (!pRow) throw TBeamError("SQL: the column name '" + Name + "' is not permitted in an insert");
    return pRow->at(Table.ColumnIndex(Name));
  }

  bool Matches(const TFakeTable& Table, const TFakeRow& Row, const TSQLWhere& Where) const {
    return std::all_of(Where.begin(), Where.end(), [&](const TSQLCondition& Condition) {
      return EqualValues(ValueOf(Table, &Row, Condition.Left), ValueOf(Table, &Row, Condition.Right));
    });
  }

  TFakeDatabase& FDatabase;
  const std::vector<TDBParameter>& FParameters;
};

std::string_view WithoutSchema(std::string_view Name) {
  constexpr std::string_view Schema = "dbo.";
  return SameName(Name.substr(0, Schema.size()), Schema) ? Name.substr(Schema.size()) : Name;
}

}  // namespace

TFakeTable& TFakeDatabase::AddTable(std::string Name, std::vector<TFakeColumn> Columns,
                                    std::vector<std::string> UniqueKey) {
  for (const TFakeTable& Table : FTables)
    if (SameName(Table.Name, Name)) throw TBeamError("There is already a table named '" + Name + "'");
  return FTables.emplace_back(std::move(Name), std::move(Columns), std::move(UniqueKey));
}

void TFakeDatabase::DropTable(std::string_view Name) {
  const TFakeTable* pTable = &Table(Name);
  FTables.remove_if([&](const TFakeTable& One) { return &One == pTable; });
}

TFakeTable& TFakeDatabase::Table(std::string_view Name) {
  for (TFakeTable& Table : FTables)
    if (SameName(Table.Name, WithoutSchema(Name))) return Table;
  throw TBeamError("Invalid object name '" + std::string(Name) + "'");
}

TFakeDatabase::TSelection TFakeDatabase::Select(const TDBStatement& Statement) {
  const TParsedSQL Parsed = ParseSQL(Statement.SQL);
  const auto* Select = std::get_if<TSQLSelect>(&Parsed.Statement);
  if (!Select) throw TBeamError("SQL: only a select can be opened");
  return TRun(*this, Parsed, Statement.Parameters).Select(*Select);
}

void TFakeDatabase::Execute(const TDBStatement& Statement) {
  const TParsedSQL Parsed = ParseSQL(Statement.SQL);
  TRun Run(*this, Parsed, Statement.Parameters);
  std::visit([&](const auto& One) { Run.Change(One); }, Parsed.Statement);
}

}  // namespace oxSuperAPI
