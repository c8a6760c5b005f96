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
  void SetRequestBody() override {
    Body().Add("first");
    Body().Add("second");
  }
};

TEST(Editors, ShowRequestAndResponse) {
  TInteractiveHost Host;
  EXPECT_FALSE(TPost().MakeCall());
  ASSERT_EQ(Host.FakeEditor.Shown.size(), 2u);
  const auto& [Request, Response] = std::pair(Host.FakeEditor.Shown[0], Host.FakeEditor.Shown[1]);
  EXPECT_EQ(Request.Kind, TEditorKind::Request);
  EXPECT_EQ(Request.Caption, "Edit Request");
  EXPECT_EQ(Request.Lines.Text(), "first\r\nsecond");
  EXPECT_EQ(Response.Kind, TEditorKind::Response);
  EXPECT_EQ(Response.Caption, "Edit Response");
  EXPECT_EQ(Response.Lines.Text(), R"({"message":"answer"})");
  EXPECT_EQ(Response.StatusText, "500");
  EXPECT_EQ(Host.FakeEditor.OpenForms(), 0);
  EXPECT_EQ(Host.FakeHTTP.LastRequest().Body, "first\r\nsecond") << "cancelling the form sends the request as it was";
}

TEST(Editors, DependOnSessionAndSettings) {
  const struct {
    bool Request, Response, Query;
    std::uint32_t Session;
    std::size_t Shown;
  } Cases[] = {{true, true, true, 1, 2},   {true, false, true, 2, 1}, {false, true, true, 1, 1},
               {false, false, true, 1, 0}, {true, true, true, 0, 0},  {true, true, false, 1, 0}};
  for (const auto& Case : Cases) {
    TInteractiveHost Host;
    Host.FakeIdentity.ShowRequestEditor = Case.Request;
    Host.FakeIdentity.ShowResponseEditor = Case.Response;
    Host.FakeSystem.SessionQueryWorks = Case.Query;
    Host.FakeSystem.SessionId = Case.Session;
    TPost().MakeCall();
    EXPECT_EQ(Host.FakeEditor.Shown.size(), Case.Shown);
    EXPECT_EQ(TBeamAPICall::IsRunningAsAService(), !Case.Query || Case.Session == 0);
    EXPECT_NE(TBeamAPICall::IsRunningAsAService(), TBeamAPICall::IsUserInteractive());
  }
  TInteractiveHost Host;
  Host.FakeEditor.Available = false;
  TPost().MakeCall();
  EXPECT_EQ(Host.FakeHTTP.Requests.size(), 1u) << "a host without forms";
}

TEST(Editors, NeverShowATokenCall) {
  class TDerived : public TBeamGetToken {};
  TInteractiveHost Host;
  Host.AnswerTokens();
  TDerived Call;
  Call.SetClientID("i");
  Call.SetClientSecret("s");
  EXPECT_TRUE(Call.MakeCall());
  EXPECT_TRUE(Host.FakeEditor.Shown.empty());
}

TEST(Editors, ReplaceWhatIsSentAndWhatIsRead) {
  const struct {
    TFakeEditorAnswer Request, Response;
    std::size_t Sent;
    const char* Body;
    std::int32_t Status;
    const char *Message, *ShownStatus;
  } Cases[] = {
      {{.Text = "edited"}, {.Result = Cancel, .Text = "x"}, 1, "edited", 500, "answer", "500"},
      {{}, {}, 1, "first\r\nsecond", 500, "answer", "500"},
      {{.Result = Cancel, .Text = "edited", .Skip = true}, {}, 1, "first\r\nsecond", 500, "answer", "500"},
      {{.Skip = true}, {.Text = R"({"message":"by hand"})", .StatusText = "200"}, 0, "", 200, "by hand", "0"},
      {{.Skip = true}, {.Result = Cancel, .StatusText = "200"}, 0, "", 0, "", "0"},
      {{}, {.StatusText = "abc"}, 1, "first\r\nsecond", 0, "answer", "500"},
      {{}, {.StatusText = ""}, 1, "first\r\nsecond", 0, "answer", "500"},
      {{}, {.StatusText = "200 OK"}, 1, "first\r\nsecond", 0, "answer", "500"},
      {{}, {.Text = "", .StatusText = "200"}, 1, "first\r\nsecond", 200, "", "500"},
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
    EXPECT_EQ(Host.FakeEditor.Shown[1].StatusText, Case.ShownStatus);
    ASSERT_EQ(Host.FakeHTTP.Requests.size(), Case.Sent);
    ASSERT_EQ(Host.LogTable().Rows.size(), Case.Sent) << "what was not sent is not logged";
    if (Case.Sent == 1) {
      EXPECT_EQ(Host.FakeHTTP.LastRequest().Body, Case.Body);
      EXPECT_EQ(Host.LogColumn("cStatus")[0], "500") << "the row shows what the service said";
    }
  }
}

TEST(Editors, ErrorsAreProgramErrorsAndFreeTheForm) {
  const struct {
    const char* Operation;
    std::size_t Sent, Rows;
  } Cases[] = {
      {"Create", 0, 1}, {"ShowModal", 0, 1}, {"SkipChecked", 0, 1}, {"SetStatusText", 1, 2}, {"StatusText", 1, 2}};
  for (const auto& Case : Cases) {
    TInteractiveHost Host;
    Host.FakeEditor.RequestAnswers.push_back({});
    Host.FakeEditor.ResponseAnswers.push_back({});
    Host.FakeEditor.Faults.FailOn(Case.Operation, TFault::NonStandard());
    EXPECT_EQ(ErrorOf([] { TPost().MakeCall(); }), ProgramError) << Case.Operation;
    EXPECT_EQ(Host.FakeEditor.OpenForms(), 0);
    EXPECT_EQ(Host.FakeHTTP.Requests.size(), Case.Sent);
    EXPECT_EQ(Host.LogTable().Rows.size(), Case.Rows);
  }
}

}  // namespace
}  // namespace oxSuperAPI
