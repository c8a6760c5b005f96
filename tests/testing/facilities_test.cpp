#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "oxSuperAPI/testing/uFakeHost.h"

namespace oxSuperAPI {
namespace {

TEST(FakeHost, RegistersItselfForItsLifetime) {
  {
    TFakeHost First;
    EXPECT_EQ(&Host(), &First);
    TFakeHost Unregistered(TFakeRegistration::Leave);
    EXPECT_EQ(&Host(), &First);
  }
  EXPECT_THROW(Host(), TBeamError);
  TFakeHost Later(TFakeRegistration::Leave);
  {
    TFakeHost Replaced;
    RegisterHost(&Later);
  }
  EXPECT_EQ(&Host(), &Later) << "only its own registration is taken away";
  RegisterHost(nullptr);
}

TEST(FakeHTTP, AnswersByAddressThenQueueThenDefault) {
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
  EXPECT_EQ(Get("https://h/b"), "500");
  EXPECT_TRUE(Response.IsEmpty());
  EXPECT_EQ(Log.Text(), "slow\r\nline");
  EXPECT_THROW(Get("https://h/c"), TBeamError) << "nothing was scripted";
  HTTP.DefaultAnswer = TFakeAnswer{.Status = 204};
  EXPECT_EQ(Get("https://h/d"), "204");
  EXPECT_EQ(HTTP.Requests.size(), 5u);
  EXPECT_EQ(HTTP.CountOf("/token"), 1u);
  HTTP.Clear();
  EXPECT_THROW(Get("https://h/auth/token"), TBeamError);
}

TEST(FakeHTTP, KeepsRequestsAndRunsTheirCallbacks) {
  TFakeHTTP HTTP;
  TStringList Log, Response;
  // A host that, in the middle of one call, makes another and changes the script.
  HTTP.Answer(
      {.Status = 200, .Body = "outer", .During = [&](const TFakeRequest& Request) {
         EXPECT_EQ(Request.Body, "a\r\nb");
         HTTP.AnswerURL("inner", 201, "inner");
         TStringList Inner;
         EXPECT_EQ(HTTP.httpNetPut("inner", TStringList({"x: 1", "y: 2"}), TStringList({"body"}), Log, Inner), 201);
       }});
  EXPECT_EQ(HTTP.httpNetPost("outer", {}, TStringList({"a", "b"}), Log, Response), 200);
  EXPECT_EQ(Response.Text(), "outer");
  ASSERT_EQ(HTTP.Requests.size(), 2u);
  EXPECT_EQ(HTTP.Requests[0].Method + HTTP.LastRequest().Method, "PostPut");
  EXPECT_TRUE(HTTP.LastRequest().HasHeader("y: 2"));
  EXPECT_FALSE(HTTP.LastRequest().HasHeader("y"));
  HTTP.Answer({.Fault = TFault::NonStandard(5)});
  EXPECT_THROW(HTTP.httpNetPost("u", {}, {}, Log, Response), int);
  EXPECT_EQ(HTTP.Requests.size(), 3u) << "a request that failed left all the same";
}

TEST(FakeSystem, StandsStillUntilItIsMoved) {
  TFakeSystem System;
  System.Advance(1);
  System.AdvanceSeconds(-120);
  EXPECT_NEAR(System.Now(), 45357.5 - 120.0 / 86400, 1e-9);
  EXPECT_EQ(System.LocalToUTC(45356.25), 45355.0 + 20.0 / 24);
  System.ZoneMinutes = -30;
  EXPECT_EQ(System.LocalToUTC(0), 30.0 / 1440);

  TGUID GUID{};
  System.GUIDCount = 0x0102;
  ASSERT_TRUE(System.CreateGUID(GUID));
  EXPECT_EQ(GUID, (TGUID{0xAB, 0xCD, 0xEF, 0, 0, 0, 0x40, 0, 0x80, 0, 0, 0, 0, 0, 1, 3}));
  const TGUID Before = GUID;
  System.GUIDsWork = false;
  EXPECT_FALSE(System.CreateGUID(GUID));
  EXPECT_EQ(GUID, Before);
}

TEST(FakeEditor, PlaysTheScriptOfEachKindOfForm) {
  TFakeHost Fake(TFakeRegistration::Leave);
  int Opened = 0;
  Fake.FakeEditor.RequestAnswers.push_back({.Text = "edited", .Skip = true, .During = [&] { ++Opened; }});
  Fake.FakeEditor.ResponseAnswers.push_back({.StatusText = "418"});
  {
    const auto Request = Fake.CreateResponseEditor(TEditorKind::Request);
    Request->SetCaption("caption");
    Request->SetLines(TStringList({"one", "two"}));
    EXPECT_THROW(Request->Lines(), TBeamError) << "before it was shown";
    EXPECT_EQ(Request->ShowModal(), mrOk);
    EXPECT_EQ(Request->Lines().Text(), "edited");
    EXPECT_TRUE(Request->SkipChecked());
    EXPECT_THROW(Request->SetStatusText("200"), TBeamError);
    EXPECT_EQ(Fake.FakeEditor.OpenForms(), 1);
  }
  const auto Response = Fake.CreateResponseEditor(TEditorKind::Response);
  Response->SetLines(TStringList({"shown"}));
  Response->SetStatusText("200");
  EXPECT_EQ(Response->ShowModal(), mrOk);
  EXPECT_EQ(Response->Lines().Text(), "shown");
  EXPECT_EQ(Response->StatusText(), "418");
  EXPECT_THROW(Response->SkipChecked(), TBeamError);
  EXPECT_NE(Response->ShowModal(), mrOk) << "nothing scripted: cancelled";
  EXPECT_THROW(Response->StatusText(), TBeamError);

  EXPECT_EQ(Opened, 1);
  ASSERT_EQ(Fake.FakeEditor.Shown.size(), 3u);
  EXPECT_EQ(Fake.FakeEditor.Shown[0].Caption, "caption");
  EXPECT_EQ(Fake.FakeEditor.Shown[0].Lines.Text(), "one\r\ntwo");
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

TEST(Faults, ReachTheFacilitiesOfTheHost) {
  TFakeHost Fake;
  TStringList List;
  TGUID GUID{};
  const auto Form = Fake.FakeEditor.Create(TEditorKind::Response);
  const std::tuple<TFaults&, const char*, std::function<void()>> Cases[] = {
      {Fake.Faults, "HTTPHelper", [&] { Fake.HTTPHelper(); }},
      {Fake.Faults, "Identity", [&] { Fake.Identity(); }},
      {Fake.Faults, "ADOMainConnection", [&] { Fake.ADOMainConnection(); }},
      {Fake.FakeHTTP.Faults, "httpNetPost", [&] { Fake.FakeHTTP.httpNetPost("", List, List, List, List); }},
      {Fake.FakeSettings.Faults, "SetCurrentSystemValue", [&] { SetCurrentSystemValue("", "", false); }},
      {Fake.FakeCipher.Faults, "DefDecrypt", [&] { DefDecrypt(""); }},
      {Fake.FakeIdentity.Faults, "CountryCode", [&] { Fake.Identity().CountryCode(); }},
      {Fake.FakeIdentity.Faults, "CustomerPIN", [&] { Fake.Identity().CustomerPIN(); }},
      {Fake.FakeSystem.Faults, "Now", [&] { Now(); }},
      {Fake.FakeSystem.Faults, "CreateGUID", [&] { Fake.System().CreateGUID(GUID); }},
      {Fake.FakeEditor.Faults, "ShowModal", [&] { Form->ShowModal(); }},
      {Fake.FakeEditor.Faults, "StatusText", [&] { Form->StatusText(); }}};
  for (const auto& [Faults, Operation, Use] : Cases) {
    Faults.FailOnce(Operation, TFault::NonStandard());
    EXPECT_THROW(Use(), int) << Operation;
  }
}

}  // namespace
}  // namespace oxSuperAPI
