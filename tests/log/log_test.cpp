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
  const std::string A98(98, 'a'), Emoji = "\xF0\x9F\x98\x80";
  const std::tuple<std::string, std::string, std::string, std::string> Cases[] = {
      {std::string(150, 'a'), "1234", std::string(100, 'a'), "123"},
      {A98 + "\xC3\xA9\xC3\xA9x", "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", A98 + "\xC3\xA9\xC3\xA9",
       "\xC3\xA9\xC3\xA9\xC3\xA9"},
      {A98 + Emoji + "z", "0", A98 + Emoji, "0"},
      {A98 + "b" + Emoji + "z", "", A98 + "b", ""}};
  for (const auto& [Source, Status, ExpectedSource, ExpectedStatus] : Cases) {
    TBeamSuperLog::AddToLog(Source, "", "", "", "", "", "", Status);
    EXPECT_EQ(Host.LogColumn("cSource").back(), ExpectedSource);
    EXPECT_EQ(Host.LogColumn("cStatus").back(), ExpectedStatus);
  }
}

TEST(CallLog, NamesTheAgentOrMinusOne) {
  TTestHost Host;
  const std::pair<std::optional<std::int32_t>, const char*> Cases[] = {
      {std::nullopt, "-1"}, {0, "-1"}, {-5, "-1"}, {2147483647, "2147483647"}};
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
}

TEST(CallLog, SwallowsEveryFault) {
  for (const TFault& Fault : {TFault::Standard("x"), TFault::NonStandard()})
    for (const std::string Operation : {"Open", "SetField", "Post", "FieldAsInteger", "ADOMainConnection"}) {
      TTestHost Host;
      (Operation == "ADOMainConnection" ? Host.Faults : Host.PayrollConnection.Faults).FailOn(Operation, Fault);
      EXPECT_EQ(LogSource("source"), 0) << Operation;
      EXPECT_EQ(Host.PayrollConnection.OpenQueries(), 0);
    }
  TTestHost Host;
  Host.HasPayrollConnection = false;
  EXPECT_EQ(LogSource("source"), 0);
  RegisterHost(nullptr);
  EXPECT_EQ(LogSource("source"), 0) << "no host at all";
}

}  // namespace
}  // namespace oxSuperAPI
