#include "oxSuperAPI/reference/schema_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/db_rows.h"
#include "oxSuperAPI/reference/db_statement.h"

namespace oxSuperAPI {

namespace {

constexpr const char* Customers = "_iptblBeamSuperCustomerIDs";
constexpr const char* CallLog = "_iptblBeamSuperLog";
constexpr int Whole = -1;  // the length of nvarchar(max)

enum class TContent : std::uint8_t { Anything, Key, Ascii, Text, Number, Identity, Moment };

struct TNeed {
  const char* Table;
  const char* Column;
  TContent Content;
  int Length;            ///< at least, in characters
  const char* Declared;  ///< as reference/schema/ has it
};

// Enciphered text takes 4 characters for 3 bytes, and 16 bytes more than the plain text.
constexpr TNeed CustomerNeeds[] = {
    {Customers, "cUCID", TContent::Key, 80, "nvarchar(200) collate Latin1_General_BIN2 not null"},
    {Customers, "cEnvironment", TContent::Key, 40, "nvarchar(100) collate Latin1_General_BIN2 not null"},
    {Customers, "cUUId", TContent::Ascii, 80, "nvarchar(400)"},
    {Customers, "cClientID", TContent::Ascii, 80, "nvarchar(400)"},
    {Customers, "cClientSecret", TContent::Ascii, 200, "nvarchar(1000)"},
    {Customers, "cCustomerNumber", TContent::Ascii, 80, "nvarchar(200)"},
    {Customers, "cPIN", TContent::Ascii, 50, "nvarchar(200)"},
    {Customers, "cCompanyName", TContent::Ascii, 400, "nvarchar(1000)"},
    {Customers, "cAcknowledgementToken", TContent::Ascii, 400, "nvarchar(max)"},
    {Customers, "dDateLastIssued", TContent::Moment, 0, "datetime2(3)"},
};
constexpr TNeed PayrollNeeds[] = {
    {CallLog, "idBeamSuperLog", TContent::Identity, 0, "int identity(1, 1) not null primary key"},
    {CallLog, "cSource", TContent::Text, 100, "nvarchar(100)"},
    {CallLog, "cURL", TContent::Text, 2000, "nvarchar(max)"},
    {CallLog, "cMethod", TContent::Text, 10, "nvarchar(50)"},
    {CallLog, "iAgentID", TContent::Number, 0, "int"},
    {CallLog, "cRequestHeader", TContent::Text, Whole, "nvarchar(max)"},
    {CallLog, "cRequestBody", TContent::Text, Whole, "nvarchar(max)"},
    {CallLog, "cResponse", TContent::Text, Whole, "nvarchar(max)"},
    {CallLog, "cLogDetails", TContent::Text, Whole, "nvarchar(max)"},
    {CallLog, "cStatus", TContent::Text, 3, "nvarchar(3)"},
    {CallLog, "dLogged", TContent::Moment, 0, "datetime2(3) not null default (sysdatetime())"},
    {"Entities", "cClientNumber", TContent::Anything, 0, "nvarchar(50)"},
    {"Entities", "cSTPGatewayUsername", TContent::Anything, 0, "nvarchar(100)"},
    {"HostSettings", "cName", TContent::Text, 20, "nvarchar(100) not null primary key"},
    {"HostSettings", "cValue", TContent::Text, 100, "nvarchar(max) not null"},
};

struct TRight {
  const char* Table;
  const char* Right;
};
constexpr TRight CustomerRights[] = {{Customers, "select"}, {Customers, "insert"}, {Customers, "update"}};
constexpr TRight PayrollRights[] = {{CallLog, "select"},        {CallLog, "insert"},        {"Entities", "select"},
                                    {"HostSettings", "select"}, {"HostSettings", "insert"}, {"HostSettings", "update"}};

struct TFound {
  std::string Name;
  std::string Type;
  int Length = 0;
  int Precision = 0;
  bool Identity = false;
  std::string Collation;

  std::string Declared() const {
    if (Collation.empty()) return Type == "datetime2" ? fmt::format("datetime2({})", Precision) : Type;
    return Length == Whole ? Type + "(max)" : fmt::format("{}({})", Type, Length);
  }
};
using TTables = std::map<std::string, std::vector<TFound>, std::less<>>;

// One question of several rows for either dialect, under the same names.
constexpr const char* SQLiteColumns =
    "select t.name as TABLE_NAME, c.name as COLUMN_NAME, lower(c.type) as DATA_TYPE, 0 as CHARACTER_MAXIMUM_LENGTH, "
    "null as COLLATION_NAME, 3 as DATETIME_PRECISION, c.pk as IsIdentity from sqlite_schema t, "
    "pragma_table_info(t.name) "
    "c where t.type = 'table'";
constexpr const char* SQLServerColumns =
    "select TABLE_NAME, COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, COLLATION_NAME, DATETIME_PRECISION, "
    "columnproperty(object_id(TABLE_SCHEMA + '.' + TABLE_NAME), COLUMN_NAME, 'IsIdentity') as IsIdentity "
    "from INFORMATION_SCHEMA.COLUMNS where TABLE_SCHEMA = 'dbo' and TABLE_NAME in "
    "('_iptblBeamSuperCustomerIDs', '_iptblBeamSuperLog', 'Entities', 'HostSettings')";
constexpr const char* SQLiteKeys =
    "select i.name as IndexName, c.name as ColumnName from pragma_index_list('_iptblBeamSuperCustomerIDs') i, "
    "pragma_index_info(i.name) c where i.[unique] = 1 and i.partial = 0";
constexpr const char* SQLServerKeys =
    "select i.name as IndexName, c.name as ColumnName from sys.indexes i "
    "join sys.index_columns k on k.object_id = i.object_id and k.index_id = i.index_id "
    "join sys.columns c on c.object_id = k.object_id and c.column_id = k.column_id "
    "where i.object_id = object_id('dbo._iptblBeamSuperCustomerIDs') and i.is_unique = 1 and i.is_disabled = 0 "
    "and i.has_filter = 0 and k.is_included_column = 0";

/// Looks at one database and collects what is wrong.
class TChecker {
 public:
  explicit TChecker(TDBConnection& Connection)
      : FConnection(Connection), FServer(Connection.Dialect() == TSQLDialect::SQLServer) {
    ReadTables();
  }

  template <std::size_t Size>
  void CheckColumns(const TNeed (&Needs)[Size]) {
    for (const TNeed& Need : Needs) CheckColumn(Need);
  }

  void CheckKey() {
    if (!FTables.contains(Customers)) return;
    std::map<std::string, std::vector<std::string>> Keys;
    const auto Rows = FConnection.OpenRows({FServer ? SQLServerKeys : SQLiteKeys, {}});
    for (; !Rows->Eof(); Rows->Next())
      Keys[Rows->FieldAsString("IndexName")].push_back(Rows->FieldAsString("ColumnName"));
    for (const auto& [Name, Columns] : Keys) {
      const auto Has = [&Columns](const char* Column) {
        return std::ranges::any_of(Columns, [&](const std::string& Other) { return SameName(Other, Column); });
      };
      if (Columns.size() == 2 && Has("cUCID") && Has("cEnvironment")) return;
    }
    Add(fmt::format("{} has no unique key on cUCID and cEnvironment: two hosts could each save a row", Customers),
        fmt::format("alter table {} add constraint uq_iptblBeamSuperCustomerIDs unique (cUCID, cEnvironment)",
                    Full(Customers)));
  }

  /// SQL Server alone has users with rights.
  template <std::size_t Size>
  void CheckRights(const TRight (&Rights)[Size]) {
    if (!FServer) return;
    for (const TRight& Right : Rights) {
      if (!FTables.contains(Right.Table)) continue;
      const std::string Question = fmt::format(
          "select has_perms_by_name('dbo.{}', 'OBJECT', '{}') as Answer, user_name() as Who", Right.Table, Right.Right);
      const auto Row = FConnection.OpenRows({Question, {}});
      const std::string Who = Row->FieldAsString("Who");
      if (Row->FieldAsInteger("Answer") != 1)
        Add(fmt::format("{} may not {} rows of {}", Who, Right.Right, Right.Table),
            fmt::format("grant {} on {} to [{}]", Right.Right, Full(Right.Table), Who));
    }
  }

  void CheckTriggers() {
    if (!FServer) return;
    const auto Rows = FConnection.OpenRows(
        {"select t.name as TriggerName, object_name(t.parent_id) as TableName from sys.triggers t where t.is_disabled "
         "= 0 "
         "and t.parent_id in (object_id('dbo._iptblBeamSuperCustomerIDs'), object_id('dbo._iptblBeamSuperLog'))",
         {}});
    for (; !Rows->Eof(); Rows->Next())
      Add(fmt::format("{} has the trigger {}, so that a new row's values cannot be asked for",
                      Rows->FieldAsString("TableName"), Rows->FieldAsString("TriggerName")),
          fmt::format("disable trigger [{}] on {}", Rows->FieldAsString("TriggerName"),
                      Full(Rows->FieldAsString("TableName"))));
  }

  std::vector<TSchemaFinding> Findings;

 private:
  void ReadTables() {
    const auto Rows = FConnection.OpenRows({FServer ? SQLServerColumns : SQLiteColumns, {}});
    for (; !Rows->Eof(); Rows->Next())
      FTables[Rows->FieldAsString("TABLE_NAME")].push_back({.Name = Rows->FieldAsString("COLUMN_NAME"),
                                                            .Type = Rows->FieldAsString("DATA_TYPE"),
                                                            .Length = Rows->FieldAsInteger("CHARACTER_MAXIMUM_LENGTH"),
                                                            .Precision = Rows->FieldAsInteger("DATETIME_PRECISION"),
                                                            .Identity = Rows->FieldAsInteger("IsIdentity") == 1,
                                                            .Collation = Rows->FieldAsString("COLLATION_NAME")});
    if (FServer) {
      const auto Row = FConnection.OpenRows(
          {"select convert(nvarchar(128), databasepropertyex(db_name(), 'Collation')) as Collation", {}});
      const std::string Collation = Row->FieldAsString("Collation");
      FExactNames = Collation.find("_CS_") != std::string::npos || Collation.find("_BIN") != std::string::npos;
    }
  }

  void CheckColumn(const TNeed& Need) {
    const auto Table = FTables.find(Need.Table);
    if (Table == FTables.end()) {
      if (FMissing.emplace(Need.Table).second)
        Add(fmt::format("The table {} is missing", Need.Table), "run \"oxsuper db init\"");
      return;
    }
    const auto Found =
        std::ranges::find_if(Table->second, [&](const TFound& F) { return SameName(F.Name, Need.Column); });
    const std::string Place = fmt::format("{}.{}", Need.Table, Need.Column);
    if (Found == Table->second.end())
      Add(fmt::format("The column {} is missing", Place),
          FServer ? fmt::format("alter table {} add {} {}", Full(Need.Table), Need.Column, Need.Declared)
                  : std::string("add it as reference/schema/ has it"));
    else if (FServer)
      CheckType(Need, *Found, Place);
    else if (Need.Content == TContent::Identity && !(Found->Identity && Found->Type == "integer"))
      Add(fmt::format("{} is not assigned by the database", Place), "make the table as reference/schema/ has it");
  }

  void CheckType(const TNeed& Need, const TFound& Found, const std::string& Place) {
    if (FExactNames && Found.Name != Need.Column)
      Add(fmt::format("{} is called {}, and in this database upper and lower case are different", Place, Found.Name),
          fmt::format("exec sp_rename 'dbo.{}.{}', '{}', 'COLUMN'", Need.Table, Found.Name, Need.Column));
    const bool Wide = Found.Type == "nvarchar";
    const bool Long = Found.Length == Whole || (Need.Length != Whole && Found.Length >= Need.Length);
    bool Fits = true;
    switch (Need.Content) {
      case TContent::Anything:
        break;
      case TContent::Key:
      case TContent::Ascii:
        Fits = (Wide || Found.Type == "varchar") && Long;
        break;
      case TContent::Text:
        Fits = Wide && Long;
        break;
      case TContent::Number:
        Fits = Found.Type == "int" || Found.Type == "bigint";
        break;
      case TContent::Identity:
        if (!Found.Identity)
          Add(fmt::format("{} is not assigned by the database", Place),
              fmt::format("make the table anew with {} {}", Need.Column, Need.Declared));
        break;
      case TContent::Moment:
        Fits = Found.Type == "datetime2" && Found.Precision >= 3;
        break;
    }
    const std::string Change =
        fmt::format("alter table {} alter column {} {}", Full(Need.Table), Need.Column, Need.Declared);
    if (!Fits) Add(fmt::format("{} is {}, which loses what is stored in it", Place, Found.Declared()), Change);
    if (Need.Content == TContent::Key && !Found.Collation.ends_with("_BIN2") && !Found.Collation.ends_with("_BIN"))
      Add(fmt::format("{} has the collation {}: different enciphered values would be taken for equal", Place,
                      Found.Collation),
          Change + "; drop the key on it before, and add it again afterwards");
  }

  std::string Full(std::string_view Table) const { return fmt::format("{}{}", FServer ? "dbo." : "", Table); }
  void Add(std::string Problem, std::string Advice) { Findings.push_back({std::move(Problem), std::move(Advice)}); }

  TDBConnection& FConnection;
  bool FServer;
  bool FExactNames = false;
  TTables FTables;
  std::set<std::string> FMissing;  ///< tables reported already
};

}  // namespace

std::vector<TSchemaFinding> FindSchemaProblems(TDBConnection& Connection, TDatabaseRole Role) {
  TChecker Checker(Connection);
  Checker.CheckColumns(CustomerNeeds);
  if (Role == TDatabaseRole::Payroll) Checker.CheckColumns(PayrollNeeds);
  Checker.CheckKey();
  Checker.CheckRights(CustomerRights);
  if (Role == TDatabaseRole::Payroll) Checker.CheckRights(PayrollRights);
  Checker.CheckTriggers();
  return std::move(Checker.Findings);
}

}  // namespace oxSuperAPI
