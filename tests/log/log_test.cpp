#include "oxSuperAPI/log/uBeamSuperLog.h"

#include <gtest/gtest.h>

#include "../support/test_host.h"

namespace oxSuperAPI {
namespace {

std::int32_t LogSource(const std::string& Source) {
  return TBeamSuperLog::AddToLog(Source, "url", "Get", "", "", "", "", "200");
}

TEST(CallLog, WritesTheColumnsInOrderMaskedWhereTheyMayHoldCredentials) {
  TTestHost Host;
  Host.LogTable().NextIdentity = 41;
  const auto Add = [] {
    return TBeamSuperLog::AddToLog("uuid=1", "https://h/x?uuid=2&y=3", "uuid 4", "authorization: Bearer t\r\nuuid: 5",
                                   "client_id=6&client_secret=7", R"({"clientSecret":"89"})", "clientid 0", "200");
  };
  EXPECT_EQ(Add(), 41);
  EXPECT_EQ(Add(), 42);
  ASSERT_EQ(Host.PayrollConnection.Statements.size(), 2u);
  EXPECT_EQ(Host.PayrollConnection.Statements[0].SQL, "select * from dbo._iptblBeamSuperLog where idBeamSuperLog = 0");
  EXPECT_TRUE(Host.CommonConnection.Statements.empty());
  EXPECT_EQ(Host.PayrollConnection.OpenQueries(), 0);
  TLines Fields;
  for (std::size_t Field = 0; Field < Host.PayrollConnection.FieldsSet.size() / 2; ++Field) {
    const TDBParameter& Set = Host.PayrollConnection.FieldsSet[Field];
    Fields.push_back(Set.Name + "=" + ValueAsText(Set.Value));
  }
  EXPECT_EQ(Fields,
            (TLines{"cSource=uuid=1", "cURL=https://h/x?uuid**&y=3", "cMethod=uuid *", "iAgentID=7",
                    "cRequestHeader=authorization: Bearer t\r\nuuid: *", "cRequestBody=client_id**&client_secret**",
                    R"(cResponse={"clientSecret":"**"})", "cLogDetails=clientid *", "cStatus=200"}));
}

TEST(CallLog, CutsSourceAndStatusByUTF16Units) {
  TTestHost Host;
  const std::string A98(98, 'a'), E100 = [] {
    std::string Text;
    for (int I = 0; I < 100; ++I) Text += "\xC3\xA9";
    return Text;
  }();
  const struct {
    std::string Source, Status, ExpectedSource, ExpectedStatus;
  } Cases[] = {
      {std::string(150, 'a'), "1234", std::string(100, 'a'), "123"},
      {E100 + "x", "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", E100, "\xC3\xA9\xC3\xA9\xC3\xA9"},
      {A98 + "\xF0\x9F\x98\x80z", "0", A98 + "\xF0\x9F\x98\x80", "0"},
      {A98 + "b\xF0\x9F\x98\x80z", "", A98 + "b", ""},
  };
  for (const auto& Case : Cases) {
    TBeamSuperLog::AddToLog(Case.Source, "", "", "", "", "", "", Case.Status);
    EXPECT_EQ(Host.LogColumn("cSource").back(), Case.ExpectedSource);
    EXPECT_EQ(Host.LogColumn("cStatus").back(), Case.ExpectedStatus);
  }
}

TEST(CallLog, NamesTheAgentOrMinusOne) {
  TTestHost Host;
  const std::pair<std::optional<std::int32_t>, const char*> Cases[] = {
      {std::nullopt, "-1"}, {0, "-1"}, {-5, "-1"}, {1, "1"}, {2147483647, "2147483647"}};
  for (const auto& [Agent, Expected] : Cases) {
    Host.FakeIdentity.Agent = Agent;
    LogSource("source");
    EXPECT_EQ(Host.LogColumn("iAgentID").back(), Expected);
  }
}

TEST(CallLog, SkipsWhatIsBlankWhereItCounts) {
  TTestHost Host;
  const std::string Blank = " \t\r\n";
  EXPECT_EQ(TBeamSuperLog::AddToLog(Blank, "url", "Get", Blank, "", Blank, "details", "200"), 0);
  EXPECT_TRUE(Host.PayrollConnection.Statements.empty());
  EXPECT_EQ(TBeamSuperLog::AddToLog(Blank, "", "", "h", "", "", "", ""), 1);
  EXPECT_EQ(TBeamSuperLog::AddToLog("", "", "", "", "b", "", "", ""), 2);
  EXPECT_EQ(TBeamSuperLog::AddToLog("", "", "", "", "", "r", "", ""), 3);
  EXPECT_EQ(LogSource("s"), 4);
  Host.HasPayrollConnection = false;
  EXPECT_EQ(LogSource("s"), 0);
}

TEST(CallLog, SwallowsEveryFault) {
  for (const TFault& Fault : {TFault::Standard("x"), TFault::Beam("x"), TFault::NonStandard()}) {
    for (const char* Operation : {"Open", "Append", "SetField", "Post", "FieldAsInteger"}) {
      TTestHost Host;
      Host.PayrollConnection.Faults.FailOn(Operation, Fault);
      EXPECT_EQ(LogSource("source"), 0) << Operation;
      EXPECT_EQ(Host.PayrollConnection.OpenQueries(), 0);
    }
    for (const char* Facility : {"ADOMainConnection", "Identity"}) {
      TTestHost Host;
      Host.Faults.FailOn(Facility, Fault);
      EXPECT_EQ(LogSource("source"), 0) << Facility;
    }
  }
  TTestHost Host;
  Host.PayrollDatabase.DropTable(LogTableName);
  EXPECT_EQ(LogSource("source"), 0);
  RegisterHost(nullptr);
  EXPECT_EQ(LogSource("source"), 0) << "no host at all";
}

}  // namespace
}  // namespace oxSuperAPI
