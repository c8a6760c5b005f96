#include "../support/tds_server.h"
#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/db_odbc.h"
#include "save_statement.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {

namespace {

const std::string Secret = "s3cret";
const std::string Smile = "\xF0\x9F\x98\x80";  // one character, two units
constexpr TODBCOptions Patience{.LoginTimeout = std::chrono::seconds(1), .QueryTimeout = std::chrono::seconds(1)};

/// The real driver against a server that speaks its protocol.
class FreeTDS : public testing::Test {
 protected:
  void SetUp() override {
    const TTDSServer Server({});
    try {
      TODBCConnection(Server.ConnectionString(), Patience);
    } catch (const TDatabaseError& Error) {
      if (!Error.SQLState().starts_with("IM") && Error.SQLState() != "01000") throw;
      GTEST_SKIP() << "the driver libtdsodbc.so is not installed (package tdsodbc): " << Error.what();
    }
  }
};

std::string Joined(const std::vector<std::string>& Texts) {
  std::string Result;
  for (const std::string& Text : Texts) Result.append(Result.empty() ? "" : "|").append(Text);
  return Result;
}

}  // namespace

TEST_F(FreeTDS, BindsTheSaveStatementInTheOrderOfItsPlaces) {
  TTDSServer Server({});
  TDBStatement Save{std::string(SaveStatement), {}};
  for (const char* Name : {"Environment", "Env", "UCID", "ClientID", "ClientSecret", "UUID", "CustomerNumber", "PIN",
                           "CompanyName", "Token", "iUCID", "iClientID", "iClientSecret", "iUUID", "iCustomerNumber",
                           "iPIN", "iCompanyName", "iToken", "iEnvironment"})
    Save.Parameters.push_back({Name, std::string(Name)});  // each value is the name of its place
  Save.Parameters.push_back({"DateLastIssued", 45351.9999999884});
  Save.Parameters.push_back({"iDateLastIssued", -693593.0});
  TODBCConnection(Server.ConnectionString(), Patience).Execute(Save);

  const std::vector<TTDSStatement> Sent = Server.Statements("if exists");
  ASSERT_EQ(Sent.size(), 1U);
  std::string Values = Joined(Sent[0].Parameters);
  for (std::size_t At = 0; (At = Values.find("nvarchar(4000)=")) != std::string::npos;) Values.erase(At, 15);
  EXPECT_EQ(Values,
            "UCID|Env|ClientID|ClientSecret|UUID|CustomerNumber|PIN|CompanyName|Token|Environment|"
            "datetime2(7)=2024-02-29 23:59:59.9990000|UCID|Env|iUCID|iClientID|iClientSecret|iUUID|iCustomerNumber|"
            "iPIN|iCompanyName|iToken|iEnvironment|0001-01-01 00:00:00.000");  // FreeTDS would send another day
}

TEST_F(FreeTDS, PostsAndReadsEveryText) {
  const std::string Ordinary = std::string(3998, 'x') + Smile, Long = "x" + Ordinary,
                    Longest = std::string(700'001, 'y') + Smile + std::string(2'000, 'z');
  TTDSServer Server(
      {{"idBeamSuperLog = 0", TDSRows({"idBeamSuperLog int", "a nvarchar(4000)", "b nvarchar(max)", "c int",
                                       "d nvarchar(9)", "e nvarchar(9)", "dLogged datetime2(3)"},
                                      {})},
       {"insert into", TDSRows({"idBeamSuperLog int", "dLogged datetime2(3)"}, {{"7", "2024-02-29 23:59:59.999"}})},
       {"select Texts", TDSRows({"a nvarchar(max)", "b nvarchar(9)", "c nvarchar(9)", "d datetime2(3)"},
                                {{Longest, "", std::nullopt, "0001-01-01 00:00:00.000"}, {"", Smile, "x", {}}})}});
  TODBCConnection Connection(Server.ConnectionString(), Patience);
  const auto Log = Connection.Open({"select * from dbo._iptblBeamSuperLog where idBeamSuperLog = 0", {}});
  Log->Append();
  Log->SetField("a", Ordinary);
  Log->SetField("b", Long);
  Log->SetField("c", -1);
  Log->SetField("d", std::string());
  Log->SetField("e", TDBValue());
  Log->Post();
  EXPECT_EQ(Log->FieldAsInteger("idBeamSuperLog"), 7);
  EXPECT_EQ(Log->FieldAsString("dLogged"), "2024-02-29 23:59:59.999");
  EXPECT_EQ(Joined(Server.Statements("insert into").at(0).Parameters),
            "nvarchar(4000)=" + Ordinary + "|nvarchar(max)=" + Long + "|int(4)=-1|nvarchar(4000)=|nvarchar(4000)=NULL");

  const auto Texts = Connection.OpenRows({"select Texts", {}});
  EXPECT_EQ(Texts->FieldAsString("a"), Longest);
  EXPECT_EQ(Texts->FieldAsString("b") + Texts->FieldAsString("c"), "");
  EXPECT_EQ(Texts->FieldAsDateTime("d"), -693593.0);
  Texts->Next();
  EXPECT_EQ(Texts->FieldAsString("a") + Texts->FieldAsString("b") + Texts->FieldAsString("c"), Smile + "x");
}

TEST_F(FreeTDS, NeverRunsTwiceWhatMayHaveRun) {
  struct TCase {
    std::string Name;
    TTDSStep Step;
    std::string Error;  ///< a piece of it; "" when the statement succeeds
    int Times = 1;      ///< that the server gets the statement
    int Connections = 1;
  };
  const std::string Duplicate = "The duplicate key value is (" + Secret + ").",
                    Cut = "Truncated value: '" + Secret + "'.";
  const auto Late = TDSRows({"id int"}, {{"1"}}) + TDSCount(1) + TDSError(50000, 16, Secret);
  const auto Victim = TDSError(1205, 13, "deadlock victim");
  using enum TTDSFault;
  const TCase Cases[] = {
      {"late error", {"insert", Late}, "42000 50000"},
      {"same key", {"insert", TDSError(2627, 14, Duplicate)}, "23000 2627 in insert of T"},
      {"too long", {"insert", TDSError(2628, 16, Cut)}, "2628"},
      {"no answer", {"insert", {}, NeverAnswers}, "HYT00"},
      {"lost before the answer", {"insert", {}, EndsBeforeAnswer}, "the connection was lost"},
      {"lost in the answer", {"insert", Late, EndsInAnswer}, "the connection was lost"},
      {"lost after the answer", {"insert", {}, EndsAfterAnswer}, "look before you repeat it"},
      {"lost in commit", {"commit", {}, EndsBeforeAnswer}, "look before you repeat it"},
      {"no answer to commit", {"commit", {}, NeverAnswers}, "look before you repeat it"},
      {"error in commit", {"commit", TDSError(3930, 16, Secret)}, "look before you repeat it"},
      {"lost in begin", {"begin", {}, EndsBeforeAnswer}, "the connection was lost", 0},
      {"dead while idle", {"select 1", TDSCount(1), EndsBeforeAnswer, 1}, "", 1, 2},
      {"answers another question", {"select 1", TDSRows({"n int"}, {{"9"}}), None, 1}, "", 1, 2},
      {"victim of a deadlock", {"insert", Victim, None, 1}, "", 2},
      {"victim twice", {"insert", Victim, None, 2}, "1205", 2},
  };
  for (const TCase& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TTDSServer Server({Case.Step});
    TODBCConnection Connection(Server.ConnectionString(), Patience);
    const std::string Error = ErrorOf([&] {
      Connection.Execute({"insert into T values (:Value)", {{"Value", Secret}}});
    });
    EXPECT_TRUE(Case.Error.empty() ? Error.empty() : Holds(Error, Case.Error)) << Error;
    EXPECT_FALSE(Holds(Error, Secret)) << Error;
    EXPECT_EQ(Server.Statements("insert").size(), static_cast<std::size_t>(Case.Times));
    EXPECT_EQ(Server.Connections, Case.Connections);
  }
}

TEST_F(FreeTDS, SaysWhyItIsNotLetIn) {
  const TTDSServer Server({{"login", TDSError(18456, 14, "Login failed for user 'someone'.")}});
  const std::string Error = ErrorOf([&] { TODBCConnection(Server.ConnectionString(), Patience); });
  EXPECT_TRUE(Holds(Error, "18456") && Holds(Error, "'someone'") && !Holds(Error, Secret)) << Error;
}

}  // namespace oxSuperAPI::tests
