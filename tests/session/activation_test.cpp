#include <gtest/gtest.h>

#include <array>
#include <functional>

#include "../support/test_host.h"

namespace oxSuperAPI {
namespace {

/// A company in the payroll database that was never activated, and a service that would activate it.
class TNewCompany : public TTestHost {
 public:
  explicit TNewCompany(const std::string& ClientNumber = "15500", const std::string& GatewayUser = "") {
    SetCustomerUCID();
    EntitiesTable().Add({{"cClientNumber", ClientNumber}, {"cSTPGatewayUsername", GatewayUser}});
    AnswerTokens("app");
    FakeHTTP.AnswerURL("/ping", 401, "");
    FakeHTTP.AnswerURL("/activate/", 200, NewPair);
  }
};

/// The message of an activation, behind "+" when it succeeded and "-" when not.
std::string Activate() {
  std::string Message = "old";
  const bool Result = Global().ActivateCustomer("Host.Button", Message);
  return (Result ? "+" : "-") + Message;
}

TEST(Activation, ActivatesAndStoresInBothDatabases) {
  TNewCompany Host;
  Host.FakeIdentity.Company = "Caf\xC3\xA9 \"Q\" Pty Ltd";
  EXPECT_EQ(Activate(), "+Customer Activated");
  EXPECT_EQ(Host.RequestNames(), (TLines{"ping", "token", "KEY-15500"}));
  EXPECT_EQ(Host.FakeHTTP.Requests[0].Headers, TLines{"authorization: Bearer "}) << "asked without credentials";
  EXPECT_EQ(Host.LastSent(),
            "Post /clearing-house/channel-security/activate/KEY-15500|authorization: Bearer app|"
            "{\"UUID\":\"KEY-15500\",\"CustomerNumber\":\"15500\","
            "\"CompanyName\":\"Caf\xC3\xA9 \\\"Q\\\" Pty Ltd\",\"PIN\":\"2468\"}");
  EXPECT_EQ(Host.LogColumn("cSource"), (TLines{"BeamSuperGlobal.ActivateCustomer", "BeamnSuperGlobal.GetAppToken",
                                               "BeamSuperGlobal.ActivateCustomer"}));
  EXPECT_EQ(Host.LogLines(),
            (TLines{"0 Using Super Clearing Dev Environment", "1 No Super Clearing credentials found in DB ",
                    "0 Activated Customer in Super Clearing",
                    "0 Super Clearing credentials have been saved to the common database"}));
  EXPECT_EQ(Host.StoredPairs(), TLines(2, "enc(new-id) enc(new-secret)"));
  for (const TFakeSide Side : BothSides) {
    TFakeTable& Table = Host.CredentialTable(Side);
    std::string Row;
    for (const char* Column : {"cUCID", "cUUID", "cCustomerNumber", "cPIN"}) Row += Table.Text(0, Column);
    EXPECT_EQ(Row, "enc(" + UCID + ")enc(KEY-15500)enc(15500)enc(2468)");
    EXPECT_EQ(std::get<TDateTime>(Table.Value(0, "dDateLastIssued")), Host.FakeSystem.Time);
  }
}

TEST(Activation, FindsTheCustomerNumber) {
  const std::array<const char*, 6> Cases[] = {
      {"15000", "50000", "CORP", "", "", "15000"},
      {"15999", "", "CORP", "", "", "15999"},
      {"14999", "50000", "CORP", "", "", "50000"},
      {"16000", "59999", "CORP", "", "", "59999"},
      {"49999", "60000", "CORP", "L15001", "15001C", ""},
      {"015500  ", "", "CORP", "", "", "15500"},
      {"15500x", "  50001 ", "CORP", "", "", "50001"},
      {"", "", "uk1", "L12345X", "98765C", "12345"},
      {"", "", "uk1", "L00012X", "98765C", "00012"},
      {"", "", "uk1", "L00000X", "98765C", "98765"},
      {"", "", "uk1", "Login", " abcdefg ", "abcde"},
      {"15500", "", "uk1", "L12345", "98765", "15500"},
      {"", "", "a.HostedKestrel", "L7X", "ab\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", "ab\xC3\xA9\xC3\xA9\xC3\xA9"},
      {"", "", "a.HostedKestrel", "L7", "98765", "7"}};
  for (const auto& [ClientNumber, GatewayUser, Domain, Login, Common, Expected] : Cases) {
    TNewCompany Host(ClientNumber, GatewayUser);
    Host.FakeIdentity.Domain = Domain;
    Host.FakeIdentity.LoginDatabase = Login;
    Host.FakeIdentity.CommonDatabase = Common;
    const std::string Outcome = Activate();
    if (*Expected) {
      EXPECT_EQ(Outcome, "+Customer Activated") << Expected;
      EXPECT_EQ(Credentials().CustomerNumber, Expected);
      EXPECT_EQ(Credentials().UUID, std::string("KEY-") + Expected);
    } else {
      EXPECT_EQ(Outcome, "-Unable to determine the Customer Number to activate the customer for Super Clearing");
      EXPECT_EQ(Host.LogLines().back(), "2 " + Outcome.substr(1));
      EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
    }
  }
}

TEST(Activation, TellsWhyItStopsAndStoresNothing) {
  const auto Answer = [](std::int32_t Status, const char* Body) {
    return [=](TNewCompany& Host) { Host.FakeHTTP.AnswerURL("/activate/", Status, Body); };
  };
  const std::tuple<std::function<void(TNewCompany&)>, std::string, std::size_t> Cases[] = {
      {[](auto& Host) { Host.FakeIdentity.Country = 3; }, "-Super Clearing is not enabled", 0},
      {[](auto& Host) { Host.AddCredentials({}); }, "-Already activated", 0},
      {[](auto& Host) { Host.FakeHTTP.AnswerURL("/ping", 200, "pong"); }, "+Customer is already activated", 1},
      {[](auto& Host) { Host.FakeIdentity.PIN = ""; }, "-" + NotValid + "PIN is Mandatory  ", 2},
      {Answer(400, R"({"message":"m","errorCode":"e","status":"s","clientId":"i","clientSecret":"x"})"),
       "-The Registration Code of the Common database has not been Pre-Registered with Beam  ", 3},
      {Answer(500, R"({"message":"m","errorCode":"e","status":"s"})"), "-m e s", 3},
      {Answer(200, R"({"message":"m","clientId":"i"})"), "-m  200", 3},
      {Answer(200, R"({"message":"m","ClientID":"i","ClientSecret":"s"})"), "-m  200", 3},
  };
  for (const auto& [Prepare, Outcome, Requests] : Cases) {
    SCOPED_TRACE(Outcome);
    TNewCompany Host;
    Prepare(Host);
    EXPECT_EQ(Activate(), Outcome);
    EXPECT_EQ(Host.FakeHTTP.Requests.size(), Requests);
    EXPECT_EQ(Host.CommonConnection.Statements.size(), 1u) << "loaded first, never saved";
    EXPECT_NE(Credentials().ClientID, "i");
  }
}

}  // namespace
}  // namespace oxSuperAPI
