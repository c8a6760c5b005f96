#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "oxSuperAPI/testing/uFakeHost.h"

namespace oxSuperAPI {
namespace {

using TNames = std::vector<std::string>;

// The library's statement, blanks and all: 741 characters.
const std::string SaveStatement =
    "if exists (select * from dbo._iptblBeamSuperCustomerIDs where cUCID = :UCID and cEnvironment = :Env)  update "
    "dbo._iptblBeamSuperCustomerIDs      set cClientID = :ClientID, cClientSecret = :ClientSecret, cUUId = :UUID, "
    "cCustomerNumber = :CustomerNumber, cPIN = :PIN,          cCompanyName = :CompanyName, cAcknowledgementToken = "
    ":Token, cEnvironment = :Environment, dDateLastIssued = :DateLastIssued else   insert into "
    "_iptblBeamSuperCustomerIDs (cUCID, cClientID, cClientSecret, cUUId, cCustomerNumber, cPIN,              "
    "cCompanyName, cAcknowledgementToken, cEnvironment, dDateLastIssued)     values (:iUCID, :iClientID, "
    ":iClientSecret, :iUUID, :iCustomerNumber, :iPIN,               :iCompanyName, :iToken, :iEnvironment, "
    ":iDateLastIssued)";

TDBStatement Save(const std::string& UCID, const std::string& ClientID) {
  TDBStatement Result{SaveStatement, {{"UCID", UCID}, {"Env", "Dev"}}};
  for (const std::string Prefix : {"", "i"})
    for (const std::string Name : {"ClientID", "ClientSecret", "UUID", "CustomerNumber", "PIN", "CompanyName", "Token"})
      Result.Parameters.push_back({Prefix + Name, Name == "ClientID" ? ClientID : Prefix + Name});
  Result.Parameters.push_back({"Environment", "Dev"});
  Result.Parameters.push_back({"DateLastIssued", 2.5});
  Result.Parameters.push_back({"iUCID", UCID});
  Result.Parameters.push_back({"iEnvironment", "Dev"});
  Result.Parameters.push_back({"iDateLastIssued", 1.5});
  return Result;
}

template <class Action>
std::string ErrorOf(Action Run) {
  try {
    Run();
  } catch (const TBeamError& Error) {
    return Error.what();
  }
  return "no error";
}

TEST(FakeDatabase, InsertsOrUpdatesEveryRowAsTheSaveStatementSays) {
  ASSERT_EQ(SaveStatement.size(), 741u);
  TFakeHost Host(TFakeRegistration::Leave);
  TFakeTable& Table = Host.CredentialTable(TFakeSide::Common);
  Host.CommonConnection.Execute(Save("one", "first"));
  Host.CommonConnection.Execute(Save("two", "second"));
  ASSERT_EQ(Table.Rows.size(), 2u);
  EXPECT_EQ(Table.Text(0, "cclientid"), "first");
  EXPECT_EQ(Table.Text(1, "cUUId"), "iUUID");
  EXPECT_EQ(std::get<TDateTime>(Table.Value(1, "dDateLastIssued")), 1.5);

  Host.CommonConnection.Execute(Save("two", "third"));  // its update has no where clause
  ASSERT_EQ(Table.Rows.size(), 2u);
  for (std::size_t Row = 0; Row < 2; ++Row) {
    EXPECT_EQ(Table.Text(Row, "cClientID"), "third");
    EXPECT_EQ(Table.Text(Row, "cUUID"), "UUID");
    EXPECT_EQ(std::get<TDateTime>(Table.Value(Row, "dDateLastIssued")), 2.5);
  }
  EXPECT_EQ(Table.Text(0, "cUCID"), "one");
  EXPECT_TRUE(Host.CredentialTable(TFakeSide::Payroll).Rows.empty());
  EXPECT_EQ(Host.CommonConnection.Statements.size(), 3u);
}

TEST(FakeDatabase, AppendsALogRowAndGivesItsIdentity) {
  TFakeHost Host(TFakeRegistration::Leave);
  Host.LogTable().NextIdentity = 41;
  for (const std::int32_t Expected : {41, 42}) {
    const auto Query =
        Host.PayrollConnection.Open({"select * from dbo._iptblBeamSuperLog where idBeamSuperLog = 0", {}});
    EXPECT_TRUE(Query->Eof());
    Query->Append();
    Query->SetField("cSource", "source");
    Query->SetField("iAgentID", -1);
    EXPECT_EQ(Host.LogTable().Rows.size(), static_cast<std::size_t>(Expected - 41)) << "not before Post";
    Query->Post();
    EXPECT_EQ(Query->FieldAsInteger("idBeamSuperLog"), Expected);
    EXPECT_EQ(Query->FieldAsString("cURL"), "") << "NULL";
    EXPECT_FALSE(Query->Eof());
    EXPECT_EQ(Host.PayrollConnection.OpenQueries(), 1);
  }
  EXPECT_EQ(Host.PayrollConnection.OpenQueries(), 0);
  EXPECT_EQ(Host.LogTable().Text(1, "iAgentID"), "-1");
  EXPECT_EQ(Host.PayrollConnection.FieldsSet.size(), 4u);
}

TEST(FakeDatabase, EditsTheCurrentRowAndNoticesAForeignChange) {
  TFakeHost Host(TFakeRegistration::Leave);
  Host.AddCredentials({.UCID = "a"}, TFakeSide::Common);
  Host.AddCredentials({.UCID = "b"}, TFakeSide::Common);
  TFakeTable& Table = Host.CredentialTable(TFakeSide::Common);
  const auto Query = Host.CommonConnection.Open(
      {"select * from _iptblBeamSuperCustomerIDs where cUCID = :UCID", {{"UCID", "enc(b)"}}});
  Query->Edit();
  Query->SetField("cPIN", "1");
  Query->Post();
  EXPECT_EQ(Table.Text(0, "cPIN"), "enc(2468)");
  EXPECT_EQ(Table.Text(1, "cPIN"), "1");

  Query->Edit();
  Query->SetField("cPIN", "2");
  Table.Rows[1].at(Table.ColumnIndex("cCompanyName")) = "changed meanwhile";
  EXPECT_NE(ErrorOf([&] { Query->Post(); }).find("Row cannot be located"), std::string::npos);
  EXPECT_EQ(Table.Text(1, "cPIN"), "1");
}

TEST(FakeDatabase, RefusesWhatAServerWouldRefuse) {
  TFakeDatabase Database;
  Database
      .AddTable("T",
                {{"id", TFakeColumnKind::Identity}, {"a", TFakeColumnKind::Text, 3}, {"n", TFakeColumnKind::Integer}},
                {"a"})
      .Add({{"a", "x"}, {"n", 1}});
  Database.Table("T").Add({{"a", "y"}, {"n", 2}});
  const std::tuple<const char*, std::vector<TDBParameter>, const char*> Cases[] = {
      {"update X set a = 1", {}, "Invalid object name 'X'"},
      {"update T set b = 1", {}, "Invalid column name 'b'"},
      {"update T set id = 1", {}, "identity"},
      {"update T set a = 'z'", {}, "unique key"},
      {"insert into T (a) values ('y  ')", {}, "unique key"},
      {"insert into T (a) values ('wide')", {}, "truncated"},
      {"insert into T (a) values ('\U0001F600\U0001F600')", {}, "truncated"},
      {"insert into T (n) values ('one')", {}, "not an integer"},
      {"insert into T (a, n) values ('q')", {}, "2 columns, but 1 values"},
      {"update T set a = :A", {}, ":A has no value"},
      {"update T set a = :A", {{"a", "q"}}, "no parameter :a"},
      {"update T set a = 'open", {}, "unclosed"},
      {"update T set a = 1 1", {}, "at character 20: expected the end"},
      {"delete from T", {}, "expected select, update"},
      {"select * from T", {}, "opened, not executed"},
      {"", {}, "expected select"}};
  const auto Before = Database.Table("T").Rows;
  for (const auto& [SQL, Parameters, Expected] : Cases) {
    const std::string Error = ErrorOf([&, Statement = TDBStatement{SQL, Parameters}] { Database.Execute(Statement); });
    EXPECT_NE(Error.find(Expected), std::string::npos) << SQL << ": " << Error;
  }
  EXPECT_EQ(Database.Table("T").Rows, Before) << "what failed changed nothing";
  EXPECT_EQ(Database.Table("T").NextIdentity, 3);

  Database.Execute({"IF EXISTS (SELECT a FROM dbo.t WHERE n = 7) UPDATE T SET a = 'no';", {}});
  Database.Execute({"update DBO.T set n = 5, a = n where 'y' = A and N = 2", {}});
  EXPECT_EQ(Database.Table("T").Text(0, "a"), "x");
  EXPECT_EQ(Database.Table("T").Text(1, "a"), "2") << "assignments see the row as it was";
  Database.DropTable("dbo.T");
  EXPECT_EQ(ErrorOf([&] { Database.Table("T"); }), "Invalid object name 'T'");
}

TEST(FakeDatabase, FailsOnDemandAtEveryOperation) {
  for (const std::string& Operation : TNames{"Open", "Execute", "Eof", "FieldAsString", "FieldAsInteger",
                                             "FieldAsDateTime", "Append", "Edit", "SetField", "Post"}) {
    TFakeHost Host(TFakeRegistration::Leave);
    Host.LogTable().Add({{"iAgentID", 1}});
    Host.PayrollConnection.Faults.FailOn(Operation, TFault::NonStandard(7));
    try {
      Host.PayrollConnection.Execute({"update _iptblBeamSuperLog set cStatus = '200'", {}});
      const auto Query = Host.PayrollConnection.Open({"select * from _iptblBeamSuperLog", {}});
      Query->Eof();
      Query->FieldAsString("cURL");
      Query->FieldAsInteger("iAgentID");
      Query->FieldAsDateTime("iAgentID");
      Query->Edit();
      Query->SetField("cURL", "u");
      Query->Post();
      Query->Append();
      ADD_FAILURE() << Operation << " did not fail";
    } catch (int Value) {
      EXPECT_EQ(Value, 7);
    }
    EXPECT_EQ(Host.PayrollConnection.OpenQueries(), 0) << Operation;
    EXPECT_NO_THROW(Host.CommonConnection.Open({"select * from _iptblBeamSuperCustomerIDs", {}})->Eof());
  }
}

}  // namespace
}  // namespace oxSuperAPI
