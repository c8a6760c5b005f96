#include "oxSuperAPI/reference/db_sqlite.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <limits>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/schema.h"
#include "oxSuperAPI/reference/settings_database.h"
#include "save_statement.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {

class SQLiteDatabase : public testing::Test {
 protected:
  SQLiteDatabase() {
    TSQLiteConnection::CreateFile(FFile);
    FConnection = std::make_unique<TSQLiteConnection>(FFile, std::chrono::milliseconds(20));
    CreateSchema(*FConnection, TDatabaseRole::Payroll);
  }

  std::string Value(const std::string& SQL) {
    const auto Row = FConnection->OpenRows({SQL, {}});
    return Row->Eof() ? "(no row)" : Row->FieldAsString(Row->Columns().at(0));
  }

  TTemporaryDirectory FDirectory;
  std::string FFile = FDirectory / "payroll.db";
  std::unique_ptr<TSQLiteConnection> FConnection;
};

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

TEST_F(SQLiteDatabase, SavingOneCustomerNeverTouchesAnotherRow) {
  for (const char* Customer : {"A", "B"})
    for (const char* Environment : {"Dev", "Prod"})
      FConnection->Execute(Save(Customer, Environment, std::string(Customer) + Environment));
  FConnection->Execute(Save("A", "Prod", "renewed"));
  EXPECT_EQ(Value("select group_concat(cUCID || cEnvironment || '=' || cClientSecret || '/' || cUUID, ';') from "
                  "(select * from _iptblBeamSuperCustomerIDs order by cUCID, cEnvironment)"),
            "ADev=ADev/A UUID;AProd=renewed/A UUID;BDev=BDev/B UUID;BProd=BProd/B UUID");
}

TEST_F(SQLiteDatabase, GivesAnAppendedRowItsIdentityAndKeepsEveryText) {
  std::string Long(3'000'000, 'x');
  const std::string Odd = std::string("a\0b", 3) + "\r\n'\"; drop table Entities; -- \xC3\xA9 \xF0\x9F\x98\x80";
  const auto Query = FConnection->Open({"select * from dbo._iptblBeamSuperLog where idBeamSuperLog = 0", {}});
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
    EXPECT_FALSE(Query->Eof());
  }
  EXPECT_EQ(Query->FieldAsString("csource"), Odd);
  EXPECT_EQ(Query->FieldAsString("cResponse"), Long);
  EXPECT_EQ(Query->FieldAsInteger("iAgentID"), -1);
  EXPECT_EQ(Query->FieldAsString("cStatus"), "");
  EXPECT_EQ(Query->FieldAsInteger("cStatus"), 0);
  EXPECT_EQ(Query->FieldAsDateTime("cStatus"), 0.0);
  EXPECT_GT(Query->FieldAsDateTime("dLogged"), 45000.0);
}

TEST_F(SQLiteDatabase, ChangesTheEditedRowAlone) {
  for (const char* Customer : {"A", "B"}) FConnection->Execute(Save(Customer, "Dev", "old"));
  const auto Query =
      FConnection->Open({"select * from _iptblBeamSuperCustomerIDs where cUCID = :UCID and cEnvironment = :ENV",
                         {{"UCID", "B"}, {"Env", "Dev"}}});
  Query->Edit();
  Query->SetField("cClientSecret", std::string("new"));
  Query->SetField("dDateLastIssued", 45356.0);
  Query->Post();
  EXPECT_EQ(Query->FieldAsString("cClientSecret"), "new");
  EXPECT_EQ(Query->FieldAsDateTime("dDateLastIssued"), 45356.0);
  EXPECT_EQ(Value("select group_concat(cClientSecret) from (select * from _iptblBeamSuperCustomerIDs order by cUCID)"),
            "old,new");

  FConnection->Execute({"delete from _iptblBeamSuperCustomerIDs where cUCID = 'B'", {}});
  Query->Edit();
  Query->SetField("cPIN", std::string("1"));
  EXPECT_ERROR(Query->Post(), "changed or deleted");
}

TEST_F(SQLiteDatabase, RefusesMisuseOfAQuery) {
  const auto Query = FConnection->Open({"select * from Entities", {}});
  EXPECT_ERROR(Query->FieldAsString("cClientNumber"), "no row");
  EXPECT_ERROR(Query->FieldAsString("cOther"), "no column cOther");
  EXPECT_ERROR(Query->Edit(), "no row");
  EXPECT_ERROR(Query->SetField("cClientNumber", 1), "after Append or Edit");
  EXPECT_ERROR(Query->Post(), "Append or Edit first");
  Query->Append();
  EXPECT_ERROR(Query->SetField("cOther", 1), "no column cOther");
  EXPECT_ERROR(Query->Post(), "without any field");
  EXPECT_ERROR(FConnection->Open({"select 1 as a", {}})->Append(), "cannot be changed");
  EXPECT_ERROR(FConnection->Open({"delete from Entities", {}}), "has to be a select");
  EXPECT_ERROR(FConnection->Open({"begin", {}}), "has to be a select");
  EXPECT_ERROR(FConnection->Execute({"delete from Entities; delete from HostSettings", {}}), "One statement");
  EXPECT_ERROR(FConnection->Execute({"", {}}), "One statement");
  EXPECT_ERROR(FConnection->Execute({"delete from Entities where cClientNumber = @P", {}}), "\":Name\"");
}

TEST_F(SQLiteDatabase, ReadsDateTimesInBothFormsToTheMillisecond) {
  const struct {
    const char* Stored;
    TDateTime Read;
  } Cases[] = {
      {"'2024-03-05 12:00:00.000'", 45356.5},
      {"'2024-03-05T12:00'", 45356.5},
      {"'2024-03-05'", 45356.0},
      {"'2024-03-05 00:00:00.0009'", 45356.0 + 1 / 86'400'000.0},
      {"'1899-12-30 00:00:00.000'", 0.0},
      {"45356.5", 45356.5},
      {"45356", 45356.0},
      {"''", 0.0},
      {"null", 0.0},
  };
  for (const auto& Case : Cases)
    EXPECT_EQ(FConnection->Open({std::string("select ") + Case.Stored + " as d", {}})->FieldAsDateTime("d"), Case.Read)
        << Case.Stored;
  for (const char* Wrong :
       {"'2024-02-30'", "'2024-03-05 24:00'", "'2024-03-05 12:00:00.'", "'2024-03-05 12:00:00Z'", "'x'"})
    EXPECT_ERROR(FConnection->Open({std::string("select ") + Wrong + " as d", {}})->FieldAsDateTime("d"), "column d");
  for (const char* Wrong : {"'12 '", "''", "2147483648", "1.5"})
    EXPECT_ERROR(FConnection->Open({std::string("select ") + Wrong + " as i", {}})->FieldAsInteger("i"), "column i");

  EXPECT_EQ(FormatDateTime(45356.999999999), "2024-03-06 00:00:00.000");
  EXPECT_EQ(FormatDateTime(-0.25), "1899-12-29 18:00:00.000");
  for (const double Wrong : {std::numeric_limits<double>::quiet_NaN(), 1e300, 2958466.0, -693594.0})
    EXPECT_ERROR(FormatDateTime(Wrong), "outside the years");
  for (double Moment = 45356.0; Moment < 45357.0; Moment += 12'345.0 / 86'400'000.0)
    ASSERT_NEAR(*ParseDateTime(FormatDateTime(Moment)), Moment, 0.4 / 86'400'000.0);
}

TEST_F(SQLiteDatabase, LeavesNothingBehindWhenAStatementFails) {
  FConnection->Execute({"create trigger Fail before insert on HostSettings begin select raise(abort, 'no'); end", {}});
  TDatabaseSettings Settings(*FConnection);
  EXPECT_ERROR(Settings.SetCurrentSystemValue("Name", "s3cret", false), "insert of HostSettings");
  FConnection->Execute({"drop trigger Fail", {}});  // the connection is still good, and no transaction is open
  EXPECT_EQ(Settings.GetCurrentSystemValue("Name", "default", false), "default");
}

TEST_F(SQLiteDatabase, SettingsAreStoredAndReplaced) {
  TDatabaseSettings Settings(*FConnection);
  EXPECT_EQ(Settings.GetCurrentSystemValue("A", "none", false), "none");
  for (const char* Stored : {"one", "two", ""}) {
    Settings.SetCurrentSystemValue("A", Stored, false);
    Settings.SetCurrentSystemValue("B", "other", false);
    EXPECT_EQ(Settings.GetCurrentSystemValue("A", "none", false), Stored);
  }
  EXPECT_EQ(Settings.GetCurrentSystemValue("B", "none", false), "other");
}

TEST_F(SQLiteDatabase, NamesCodeStatementAndTableButNoValueInAnError) {
  FConnection->Execute({"insert into HostSettings values ('Name', 'x')", {}});
  try {
    FConnection->Execute({"insert into HostSettings values (:Name, :Value)", {{"Name", "Name"}, {"Value", "s3cret"}}});
    FAIL() << "a second row with the same key was accepted";
  } catch (const TDatabaseError& Error) {
    const std::string Text = Error.what();
    EXPECT_EQ(Error.Code(), SQLITE_CONSTRAINT_PRIMARYKEY);
    EXPECT_NE(Text.find("insert of HostSettings"), std::string::npos) << Text;
    EXPECT_EQ(Text.find("s3cret"), std::string::npos) << Text;
  }
  EXPECT_ERROR(FConnection->Open({"select * from Missing", {}}), "no such table: Missing");
  EXPECT_ERROR(FConnection->Open({"select \"misspelt\" from Entities", {}}), "no such column");
}

TEST_F(SQLiteDatabase, WaitsForALockAndThenSaysWhatToDo) {
  sqlite3* Other = nullptr;
  ASSERT_EQ(sqlite3_open(FFile.c_str(), &Other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(Other, "begin immediate", nullptr, nullptr, nullptr), SQLITE_OK);
  TDatabaseSettings Settings(*FConnection);
  EXPECT_ERROR(Settings.SetCurrentSystemValue("A", "1", false), "try again");
  EXPECT_EQ(Settings.GetCurrentSystemValue("A", "none", false), "none");  // readers are not kept waiting
  sqlite3_close(Other);
  Settings.SetCurrentSystemValue("A", "1", false);
  EXPECT_EQ(Settings.GetCurrentSystemValue("A", "none", false), "1");
}

TEST_F(SQLiteDatabase, FilesAreTheOwnersAlone) {
  FConnection->Execute({"insert into HostSettings values ('a', 'b')", {}});
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

TEST_F(SQLiteDatabase, SchemaCanBeMadeAgainAndIsChecked) {
  FConnection->Execute({"insert into HostSettings values ('a', 'b')", {}});
  CreateSchema(*FConnection, TDatabaseRole::Payroll);
  CheckSchema(*FConnection, TDatabaseRole::Payroll);
  CheckSchema(*FConnection, TDatabaseRole::Common);
  EXPECT_EQ(Value("select count(*) from HostSettings"), "1");
  FConnection->Execute({"alter table Entities drop column cClientNumber", {}});
  EXPECT_ERROR(CheckSchema(*FConnection, TDatabaseRole::Payroll), "lacks Entities.cClientNumber: run \"oxsuper init\"");
}

}  // namespace oxSuperAPI::tests
