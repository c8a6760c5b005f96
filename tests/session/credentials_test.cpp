#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "../support/test_host.h"
#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/session/uBeamSaveStatement.h"

namespace oxSuperAPI {
namespace {

const std::string UCID = TFakeCredentials().UCID;
const TDateTime Older = 45340.25, Newer = 45346.5;  // Newer is 2024-02-24 12:00

/// "name=value" of each parameter or field.
TLines Listed(const std::vector<TDBParameter>& Parameters) {
  TLines Result;
  for (const TDBParameter& Parameter : Parameters) {
    const auto* Moment = std::get_if<TDateTime>(&Parameter.Value);
    Result.push_back(Parameter.Name + "=" + (Moment ? FormatDateMinutes(*Moment) : ValueAsText(Parameter.Value)));
  }
  return Result;
}

/// FNV-1a, 64 bits.
std::uint64_t Digest(std::string_view Text) {
  std::uint64_t Result = 0xcbf29ce484222325;
  for (const char Byte : Text) Result = (Result ^ static_cast<unsigned char>(Byte)) * 0x100000001b3;
  return Result;
}

TEST(Load, TakesTheNewerCopyAndBringsTheOtherUpToDate) {
  enum class TWrite { None, Append, Edit };
  using enum TWrite;
  const struct {
    TDateTime Common, Payroll;  // 0: no row
    std::string Taken;
    TWrite InCommon, InPayroll;
  } Cases[] = {{0, 0, "", None, None},
               {Newer, 0, "common", None, Append},
               {0, Newer, "payroll", Append, None},
               {Newer, Older, "common", None, Edit},
               {Older, Newer, "payroll", Edit, None},
               {Newer, Newer, "common", None, None}};
  for (const auto& Case : Cases) {
    SCOPED_TRACE(std::to_string(Case.Common) + " " + std::to_string(Case.Payroll));
    TTestHost Host;
    Host.SetCustomerUCID();
    Host.AddCredentials({.UCID = "{somebody-else}"});
    if (Case.Common > 0) Host.AddCredentials({.ClientID = "common", .DateLastIssued = Case.Common}, TFakeSide::Common);
    if (Case.Payroll > 0)
      Host.AddCredentials({.ClientID = "payroll", .DateLastIssued = Case.Payroll}, TFakeSide::Payroll);

    const TBeamSuperCredentials& Loaded = Credentials();
    const bool Found = !Case.Taken.empty();
    EXPECT_EQ(Loaded.UCID, UCID);
    EXPECT_EQ(Loaded.UUID + "|" + Loaded.CustomerNumber + "|" + Loaded.PIN + "|" + Loaded.CompanyName + "|" +
                  Loaded.ClientID + "|" + Loaded.ClientSecret + "|" + Loaded.AcknowledgementToken,
              Found ? "KEY-15001|15001|2468|Example Pty Ltd|" + Case.Taken + "|client-secret|acknowledged" : "||||||");
    EXPECT_EQ(Loaded.DateLastIssued, Found ? Newer : 0);
    for (const TFakeSide Side : {TFakeSide::Common, TFakeSide::Payroll}) {
      const bool IsCommon = Side == TFakeSide::Common;
      const TFakeConnection& Connection = IsCommon ? Host.CommonConnection : Host.PayrollConnection;
      ASSERT_EQ(Connection.Statements.size(), 1u);
      EXPECT_EQ(Connection.Statements[0].SQL,
                "select * from _iptblBeamSuperCustomerIDs where cUCID = :UCID and cEnvironment = :Env");
      EXPECT_EQ(Listed(Connection.Statements[0].Parameters), (TLines{"UCID=enc(" + UCID + ")", "Env=enc(Dev)"}));
      EXPECT_EQ(Connection.OpenQueries(), 0);
      const TWrite Write = IsCommon ? Case.InCommon : Case.InPayroll;
      TLines Fields = {"cUCID=enc(" + UCID + ")",
                       "cEnvironment=enc(Dev)",
                       "cUUID=enc(KEY-15001)",
                       "cCustomerNumber=enc(15001)",
                       "cPIN=enc(2468)",
                       "cCompanyName=enc(Example Pty Ltd)",
                       "cClientID=enc(" + Case.Taken + ")",
                       "cClientSecret=enc(client-secret)",
                       "cAcknowledgementToken=acknowledged",
                       "dDateLastIssued=2024-02-24 12:00"};
      if (Write != Append) Fields.erase(Fields.begin(), Write == Edit ? Fields.begin() + 2 : Fields.end());
      EXPECT_EQ(Listed(Connection.FieldsSet), Fields);
      TFakeTable& Table = Host.CredentialTable(Side);
      ASSERT_EQ(Table.Rows.size(), Found ? 2u : 1u);
      EXPECT_EQ(Table.Text(0, "cClientID"), "enc(client-id)") << "somebody else's row";
      if (Write != None) {
        EXPECT_EQ(Table.Text(1, "cClientID"), "enc(" + Case.Taken + ")");
      }
    }
    TLines Lines = Host.LogLines();
    Lines.erase(Lines.begin());  // the environment
    EXPECT_EQ(Lines, Found ? (TLines{"0 Super Clearing credentials last reissued at 2024-02-24 12:00",
                                     "0 Loaded Super Clearing credentials from DB "})
                           : TLines{"1 No Super Clearing credentials found in DB "});
  }
}

TEST(Load, ReportsAndRaisesAnyErrorOfTheHost) {
  const TFault Broken = TFault::NonStandard();
  const std::function<void(TTestHost&)> Cases[] = {
      [](TTestHost& Host) { Host.HasCommonConnection = false; },
      [](TTestHost& Host) { Host.HasPayrollConnection = false; },
      [&](TTestHost& Host) { Host.CommonConnection.Faults.FailOn("Open", Broken); },
      [&](TTestHost& Host) { Host.PayrollConnection.Faults.FailOn("Open", TFault::Standard("down")); },
      [&](TTestHost& Host) { Host.CommonConnection.Faults.FailOn("FieldAsDateTime", Broken); },
      [&](TTestHost& Host) { Host.PayrollConnection.Faults.FailOn("Post", Broken); },
      [&](TTestHost& Host) { Host.FakeCipher.Faults.FailOnce("DefDecrypt", Broken, 1); },
      [&](TTestHost& Host) { Host.FakeLog.Faults.FailOnce("AddToLog", Broken, 1); },
  };
  for (const auto& Break : Cases) {
    SCOPED_TRACE(&Break - Cases);
    TTestHost Host;
    Host.SetCustomerUCID();
    Host.AddCredentials({}, TFakeSide::Common);
    Break(Host);
    EXPECT_EQ(ErrorOf([] { Credentials(); }), LoadError);
    EXPECT_EQ(Host.LogLines().back(), "2 Error loading Super Clearing credentials from DB " + UCID);
    EXPECT_EQ(Host.CommonConnection.OpenQueries() + Host.PayrollConnection.OpenQueries(), 0);
  }
}

TEST(Load, RaisesErrorsOfTheIdentifierAsTheyAre) {
  TTestHost Host;
  Host.FakeSettings.Faults.FailOnce("GetCurrentSystemValue", TFault::Beam("no settings"));
  EXPECT_EQ(ErrorOf([] { Credentials(); }), "no settings");
  EXPECT_TRUE(Host.FakeLog.Entries.empty());
}

TEST(ProcessWideCredentials, AreKeptThroughAFailedLoadUnlessItWasTheFirst) {
  TActivatedHost Host;
  for (const bool WithIdentifier : {false, true}) {
    Host.PayrollConnection.Faults.FailOnce("Open", TFault::Beam("down"));
    EXPECT_EQ(ErrorOf([&] { WithIdentifier ? TBeamSuperGlobal::BeamSuperCredentials(UCID) : Credentials(); }),
              LoadError);
  }
  EXPECT_EQ(Credentials().ClientID, "client-id");
  Host.CommonConnection.Faults.FailOn("Open", TFault::Beam("down"));
  EXPECT_EQ(ErrorOf([] { TBeamSuperGlobal::BeamSuperCredentials("{new}"); }), LoadError);
  EXPECT_EQ(Credentials().UCID, "{new}");
  EXPECT_EQ(Credentials().ClientID, "client-id");
}

TEST(ProcessWideCredentials, WarnOnlyWhenAskedForNoCustomerInParticular) {
  TActivatedHost Host;
  Host.AddCredentials({.UCID = "{B}", .ClientID = "of B"});
  EXPECT_EQ(TBeamSuperGlobal::BeamSuperCredentials("{B}").ClientID, "of B");
  EXPECT_EQ(TBeamSuperGlobal::BeamSuperCredentials("{C}").ClientID, "");
  EXPECT_EQ(Host.LogLines().back(), "1 No Super Clearing credentials found in DB ");
  EXPECT_EQ(Credentials().UCID, "{C}") << "as it stands";
  EXPECT_EQ(TBeamSuperGlobal::BeamSuperCredentials("").UCID, UCID);
  EXPECT_EQ(Host.LogLines().back(),
            "1 Loaded Super Clearing credentials for <> replacing the credentials already loaded for <" + UCID + ">. ");
}

TEST(DerivedProperties, UseTheirOwnRules) {
  TTestHost Host;
  TBeamSuperCredentials Credentials;
  for (const auto& [ID, Secret] : {std::pair{"", ""}, {"i", ""}, {"", "s"}, {"i", "s"}}) {
    Credentials.ClientID = ID;
    Credentials.ClientSecret = Secret;
    EXPECT_EQ(Credentials.GetActivated(), *ID && *Secret);
  }
  Host.FakeSystem.Time = EncodeDate(2024, 2, 29) + 0.5;
  Credentials.DateLastIssued = EncodeDate(2022, 2, 28) + 0.5;
  EXPECT_FALSE(Credentials.GetIsExpired());
  Credentials.DateLastIssued -= 1 / 86400.0;
  EXPECT_TRUE(Credentials.GetIsExpired());
  Credentials.DateLastIssued = Host.FakeSystem.Time;
  EXPECT_TRUE(Credentials.GetNeedsReIssuing());
}

TEST(Save, RunsTheKnownStatementOnBothDatabases) {
  EXPECT_EQ(SaveCredentialsSQL.size(), 741u);
  EXPECT_EQ(Digest(SaveCredentialsSQL), 0xb7327bdc9e93fe30u);
  TActivatedHost Host;
  TBeamSuperCredentials& Stored = Credentials();
  Stored.ClientSecret = "";
  Stored.PIN = "1&2";
  Host.FakeLog.Entries.clear();
  Stored.Save();
  TLines Expected = {"Env=enc(Dev)"};
  for (const std::string& Value :
       TLines{"UCID=enc(" + UCID + ")", "ClientID=enc(client-id)", "ClientSecret=", "UUID=enc(KEY-15001)",
              "CustomerNumber=enc(15001)", "PIN=enc(1&2)", "CompanyName=enc(Example Pty Ltd)", "Token=acknowledged",
              "Environment=enc(Dev)", "DateLastIssued=2024-02-24 12:00"}) {
    Expected.push_back(Value);
    Expected.push_back("i" + Value);
  }
  std::sort(Expected.begin(), Expected.end());
  ASSERT_EQ(Expected.size(), 21u);
  for (const TFakeConnection* Connection : {&Host.CommonConnection, &Host.PayrollConnection}) {
    ASSERT_EQ(Connection->Statements.size(), 2u);
    EXPECT_EQ(Connection->Statements[1].SQL, SaveCredentialsSQL);
    TLines Parameters = Listed(Connection->Statements[1].Parameters);
    std::sort(Parameters.begin(), Parameters.end());
    EXPECT_EQ(Parameters, Expected);
  }
  for (const TFakeSide Side : {TFakeSide::Common, TFakeSide::Payroll})
    EXPECT_EQ(Host.CredentialTable(Side).Text(0, "cPIN"), "enc(1&2)");
  EXPECT_EQ(Host.LogLines(), TLines{"0 Super Clearing credentials have been saved to the common database"});
}

TEST(Save, ReportsAndRaisesAnyError) {
  for (int Case = 0; Case < 5; ++Case) {
    SCOPED_TRACE(Case);
    TTestHost Host;
    Host.SetCustomerUCID();
    TBeamSuperCredentials& New = Credentials();
    New.ClientID = "new";
    if (Case == 0) Host.CommonConnection.Faults.FailOn("Execute", TFault::NonStandard());
    if (Case == 1) Host.HasCommonConnection = false;
    if (Case == 2) Host.FakeCipher.Faults.FailOn("DefEncrypt", TFault::Standard("no key"));
    if (Case == 3) Host.PayrollConnection.Faults.FailOn("Execute", TFault::Beam("down"));
    if (Case == 4) Host.HasPayrollConnection = false;
    EXPECT_EQ(ErrorOf([&] { New.Save(); }), "Error saving Super Clearing Credentials");
    EXPECT_EQ(Host.LogLines().back(), "2 Error saving Super Clearing credentials to the Common Database " + UCID);
    EXPECT_EQ(Host.CredentialTable(TFakeSide::Common).Rows.size(), Case < 3 ? 0u : 1u);
    EXPECT_TRUE(Host.CredentialTable(TFakeSide::Payroll).Rows.empty());
  }
}

}  // namespace
}  // namespace oxSuperAPI
