#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/foundation/uBeamDates.h"

namespace oxSuperAPI {
namespace {

const char NewPair[] = R"({"clientId":"new-id","clientSecret":"new-secret"})";

/// 2024-08-31 10:00, a customer whose pair was issued half a year before midnight and then some seconds earlier.
class TReissueHost : public TTestHost {
 public:
  explicit TReissueHost(double SecondsEarlier = 1) {
    FakeSystem.Time = EncodeDate(2024, 8, 31) + 10 / 24.0;
    AddActivatedCustomer({.ClientID = "old-id",
                          .ClientSecret = "old-secret",
                          .DateLastIssued = EncodeDate(2024, 2, 29) - SecondsEarlier / 86400});
    AnswerTokens();
  }

  /// The host log behind the line about the environment.
  TLines Lines() const {
    const TLines All = LogLines();
    return {All.begin() + 1, All.end()};
  }
};

TEST(LoadReissues, StrictlyAfterSixMonthsBackFromMidnight) {
  const struct {
    double SecondsEarlier;
    std::size_t Reissues;
  } Cases[] = {{-43200, 0}, {0, 0}, {1, 1}, {86400, 1}};
  for (const auto& Case : Cases) {
    TReissueHost Host(Case.SecondsEarlier);
    Host.FakeHTTP.AnswerURL("/reissue/", 200, NewPair);
    Credentials();
    EXPECT_EQ(Host.FakeHTTP.CountOf("/reissue/"), Case.Reissues) << Case.SecondsEarlier;
  }
}

TEST(LoadReissues, WithTheOldPairThenStoresTheNewOne) {
  TReissueHost Host;
  Host.FakeHTTP.AnswerURL("/reissue/", 200, NewPair);
  EXPECT_EQ(Credentials().ClientID, "new-id");
  EXPECT_EQ(Credentials().ClientSecret, "new-secret");
  EXPECT_EQ(Credentials().DateLastIssued, Host.FakeSystem.Time);
  EXPECT_EQ(Host.Lines(), (TLines{"0 Super Clearing credentials have been reissued",
                                  "0 Super Clearing credentials have been saved to the common database",
                                  "0 Reissued Super Clearing credentials",
                                  "0 Super Clearing credentials last reissued at 2024-08-31 10:00",
                                  "0 Loaded Super Clearing credentials from DB "}));
  EXPECT_EQ(Host.RequestNames(), (TLines{"token", "KEY-15001"}));
  EXPECT_EQ(Host.FakeHTTP.Requests[0].Body, "client_id=old-id&client_secret=old-secret&grant_type=client_credentials");
  EXPECT_EQ(Host.LogColumn("cSource"), (TLines{"GetCustomerToken", "TBeamSuperCredentials.Load"}));
  for (const TFakeSide Side : {TFakeSide::Common, TFakeSide::Payroll}) {
    ASSERT_EQ(Host.CredentialTable(Side).Rows.size(), 1u);
    EXPECT_EQ(Host.CredentialTable(Side).Text(0, "cClientID"), "enc(new-id)");
    EXPECT_EQ(Host.CredentialTable(Side).Text(0, "cClientSecret"), "enc(new-secret)");
  }
}

TEST(LoadReissues, OnBehalfOfTheFirstTokenWithoutRecursion) {
  TReissueHost Host;
  Host.FakeHTTP.AnswerURL("/reissue/", 200, NewPair);
  ASSERT_NE(Global().GetCustomerToken(), nullptr);
  EXPECT_EQ(Host.RequestNames(), (TLines{"token", "KEY-15001", "token"}));
  EXPECT_EQ(Host.FakeHTTP.Requests[0].Body.substr(0, 16), "client_id=old-id");
  EXPECT_EQ(Host.FakeHTTP.Requests[2].Body.substr(0, 16), "client_id=new-id");
}

TEST(LoadReissues, AndWritesBothCopiesOnceWhenOneWasMissing) {
  for (const TFakeSide Missing : {TFakeSide::Common, TFakeSide::Payroll}) {
    TReissueHost Host;
    Host.CredentialTable(Missing).Rows.clear();
    Host.FakeHTTP.AnswerURL("/reissue/", 200, NewPair);
    Credentials();
    for (const TFakeSide Side : {TFakeSide::Common, TFakeSide::Payroll}) {
      ASSERT_EQ(Host.CredentialTable(Side).Rows.size(), 1u);
      EXPECT_EQ(Host.CredentialTable(Side).Text(0, "cClientID"), "enc(new-id)");
    }
    EXPECT_TRUE(Host.CommonConnection.FieldsSet.empty());
    EXPECT_EQ(Host.LogTable().Rows.size(), 2u);
  }
}

TEST(LoadReissues, AndKeepsTheOldPairWhenTheServiceRefuses) {
  const struct {
    int Status;
    const char* Body;
  } Cases[] = {{400, NewPair}, {500, "down"}, {201, NewPair}, {200, "{}"}, {200, R"({"clientId":"x"})"}};
  for (const auto& Case : Cases) {
    SCOPED_TRACE(std::to_string(Case.Status) + Case.Body);
    TReissueHost Host;
    Host.FakeHTTP.AnswerURL("/reissue/", Case.Status, Case.Body);
    EXPECT_EQ(Credentials().ClientID, "old-id");
    EXPECT_EQ(Credentials().ClientSecret, "old-secret");
    EXPECT_EQ(Host.Lines(), (TLines{"1 Unable to Reissue Super Clearing credentials at this time",
                                    "0 Super Clearing credentials last reissued at 2024-02-28 23:59",
                                    "0 Loaded Super Clearing credentials from DB "}));
    EXPECT_EQ(Host.CredentialTable(TFakeSide::Common).Text(0, "cClientID"), "enc(old-id)");
    EXPECT_EQ(Host.FakeHTTP.CountOf("/reissue/"), 1u);
  }
}

TEST(LoadReissues, AndFailsWhenTheReissueRaises) {
  TReissueHost Host;
  Host.FakeHTTP.AnswerURL("/reissue/", {.Fault = TFault::Standard("connection reset")});
  EXPECT_EQ(ErrorOf([] { Credentials(); }), LoadError);
  EXPECT_EQ(Host.Lines(), TLines{"2 Error loading Super Clearing credentials from DB " + TFakeCredentials().UCID});
  EXPECT_EQ(Host.FakeHTTP.CountOf("/reissue/"), 1u);
}

TEST(LoadReissues, OnlyForTheProcessWideObject) {
  TReissueHost Host;
  const TBeamSuperCredentials Other(TFakeCredentials().UCID);
  EXPECT_EQ(Other.ClientID, "old-id");
  EXPECT_EQ(Host.Lines()[0], "1 Unable to Reissue Super Clearing credentials at this time");
  EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
}

TEST(ReissueCredentials, RefusesWithAReason) {
  const struct {
    std::uint8_t Country;
    TFakeCredentials Customer;
    const char* Message;
  } Cases[] = {
      {6, {}, "Super Clearing is not enabled"},
      {5, {.ClientSecret = ""}, "Customer has not been activated"},
      {5,
       {.DateLastIssued = 45356.5 - 25 * 30.5},
       "The Customer credentials have already expired. The Customer must be re-registered"},
      {5, {.DateLastIssued = 0}, "The Customer credentials have already expired. The Customer must be re-registered"},
  };
  for (const auto& Case : Cases) {
    TTestHost Host;
    Host.FakeIdentity.Country = Case.Country;
    Host.AddActivatedCustomer(Case.Customer);
    std::string Message = "old";
    EXPECT_FALSE(Global().ReissueCredentials("Source", Message));
    EXPECT_EQ(Message, Case.Message);
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
  }
}

TEST(ReissueCredentials, SendsTheStoredCustomerUnderTheCallersName) {
  TTestHost Host;
  Host.AddActivatedCustomer({.UUID = "U", .CustomerNumber = "N", .PIN = "P", .CompanyName = "C"});
  Host.AnswerTokens("abc");
  std::string Message;
  Host.FakeHTTP.AnswerURL("/reissue/", 500, R"({"message":"try later","errorCode":"E","status":"S"})");
  EXPECT_FALSE(Global().ReissueCredentials("Host.Form", Message));
  EXPECT_EQ(Message, "try later");
  Host.FakeHTTP.AnswerURL("/reissue/", 200, NewPair);
  EXPECT_TRUE(Global().ReissueCredentials("Host.Form", Message));
  EXPECT_EQ(Message, "Credentials Reissued");
  const TFakeRequest& Request = Host.FakeHTTP.LastRequest();
  EXPECT_EQ(Request.URL, "https://" OXSUPERAPI_API_HOST_DEV "/clearing-house/channel-security/reissue/U");
  EXPECT_EQ(Request.Body, R"({"UUID":"U","CustomerNumber":"N","CompanyName":"C","PIN":"P"})");
  EXPECT_EQ(Request.Headers, TLines{"authorization: Bearer abc"});
  EXPECT_EQ(Host.LogColumn("cSource").back(), "Host.Form");
  EXPECT_EQ(Credentials().AcknowledgementToken, "acknowledged");
}

}  // namespace
}  // namespace oxSuperAPI
