#include <gtest/gtest.h>

#include "oxSuperAPI/testing/uFakeHost.h"

namespace oxSuperAPI {
namespace {

TEST(FakeHost, TakesAwayOnlyItsOwnRegistration) {
  TFakeHost Later(TFakeRegistration::Leave);
  {
    TFakeHost Replaced;
    EXPECT_EQ(&Host(), &Replaced);
    RegisterHost(&Later);
  }
  EXPECT_EQ(&Host(), &Later);
  RegisterHost(nullptr);
  { TFakeHost Passing; }
  EXPECT_THROW(Host(), TBeamError);
}

TEST(FakeHTTP, AnswersByAddressThenQueueThenDefaultAndKeepsWhatWasSent) {
  TFakeHTTP HTTP;
  TStringList Log, Response;
  const auto Get = [&](const std::string& URL) {
    const std::int32_t Status = HTTP.httpNetGet(URL, {}, Log, Response);
    return std::to_string(Status) + Response.Text();
  };
  HTTP.AnswerURL("/auth/token", 200, "old");
  HTTP.AnswerURL("/token", 201, "token");
  HTTP.Answer(404, "first");
  HTTP.Answer({.Status = 500, .LogDetails = {"slow", "line"}});
  EXPECT_EQ(Get("https://h/auth/token"), "201token");
  EXPECT_EQ(Get("https://h/a"), "404first");
  EXPECT_EQ(HTTP.Unused(), 1u);
  EXPECT_EQ(Get("https://h/b"), "500") << "without the body of the answer before";
  EXPECT_EQ(Log.Text(), "slow\r\nline");
  EXPECT_THROW(Get("https://h/c"), TBeamError) << "nothing was scripted";
  HTTP.DefaultAnswer = TFakeAnswer{.Status = 204};
  EXPECT_EQ(Get("https://h/d"), "204");
  HTTP.Answer({.Fault = TFault::NonStandard(5)});
  EXPECT_THROW(Get("https://h/e"), int);
  EXPECT_EQ(HTTP.Requests.size(), 6u) << "a request that failed left all the same";
  EXPECT_EQ(HTTP.CountOf("/token"), 1u);
  HTTP.Clear();
  EXPECT_THROW(Get("https://h/auth/token"), TBeamError);
}

TEST(FakeEditor, RefusesWhatAFormCannotDo) {
  TFakeHost Fake(TFakeRegistration::Leave);
  Fake.FakeEditor.RequestAnswers.emplace_back();
  const auto Request = Fake.CreateResponseEditor(TEditorKind::Request);
  EXPECT_THROW(Request->Lines(), TBeamError) << "before it was shown";
  EXPECT_EQ(Request->ShowModal(), mrOk);
  EXPECT_THROW(Request->SetStatusText("200"), TBeamError);
  const auto Response = Fake.CreateResponseEditor(TEditorKind::Response);
  EXPECT_NE(Response->ShowModal(), mrOk) << "nothing scripted: cancelled";
  EXPECT_THROW(Response->StatusText(), TBeamError);
  EXPECT_THROW(Response->SkipChecked(), TBeamError);
}

TEST(Faults, AreRaisedInTheirSortAndAtTheirTime) {
  EXPECT_THROW(TFault::Beam("b").Raise(), TBeamError);
  EXPECT_THROW(TFault::NonStandard().Raise(), int);
  TFaults Faults{"Do", "Other"};
  EXPECT_THROW(Faults.FailOn("do", TFault::Beam("misspelt")), std::invalid_argument);
  Faults.FailOnce("Do", TFault::Beam("third"), 2);
  Faults.Check("Do");
  Faults.Check("Other");
  Faults.Check("Do");
  EXPECT_THROW(Faults.Check("Do"), TBeamError);
  Faults.Check("Do");
  Faults.FailOn("Do", TFault::Beam("always"));
  for (int Times = 0; Times < 3; ++Times) EXPECT_THROW(Faults.Check("Do"), TBeamError);
  Faults.Clear();
  Faults.Check("Do");
}

}  // namespace
}  // namespace oxSuperAPI
