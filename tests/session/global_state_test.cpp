#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/foundation/uBeamDates.h"

namespace oxSuperAPI {
namespace {

TEST(Environment, FollowsCountryDomainComputerAndForcedSetting) {
  const std::tuple<std::uint8_t, const char*, const char*, const char*, TBeamSuperEnvironment> Cases[] = {
      {4, "CORP", "PPP1", "PROD", bsenvIntgDev},
      {5, "uktest", "", "QA", bsenvAcptQa},
      {5, "UK", "", "PROD", bsenvProdLive},
      {5, "U", "", "QA", bsenvProdLive},
      {5, "\xC3\x9CKTEST", "", "QA", bsenvProdLive},
      {5, "my.HostedKestrel.net", "ppp1", "DEV", bsenvProdLive},
      {5, "my.HostedKestrel.net", "APPP1", "DEV", bsenvIntgDev},
      {5, "my.HostedKestrel.net", "APPP1", "QA", bsenvAcptQa},
      {5, "my.HostedKestrel.net", "APPP1", "qa", bsenvProdLive},
      {5, "UKHOSTEDKESTREL", "PPP1", "", bsenvIntgDev}};
  for (const auto& [Country, Domain, Computer, Forced, Environment] : Cases) {
    SCOPED_TRACE(std::string(Domain) + "/" + Computer + "/" + Forced);
    TTestHost Host;
    Host.FakeIdentity.Country = Country;
    Host.FakeIdentity.Domain = Domain;
    Host.FakeIdentity.Computer = Computer;
    Host.FakeIdentity.ForcedEnvironment = Forced;
    EXPECT_EQ(Global().GetBeamSuperEnvironment(), Environment);
    TLines Expected;
    if (Country == 5 && Environment == bsenvIntgDev) Expected = {"0 Using Super Clearing Dev Environment"};
    if (Environment == bsenvAcptQa) Expected = {"0 Using Super Clearing QA Environment"};
    EXPECT_EQ(Host.LogLines(), Expected);
  }
}

TEST(Environment, IsDecidedOnceButAForeignCountryStores) {
  TTestHost Host;
  Host.FakeIdentity.ForcedEnvironment = "QA";
  EXPECT_EQ(Global().GetBeamSuperEnvironment(), bsenvAcptQa);
  Host.FakeIdentity.ForcedEnvironment = "PROD";
  EXPECT_EQ(Global().GetBeamSuperEnvironment(), bsenvAcptQa);
  Host.FakeIdentity.Country = 1;
  EXPECT_EQ(Global().GetBeamSuperEnvironment(), bsenvIntgDev);
  Host.FakeIdentity.Country = 5;
  EXPECT_EQ(Global().GetBeamSuperEnvironment(), bsenvIntgDev) << "no longer undecided";
}

TEST(Status, ChangesStrictlyAfterItsBoundaries) {
  const double Second = 1 / 86400.0;
  const TDateTime Issued = EncodeDate(2024, 2, 29) + 0.5;  // a year later: 2025-02-28, a month before: 2025-01-28
  const std::tuple<TDateTime, TBeamSuperStatus, bool> Cases[] = {
      {EncodeDate(2025, 1, 28) + 0.5, bssActivated, true},
      {EncodeDate(2025, 1, 28) + 0.5 + Second, bssNearlyExpired, true},
      {EncodeDate(2025, 2, 28) + 0.5, bssNearlyExpired, true},
      {EncodeDate(2025, 2, 28) + 0.5 + Second, bssExpired, false}};
  TTestHost Host;
  Host.AddActivatedCustomer({.DateLastIssued = Issued});
  for (const auto& [Now, Expected, Active] : Cases) {
    Host.FakeSystem.Time = Now;
    EXPECT_EQ(Global().GetBeamSuperStatus(), Expected) << FormatDateMinutes(Now);
    EXPECT_EQ(Global().GetIsBeamSuperActive(), Active);
  }
  Host.CredentialTable(TFakeSide::Common).Rows[0].back() = std::monostate{};
  EXPECT_EQ(Global().GetBeamSuperStatus(), bssExpired) << "never issued";
}

TEST(Status, NeedsOnlyARowWithAClientIdOfThisEnvironment) {
  TTestHost Host;
  Host.FakeIdentity.Country = 6;
  EXPECT_EQ(Global().GetBeamSuperStatus(), bssNotEnabled);
  Host.FakeIdentity.Country = 5;
  EXPECT_FALSE(Global().GetIsBeamSuperEnabled()) << "kept";
  TBeamSuperGlobal::Finalize();
  EXPECT_EQ(Global().GetBeamSuperStatus(), bssEnabled) << "no identifier";
  EXPECT_TRUE(Host.CommonConnection.Statements.empty());
  EXPECT_TRUE(Host.FakeSettings.Writes.empty()) << "asking creates no identifier";
  Host.SetCustomerUCID();
  Host.AddCredentials({}, TFakeSide::Payroll);
  Host.AddCredentials({.Environment = "QA"});
  EXPECT_EQ(Global().GetBeamSuperStatus(), bssEnabled) << "a row elsewhere";

  Host.AddCredentials({.ClientSecret = ""}, TFakeSide::Common);
  TFakeTable& Table = Host.CredentialTable(TFakeSide::Common);
  TDBValue& ClientID = Table.Rows[1][Table.ColumnIndex("cClientID")];
  ClientID = std::string();
  EXPECT_EQ(Global().GetBeamSuperStatus(), bssEnabled) << "the status before";
  ClientID = std::string("cannot be deciphered");
  EXPECT_EQ(Global().GetBeamSuperStatus(), bssActivated);
  ClientID = std::monostate{};
  EXPECT_EQ(Global().GetBeamSuperStatus(), bssActivated) << "the status before";
  Global().SetOptedIn(true);
  EXPECT_EQ(Global().GetBeamSuperStatus(), bssUnknown);

  const TDBStatement& Statement = Host.CommonConnection.Statements.back();
  EXPECT_EQ(Statement.SQL, "select * from _iptblBeamSuperCustomerIDs where cUCID = :UCID and cEnvironment = :ENV");
  EXPECT_EQ(Statement.Parameters.at(0).Value, TDBValue("enc(" + UCID + ")"));
  EXPECT_EQ(Statement.Parameters.at(1).Value, TDBValue("enc(Dev)"));
  EXPECT_TRUE(Host.PayrollConnection.Statements.empty());

  Host.CommonConnection.Faults.FailOn("FieldAsString", TFault::Beam("column gone"));
  EXPECT_EQ(ErrorOf([] { Global().GetBeamSuperStatus(); }), "column gone");
  EXPECT_EQ(Host.CommonConnection.OpenQueries(), 0);
}

TEST(OptedIn, StoresFirstThenDropsCustomerAndApplicationToken) {
  TActivatedHost Host;
  const auto UseAll = [&] {
    Host.FakeHTTP.Requests.clear();
    Global().GetAppToken();
    Global().GetAdminToken();
    Global().GetCustomerToken();
    return Host.FakeHTTP.Requests.size();
  };
  EXPECT_EQ(UseAll(), 3u);
  Host.FakeSettings.Faults.FailOnce("SetCurrentSystemValue", TFault::Standard("disk full"));
  EXPECT_EQ(ErrorOf([] { Global().SetOptedIn(true); }), "another kind of error");
  EXPECT_EQ(UseAll(), 0u) << "nothing stored, nothing dropped";
  for (const bool Value : {false, false, true}) {
    Global().SetOptedIn(Value);
    EXPECT_EQ(UseAll(), 2u) << "also when nothing changed; the administrator token stays";
    const auto& Write = Host.FakeSettings.Writes.back();
    EXPECT_EQ(Write.Name + "=" + Write.Value, Value ? "BeamSuperOptedIn=Y" : "BeamSuperOptedIn=N");
    EXPECT_EQ(Global().GetOptedIn(), Value);
  }
}

TEST(CustomerUCID, IsMadeOnceStoredEncipheredAndLogged) {
  TTestHost Host;
  const std::string Made = "{ABCDEF00-0000-4000-8000-000000000001}";
  for (int Round = 0; Round < 2; ++Round) {
    EXPECT_EQ(Global().GetCustomerUCID(), Made);
    ASSERT_EQ(Host.FakeSettings.Writes.size(), 1u);
    EXPECT_EQ(Host.FakeSettings.Writes[0].Name + Host.FakeSettings.Writes[0].Value, "BeamSuperUCIDenc(" + Made + ")");
    EXPECT_EQ(Host.LogLines(), TLines{"0 Created Customer UCID >enc(" + Made + ")<"});
  }
  Host.SetCustomerUCID("{other}");
  EXPECT_EQ(Global().GetCustomerUCID(), Made) << "kept";
  Host.FakeIdentity.Country = 1;
  EXPECT_EQ(Global().GetCustomerUCID(), "");
  Host.FakeIdentity.Country = 5;
  EXPECT_EQ(Global().GetCustomerUCID(), "{other}") << "a foreign country clears what was kept";
}

}  // namespace
}  // namespace oxSuperAPI
