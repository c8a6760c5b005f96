#include "oxSuperAPI/reference/db_connection.h"

#include <sqlite3.h>

#include <limits>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/db_odbc.h"
#include "oxSuperAPI/reference/db_sqlite.h"
#include "oxSuperAPI/reference/schema.h"
#include "oxSuperAPI/reference/settings_database.h"
#include "save_statement.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {

enum class TAdapter : std::uint8_t { SQLite, ODBC };

/// One suite for all adapters. What a driver cannot do is skipped, with the reason.
class Database : public testing::TestWithParam<TAdapter> {
 protected:
  Database() {
    TSQLiteConnection::CreateFile(FFile);
    FConnection = Connect();
    CreateSchema(*FConnection, TDatabaseRole::Payroll);
  }

  bool ThroughODBC() const { return GetParam() == TAdapter::ODBC; }
  std::unique_ptr<TDBConnection> Connect() const {
    if (ThroughODBC())
      return std::make_unique<TODBCConnection>("Driver=SQLite3;Database=" + FFile + ";Timeout=20;PWD=s3cret");
    return std::make_unique<TSQLiteConnection>(FFile, std::chrono::milliseconds(20));
  }
  std::string Value(const std::string& SQL) {
    const auto Row = FConnection->OpenRows({SQL, {}});
    return Row->FieldAsString(Row->Columns().at(0));
  }
  void Execute(const std::string& SQL) { FConnection->Execute({SQL, {}}); }
  auto Open(const std::string& SQL) { return FConnection->Open({SQL, {}}); }

  TTemporaryDirectory FDirectory;
  std::string FFile = FDirectory / "payroll.db";
  std::unique_ptr<TDBConnection> FConnection;
};
INSTANTIATE_TEST_SUITE_P(Adapters, Database, testing::Values(TAdapter::SQLite, TAdapter::ODBC),
                         [](const auto& Info) { return Info.param == TAdapter::ODBC ? "ODBC" : "SQLite"; });

namespace {

TDBStatement Save(const std::string& Customer, const std::string& Environment, const std::string& Secret) {
  TDBStatement Statement{std::string(SaveStatement), {{"UCID", Customer}, {"Env", Environment}}};
  for (const std::string Prefix : {"", "i"}) {
    for (const char* Name : {"ClientID", "UUID", "CustomerNumber", "PIN", "CompanyName", "Token"})
      Statement.Parameters.push_back({Prefix + Name, Customer + " " + Name});
    Statement.Parameters.push_back({Prefix + "ClientSecret", Secret});
    Statement.Parameters.push_back({Prefix + "Environment", Environment});
    Statement.Parameters.push_back({Prefix + "DateLastIssued", 45356.5});
  }
  Statement.Parameters.push_back({"iUCID", Customer});
  return Statement;
}

}  // namespace

TEST_P(Database, SavingOneCustomerNeverTouchesAnotherRow) {
  for (const char* Customer : {"A", "B"})
    for (const char* Environment : {"Dev", "Prod"})
      FConnection->Execute(Save(Customer, Environment, std::string(Customer) + Environment));
  FConnection->Execute(Save("A", "Prod", "renewed"));
  EXPECT_EQ(Value("select group_concat(cUCID || cEnvironment || '=' || cClientSecret || '/' || cUUID, ';') from "
                  "(select * from _iptblBeamSuperCustomerIDs order by cUCID, cEnvironment)"),
            "ADev=ADev/A UUID;AProd=renewed/A UUID;BDev=BDev/B UUID;BProd=BProd/B UUID");
}

TEST_P(Database, GivesAnAppendedRowItsIdentityAndKeepsEveryText) {
  std::string Long = "x";  // 5 MB of pairs of surrogates at odd places, so that every piece cuts one
  while (Long.size() < 5'000'000) Long += "\xF0\x9F\x98\x80";
  const std::string Zero("a\0b", 3);
  const std::string Odd = (ThroughODBC() ? "" : Zero) +  // SQLite's driver ends a text at a zero
                          "\r\n'\"; drop table T; -- \xC3\xA9 \xF0\x9F\x98\x80";
  const auto Query = Open("select * from dbo._iptblBeamSuperLog where idBeamSuperLog = 0");
  EXPECT_TRUE(Query->Eof());
  for (int Key = 1; Key <= 2; ++Key) {
    Query->Append();
    Query->SetField("CSOURCE", std::string("overwritten"));
    Query->SetField("cSource", Odd);
    Query->SetField("cResponse", Long);
    Query->SetField("iAgentID", -1);
    Query->SetField("cStatus", TDBValue());
    Query->Post();
    EXPECT_EQ(Query->FieldAsInteger("idBeamSuperLog"), Key);
  }
  const auto Read = Open("select * from _iptblBeamSuperLog where idBeamSuperLog = 2 and cStatus is null");
  for (const TADOQuery* Row : {Query.get(), Read.get()}) {
    EXPECT_EQ(Row->FieldAsString("csource"), Odd);
    EXPECT_TRUE(Row->FieldAsString("cResponse") == Long);
    EXPECT_EQ(Row->FieldAsInteger("iAgentID"), -1);
    EXPECT_TRUE(Row->FieldAsString("cStatus").empty() && Row->FieldAsInteger("cStatus") == 0);
  }
  EXPECT_GT(Query->FieldAsDateTime("dLogged"), 45000.0);
}

// Statements are kept ready between calls; another program may change the tables meanwhile.
TEST_P(Database, SeesTheTablesAsTheyAreNow) {
  if (ThroughODBC()) GTEST_SKIP() << "libsqliteodbc describes a select by the columns that it saw before";
  const auto Log = [&](const char* Source) {
    auto Query = Open("select * from _iptblBeamSuperLog where idBeamSuperLog = 0");
    Query->Append();
    Query->SetField("cSource", std::string(Source));
    Query->Post();
    return Query;
  };
  Log("first");
  Connect()->Execute({"alter table _iptblBeamSuperLog add column cNew text default 'new'", {}});
  EXPECT_EQ(Log("second")->FieldAsString("cNew"), "new");
  Connect()->Execute({"alter table _iptblBeamSuperLog drop column cURL", {}});
  EXPECT_EQ(Log("third")->FieldAsInteger("idBeamSuperLog"), 3);
  for (int Count = 0; Count < 200; ++Count) Value("select " + std::to_string(Count));
  EXPECT_EQ(Value("select group_concat(cSource) from _iptblBeamSuperLog"), "first,second,third");
}

TEST_P(Database, ChangesTheEditedRowAlone) {
  for (const char* Customer : {"A", "B"}) FConnection->Execute(Save(Customer, "Dev", "old"));
  const auto Query =
      FConnection->Open({"select * from _iptblBeamSuperCustomerIDs where cUCID = :UCID and cEnvironment = :ENV",
                         {{"UCID", "B"}, {"Env", "Dev"}}});
  Query->Edit();
  Query->SetField("cClientSecret", std::string("new"));
  Query->SetField("dDateLastIssued", 45356.0);
  Query->Post();
  EXPECT_EQ(Query->FieldAsDateTime("dDateLastIssued"), 45356.0);
  EXPECT_EQ(Value("select group_concat(cClientSecret) from (select * from _iptblBeamSuperCustomerIDs order by cUCID)"),
            "old,new");

  Execute("delete from _iptblBeamSuperCustomerIDs where cUCID = 'B'");
  Query->Edit();
  Query->SetField("cPIN", std::string("1"));
  EXPECT_ERROR(Query->Post(), "changed or deleted");
}

TEST_P(Database, ChangesARowWithoutPrimaryKeyThroughTheConditionOfItsSelect) {
  Execute("create table Bare (a text, b text)");
  for (const char* Row : {"('1', 'x')", "('2', 'x')"}) Execute(std::string("insert into Bare values ") + Row);
  const auto Change = [&](const TDBStatement& Select) {
    const auto Query = FConnection->Open(Select);
    Query->Edit();
    Query->SetField("b", std::string("y"));
    Query->Post();
  };
  Change({"select * from Bare where a = :A order by b", {{"A", "2"}}});
  EXPECT_EQ(Value("select group_concat(a || b) from (select * from Bare order by a)"), "1x,2y");
  EXPECT_ERROR(Change({"select * from Bare where a > '0'", {}}), "Several rows of Bare");
  EXPECT_ERROR(Change({"select * from Bare", {}}), "no primary key");
  EXPECT_EQ(Value("select group_concat(a || b) from (select * from Bare order by a)"), "1x,2y");
}

TEST_P(Database, UndoesATransactionAsAWholeAndFindsALateError) {
  const auto Fill = [&](bool Fails) {
    FConnection->InTransaction([&] {
      Execute("insert into HostSettings values ('a', '1')");
      FConnection->InTransaction([&] { Execute("insert into HostSettings values ('b', '2')"); });
      if (Fails) throw std::runtime_error("on the way");
    });
  };
  EXPECT_THROW(Fill(true), std::runtime_error);
  EXPECT_EQ(Value("select count(*) from HostSettings"), "0");
  Fill(false);
  EXPECT_EQ(Value("select count(*) from HostSettings"), "2");
  EXPECT_ERROR(FConnection->ExecuteScript("delete from HostSettings; insert into Missing values (';')"), "Missing");
  EXPECT_EQ(Value("select count(*) from HostSettings"), "2");
  EXPECT_ERROR(Open("select abs(v) as v from (select 1 as v union all select -9223372036854775807 - 1)"), "overflow");
}

TEST_P(Database, KeepsDatesToTheEndsOfTheCalendarAndTellsEmptyFromNull) {
  for (const char* Date : {"0001-01-01 00:00:00.000", "1600-02-29 00:00:00.001", "1753-01-01 00:00:00.000",
                           "1899-12-29 18:00:00.000", "2024-02-29 23:59:59.999", "9999-12-31 23:59:59.999"}) {
    FConnection->Execute(
        {"insert into _iptblBeamSuperCustomerIDs (cUCID, cEnvironment, dDateLastIssued) values "
         "(:Name, '', :Date)",
         {{"Name", Date}, {"Date", *ParseDateTime(Date)}}});
    const auto Row = FConnection->Open(
        {"select * from _iptblBeamSuperCustomerIDs where dDateLastIssued = :Date", {{"Date", *ParseDateTime(Date)}}});
    EXPECT_EQ(Row->FieldAsString("cUCID"), Date);
    EXPECT_EQ(Row->FieldAsString("dDateLastIssued"), Date);
    EXPECT_EQ(Row->FieldAsDateTime("dDateLastIssued"), *ParseDateTime(Date));
  }
  EXPECT_EQ(Value("select count(*) from _iptblBeamSuperCustomerIDs where cEnvironment = '' and cPIN is null"), "6");
}

TEST_P(Database, RefusesMisuseOfAQuery) {
  const auto Query = Open("select * from Entities");
  EXPECT_ERROR(Query->FieldAsString("cClientNumber"), "no row");
  EXPECT_ERROR(Query->FieldAsString("cOther"), "no column cOther");
  EXPECT_ERROR(Query->Edit(), "no row");
  EXPECT_ERROR(Query->SetField("cClientNumber", 1), "after Append or Edit");
  EXPECT_ERROR(Query->Post(), "Append or Edit first");
  Query->Append();
  EXPECT_ERROR(Query->SetField("cOther", 1), "no column cOther");
  EXPECT_ERROR(Query->Post(), "without any field");
  EXPECT_ERROR(Open("select 1 as a")->Append(), "cannot be changed");
  EXPECT_ERROR(Open("delete from Entities"), "has to be a select");
  EXPECT_ERROR(Execute("delete from Entities; delete from HostSettings"), "One statement");
  EXPECT_ERROR(Execute(""), "One statement");
  EXPECT_ERROR(Execute("delete from Entities where cClientNumber = @P"), ThroughODBC() ? "marker count" : "\":Name\"");
}

TEST_P(Database, ReadsDateTimesInBothFormsToTheMillisecond) {
  // clang-format off
  const std::pair<const char*, TDateTime> Cases[] = {
      {"'2024-03-05 12:00:00.000'", 45356.5}, {"'2024-03-05T12:00'", 45356.5}, {"'2024-03-05'", 45356.0},
      {"'2024-03-05 00:00:00.0009'", 45356.0 + 1 / 86'400'000.0}, {"'1899-12-30 00:00:00.000'", 0.0},
      {"45356.5", 45356.5}, {"45356", 45356.0}, {"''", 0.0}, {"null", 0.0}};
  // clang-format on
  const auto Stored = [&](const char* Value) { return Open(std::string("select ") + Value + " as v"); };
  for (const auto& [Value, Read] : Cases) EXPECT_EQ(Stored(Value)->FieldAsDateTime("v"), Read) << Value;
  for (const char* Wrong : {"'2024-02-30'", "'2024-03-05 24:00'", "'2024-03-05 12:00:00.'", "'2024-03-05Z'", "'x'"})
    EXPECT_ERROR(Stored(Wrong)->FieldAsDateTime("v"), "column v");
  for (const char* Wrong : {"'12 '", "''", "2147483648", "1.5"})
    EXPECT_ERROR(Stored(Wrong)->FieldAsInteger("v"), "column v");
  EXPECT_EQ(FormatDateTime(45356.999999999), "2024-03-06 00:00:00.000");
  EXPECT_EQ(FormatDateTime(-0.25), "1899-12-29 18:00:00.000");
  for (const double Wrong : {std::numeric_limits<double>::quiet_NaN(), 1e300, 2958466.0, -693594.0})
    EXPECT_ERROR(FormatDateTime(Wrong), "outside the years");
  for (double Moment = 45356.0; Moment < 45357.0; Moment += 12'345.0 / 86'400'000.0)
    ASSERT_NEAR(*ParseDateTime(FormatDateTime(Moment)), Moment, 0.4 / 86'400'000.0);
}

TEST_P(Database, SettingsAreStoredAndReplacedAndAFailureLeavesNothingBehind) {
  TDatabaseSettings Settings(*FConnection);
  const auto Get = [&](const char* Name) { return Settings.GetCurrentSystemValue(Name, "none", false); };
  EXPECT_EQ(Get("A"), "none");
  for (const char* Stored : {"one", "two", ""}) {
    Settings.SetCurrentSystemValue("A", Stored, false);
    Settings.SetCurrentSystemValue("B", "other", false);
    EXPECT_EQ(Get("A"), Stored);
  }
  EXPECT_EQ(Get("B"), "other");
  Execute("create trigger Fail before insert on HostSettings begin select raise(abort, 'no'); end");
  EXPECT_ERROR(Settings.SetCurrentSystemValue("C", "s3cret", false), "insert of HostSettings");
  Execute("drop trigger Fail");  // the connection is still good, and no transaction is open
  EXPECT_EQ(Get("C"), "none");

  sqlite3* Other = nullptr;
  ASSERT_EQ(sqlite3_open(FFile.c_str(), &Other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(Other, "begin immediate", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_ERROR(Settings.SetCurrentSystemValue("C", "1", false), "try again");
  EXPECT_EQ(Get("C"), "none");  // readers are not kept waiting
  sqlite3_close(Other);
}

TEST_P(Database, NamesCodeStatementAndTableButNoValueInAnError) {
  Execute("insert into HostSettings values ('s3cret', 'x')");
  try {
    FConnection->Execute({"insert into HostSettings values (:Name, 'y')", {{"Name", "s3cret"}}});
    FAIL() << "a second row with the same key was accepted";
  } catch (const TDatabaseError& Error) {
    EXPECT_EQ(Error.Code(), ThroughODBC() ? SQLITE_CONSTRAINT : SQLITE_CONSTRAINT_PRIMARYKEY);
    EXPECT_EQ(Error.SQLState(), ThroughODBC() ? "HY000" : "");
    EXPECT_PRED2(Holds, Error.what(), "insert of HostSettings");
    EXPECT_FALSE(Holds(Error.what(), "s3cret")) << Error.what();
  }
  EXPECT_ERROR(Open("select * from Missing"), "no such table: Missing");
  EXPECT_ERROR(Open("select misspelt from Entities"), "no such column");
  // The driver lets SQLite take a misspelt quoted name for a text.
  if (!ThroughODBC()) {
    EXPECT_ERROR(Open("select \"misspelt\" from Entities"), "no such column");
  }
}

TEST_P(Database, FilesAreTheOwnersAlone) {
  if (ThroughODBC()) GTEST_SKIP() << "through ODBC a file's rights are the administrator's business";
  Execute("insert into HostSettings values ('a', 'b')");
  for (const char* Suffix : {"", "-wal", "-shm"}) EXPECT_EQ(ModeOf(FFile + Suffix), 0600U) << Suffix;
  EXPECT_ERROR(TSQLiteConnection::CreateFile(FFile), "create");
  EXPECT_ERROR(TSQLiteConnection(FDirectory / "missing.db"), "missing.db");
  std::filesystem::create_symlink(FFile, FDirectory / "link.db");
  EXPECT_ERROR(TSQLiteConnection(FDirectory / "link.db"), "symbolic link");
  EXPECT_ERROR(TSQLiteConnection(FDirectory.Write("garbage.db", std::string(4096, 'x'))), "SQLite error 26");
  FConnection.reset();
  chmod(FFile.c_str(), 0640);
  EXPECT_ERROR(TSQLiteConnection{FFile}, "chmod 600");
}

TEST_P(Database, SchemaCanBeMadeAgainAndIsChecked) {
  Execute("insert into HostSettings values ('a', 'b')");
  CreateSchema(*FConnection, TDatabaseRole::Payroll);
  CheckSchema(*FConnection, TDatabaseRole::Payroll);
  CheckSchema(*FConnection, TDatabaseRole::Common);
  EXPECT_EQ(Value("select count(*) from HostSettings"), "1");
  Execute("alter table Entities drop column cClientNumber");
  EXPECT_ERROR(CheckSchema(*FConnection, TDatabaseRole::Payroll), "Entities.cClientNumber is missing");
  Execute("alter table _iptblBeamSuperCustomerIDs rename to Old");
  EXPECT_ERROR(CheckSchema(*FConnection, TDatabaseRole::Common), "_iptblBeamSuperCustomerIDs is missing");
  Execute("create table _iptblBeamSuperCustomerIDs as select * from Old");
  EXPECT_ERROR(CheckSchema(*FConnection, TDatabaseRole::Common), "no unique key on cUCID and cEnvironment");
}

}  // namespace oxSuperAPI::tests
