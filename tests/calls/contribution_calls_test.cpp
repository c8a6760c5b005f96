#include <gtest/gtest.h>

#include <limits>

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

struct TOutcome {
  bool Result = false;
  std::unique_ptr<TBeamContributionResponse> Response = std::make_unique<TBeamContributionResponse>();
  std::string Message = "old", Error = "old", Status = "old";
};

TOutcome Post(TBeamContributionDetail* Detail, bool Submit) {
  TOutcome Out;
  Out.Result = PostContribution("Host.PayRun", Detail, Submit, Out.Response, Out.Message, Out.Error, Out.Status);
  return Out;
}

TEST(PostContribution, StampsSendsAndLogsTheBatch) {
  TReadyHost Host;
  Host.FakeHTTP.DefaultAnswer = TFakeAnswer{.Body = R"({"status":"ACCEPTED","processId":"p1"})"};
  const struct {
    bool Submit;
    TDateTime Local;
    int ZoneMinutes;
    const char *Command, *Time, *Id;
  } Cases[] = {
      {true, EncodeDate(2024, 3, 5) + 10 / 24.0, 600, "submit", "2024-03-05T00:00:00Z", "1}"},
      {false, EncodeDate(2024, 3, 5) + 0.25, 600, "validate", "2024-03-04T20:00:00Z", "2}"},
      {true, EncodeDate(2024, 12, 31) + (23 * 3600 + 59 * 60 + 59.9) / 86400, -90, "submit", "2025-01-01T01:29:59Z",
       "3}"},
  };
  TBeamContributionDetail Detail;
  Detail.version = "1.0";
  Detail.identifier.messageId = "old";
  for (const auto& Case : Cases) {
    Host.FakeSystem.Time = Case.Local;
    Host.FakeSystem.ZoneMinutes = Case.ZoneMinutes;
    // The token of the first case is stale by then, or not yet valid: neither matters here.
    const TOutcome Out = Post(&Detail, Case.Submit);
    EXPECT_TRUE(Out.Result);
    EXPECT_EQ(Out.Status, "ACCEPTED");
    EXPECT_EQ(Detail.identifier.messageId, std::string("{ABCDEF00-0000-4000-8000-00000000000") + Case.Id);
    EXPECT_EQ(Detail.identifier.time, Case.Time);
    const TFakeRequest& Request = Host.FakeHTTP.LastRequest();
    EXPECT_EQ(Request.Method, "Post");
    EXPECT_EQ(Request.URL, Dev + "/clearing-house/" + Case.Command);
    EXPECT_EQ(Request.Headers, TLines{"authorization: Bearer abc"});
    EXPECT_EQ(Request.Body, Detail.GetAsJsonString());
    EXPECT_NE(Request.Body.find(Detail.identifier.messageId), std::string::npos);
    EXPECT_EQ(static_cast<std::size_t>(Detail.BeamSuperLogID), Host.LogTable().NextIdentity - 1u);
    EXPECT_EQ(Host.LogColumn("cSource").back(), "Host.PayRun");
    ASSERT_NE(Out.Response, nullptr);
    EXPECT_EQ(Out.Response->processId, "p1");
    EXPECT_EQ(Out.Response->StatusCode, 200);
  }
}

TEST(PostContribution, CountsARefusedSubmissionAsDone) {
  const struct {
    bool Submit;
    std::int32_t Code;
    const char* Body;
    bool Result;
  } Cases[] = {{true, 400, R"({"message":"m","hasErrors":true})", true},
               {false, 400, R"({"message":"m"})", false},
               {true, 400, "plain", true},
               {true, 401, R"({"message":"m"})", false},
               {true, 500, "plain", false},
               {false, 200, "", true}};
  for (const auto& Case : Cases) {
    SCOPED_TRACE(std::to_string(Case.Code) + Case.Body);
    TReadyHost Host;
    Host.FakeHTTP.Answer(Case.Code, Case.Body);
    TBeamContributionDetail Detail;
    const TOutcome Out = Post(&Detail, Case.Submit);
    EXPECT_EQ(Out.Result, Case.Result);
    EXPECT_EQ(Out.Message, *Case.Body == '{' ? "m" : "");
    ASSERT_NE(Out.Response, nullptr) << "for every answer";
    EXPECT_EQ(Out.Response->StatusCode, Case.Code);
  }
}

TEST(PostContribution, NeedsABatch) {
  for (const bool Submit : {true, false}) {
    TReadyHost Host;
    const TOutcome Out = Post(nullptr, Submit);
    EXPECT_FALSE(Out.Result);
    EXPECT_EQ(Out.Message, NotValid + "ContributionDetail is not assigned");
    EXPECT_EQ(Out.Error + Out.Status, "");
    EXPECT_EQ(Out.Response, nullptr);
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
    EXPECT_TRUE(Host.LogTable().Rows.empty());
  }
}

TEST(PostContribution, LogsTwiceAndRaisesWhenAnAnswerCannotBeRead) {
  TReadyHost Host;
  Host.FakeHTTP.Answer(200, R"({"payments":[{"amount":"1.00"},{"abn":"1"}]})");
  TBeamContributionDetail Detail;
  Detail.BeamSuperLogID = 77;
  TOutcome Out;
  EXPECT_EQ(ErrorOf([&] { PostContribution("s", &Detail, true, Out.Response, Out.Message, Out.Error, Out.Status); }),
            ProgramError);
  EXPECT_EQ(Out.Response, nullptr);
  EXPECT_EQ(Out.Message + Out.Error + Out.Status, "");
  EXPECT_EQ(Detail.BeamSuperLogID, 77);
  EXPECT_EQ(Host.FakeHTTP.Requests.size(), 1u) << "sent once, whatever follows";
  const TLines Details = Host.LogColumn("cLogDetails");
  ASSERT_EQ(Details.size(), 2u);
  EXPECT_EQ(Details[1].rfind("Beam API called from  TBeamPostContributionDetail failed due to amount", 0), 0u);
}

TEST(PostContribution, RefusesABatchWithAnAmountThatHasNoWireForm) {
  TReadyHost Host;
  TBeamContributionDetail Detail;
  const auto Employer = std::make_shared<TBeamContributionEmployer>();
  const auto Fund = std::make_shared<TBeamContributionFund>();
  const auto Member = std::make_shared<TBeamMemberContribution>();
  Member->superGuaranteeAmount = std::numeric_limits<double>::quiet_NaN();
  Fund->AddMemberContribution(Member);
  Employer->AddContributionFund(Fund);
  Detail.AddContributionEmployer(Employer);
  const std::string Error = ErrorOf([&] { Post(&Detail, true); });
  EXPECT_TRUE(Error != "no error" && Error != ProgramError) << "the body is made before the call is under way";
  EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
}

TEST(ContributionStatus, ReadsTheStateAndTheTotal) {
  const struct {
    const char* Body;
    const char *State, *Reference;
    double Total;
  } Cases[] = {
      {R"({"status":"PAID","paymentReferenceNumber":"r","totalAmount":"100.50"})", "PAID", "r", 100.5},
      {R"({"status":"PAID","totalAmount":1E2})", "PAID", "", 100},
      {R"({"paymentReferenceNumber":12345678901234567890,"totalAmount":null})", "", "12345678901234567890", 0},
      {R"({"totalAmount":"  "})", "", "", 0},
      {"plain", "", "", 0},
  };
  for (const auto& Case : Cases) {
    TReadyHost Host;
    Host.FakeHTTP.Answer(200, Case.Body);
    std::string State = "old", Reference = "old", Message = "old", Error = "old", Status = "old";
    double Total = 9;
    std::int32_t LogID = 9;
    EXPECT_TRUE(GetContributionStatus("Host.State", "p 1", State, Reference, Total, LogID, Message, Error, Status));
    EXPECT_EQ(State, Case.State);
    EXPECT_EQ(Reference, Case.Reference);
    EXPECT_EQ(Total, Case.Total);
    EXPECT_EQ(LogID, Host.LogTable().NextIdentity - 1);
    EXPECT_EQ(Message + Error, "");
    EXPECT_EQ(Status, *Case.Body != '{' ? "" : *Case.State ? Case.State : "200");
    EXPECT_EQ(Host.FakeHTTP.LastRequest().Method, "Get");
    EXPECT_EQ(Host.FakeHTTP.LastRequest().URL, Dev + "/search/contributions/p 1");
    EXPECT_EQ(Host.FakeHTTP.LastRequest().Headers, TLines{"authorization: Bearer abc"});
  }
}

TEST(ContributionStatus, RaisesOnAMalformedTotal) {
  TReadyHost Host;
  Host.FakeHTTP.Answer(200, R"({"status":"PAID","totalAmount":"abc"})");
  std::string State = "old", Reference = "old", Message = "old", Error = "old", Status = "old";
  double Total = 9;
  std::int32_t LogID = 9;
  EXPECT_EQ(ErrorOf([&] { GetContributionStatus("s", "p", State, Reference, Total, LogID, Message, Error, Status); }),
            ProgramError);
  EXPECT_EQ(State + Reference + Message + Error + Status, "");
  EXPECT_EQ(Total, 0);
  EXPECT_EQ(LogID, 0);
  EXPECT_EQ(Host.LogColumn("cLogDetails"),
            (TLines{"",
                    "Beam API called from  TBeamGetContributionStatus failed due to totalAmount value >abc< is "
                    "not a floating point number"}));
}

TEST(ProcessId, IsRequiredUntrimmed) {
  for (const bool Cancels : {false, true}) {
    const auto Run = [&](const std::string& Id, std::string& Message) {
      std::string A, B, Error, Status;
      double Total;
      std::int32_t LogID;
      return Cancels ? PutCancelContribution("s", Id, Message, Error, Status)
                     : GetContributionStatus("s", Id, A, B, Total, LogID, Message, Error, Status);
    };
    TReadyHost Host;
    std::string Message;
    EXPECT_FALSE(Run("", Message));
    EXPECT_EQ(Message, NotValid + "Process Id is required");
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
    Host.FakeHTTP.DefaultAnswer = TFakeAnswer{.Body = "{}"};
    EXPECT_TRUE(Run("  ", Message));
    EXPECT_EQ(Host.FakeHTTP.LastRequest().URL, Dev + (Cancels ? "/clearing-house/cancel" : "/search/contributions"));
  }
}

TEST(CancelContribution, PutsWithoutABody) {
  TReadyHost Host;
  Host.FakeHTTP.Answer(409, R"({"message":"too late","errorCode":"E9"})");
  std::string Message = "old", Error = "old", Status = "old";
  EXPECT_FALSE(PutCancelContribution("Host.Cancel", "p1", Message, Error, Status));
  EXPECT_EQ(Message + "|" + Error + "|" + Status, "too late|E9|409");
  const TFakeRequest& Request = Host.FakeHTTP.LastRequest();
  EXPECT_EQ(Request.Method, "Put");
  EXPECT_EQ(Request.URL, Dev + "/clearing-house/cancel/p1");
  EXPECT_EQ(Request.Headers, TLines{"authorization: Bearer abc"});
  EXPECT_EQ(Request.Body, "");
  EXPECT_EQ(Host.LogColumn("cMethod"), TLines{"Put"});
}

}  // namespace
}  // namespace oxSuperAPI
