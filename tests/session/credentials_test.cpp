#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "../support/test_host.h"
#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/session/uBeamSaveStatement.h"

namespace oxSuperAPI {
namespace {

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
    EXPECT_EQ(Loaded.UCID + "|" + Loaded.UUID + "|" + Loaded.CustomerNumber + "|" + Loaded.PIN + "|" +
                  Loaded.CompanyName + "|" + Loaded.ClientID + "|" + Loaded.ClientSecret + "|" +
                  Loaded.AcknowledgementToken,
              UCID + (Found ? "|KEY-15001|15001|2468|Example Pty Ltd|" + Case.Taken + "|client-secret|acknowledged"
                            : "|||||||"));
    EXPECT_EQ(Loaded.DateLastIssued, Found ? Newer : 0);
    for (const TFakeSide Side : BothSides) {
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
      EXPECT_TRUE(Write == None || Table.Text(1, "cClientID") == "enc(" + Case.Taken + ")");
    }
    TLines Lines = Host.LogLines();
    Lines.erase(Lines.begin());  // the environment
    EXPECT_EQ(Lines, Found ? (TLines{"0 Super Clearing credentials last reissued at 2024-02-24 12:00",
                                     "0 Loaded Super Clearing credentials from DB "})
                           : TLines{"1 No Super Clearing credentials found in DB "});
  }
}

TEST(LoadAndSave, ReportAndRaiseAnyErrorOfTheHost) {
  const TFault Broken = TFault::NonStandard();
  const std::function<void(TTestHost&)> Cases[] = {
      [](auto& Host) { Host.HasCommonConnection = false; },
      [](auto& Host) { Host.HasPayrollConnection = false; },
      [&](auto& Host) { Host.FakeCipher.Faults.FailOn("DefEncrypt", Broken); },
      [&](auto& Host) { Host.CommonConnection.Faults.FailOn("Execute", Broken); },
      [&](auto& Host) { Host.PayrollConnection.Faults.FailOn("Execute", TFault::Standard("down")); },
      [&](auto& Host) { Host.FakeLog.Faults.FailOnce("AddToLog", Broken); },
      [&](auto& Host) { Host.PayrollConnection.Faults.FailOn("Open", TFault::Standard("down")); },
      [&](auto& Host) { Host.PayrollConnection.Faults.FailOn("Post", Broken); }};
  for (std::size_t Case = 0; Case < std::size(Cases); ++Case) {
    SCOPED_TRACE(Case);
    TTestHost Host;
    Host.SetCustomerUCID();
    TBeamSuperCredentials& Stored = Credentials();
    Host.AddCredentials({}, TFakeSide::Common);
    Cases[Case](Host);
    const bool Saves = Case < 6;
    EXPECT_EQ(ErrorOf([&] { Saves ? Stored.Save() : Stored.Load(UCID); }),
              Saves ? "Error saving Super Clearing Credentials" : LoadError);
    EXPECT_EQ(Host.LogLines().back(), (Saves ? "2 Error saving Super Clearing credentials to the Common Database "
                                             : "2 Error loading Super Clearing credentials from DB ") +
                                          UCID);
    EXPECT_EQ(Host.CommonConnection.OpenQueries() + Host.PayrollConnection.OpenQueries(), 0);
  }
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
  EXPECT_EQ(Credentials().UCID + Credentials().ClientID, "{new}client-id");
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
  Host.FakeSystem.Time = EncodeDate(2024, 2, 29) + 0.5;
  Credentials.DateLastIssued = EncodeDate(2022, 2, 28) + 0.5;
  EXPECT_FALSE(Credentials.GetIsExpired());
  Credentials.DateLastIssued -= 1 / 86400.0;
  EXPECT_TRUE(Credentials.GetIsExpired());
  Credentials.DateLastIssued = Host.FakeSystem.Time;
  EXPECT_TRUE(Credentials.GetNeedsReIssuing());
}

TEST(Save, RunsTheKnownStatementOnBothDatabases) {
  EXPECT_EQ(Digest(SaveCredentialsSQL), 0xb7327bdc9e93fe30u);
  TActivatedHost Host;
  TBeamSuperCredentials& Stored = Credentials();
  Stored.ClientSecret = "";
  Stored.PIN = "1&2";
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
  for (const TFakeConnection* Connection : {&Host.CommonConnection, &Host.PayrollConnection}) {
    ASSERT_EQ(Connection->Statements.size(), 2u);
    EXPECT_EQ(Connection->Statements[1].SQL, SaveCredentialsSQL);
    TLines Parameters = Listed(Connection->Statements[1].Parameters);
    std::sort(Parameters.begin(), Parameters.end());
    EXPECT_EQ(Parameters, Expected);
  }
  EXPECT_EQ(Host.StoredPairs(), TLines(2, "enc(client-id) "));
  EXPECT_EQ(Host.LogLines().back(), "0 Super Clearing credentials have been saved to the common database");
}

}  // namespace
}  // namespace oxSuperAPI
