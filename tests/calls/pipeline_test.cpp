#include <gtest/gtest.h>

#include <functional>

#include "../support/test_host.h"
#include "oxSuperAPI/calls/uBeamAPICalls.h"

namespace oxSuperAPI {
namespace {

/// An endpoint whose every step a test decides.
class TCall : public TBeamAPICall {
 public:
  TLines Steps, BodyProblems, ParameterProblems;
  std::function<void()> OnExtract;

  explicit TCall(TBeamCallMethod Method = bcmPost) {
    SetSource("Host.Test");
    SetURLChannel("/c");
    SetBeamCallMethod(Method);
  }
  void SetRequestHeaders() override {
    Steps.push_back("headers");
    Headers().Add("a: 1");
    Headers().Add("b: 2");
  }
  void SetRequestBody() override {
    Steps.push_back("body");
    Body().Add("{\"uuid\":\"1\",");
    Body().Add("}");
  }
  bool ValidateRequestBody() override { return Check("validate body", BodyProblems); }
  bool ValidateCommandParameters() override { return Check("validate parameters", ParameterProblems); }
  void ExtractValuesFromResponse() override {
    Steps.push_back("extract");
    if (OnExtract) OnExtract();
    TBeamAPICall::ExtractValuesFromResponse();
  }
  std::string ClassName() const override { return "TCall"; }

 private:
  bool Check(const char* Step, const TLines& Problems) {
    Steps.push_back(Step);
    bool Valid = true;
    for (const std::string& Problem : Problems) Valid = IsMandatoryPropertyPresent(Problem, " \t ") && Valid;
    return Valid;
  }
};

TEST(URL, IsComposedOfBaseChannelAndCommand) {
  const struct {
    const char *Channel, *Command, *Expected;
  } Cases[] = {
      {"", "", ""},
      {"", "x", "/x"},
      {"", "?x", "?x"},
      {"", "/x", "//x"},
      {"a", "", "/a"},
      {"a", "b", "/a"},
      {"a", "?b", "/a"},
      {"/a", "", "/a"},
      {"/a", "b", "/a/b"},
      {"/a", "/b", "/a/b"},
      {"/a", "?x=1", "/a?x=1"},
      {" /a ", " b ", "/a/b"},
      {"/a", "  ", "/a"},
      {"/a", "b c/\xC3\xA9", "/a/b c/\xC3\xA9"},
  };
  for (const auto& Case : Cases) {
    TTestHost Host;
    TBeamAPICall Call;
    Call.SetURLChannel(Case.Channel);
    Call.SetURLCommand(Case.Command);
    EXPECT_EQ(Call.URLBase(), Dev + Case.Expected) << Case.Channel << " and " << Case.Command;
  }
  TTestHost Host;
  TBeamAPICall Call;
  EXPECT_EQ(Call.URLBase(), "");
  for (const auto& [Channel, Expected] : {std::pair{"", ""}, {" ", ""}, {"a", "/a"}, {" /a ", "/a"}}) {
    Call.SetURLChannel(Channel);
    EXPECT_EQ(Call.URLBase(), Dev + Expected);
  }
  EXPECT_EQ(Call.URLChannel(), "/a");
  Call.SetURLCommand(" x ");
  EXPECT_EQ(Call.URLCommand(), "x");
  Call.SetURL(" as given ");
  EXPECT_EQ(Call.URLBase(), " as given ");
}

TEST(URL, TakesItsBaseAtEachComposition) {
  TTestHost Host;
  Host.FakeIdentity.Domain = "CORP";
  TBeamAPICall Call;
  Call.SetURLChannel("/a");
  EXPECT_EQ(Call.URLBase(), "https://" OXSUPERAPI_API_HOST_PROD "/a");
  Host.FakeIdentity.Country = 1;
  Call.SetURLCommand("b");
  EXPECT_EQ(Call.URLBase(), Dev + "/a/b");
}

TEST(Pipeline, SendsOneRequestAndWritesOneRow) {
  for (const auto& [Method, Name] : {std::pair{bcmPost, "Post"}, {bcmGet, "Get"}, {bcmPut, "Put"}}) {
    TTestHost Host;
    Host.FakeHTTP.Answer({.Status = 200, .Body = "{\"uuid\":\"23\"}", .LogDetails = {"slow", "uuid 4"}});
    TCall Call(Method);
    EXPECT_TRUE(Call.MakeCall());
    EXPECT_EQ(Call.Steps, (TLines{"headers", "body", "validate body", "validate parameters", "extract"}));
    ASSERT_EQ(Host.FakeHTTP.Requests.size(), 1u);
    const TFakeRequest& Request = Host.FakeHTTP.Requests[0];
    EXPECT_EQ(Request.Method, Name);
    EXPECT_EQ(Request.URL, Dev + "/c");
    EXPECT_EQ(Request.Headers, (TLines{"a: 1", "b: 2"}));
    EXPECT_EQ(Request.Body, Method == bcmGet ? "" : "{\"uuid\":\"1\",\r\n}");
    ASSERT_EQ(Host.LogTable().Rows.size(), 1u);
    const std::pair<const char*, std::string> Columns[] = {{"cSource", "Host.Test"},
                                                           {"cURL", Dev + "/c"},
                                                           {"cMethod", Name},
                                                           {"cRequestHeader", "a: 1\r\nb: 2"},
                                                           {"cStatus", "200"},
                                                           {"cRequestBody", "{\"uuid\":\"*\",\r\n}"},
                                                           {"cLogDetails", "slow\r\nuuid *"},
                                                           {"cResponse", "{\"uuid\":\"**\"}"}};
    for (const auto& [Column, Expected] : Columns) EXPECT_EQ(Host.LogColumn(Column)[0], Expected) << Column;
    EXPECT_EQ(Call.SuperLogID(), 1);
  }
}

TEST(Pipeline, SendsAndLogsNothingThatIsNotValid) {
  const struct { TLines Body, Parameters, Expected; } Cases[] = {{{"A", "B"}, {"C"}, {"A", "B"}}, {{}, {"C"}, {"C"}}};
  for (const auto& Case : Cases) {
    TTestHost Host;
    TCall Call;
    Call.BodyProblems = Case.Body;
    Call.ParameterProblems = Case.Parameters;
    EXPECT_FALSE(Call.MakeCall());
    std::string Report = "No API call made due to validation errors:";
    for (const std::string& Name : Case.Expected) Report += "\r\n" + Name + " is Mandatory";
    EXPECT_EQ(Call.ResponseMessage(), Report);
    EXPECT_EQ(Call.ResponseError() + Call.ResponseStatus(), "");
    EXPECT_EQ(Call.StatusCode(), 0);
    EXPECT_EQ(Call.SuperLogID(), 0);
    EXPECT_EQ(Call.Steps.size(), Case.Body.empty() ? 4u : 3u);
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
    EXPECT_TRUE(Host.LogTable().Rows.empty());
  }
}

TEST(Pipeline, ReadsStatusMessageAndErrorFromAJSONAnswer) {
  const struct {
    std::int32_t Code;
    const char* Body;
    bool Result, Json;
    const char *Status, *Message, *Error;
  } Cases[] = {
      {200, R"({"status":"ok","message":"m","error":"x","errorCode":"e","Code":"y"})", true, true, "ok", "m", "e"},
      {200, R"({"message":"","error":"er","Code":"c"})", true, true, "200", "er", "c"},
      {200, R"({"Status":"ok","Message":"m","code":"c"})", true, true, "200", "", ""},
      {200, R"({"status":418,"message":null,"error":true,"errorCode":1.50})", true, true, "418", "true", "1.50"},
      {200, R"({"message":{"a":1},"error":"e"})", true, true, "200", "e", ""},
      {200, R"([{"status":"ok"}])", true, true, "200", "", ""},
      {201, "{}", false, true, "201", "", ""},
      {204, "", false, false, "", "", ""},
      {404, R"({"message":"none"})", false, true, "404", "none", ""},
      {200, "plain", true, false, "", "", ""},
      {500, "<html>", false, false, "", "", ""},
      {200, "5", true, false, "", "", ""},
      {200, "\"x\"", true, false, "", "", ""},
      {200, "null", true, false, "", "", ""},
      {200, "{} {}", true, false, "", "", ""},
      // Line breaks: dropped inside strings only, and never so that two tokens become one.
      {200, "\r\n{\r\n\"message\"\r\n:\n\"m\"}\r\n", true, true, "200", "m", ""},
      {200, "{\"message\":\"a\r\nb\nc\",\r\n\"status\":\"s\"}", true, true, "s", "abc", ""},
      {200, "{\"message\":\"a\\nb\"}", true, true, "200", "a\nb", ""},
      {200, "{\"message\":\"q\\\"\r\nb\"}", true, true, "200", "q\"b", ""},
      {200, "{\"message\":1\r\n2}", true, false, "", "", ""},
      {200, "{\"x\":\"a\nb\",\"y\":1\n2}", true, false, "", "", ""},
      {200, "{\"message\":\"a\r\nb", true, false, "", "", ""},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Body);
    TTestHost Host;
    Host.FakeHTTP.Answer(Case.Code, Case.Body);
    TCall Call;
    EXPECT_EQ(Call.MakeCall(), Case.Result);
    EXPECT_EQ(Call.StatusCode(), Case.Code);
    EXPECT_EQ(Call.ResponseAsJson() != nullptr, Case.Json);
    EXPECT_EQ(Call.ResponseStatus(), Case.Status);
    EXPECT_EQ(Call.ResponseMessage(), Case.Message);
    EXPECT_EQ(Call.ResponseError(), Case.Error);
    EXPECT_EQ(Host.LogColumn("cResponse"), TLines{Case.Body});
  }
}

TEST(ProgramError, OfTheTransportIsLoggedOnceAndRaisedFixed) {
  TTestHost Host;
  Host.FakeHTTP.Answer({.LogDetails = {"connected"}, .Fault = TFault::Standard("reset by peer")});
  TCall Call;
  EXPECT_EQ(ErrorOf([&] { Call.MakeCall(); }), ProgramError);
  EXPECT_EQ(Call.ResponseError(), "reset by peer");
  EXPECT_EQ(Call.ResponseMessage(),
            "An error occurred calling the Beam Superannuation API. Check the logs for details");
  EXPECT_EQ(Host.LogColumn("cLogDetails"),
            TLines{"connected\r\nBeam API called from  TCall failed due to reset by peer"});
  EXPECT_EQ(Host.LogColumn("cMethod"), TLines{"Post"});
  EXPECT_EQ(Host.LogColumn("cStatus"), TLines{"0"});
  EXPECT_EQ(Call.SuperLogID(), 1);
  Host.FakeHTTP.Answer({.Fault = TFault::NonStandard()});
  EXPECT_EQ(ErrorOf([&] { Call.MakeCall(); }), ProgramError);
  Host.Faults.FailOn("HTTPHelper", TFault::NonStandard());
  EXPECT_EQ(ErrorOf([&] { Call.MakeCall(); }), ProgramError);
  EXPECT_EQ(Host.LogTable().Rows.size(), 3u);
}

TEST(ProgramError, OfAnUnknownMethodIsLoggedTwice) {
  const struct {
    int Method;
    const char *First, *Second;
  } Cases[] = {{3, "Method=3", "Delete"}, {4, "Method=4", "Patch"}, {9, "Method=9", "Method=9"}};
  for (const auto& Case : Cases) {
    TTestHost Host;
    TCall Call(static_cast<TBeamCallMethod>(Case.Method));
    EXPECT_EQ(ErrorOf([&] { Call.MakeCall(); }), ProgramError);
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
    EXPECT_EQ(Host.LogColumn("cMethod"), (TLines{Case.First, Case.Second}));
    EXPECT_EQ(Host.LogColumn("cStatus"), (TLines{"0", "0"}));
    const std::string Error = "The Beam Superannuation API was called with an unknown Method";
    EXPECT_EQ(
        Host.LogColumn("cLogDetails"),
        (TLines{"Unknown HTTP method", "Unknown HTTP method\r\nBeam API called from  TCall failed due to " + Error}));
    EXPECT_EQ(Call.ResponseError(), Error);
    EXPECT_EQ(Call.SuperLogID(), 2);
  }
}

TEST(ProgramError, OfTheExtractionIsLoggedAgainHoweverOftenItComes) {
  for (const bool Again : {false, true}) {
    TTestHost Host;
    Host.FakeHTTP.Answer(200, R"({"message":"m"})");
    TCall Call;
    Call.OnExtract = [&, First = true]() mutable {
      if (std::exchange(First, false) || Again) throw std::runtime_error("bad amount");
    };
    EXPECT_EQ(ErrorOf([&] { Call.MakeCall(); }), ProgramError);
    EXPECT_EQ(std::count(Call.Steps.begin(), Call.Steps.end(), "extract"), 2);
    EXPECT_EQ(Call.ResponseMessage(), Again ? "" : "m");
    EXPECT_EQ(Host.LogColumn("cStatus"), (TLines{"200", "200"}));
    EXPECT_EQ(Host.LogColumn("cLogDetails"), (TLines{"", "Beam API called from  TCall failed due to bad amount"}));
    EXPECT_EQ(Call.SuperLogID(), 2);
    EXPECT_EQ(Host.FakeHTTP.Requests.size(), 1u);
  }
}

TEST(ProgramError, OfALogThatFailsNeverComes) {
  TTestHost Host;
  Host.FakeHTTP.DefaultAnswer = TFakeAnswer{};
  Host.PayrollConnection.Faults.FailOn("Post", TFault::NonStandard());
  TCall Call;
  EXPECT_TRUE(Call.MakeCall());
  EXPECT_EQ(Call.SuperLogID(), 0);
}

}  // namespace
}  // namespace oxSuperAPI
