#include "oxSuperAPI/reference/db_connection.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/db_rows.h"
#include "oxSuperAPI/reference/db_statement.h"

namespace oxSuperAPI {

namespace {

/// More texts than that are not kept. The library has far fewer.
constexpr std::size_t MaxSelects = 64;

struct TBoundSQL {
  std::string SQL;
  std::vector<TDBValue> Values;
};

std::vector<TDBValue> ValuesOf(const std::vector<std::string>& Names, const std::vector<TDBParameter>& Parameters) {
  std::vector<TDBValue> Values;
  for (const std::string& Name : Names) Values.push_back(ParameterValue(Parameters, Name));
  return Values;
}

TBoundSQL Bind(std::string_view SQL, const std::vector<TDBParameter>& Parameters) {
  TPositionalSQL Positional = ToPositional(SQL);
  return {std::move(Positional.SQL), ValuesOf(Positional.Names, Parameters)};
}

// Both databases know this form of quotes.
std::string Quoted(std::string_view Name) {
  std::string Result = "[";
  for (const char Character : Name) Result.append(Character == ']' ? 2 : 1, Character);
  return Result + ']';
}

// Each name quoted, with `Before` and `After` around it, and `Between` between them.
std::string List(const std::vector<std::string>& Names, std::string_view Before, std::string_view After,
                 std::string_view Between = ", ") {
  std::string Result;
  for (const std::string& Name : Names)
    Result += fmt::format("{}{}{}{}", Result.empty() ? "" : Between, Before, Quoted(Name), After);
  return Result;
}

std::vector<std::string> NamesOf(const std::vector<TDBParameter>& Fields) {
  std::vector<std::string> Names;
  for (const TDBParameter& Field : Fields) Names.push_back(Field.Name);
  return Names;
}
std::vector<TDBValue> ValuesOf(const std::vector<TDBParameter>& Fields) {
  std::vector<TDBValue> Values;
  for (const TDBParameter& Field : Fields) Values.push_back(Field.Value);
  return Values;
}

/// Index of a name, letter case aside; the number of names when it is not among them.
std::size_t IndexOf(const std::vector<std::string>& Names, std::string_view Wanted) {
  const auto Found = std::ranges::find_if(Names, [&](const std::string& Name) { return SameName(Name, Wanted); });
  return static_cast<std::size_t>(Found - Names.begin());
}

TBoundSQL ConditionAt(const TDBRowPlace& Place) {
  if (Place.Key.empty()) return Bind(Place.Condition.SQL, Place.Condition.Parameters);
  return {List(NamesOf(Place.Key), "", " = ?", " and "), ValuesOf(Place.Key)};
}

}  // namespace

std::string LimitClause(TSQLDialect Dialect, std::string_view Count) {
  return Dialect == TSQLDialect::SQLite ? fmt::format(" limit :{}", Count)
                                        : fmt::format(" offset 0 rows fetch next :{} rows only", Count);
}

std::unique_ptr<TADOQuery> TDBConnection::Open(const TDBStatement& Statement) {
  return OpenRows(Statement);
}

const TDBConnection::TSelect& TDBConnection::Understand(const std::string& SQL) {
  if (const auto Found = FSelects.find(SQL); Found != FSelects.end()) return Found->second;
  if (!IsSelect(SQL)) throw TDatabaseError("A query has to be a select");
  if (!IsOneStatement(SQL)) throw TDatabaseError("One statement at a time can be run");
  if (FSelects.size() == MaxSelects) FSelects.clear();
  return FSelects.emplace(SQL, TSelect{ToPositional(SQL), SelectedTable(SQL)}).first->second;
}

std::unique_ptr<TDBRows> TDBConnection::OpenRows(const TDBStatement& Statement) {
  const TSelect& Select = Understand(Statement.SQL);
  TDBTable Rows = Run(Select.Positional.SQL, ValuesOf(Select.Positional.Names, Statement.Parameters));
  return std::make_unique<TDBRows>(*this, Statement, Select.Table, std::move(Rows));
}

void TDBConnection::Execute(const TDBStatement& Statement) {
  const std::optional<TIfExists> Parts = SplitIfExists(Statement.SQL);
  const std::vector<TDBParameter>& Parameters = Statement.Parameters;
  InTransaction([&] {
    if (!Parts) {
      RunNamed(Statement.SQL, Parameters);
    } else if (Dialect() == TSQLDialect::SQLServer) {
      const TBoundSQL Batch = Bind(Parts->Whole, Parameters);
      Run(Batch.SQL, Batch.Values);
    } else if (!RunNamed(Parts->Probe, Parameters).Rows.empty()) {
      RunNamed(Parts->Then, Parameters);
    } else if (!IsBlankSQL(Parts->Else)) {
      RunNamed(Parts->Else, Parameters);
    }
  });
}

TDBTable TDBConnection::RunNamed(std::string_view SQL, const std::vector<TDBParameter>& Parameters) {
  if (!IsOneStatement(SQL)) throw TDatabaseError("One statement at a time can be run");
  const TBoundSQL Bound = Bind(SQL, Parameters);
  return Run(Bound.SQL, Bound.Values);
}

std::vector<std::string> TDBConnection::PrimaryKey(const std::string& Table) {
  const char* const SQL =
      Dialect() == TSQLDialect::SQLite
          ? "select name from pragma_table_info(:Table) where pk > 0 order by pk"
          : "select k.COLUMN_NAME from INFORMATION_SCHEMA.TABLE_CONSTRAINTS c join INFORMATION_SCHEMA.KEY_COLUMN_USAGE "
            "k on k.CONSTRAINT_SCHEMA = c.CONSTRAINT_SCHEMA and k.CONSTRAINT_NAME = c.CONSTRAINT_NAME where "
            "c.CONSTRAINT_TYPE = 'PRIMARY KEY' and c.TABLE_SCHEMA = 'dbo' and c.TABLE_NAME = :Table "
            "order by k.ORDINAL_POSITION";
  std::vector<std::string> Names;
  const auto Rows = OpenRows({SQL, {{"Table", BareTableName(Table)}}});
  for (; !Rows->Eof(); Rows->Next()) Names.push_back(Rows->FieldAsString(Rows->Columns().at(0)));
  return Names;
}

const TDBConnection::TInsert& TDBConnection::MakeInsert(const std::string& Table,
                                                        const std::vector<std::string>& Columns,
                                                        const std::vector<std::string>& Names) {
  if (FInsert.Table == Table && FInsert.Columns == Columns && FInsert.Names == Names) return FInsert;
  TInsert Insert{Table, Columns, Names, {}, {}, {}};
  // The identity and the defaults are the database's. The rest is known: long texts do not travel back.
  std::vector<std::string> Given;
  for (const std::string& Column : Columns) {
    const std::size_t Value = IndexOf(Names, Column);
    Insert.Sources.push_back(Value < Names.size() ? Value : Names.size() + Given.size());
    if (Value == Names.size()) Given.push_back(Column);
  }
  const bool IsOutput = !Given.empty() && Dialect() == TSQLDialect::SQLServer;
  const bool IsReturning = !Given.empty() && ReturnsRows();
  Insert.SQL = fmt::format("insert into {} ({}){} values ({}){}", Table, List(Names, "", ""),
                           IsOutput ? " output " + List(Given, "inserted.", "") : "",
                           fmt::join(std::vector<std::string_view>(Names.size(), "?"), ", "),
                           IsReturning ? " returning " + List(Given, "", "") : "");
  if (!Given.empty() && !IsOutput && !IsReturning)
    Insert.SelectBehind =
        fmt::format("select {} from {} where rowid = last_insert_rowid()", List(Given, "", ""), Table);
  return FInsert = std::move(Insert);
}

std::vector<TDBCell> TDBConnection::InsertRow(const std::string& Table, const std::vector<std::string>& Columns,
                                              TDBFields& Fields) {
  const TInsert& Insert = MakeInsert(Table, Columns, Fields.Names);
  TDBTable Given;
  if (Insert.SelectBehind.empty())
    Given = Run(Insert.SQL, Fields.Values);
  else
    InTransaction([&] {
      Run(Insert.SQL, Fields.Values);
      Given = Run(Insert.SelectBehind, {});
    });
  const std::size_t Known = Fields.Values.size();
  const auto NotKnown = std::ranges::count_if(Insert.Sources, [&](std::size_t Source) { return Source >= Known; });
  if (NotKnown > 0 && (Given.Rows.size() != 1 || std::ssize(Given.Rows[0]) != NotKnown))
    throw TDatabaseError(fmt::format("The database did not give back the new row of {}", Table));

  std::vector<TDBCell> Row;
  for (const std::size_t Source : Insert.Sources)
    Row.push_back(Source < Known ? ToCell(std::move(Fields.Values[Source])) : std::move(Given.Rows[0][Source - Known]));
  return Row;
}

std::vector<TDBCell> TDBConnection::UpdateRow(const std::string& Table, const std::vector<std::string>& Columns,
                                              const TDBFields& Fields, TDBRowPlace Place) {
  const TBoundSQL Before = ConditionAt(Place);
  std::vector<TDBValue> Values = Fields.Values;
  Values.insert(Values.end(), Before.Values.begin(), Before.Values.end());
  for (TDBParameter& Part : Place.Key)
    if (const std::size_t Changed = IndexOf(Fields.Names, Part.Name); Changed < Fields.Names.size())
      Part.Value = Fields.Values[Changed];
  const TBoundSQL After = ConditionAt(Place);
  TDBTable Changed;
  InTransaction([&] {
    Run(fmt::format("update {} set {} where {}", Table, List(Fields.Names, "", " = ?"), Before.SQL), Values);
    Changed = Run(fmt::format("select {} from {} where {}", List(Columns, "", ""), Table, After.SQL), After.Values);
    if (Changed.Rows.empty())
      throw TDatabaseError(
          fmt::format("The row of {} was changed or deleted by another program: load it again", Table));
    if (Changed.Rows.size() > 1)
      throw TDatabaseError(fmt::format("Several rows of {} are meant: nothing was changed", Table));
  });
  return std::move(Changed.Rows.front());
}

}  // namespace oxSuperAPI
