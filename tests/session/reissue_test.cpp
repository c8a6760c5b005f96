#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/foundation/uBeamDates.h"

namespace oxSuperAPI {
namespace {

/// 2024-08-31 10:00, a customer whose pair was issued half a year before midnight and then some seconds earlier.
class TReissueHost : public TTestHost {
 public:
  explicit TReissueHost(double SecondsEarlier = 1) {
    FakeSystem.Time = EncodeDate(2024, 8, 31) + 10 / 24.0;
    AddActivatedCustomer({.ClientID = "old-id",
                          .ClientSecret = "old-secret",
                          .DateLastIssued = EncodeDate(2024, 2, 29) - SecondsEarlier / 86400});
    AnswerTokens();
    FakeHTTP.AnswerURL("/reissue/", 200, NewPair);
  }
};

const TLines NewPairs(2, "enc(new-id) enc(new-secret)");

TEST(LoadReissues, StrictlyAfterSixMonthsBackFromMidnight) {
  for (const auto& [SecondsEarlier, Reissues] : {std::pair{-43200, 0u}, {0, 0u}, {1, 1u}, {86400, 1u}}) {
    TReissueHost Host(SecondsEarlier);
    Credentials();
    EXPECT_EQ(Host.FakeHTTP.CountOf("/reissue/"), Reissues) << SecondsEarlier;
  }
}

TEST(LoadReissues, WithTheOldPairThenStoresTheNewOne) {
  TReissueHost Host;
  ASSERT_NE(Global().GetCustomerToken(), nullptr) << "which loads first, without recursion";
  EXPECT_EQ(Credentials().ClientID + Credentials().ClientSecret, "new-idnew-secret");
  EXPECT_EQ(Credentials().DateLastIssued, Host.FakeSystem.Time);
  EXPECT_EQ(Credentials().AcknowledgementToken, "acknowledged");
  EXPECT_EQ(
      Host.LogLines(),
      (TLines{"0 Using Super Clearing Dev Environment", "0 Super Clearing credentials have been reissued",
              "0 Super Clearing credentials have been saved to the common database",
              "0 Reissued Super Clearing credentials", "0 Super Clearing credentials last reissued at 2024-08-31 10:00",
              "0 Loaded Super Clearing credentials from DB "}));
  EXPECT_EQ(Host.RequestNames(), (TLines{"token", "KEY-15001", "token"}));
  EXPECT_EQ(Host.FakeHTTP.Requests[0].Body, "client_id=old-id&client_secret=old-secret&grant_type=client_credentials");
  EXPECT_EQ(Host.FakeHTTP.Requests[2].Body, "client_id=new-id&client_secret=new-secret&grant_type=client_credentials");
  EXPECT_EQ(Host.LogColumn("cSource"), (TLines{"GetCustomerToken", "TBeamSuperCredentials.Load", "GetCustomerToken"}));
  EXPECT_EQ(Host.StoredPairs(), NewPairs);
}

TEST(LoadReissues, AndWritesBothCopiesOnceWhenOneWasMissing) {
  for (const TFakeSide Missing : BothSides) {
    TReissueHost Host;
    Host.CredentialTable(Missing).Rows.clear();
    Credentials();
    EXPECT_EQ(Host.StoredPairs(), NewPairs);
    EXPECT_TRUE(Host.CommonConnection.FieldsSet.empty());
  }
}

TEST(LoadReissues, AndKeepsTheOldPairWhenTheServiceRefuses) {
  const std::pair<std::int32_t, std::string> Cases[] = {
      {400, NewPair}, {500, "down"}, {201, NewPair}, {200, "{}"}, {200, R"({"clientId":"x"})"}};
  for (const auto& [Status, Body] : Cases) {
    SCOPED_TRACE(std::to_string(Status) + Body);
    TReissueHost Host;
    Host.FakeHTTP.AnswerURL("/reissue/", Status, Body);
    EXPECT_EQ(Credentials().ClientID + Credentials().ClientSecret, "old-idold-secret");
    EXPECT_EQ(Host.LogLines()[1], "1 Unable to Reissue Super Clearing credentials at this time");
    EXPECT_EQ(Host.LogLines()[2], "0 Super Clearing credentials last reissued at 2024-02-28 23:59");
    EXPECT_EQ(Host.StoredPairs(), TLines(2, "enc(old-id) enc(old-secret)"));
    EXPECT_EQ(Host.FakeHTTP.CountOf("/reissue/"), 1u);
  }
}

TEST(LoadReissues, OnlyForTheProcessWideObjectAndFailsWhenTheReissueRaises) {
  TReissueHost Host;
  EXPECT_EQ(TBeamSuperCredentials(UCID).ClientID, "old-id");
  EXPECT_EQ(Host.LogLines()[1], "1 Unable to Reissue Super Clearing credentials at this time");
  EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
  Host.FakeHTTP.AnswerURL("/reissue/", {.Fault = TFault::Standard("connection reset")});
  EXPECT_EQ(ErrorOf(Credentials), LoadError);
}

TEST(ReissueCredentials, RefusesWithAReason) {
  const std::string Expired = "The Customer credentials have already expired. The Customer must be re-registered";
  const std::tuple<std::uint8_t, TFakeCredentials, std::string> Cases[] = {
      {6, {}, "Super Clearing is not enabled"},
      {5, {.ClientSecret = ""}, "Customer has not been activated"},
      {5, {.DateLastIssued = 45356.5 - 25 * 30.5}, Expired},
      {5, {.DateLastIssued = 0}, Expired}};
  for (const auto& [Country, Customer, Expected] : Cases) {
    TTestHost Host;
    Host.FakeIdentity.Country = Country;
    Host.AddActivatedCustomer(Customer);
    std::string Message = "old";
    EXPECT_FALSE(Global().ReissueCredentials("Source", Message));
    EXPECT_EQ(Message, Expected);
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
  }
}

TEST(ReissueCredentials, SendsTheStoredCustomerUnderTheCallersName) {
  TActivatedHost Host({.UUID = "U", .CustomerNumber = "N", .PIN = "P", .CompanyName = "C"});
  std::string Message;
  Host.FakeHTTP.AnswerURL("/reissue/", 500, R"({"message":"try later","errorCode":"E","status":"S"})");
  EXPECT_FALSE(Global().ReissueCredentials("Host.Form", Message));
  EXPECT_EQ(Message, "try later");
  Host.FakeHTTP.AnswerURL("/reissue/", 200, NewPair);
  EXPECT_TRUE(Global().ReissueCredentials("Host.Form", Message));
  EXPECT_EQ(Message, "Credentials Reissued");
  EXPECT_EQ(Host.LastSent(),
            "Post /clearing-house/channel-security/reissue/U|authorization: Bearer abc|"
            R"({"UUID":"U","CustomerNumber":"N","CompanyName":"C","PIN":"P"})");
  EXPECT_EQ(Host.LogColumn("cSource").back(), "Host.Form");
}

}  // namespace
}  // namespace oxSuperAPI
