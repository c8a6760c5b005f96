#include <gtest/gtest.h>

#include "../support/test_host.h"

namespace oxSuperAPI {
namespace {

const char NewPair[] = R"({"clientId":"new-id","clientSecret":"new-secret"})";

struct TOutcome {
  bool Result;
  std::string Message = "old";
};

TOutcome Activate() {
  TOutcome Outcome{};
  Outcome.Result = Global().ActivateCustomer("Host.Button", Outcome.Message);
  return Outcome;
}

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

TEST(Activation, ActivatesAndStoresInBothDatabases) {
  TNewCompany Host;
  Host.FakeIdentity.Company = "Caf\xC3\xA9 \"Q\" Pty Ltd";
  const TOutcome Outcome = Activate();
  EXPECT_TRUE(Outcome.Result);
  EXPECT_EQ(Outcome.Message, "Customer Activated");
  EXPECT_EQ(Host.RequestNames(), (TLines{"ping", "token", "KEY-15500"}));
  EXPECT_EQ(Host.FakeHTTP.Requests[0].Headers, TLines{"authorization: Bearer "}) << "asked without credentials";
  const TFakeRequest& Request = Host.FakeHTTP.LastRequest();
  EXPECT_EQ(Request.URL, "https://" OXSUPERAPI_API_HOST_DEV "/clearing-house/channel-security/activate/KEY-15500");
  EXPECT_EQ(Request.Headers, TLines{"authorization: Bearer app"});
  EXPECT_EQ(Request.Body,
            "{\"UUID\":\"KEY-15500\",\"CustomerNumber\":\"15500\","
            "\"CompanyName\":\"Caf\xC3\xA9 \\\"Q\\\" Pty Ltd\",\"PIN\":\"2468\"}");
  EXPECT_EQ(Host.LogColumn("cSource"), (TLines{"BeamSuperGlobal.ActivateCustomer", "BeamnSuperGlobal.GetAppToken",
                                               "BeamSuperGlobal.ActivateCustomer"}));
  EXPECT_EQ(Host.LogLines(),
            (TLines{"0 Using Super Clearing Dev Environment", "1 No Super Clearing credentials found in DB ",
                    "0 Activated Customer in Super Clearing",
                    "0 Super Clearing credentials have been saved to the common database"}));
  for (const TFakeSide Side : {TFakeSide::Common, TFakeSide::Payroll}) {
    TFakeTable& Table = Host.CredentialTable(Side);
    ASSERT_EQ(Table.Rows.size(), 1u);
    EXPECT_EQ(Table.Text(0, "cUCID"), TFakeCipher::Encipher(TFakeCredentials().UCID));
    EXPECT_EQ(Table.Text(0, "cUUID"), "enc(KEY-15500)");
    EXPECT_EQ(Table.Text(0, "cCustomerNumber"), "enc(15500)");
    EXPECT_EQ(Table.Text(0, "cPIN"), "enc(2468)");
    EXPECT_EQ(Table.Text(0, "cClientID"), "enc(new-id)");
    EXPECT_EQ(Table.Text(0, "cClientSecret"), "enc(new-secret)");
    EXPECT_EQ(std::get<TDateTime>(Table.Value(0, "dDateLastIssued")), Host.FakeSystem.Time);
  }
  EXPECT_EQ(Global().GetBeamSuperStatus(), bssActivated);
}

TEST(Activation, FindsTheCustomerNumber) {
  const struct {
    const char *ClientNumber, *GatewayUser, *Domain, *Login, *Common, *Expected;
  } Cases[] = {
      {"15000", "50000", "CORP", "", "", "15000"},
      {"15999", "", "CORP", "", "", "15999"},
      {"14999", "50000", "CORP", "", "", "50000"},
      {"16000", "59999", "CORP", "", "", "59999"},
      {"49999", "60000", "CORP", "L15001", "15001C", ""},
      {"015500  ", "", "CORP", "", "", "15500"},
      {"15500x", "  50001 ", "CORP", "", "", "50001"},
      {"", "", "CORP", "L15001", "15001C", ""},
      {"", "", "uk1", "L12345X", "98765C", "12345"},
      {"", "", "uk1", "L00012X", "98765C", "00012"},
      {"", "", "uk1", "L00000X", "98765C", "98765"},
      {"", "", "uk1", "Login", " abcdefg ", "abcde"},
      {"", "", "uk1", "L-0012", "ab", "ab"},
      {"", "", "uk1", "", "  ", ""},
      {"15500", "", "uk1", "L12345", "98765", "15500"},
      {"", "", "a.HostedKestrel", "L7X", "ab\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", "ab\xC3\xA9\xC3\xA9\xC3\xA9"},
      {"", "", "a.HostedKestrel", "L7", "98765", "7"},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(testing::PrintToString(std::vector{Case.ClientNumber, Case.GatewayUser, Case.Domain, Case.Login}));
    TNewCompany Host(Case.ClientNumber, Case.GatewayUser);
    Host.FakeIdentity.Domain = Case.Domain;
    Host.FakeIdentity.LoginDatabase = Case.Login;
    Host.FakeIdentity.CommonDatabase = Case.Common;
    const TOutcome Outcome = Activate();
    const bool Found = *Case.Expected != 0;
    EXPECT_EQ(Outcome.Result, Found);
    EXPECT_EQ(Host.PayrollConnection.Statements[1].SQL, "select cSTPGatewayUsername, cClientNumber from Entities");
    if (Found) {
      EXPECT_EQ(Credentials().CustomerNumber, Case.Expected);
      EXPECT_EQ(Credentials().UUID, std::string("KEY-") + Case.Expected);
    } else {
      const std::string Message = "Unable to determine the Customer Number to activate the customer for Super Clearing";
      EXPECT_EQ(Outcome.Message, Message);
      EXPECT_EQ(Host.LogLines().back(), "2 " + Message);
      EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
    }
  }
}

TEST(Activation, AsksNobodyWhenItIsPointless) {
  {
    TNewCompany Host;
    Host.AddCredentials({});
    const TOutcome Outcome = Activate();
    EXPECT_FALSE(Outcome.Result);
    EXPECT_EQ(Outcome.Message, "Already activated");
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
  }
  TNewCompany Host;
  Host.FakeIdentity.Country = 3;
  const TOutcome Outcome = Activate();
  EXPECT_FALSE(Outcome.Result);
  EXPECT_EQ(Outcome.Message, "Super Clearing is not enabled");
  EXPECT_EQ(Host.CommonConnection.Statements.size(), 1u) << "credentials are loaded first";
  EXPECT_EQ(Host.CommonConnection.Statements[0].Parameters[0].Value, TDBValue(std::string()));
  Host.HasCommonConnection = false;
  EXPECT_EQ(ErrorOf(Activate), LoadError);
}

TEST(Activation, StopsWhenTheHealthCheckSucceeds) {
  TNewCompany Host;
  Host.FakeHTTP.AnswerURL("/ping", 200, "pong");
  const TOutcome Outcome = Activate();
  EXPECT_TRUE(Outcome.Result);
  EXPECT_EQ(Outcome.Message, "Customer is already activated");
  EXPECT_EQ(Host.LogLines().back(), "0 Customer already Activated in Super Clearing");
  EXPECT_EQ(Host.RequestNames(), TLines{"ping"});
  EXPECT_TRUE(Host.CredentialTable(TFakeSide::Common).Rows.empty());
}

TEST(Activation, TellsWhyItFailedAndStoresNothing) {
  const struct {
    std::int32_t Status;
    const char *Body, *Message;
  } Cases[] = {
      {400, R"({"message":"m","errorCode":"e","status":"s","clientId":"i","clientSecret":"x"})",
       "The Registration Code of the Common database has not been Pre-Registered with Beam  "},
      {500, R"({"message":"m","errorCode":"e","status":"s"})", "m e s"},
      {500, "plain", "  "},
      {200, R"({"message":"m","clientId":"i"})", "m  200"},
      {200, R"({"message":"m","ClientID":"i","ClientSecret":"s"})", "m  200"},
  };
  for (const auto& Case : Cases) {
    TNewCompany Host;
    Host.FakeHTTP.AnswerURL("/activate/", Case.Status, Case.Body);
    const TOutcome Outcome = Activate();
    EXPECT_FALSE(Outcome.Result);
    EXPECT_EQ(Outcome.Message, Case.Message);
    EXPECT_FALSE(Credentials().GetActivated());
    EXPECT_TRUE(Host.CredentialTable(TFakeSide::Common).Rows.empty());
  }
  TNewCompany Host;
  Host.FakeIdentity.PIN = "";
  EXPECT_EQ(Activate().Message, "No API call made due to validation errors:\r\nPIN is Mandatory  ");
}

TEST(Activation, PassesErrorsOfTheHostOn) {
  TNewCompany Host;
  Host.FakeHTTP.AnswerURL("/ping", {.Fault = TFault::Standard("no route")});
  EXPECT_EQ(ErrorOf(Activate), ProgramError);
  Host.PayrollDatabase.DropTable("Entities");
  EXPECT_NE(ErrorOf(Activate).find("Entities"), std::string::npos);
  EXPECT_EQ(Host.PayrollConnection.OpenQueries(), 0);
}

}  // namespace
}  // namespace oxSuperAPI
