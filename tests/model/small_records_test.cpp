#include "../support/test_host.h"
#include "loss.h"
#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/model/uBeamEntryTable.h"
#include "oxSuperAPI/model/uBeamSuperObjects.h"

namespace oxSuperAPI {
namespace {

std::string Funds(int Count) {
  std::string Result;
  for (int Number = 1; Number <= Count; ++Number)
    Result += R"(,{"uniqueSuperannuationIdentifier":"U)" + std::to_string(Number) +
              R"(","australianBusinessNumber":51824753556,"productName":"Fund"})";
  return "[" + Result.substr(1) + "]";
}

TEST(FundSearch, KeepsTheFirstTwentyFundsOfAnArray) {
  // clang-format off
  const std::tuple<std::string, std::int32_t, const char*> Cases[] = {
      {Funds(3), 3, "U3"}, {Funds(20), 20, "U20"}, {Funds(25), 20, "U20"}, {R"([{"productName":null},null])", 2, ""},
      {"[]", 0, ""}, {"{}", 0, ""}, {R"({"funds":[{}]})", 0, ""}, {ReplaceFirst(Funds(20), "]", ",5]"), 20, "U20"}};
  // clang-format on
  TSuperFundSearchResult Result;
  for (const auto& [Json, Kept, LastUSI] : Cases) {
    Result.LoadFromJSONObject(Document(Json));
    ASSERT_EQ(Result.FundCount, Kept) << Json;
    const auto Count = static_cast<std::size_t>(Kept);
    EXPECT_EQ(Count == 0 ? "" : Result.Funds[Count - 1].USI, LastUSI) << Json;
    for (std::size_t Rest = Count; Rest < Result.Funds.size(); ++Rest)
      EXPECT_EQ(Result.Funds[Rest].USI + Result.Funds[Rest].ABN + Result.Funds[Rest].FundName, "") << Json;
  }
  Result.LoadFromJSONObject(Document(Funds(2)));
  EXPECT_EQ(Result.Funds[1].ABN + Result.Funds[1].FundName, "51824753556Fund");
  EXPECT_THROW(Result.LoadFromJSONObject(Document("[{},5]")), TBeamTypeError);
  EXPECT_EQ(Result.FundCount, 1);
  Result.LoadFromJSONObject(nullptr);
  EXPECT_EQ(Result.FundCount, 0);
}

TEST(FieldChanges, HoldThirtyEntriesAndJoinComments) {
  TSuperFieldChanges Changes;
  EXPECT_EQ(Changes.GetMaxChanges(), 30);
  for (std::int32_t Index = 0; Index < 30; ++Index)
    EXPECT_EQ(Changes.Add("f" + std::to_string(Index), "v", "n"), Index);
  EXPECT_EQ(Changes.Add("31st", "v", "n"), -1);
  EXPECT_EQ(Changes.GetChangeCount(), 30);
  EXPECT_EQ(Changes.Changes[0].FieldName + Changes.Changes[29].FieldName + Changes.Changes[29].StringValue +
                Changes.Changes[29].FriendlyFieldName,
            "f0f29vn");
  for (const char* Comment : {"", "one", "", "two"}) Changes.AddComment(Comment);
  Changes.AddComment(Changes.Comments());
  EXPECT_EQ(Changes.Comments(), "one\r\ntwo\r\none\r\ntwo");
  Changes.Clear();
  EXPECT_EQ(Changes.GetChangeCount(), 0);
  EXPECT_EQ(Changes.Changes[29].FieldName + Changes.Changes[0].FriendlyFieldName, "");
  EXPECT_EQ(Changes.Comments(), "one\r\ntwo\r\none\r\ntwo");
  EXPECT_EQ(Changes.Add("again", "", ""), 0);
}

TEST(Usage, WritesTheBillingRecordWithItsNameTwice) {
  TTestHost Host;
  TBeamSuperUsage Usage;
  Usage.SubmitDate = EncodeDate(2024, 3, 5) + 0.5;
  Usage.DatabaseName = "not written";
  EXPECT_EQ(Written(Usage), R"({"datasetName":"BeamSuperUsage","value":{"datasetName":"BeamSuperUsage",)"
                            R"("description":"Beam Usage Billing Data","submitDate":"2024-03-05T02:00:00.000Z",)"
                            R"("batchId":"0","contributionCount":"0","fundCount":"0","employeeCount":"0",)"
                            R"("Submitted":false}})");
  Usage.CustomerNumber = "cn", Usage.ProcessId = "p", Usage.ABN = "abn", Usage.CompanyName = "co";
  Usage.BatchId = -1, Usage.ContributionCount = 1, Usage.FundCount = 2, Usage.EmployeeCount = 3;
  Usage.Action = "Submitted", Usage.Submitted = true;
  EXPECT_EQ(Written(Usage), R"({"datasetName":"BeamSuperUsage","value":{"datasetName":"BeamSuperUsage",)"
                            R"("description":"Beam Usage Billing Data","customerNumber":"cn",)"
                            R"("submitDate":"2024-03-05T02:00:00.000Z","processId":"p","batchId":"-1","abn":"abn",)"
                            R"("companyName":"co","contributionCount":"1","fundCount":"2","employeeCount":"3",)"
                            R"("action":"Submitted","Submitted":true}})");
}

TEST(Usage, TheMomentOfSubmissionIsInUTCWithMillisecondsThatCarry) {
  // Seconds of 2024-12-31, local; minutes of the zone.
  const std::tuple<double, int, const char*> Cases[] = {{3723.004, 0, "2024-12-31T01:02:03.004Z"},
                                                        {86399.9996, 0, "2025-01-01T00:00:00.000Z"},
                                                        {59.9996, 600, "2024-12-30T14:01:00.000Z"},
                                                        {59.9994, -90, "2024-12-31T01:30:59.999Z"}};
  for (const auto& [Seconds, ZoneMinutes, Expected] : Cases) {
    TTestHost Host;
    Host.FakeSystem.ZoneMinutes = ZoneMinutes;
    TBeamSuperUsage Usage;
    Usage.SubmitDate = EncodeDate(2024, 12, 31) + Seconds / 86400;
    EXPECT_NE(Usage.GetAsJsonString().find(std::string("\"submitDate\": \"") + Expected + '"'), std::string::npos)
        << Expected << Usage.GetAsJsonString();
  }
  TBeamSuperUsage Usage;
  EXPECT_THROW(Usage.GetAsJsonString(), TBeamError);
}

TEST(EntryTable, HasFiveEntriesWhicheverAreFilled) {
  const auto Content = [](const TBeamEntryTable<int>& Table) {
    std::string Result;
    for (const int Entry : Table) Result += std::to_string(Entry);
    return Result;
  };
  TBeamEntryTable<int> Table;
  EXPECT_EQ(Content(Table), "00000");
  Table[3] = 4;
  int& Second = Table[1];
  Table[4] = 5;
  Second = 2;  // references hold while others are filled
  EXPECT_EQ(Content(Table), "02045");
  TBeamEntryTable<int> Copy = Table;
  for (int& Entry : Copy) ++Entry;
  EXPECT_EQ(Content(Copy), "13156");
  EXPECT_EQ(Content(Table), "02045");
  Copy = {};
  std::swap(Copy, Table);
  EXPECT_EQ(Content(Copy) + Content(Table), "0204500000");
  EXPECT_THROW(Table[5], TBeamRangeError);
  EXPECT_THROW(std::as_const(Table)[static_cast<std::size_t>(-1)], TBeamRangeError);
}

}  // namespace
}  // namespace oxSuperAPI
