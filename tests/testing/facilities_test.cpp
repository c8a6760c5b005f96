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

TEST(FakeHost, ServesTheLibrarysNames) {
  TFakeHost Fake;
  Fake.FakeSettings.Values["a"] = "stored";
  EXPECT_EQ(GetCurrentSystemValue("a", "default", false), "stored");
  EXPECT_EQ(GetCurrentSystemValue("b", "default", true), "default");
  SetCurrentSystemValue("b", "written", false);
  EXPECT_EQ(Fake.FakeSettings.Values["b"], "written");
  ASSERT_EQ(Fake.FakeSettings.Writes.size(), 1u);
  EXPECT_EQ(Fake.FakeSettings.Writes[0].Name, "b");
  EXPECT_TRUE(Fake.FakeSettings.Reads.at(1).Flag);

  AddToLog("line", TLogSeverity::Warning);
  EXPECT_EQ(Fake.FakeLog.Entries, (std::vector<TFakeLog::TEntry>{{"line", BeamLogKind, TLogSeverity::Warning}}));
  EXPECT_EQ(Now(), 45356.5);
  EXPECT_NE(ParseJSON("{}"), nullptr);
  EXPECT_EQ(Fake.Identity().ScrambledClientSecret("administrator", "QA"), "scr(secret-administrator-QA)");
  EXPECT_EQ(Fake.Identity().ScrambledClientSecret("customer", "QA"), "");

  EXPECT_EQ(Fake.ADOMainCommonConnection(), &Fake.CommonConnection);
  Fake.HasCommonConnection = Fake.HasPayrollConnection = false;
  EXPECT_EQ(Fake.ADOMainCommonConnection(), nullptr);
  EXPECT_EQ(Fake.ADOMainConnection(), nullptr);
}

TEST(FakeHost, SetsUpAnActivatedCustomer) {
  TFakeHost Fake;
  Fake.AddActivatedCustomer({.UCID = "me", .DateLastIssued = 3});
  EXPECT_EQ(DefDecrypt(GetCurrentSystemValue("BeamSuperUCID", "", false)), "me");
  for (const TFakeSide Side : {TFakeSide::Common, TFakeSide::Payroll}) {
    EXPECT_EQ(Fake.CredentialTable(Side).Text(0, "cUCID"), "enc(me)");
    EXPECT_EQ(Fake.CredentialTable(Side).Text(0, "dDateLastIssued"), "3");
  }
  EXPECT_THROW(Fake.CredentialTable(TFakeSide::Both), TBeamError);
}

TEST(FakeCipher, IsReversibleAndRefusesForeignTexts) {
  TFakeCipher Cipher;
  EXPECT_EQ(Cipher.DefEncrypt("a)"), "enc(a))");
  EXPECT_EQ(Cipher.DefDecrypt("enc(a))"), "a)");
  EXPECT_EQ(Cipher.DefDecrypt(Cipher.DefDecrypt(Cipher.DefEncrypt(Cipher.DefEncrypt("x")))), "x");
  EXPECT_EQ(Cipher.DefEncrypt(""), "");
  EXPECT_EQ(Cipher.DefDecrypt(""), "");
  EXPECT_EQ(Cipher.DecodeDecrypt("scr(s)"), "s");
  for (const char* Foreign : {"x", "enc(", "enc()", "enc(x", "scr(x)"})
    EXPECT_THROW(Cipher.DefDecrypt(Foreign), TBeamError);
  EXPECT_THROW(Cipher.DecodeDecrypt("enc(x)"), TBeamError);
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
  try {
    Get("https://h/c");
    ADD_FAILURE() << "nothing was scripted";
  } catch (const TBeamError& Error) {
    EXPECT_STREQ(Error.what(), "The fake HTTP client has no answer for Get https://h/c");
  }
  HTTP.DefaultAnswer = TFakeAnswer{.Status = 204};
  EXPECT_EQ(Get("https://h/d"), "204");
  EXPECT_EQ(HTTP.Requests.size(), 5u);
  EXPECT_EQ(HTTP.CountOf("/token"), 1u);
  HTTP.Clear();
  EXPECT_THROW(HTTP.LastRequest(), TBeamError);
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
  EXPECT_EQ(HTTP.Requests[0].Method, "Post");
  EXPECT_EQ(HTTP.LastRequest().Method, "Put");
  EXPECT_TRUE(HTTP.LastRequest().HasHeader("y: 2"));
  EXPECT_FALSE(HTTP.LastRequest().HasHeader("y"));
  HTTP.Answer({.Body = "never", .LogDetails = {"reset"}, .Fault = TFault::NonStandard(5)});
  Response.Clear();
  EXPECT_THROW(HTTP.httpNetPost("u", {}, {}, Log, Response), int);
  EXPECT_EQ(HTTP.Requests.size(), 3u) << "a request that failed left all the same";
  EXPECT_EQ(Log.Text(), "reset");
  EXPECT_TRUE(Response.IsEmpty());
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

  std::uint32_t Session = 0;
  EXPECT_TRUE(System.ProcessIdToSessionId(System.GetCurrentProcessId(), Session));
  EXPECT_EQ(Session, 1u);
  Session = 0;
  System.SessionQueryWorks = false;
  EXPECT_FALSE(System.ProcessIdToSessionId(System.GetCurrentProcessId(), Session));
  EXPECT_EQ(Session, 0u);
  EXPECT_THROW(System.ProcessIdToSessionId(1, Session), TBeamError);
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
  EXPECT_EQ(Fake.FakeEditor.Shown[1].Kind, TEditorKind::Response);
  EXPECT_EQ(Fake.FakeEditor.Shown[1].StatusText, "200");
  Fake.FakeEditor.Available = false;
  EXPECT_EQ(Fake.CreateResponseEditor(TEditorKind::Request), nullptr);
}

TEST(Faults, AreRaisedInTheirSortAndAtTheirTime) {
  EXPECT_THROW(TFault::Beam("b").Raise(), TBeamError);
  EXPECT_THROW(TFault::NonStandard().Raise(), int);
  try {
    TFault::Standard("s").Raise();
  } catch (const std::exception& Error) {
    EXPECT_STREQ(Error.what(), "s");
    EXPECT_EQ(dynamic_cast<const TBeamError*>(&Error), nullptr);
  }
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

TEST(Faults, ReachEveryOperationOfTheHost) {
  TFakeHost Fake;
  TStringList List;
  TGUID GUID{};
  std::uint32_t Session = 0;
  const auto Form = Fake.FakeEditor.Create(TEditorKind::Response);
  struct TCase {
    TFaults& Faults;
    const char* Operation;
    std::function<void()> Use;
  };
  TFaults& Identity = Fake.FakeIdentity.Faults;
  TFaults& System = Fake.FakeSystem.Faults;
  TFaults& Editor = Fake.FakeEditor.Faults;
  const TCase Cases[] = {
      {Fake.Faults, "HTTPHelper", [&] { Fake.HTTPHelper(); }},
      {Fake.Faults, "JSONParser", [&] { Fake.JSONParser(); }},
      {Fake.Faults, "Settings", [&] { GetCurrentSystemValue("", "", false); }},
      {Fake.Faults, "Cipher", [&] { DefEncrypt("x"); }},
      {Fake.Faults, "Log", [&] { AddToLog("x", TLogSeverity::Error); }},
      {Fake.Faults, "Identity", [&] { Fake.Identity(); }},
      {Fake.Faults, "System", [&] { Now(); }},
      {Fake.Faults, "ADOMainCommonConnection", [&] { Fake.ADOMainCommonConnection(); }},
      {Fake.Faults, "ADOMainConnection", [&] { Fake.ADOMainConnection(); }},
      {Fake.FakeHTTP.Faults, "httpNetGet", [&] { Fake.FakeHTTP.httpNetGet("", List, List, List); }},
      {Fake.FakeHTTP.Faults, "httpNetPost", [&] { Fake.FakeHTTP.httpNetPost("", List, List, List, List); }},
      {Fake.FakeHTTP.Faults, "httpNetPut", [&] { Fake.FakeHTTP.httpNetPut("", List, List, List, List); }},
      {Fake.FakeJSON.Faults, "Parse", [&] { ParseJSON("{}"); }},
      {Fake.FakeSettings.Faults, "GetCurrentSystemValue", [&] { GetCurrentSystemValue("", "", false); }},
      {Fake.FakeSettings.Faults, "SetCurrentSystemValue", [&] { SetCurrentSystemValue("", "", false); }},
      {Fake.FakeCipher.Faults, "DefEncrypt", [&] { DefEncrypt(""); }},
      {Fake.FakeCipher.Faults, "DefDecrypt", [&] { DefDecrypt(""); }},
      {Fake.FakeCipher.Faults, "DecodeDecrypt", [&] { DecodeDecrypt(""); }},
      {Fake.FakeLog.Faults, "AddToLog", [&] { AddToLog("x", TLogSeverity::Error); }},
      {Identity, "CountryCode", [&] { Fake.Identity().CountryCode(); }},
      {Identity, "GetDomainName", [&] { Fake.Identity().GetDomainName(); }},
      {Identity, "ComputerName", [&] { Fake.Identity().ComputerName(); }},
      {Identity, "ForceBeamSuperEnvironment", [&] { Fake.Identity().ForceBeamSuperEnvironment(); }},
      {Identity, "CurrentAgent", [&] { Fake.Identity().CurrentAgent(); }},
      {Identity, "DisplayHTTPRequestEditor", [&] { Fake.Identity().DisplayHTTPRequestEditor(); }},
      {Identity, "DisplayHTTPResponseEditor", [&] { Fake.Identity().DisplayHTTPResponseEditor(); }},
      {Identity, "LoginDatabaseName", [&] { Fake.Identity().LoginDatabaseName(); }},
      {Identity, "CommonDatabaseName", [&] { Fake.Identity().CommonDatabaseName(); }},
      {Identity, "CustomerKey", [&] { Fake.Identity().CustomerKey(); }},
      {Identity, "CustomerPIN", [&] { Fake.Identity().CustomerPIN(); }},
      {Identity, "RegisteredCompanyName", [&] { Fake.Identity().RegisteredCompanyName(); }},
      {Identity, "ScrambledClientSecret", [&] { Fake.Identity().ScrambledClientSecret("", ""); }},
      {System, "Now", [&] { Now(); }},
      {System, "LocalToUTC", [&] { Fake.System().LocalToUTC(0); }},
      {System, "CreateGUID", [&] { Fake.System().CreateGUID(GUID); }},
      {System, "GetCurrentProcessId", [&] { Fake.System().GetCurrentProcessId(); }},
      {System, "ProcessIdToSessionId", [&] { Fake.System().ProcessIdToSessionId(4711, Session); }},
      {Editor, "Create", [&] { Fake.CreateResponseEditor(TEditorKind::Request); }},
      {Editor, "SetCaption", [&] { Form->SetCaption(""); }},
      {Editor, "SetLines", [&] { Form->SetLines(List); }},
      {Editor, "SetStatusText", [&] { Form->SetStatusText(""); }},
      {Editor, "ShowModal", [&] { Form->ShowModal(); }},
      {Editor, "Lines", [&] { Form->Lines(); }},
      {Editor, "StatusText", [&] { Form->StatusText(); }},
      {Editor, "SkipChecked", [&] { Form->SkipChecked(); }},
  };
  for (const TCase& Case : Cases) {
    Case.Faults.FailOnce(Case.Operation, TFault::NonStandard());
    EXPECT_THROW(Case.Use(), int) << Case.Operation;
  }
}

}  // namespace
}  // namespace oxSuperAPI
