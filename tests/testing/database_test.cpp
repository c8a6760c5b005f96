#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/session/uBeamSaveStatement.h"

namespace oxSuperAPI {
namespace {

TDBStatement Save(const std::string& UCID, const std::string& ClientID) {
  TDBStatement Result{std::string(SaveCredentialsSQL), {{"UCID", UCID}, {"Env", "Dev"}}};
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

TEST(FakeDatabase, InsertsOrUpdatesEveryRowAsTheSaveStatementSays) {
  TFakeHost Host(TFakeRegistration::Leave);
  for (const auto& [UCID, ClientID] : {std::pair{"one", "first"}, {"two", "second"}, {"two", "third"}})
    Host.CommonConnection.Execute(Save(UCID, ClientID));
  const TFakeTable& Table = Host.CredentialTable(TFakeSide::Common);
  ASSERT_EQ(Table.Rows.size(), 2u);
  for (const std::size_t Row : {0u, 1u}) {  // the update has no where clause
    EXPECT_EQ(Table.Text(Row, "cclientid") + Table.Text(Row, "cUUId"), "thirdUUID");
    EXPECT_EQ(std::get<TDateTime>(Table.Value(Row, "dDateLastIssued")), 2.5);
  }
  EXPECT_EQ(Table.Text(0, "cUCID") + Table.Text(1, "cUCID"), "onetwo");
  EXPECT_TRUE(Host.CredentialTable(TFakeSide::Payroll).Rows.empty());
}

TEST(FakeDatabase, EditsTheCurrentRowAndNoticesAForeignChange) {
  TFakeHost Host(TFakeRegistration::Leave);
  Host.AddCredentials({.UCID = "a"}, TFakeSide::Common);
  Host.AddCredentials({.UCID = "b"}, TFakeSide::Common);
  TFakeTable& Table = Host.CredentialTable(TFakeSide::Common);
  const auto Query = Host.CommonConnection.Open(
      {"select * from _iptblBeamSuperCustomerIDs where cUCID = :UCID", {{"UCID", "enc(b)"}}});
  EXPECT_EQ(Host.CommonConnection.OpenQueries(), 1);
  Query->Edit();
  Query->SetField("cPIN", "1");
  EXPECT_EQ(Table.Text(1, "cPIN"), "enc(2468)") << "not before Post";
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

}  // namespace
}  // namespace oxSuperAPI
