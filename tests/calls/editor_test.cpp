#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/calls/uBeamAPICalls.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"

namespace oxSuperAPI {
namespace {

constexpr int Cancel = 2;

/// Somebody is at the keyboard and wants to see everything.
class TInteractiveHost : public TTestHost {
 public:
  TInteractiveHost() {
    FakeIdentity.ShowRequestEditor = FakeIdentity.ShowResponseEditor = true;
    FakeHTTP.DefaultAnswer = TFakeAnswer{.Status = 500, .Body = R"({"message":"answer"})"};
  }
};

class TPost : public TBeamAPICall {
 public:
  TPost() { SetSource("s"); }
  void SetRequestBody() override { Body() = TStringList({"first", "second"}); }
};

TEST(Editors, DependOnSessionAndSettings) {
  using TCase = std::tuple<bool, bool, bool, std::uint32_t, std::size_t>;
  for (const auto& [Request, Response, Query, Session, Shown] : {TCase{true, false, true, 2, 1},
                                                                 {false, true, true, 1, 1},
                                                                 {false, false, true, 1, 0},
                                                                 {true, true, true, 0, 0},
                                                                 {true, true, false, 1, 0}}) {
    TInteractiveHost Host;
    Host.FakeIdentity.ShowRequestEditor = Request;
    Host.FakeIdentity.ShowResponseEditor = Response;
    Host.FakeSystem.SessionQueryWorks = Query;
    Host.FakeSystem.SessionId = Session;
    TPost().MakeCall();
    EXPECT_EQ(Host.FakeEditor.Shown.size(), Shown);
    EXPECT_EQ(TBeamAPICall::IsRunningAsAService(), !Query || Session == 0);
  }
}

TEST(Editors, NeverShowATokenCall) {
  TInteractiveHost Host;
  Host.AnswerTokens();
  TBeamGetToken Call;
  Call.SetClientID("i");
  Call.SetClientSecret("s");
  EXPECT_TRUE(Call.MakeCall());
  EXPECT_TRUE(Host.FakeEditor.Shown.empty());
}

TEST(Editors, ReplaceWhatIsSentAndWhatIsRead) {
  const std::string Whole = "first\r\nsecond";
  const struct {
    TFakeEditorAnswer Request, Response;
    std::string Body;  // "" when nothing is sent
    std::int32_t Status;
    const char *Message, *ShownStatus;
  } Cases[] = {
      {{.Text = "edited"}, {.Result = Cancel, .Text = "x"}, "edited", 500, "answer", "500"},
      {{}, {}, Whole, 500, "answer", "500"},
      {{.Result = Cancel, .Text = "edited", .Skip = true}, {}, Whole, 500, "answer", "500"},
      {{.Skip = true}, {.Text = R"({"message":"by hand"})", .StatusText = "200"}, "", 200, "by hand", "0"},
      {{.Skip = true}, {.Result = Cancel, .StatusText = "200"}, "", 0, "", "0"},
      {{}, {.StatusText = "200 OK"}, Whole, 0, "answer", "500"},
      {{}, {.Text = "", .StatusText = "200"}, Whole, 200, "", "500"},
  };
  for (const auto& Case : Cases) {
    TInteractiveHost Host;
    Host.FakeEditor.RequestAnswers.push_back(Case.Request);
    Host.FakeEditor.ResponseAnswers.push_back(Case.Response);
    TPost Call;
    EXPECT_EQ(Call.MakeCall(), Case.Status == 200);
    EXPECT_EQ(Call.StatusCode(), Case.Status);
    EXPECT_EQ(Call.ResponseMessage(), Case.Message);
    ASSERT_EQ(Host.FakeEditor.Shown.size(), 2u);
    const auto& [Request, Response] = std::pair(Host.FakeEditor.Shown[0], Host.FakeEditor.Shown[1]);
    EXPECT_EQ(Request.Caption + "|" + Request.Lines.Text(), "Edit Request|" + Whole);
    EXPECT_EQ(Response.Caption + "|" + Response.StatusText.value_or("none"),
              std::string("Edit Response|") + Case.ShownStatus);
    EXPECT_EQ(Response.Lines.Text(), Case.Body.empty() ? "" : R"({"message":"answer"})");
    ASSERT_EQ(Host.FakeHTTP.Requests.size(), Case.Body.empty() ? 0u : 1u);
    EXPECT_EQ(Host.LogColumn("cStatus"), Case.Body.empty() ? TLines{} : TLines{"500"}) << "what the service said";
    EXPECT_TRUE(Case.Body.empty() || Host.FakeHTTP.LastRequest().Body == Case.Body);
  }
}

TEST(Editors, ErrorsAreProgramErrorsAndFreeTheForm) {
  for (const auto& [Operation, Sent] :
       {std::pair{"Create", 0u}, {"ShowModal", 0u}, {"SkipChecked", 0u}, {"SetStatusText", 1u}, {"StatusText", 1u}}) {
    TInteractiveHost Host;
    Host.FakeEditor.RequestAnswers.push_back({});
    Host.FakeEditor.ResponseAnswers.push_back({});
    Host.FakeEditor.Faults.FailOn(Operation, TFault::NonStandard());
    EXPECT_EQ(ErrorOf([] { TPost().MakeCall(); }), ProgramError) << Operation;
    EXPECT_EQ(Host.FakeEditor.OpenForms(), 0);
    EXPECT_EQ(Host.FakeHTTP.Requests.size(), Sent);
    EXPECT_EQ(Host.LogTable().Rows.size(), Sent + 1);
  }
}

}  // namespace
}  // namespace oxSuperAPI
