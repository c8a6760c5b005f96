#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/foundation/uBeamDates.h"

namespace oxSuperAPI {
namespace {

/// The token is there already.
class TReadyHost : public TActivatedHost {
 public:
  TReadyHost() {
    Global().GetCustomerToken();
    FakeHTTP.Requests.clear();
    LogTable().Rows.clear();
  }
};

struct TPosted : TTexts {
  std::unique_ptr<TBeamContributionResponse> Response = std::make_unique<TBeamContributionResponse>();

  bool Post(TBeamContributionDetail* Detail, bool Submit) {
    return PostContribution("Host.PayRun", Detail, Submit, Response, Message, Error, Status);
  }
};

struct TState : TTexts {
  std::string State = "old", Reference = "old";
  double Total = 9;
  std::int32_t LogID = 9;

  bool Get(const std::string& Id) {
    return GetContributionStatus("Host.State", Id, State, Reference, Total, LogID, Message, Error, Status);
  }
};

TEST(PostContribution, StampsSendsAndLogsTheBatch) {
  TReadyHost Host;
  Host.FakeHTTP.DefaultAnswer = TFakeAnswer{.Body = R"({"status":"ACCEPTED","processId":"p1"})"};
  const std::tuple<bool, TDateTime, int, std::string, std::string, std::string> Cases[] = {
      {true, EncodeDate(2024, 3, 5) + 10 / 24.0, 600, "submit", "2024-03-05T00:00:00Z", "1"},
      {false, EncodeDate(2024, 3, 5) + 0.25, 600, "validate", "2024-03-04T20:00:00Z", "2"},
      {true, EncodeDate(2024, 12, 31) + (86400 - 0.1) / 86400, -90, "submit", "2025-01-01T01:29:59Z", "3"}};
  TBeamContributionDetail Detail;
  Detail.identifier.messageId = "old";
  for (const auto& [Submit, Local, ZoneMinutes, Command, Time, Id] : Cases) {
    // The token of the first case is stale by then, or not yet valid: neither matters here.
    Host.FakeSystem.Time = Local;
    Host.FakeSystem.ZoneMinutes = ZoneMinutes;
    TPosted Out;
    EXPECT_TRUE(Out.Post(&Detail, Submit));
    EXPECT_EQ(Out.All(), "||ACCEPTED");
    EXPECT_EQ(Detail.identifier.messageId, "{ABCDEF00-0000-4000-8000-00000000000" + Id + "}");
    EXPECT_EQ(Detail.identifier.time, Time);
    EXPECT_EQ(Host.LastSent(),
              "Post /clearing-house/" + Command + "|authorization: Bearer abc|" + Detail.GetAsJsonString());
    EXPECT_NE(Host.LastSent().find(Detail.identifier.messageId), std::string::npos);
    EXPECT_EQ(Detail.BeamSuperLogID, Host.LogTable().NextIdentity - 1);
    EXPECT_EQ(Host.LogColumn("cSource").back(), "Host.PayRun");
    ASSERT_NE(Out.Response, nullptr);
    EXPECT_EQ(Out.Response->processId, "p1");
  }
}

TEST(PostContribution, CountsARefusedSubmissionAsDone) {
  const std::tuple<bool, std::int32_t, const char*, bool> Cases[] = {
      {true, 400, R"({"message":"m","hasErrors":true})", true},
      {false, 400, R"({"message":"m"})", false},
      {true, 400, "plain", true},
      {true, 401, R"({"message":"m"})", false},
      {false, 200, "", true}};
  for (const auto& [Submit, Code, Body, Result] : Cases) {
    SCOPED_TRACE(std::to_string(Code) + Body);
    TReadyHost Host;
    Host.FakeHTTP.Answer(Code, Body);
    TBeamContributionDetail Detail;
    TPosted Out;
    EXPECT_EQ(Out.Post(&Detail, Submit), Result);
    EXPECT_EQ(Out.Message, *Body == '{' ? "m" : "");
    ASSERT_NE(Out.Response, nullptr) << "for every answer";
    EXPECT_EQ(Out.Response->StatusCode, Code);
  }
}

TEST(PostContribution, LogsTwiceAndRaisesWhenAnAnswerCannotBeRead) {
  TReadyHost Host;
  Host.FakeHTTP.Answer(200, R"({"payments":[{"amount":"1.00"},{"abn":"1"}]})");
  TBeamContributionDetail Detail;
  Detail.BeamSuperLogID = 77;
  TPosted Out;
  EXPECT_EQ(ErrorOf([&] { Out.Post(&Detail, true); }), ProgramError);
  EXPECT_EQ(Out.Response, nullptr);
  EXPECT_EQ(Out.All(), "||");
  EXPECT_EQ(Detail.BeamSuperLogID, 77);
  EXPECT_EQ(Host.FakeHTTP.Requests.size(), 1u) << "sent once, whatever follows";
  EXPECT_EQ(Host.LogTable().Rows.size(), 2u);
  EXPECT_TRUE(Host.LogColumn("cLogDetails")
                  .back()
                  .starts_with("Beam API called from  TBeamPostContributionDetail failed due to amount"));
}

TEST(PostContribution, NeedsABatch) {
  TReadyHost Host;
  TPosted Out;
  for (const bool Submit : {true, false}) EXPECT_FALSE(Out.Post(nullptr, Submit));
  EXPECT_EQ(Out.All(), NotValid + "ContributionDetail is not assigned||");
  EXPECT_EQ(Out.Response, nullptr);
  EXPECT_TRUE(Host.FakeHTTP.Requests.empty() && Host.LogTable().Rows.empty());
}

TEST(ContributionStatus, ReadsTheStateAndTheTotal) {
  const std::tuple<const char*, const char*, const char*, double, const char*> Cases[] = {
      {R"({"status":"PAID","paymentReferenceNumber":"r","totalAmount":"100.50"})", "PAID", "r", 100.5, "||PAID"},
      {R"({"paymentReferenceNumber":12345678901234567890,"totalAmount":null})", "", "12345678901234567890", 0, "||200"},
      {R"({"totalAmount":"  "})", "", "", 0, "||200"},
      {"plain", "", "", 0, "||"}};
  for (const auto& [Body, State, Reference, Total, Texts] : Cases) {
    TReadyHost Host;
    Host.FakeHTTP.Answer(200, Body);
    TState Out;
    EXPECT_TRUE(Out.Get("p 1"));
    EXPECT_EQ(Out.State + "|" + Out.Reference, std::string(State) + "|" + Reference);
    EXPECT_EQ(Out.Total, Total);
    EXPECT_EQ(Out.LogID, Host.LogTable().NextIdentity - 1);
    EXPECT_EQ(Out.All(), Texts);
    EXPECT_EQ(Host.LastSent(), "Get /search/contributions/p 1|authorization: Bearer abc|");
  }
}

TEST(ProcessId, IsRequiredUntrimmed) {
  for (const bool Cancels : {false, true}) {
    TReadyHost Host;
    TState Out;
    const auto Run = [&](const std::string& Id) {
      return Cancels ? PutCancelContribution("s", Id, Out.Message, Out.Error, Out.Status) : Out.Get(Id);
    };
    EXPECT_FALSE(Run(""));
    EXPECT_EQ(Out.Message, NotValid + "Process Id is required");
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
    Host.FakeHTTP.DefaultAnswer = TFakeAnswer{.Status = 409, .Body = R"({"message":"too late","errorCode":"E9"})"};
    EXPECT_FALSE(Run("p1 "));
    EXPECT_EQ(Out.All(), "too late|E9|409");
    EXPECT_EQ(Host.LastSent(), std::string(Cancels ? "Put /clearing-house/cancel" : "Get /search/contributions") +
                                   "/p1|authorization: Bearer abc|");
    EXPECT_FALSE(Run("  "));
    EXPECT_EQ(Host.FakeHTTP.LastRequest().URL, Dev + (Cancels ? "/clearing-house/cancel" : "/search/contributions"));
  }
}

}  // namespace
}  // namespace oxSuperAPI
