#include <gtest/gtest.h>

#include <functional>

#include "../support/test_host.h"
#include "oxSuperAPI/calls/uBeamAPICalls.h"

namespace oxSuperAPI {
namespace {

/// An endpoint whose every step a test decides.
class TCall : public TBeamAPICall {
 public:
  TLines BodyProblems, ParameterProblems;
  std::function<void()> OnExtract = [] {};

  explicit TCall(TBeamCallMethod Method = bcmPost) {
    SetSource("Host.Test");
    SetURLChannel("/c");
    SetBeamCallMethod(Method);
  }
  void SetRequestHeaders() override { Headers() = TStringList({"a: 1", "b: 2"}); }
  void SetRequestBody() override { Body() = TStringList({"{\"uuid\":\"1\",", "}"}); }
  bool ValidateRequestBody() override { return Check(BodyProblems); }
  bool ValidateCommandParameters() override { return Check(ParameterProblems); }
  void ExtractValuesFromResponse() override {
    OnExtract();
    TBeamAPICall::ExtractValuesFromResponse();
  }
  std::string ClassName() const override { return "TCall"; }

 private:
  bool Check(const TLines& Problems) {
    bool Valid = true;
    for (const std::string& Problem : Problems) Valid = IsMandatoryPropertyPresent(Problem, " \t ") && Valid;
    return Valid;
  }
};

TEST(URL, IsComposedOfBaseChannelAndCommand) {
  TTestHost Host;
  const std::tuple<const char*, const char*, const char*> Cases[] = {{"", "", ""},
                                                                     {"", "?x", "?x"},
                                                                     {"", "/x", "//x"},
                                                                     {"a", "b", "/a"},
                                                                     {"/a", "b", "/a/b"},
                                                                     {"/a", "/b", "/a/b"},
                                                                     {"/a", "?x=1", "/a?x=1"},
                                                                     {" /a ", " b ", "/a/b"},
                                                                     {"/a", "b c/\xC3\xA9", "/a/b c/\xC3\xA9"}};
  for (const auto& [Channel, Command, Expected] : Cases) {
    TBeamAPICall Call;
    Call.SetURLChannel(Channel);
    Call.SetURLCommand(Command);
    EXPECT_EQ(Call.URLBase(), Dev + Expected) << Channel << " and " << Command;
  }
}

TEST(Pipeline, SendsOneRequestAndWritesOneRow) {
  for (const auto& [Method, Name] : {std::pair{bcmPost, "Post"}, {bcmGet, "Get"}, {bcmPut, "Put"}}) {
    TTestHost Host;
    Host.FakeHTTP.Answer({.Status = 200, .Body = "{\"uuid\":\"23\"}", .LogDetails = {"slow", "uuid 4"}});
    TCall Call(Method);
    EXPECT_TRUE(Call.MakeCall());
    EXPECT_EQ(Host.FakeHTTP.Requests.size(), 1u);
    EXPECT_EQ(Host.LastSent(),
              std::string(Name) + " /c|a: 1|b: 2|" + (Method == bcmGet ? "" : "{\"uuid\":\"1\",\r\n}"));
    TLines Row;
    for (const char* Column :
         {"cSource", "cURL", "cMethod", "cRequestHeader", "cRequestBody", "cStatus", "cLogDetails", "cResponse"})
      for (const std::string& Text : Host.LogColumn(Column)) Row.push_back(Text);
    EXPECT_EQ(Row, (TLines{"Host.Test", Dev + "/c", Name, "a: 1\r\nb: 2", "{\"uuid\":\"*\",\r\n}", "200",
                           "slow\r\nuuid *", "{\"uuid\":\"**\"}"}));
    EXPECT_EQ(Call.SuperLogID(), 1);
  }
}

TEST(Pipeline, SendsAndLogsNothingThatIsNotValid) {
  for (const bool InBody : {true, false}) {
    TTestHost Host;
    TCall Call;
    if (InBody) Call.BodyProblems = {"A", "B"};
    Call.ParameterProblems = {"C"};
    EXPECT_FALSE(Call.MakeCall());
    EXPECT_EQ(Call.ResponseMessage(), NotValid + (InBody ? "A is Mandatory\r\nB is Mandatory" : "C is Mandatory"));
    EXPECT_EQ(Call.ResponseError() + Call.ResponseStatus(), "");
    EXPECT_EQ(Call.StatusCode(), 0);
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty() && Host.LogTable().Rows.empty());
  }
}

TEST(Pipeline, ReadsStatusMessageAndErrorFromAJSONAnswer) {
  const struct {
    std::int32_t Code;
    const char *Body, *Texts;  ///< message, error code, status
    bool Json = true;
  } Cases[] = {
      {200, R"({"status":"ok","message":"m","error":"x","errorCode":"e","Code":"y"})", "m|e|ok"},
      {200, R"({"message":"","error":"er","Code":"c"})", "er|c|200"},
      {200, R"({"Status":"ok","Message":"m","code":"c"})", "||200"},
      {200, R"({"status":418,"message":null,"error":true,"errorCode":1.50})", "true|1.50|418"},
      {200, R"({"message":{"a":1},"error":"e"})", "e||200"},
      {201, "{}", "||201"},
      {204, "", "||", false},
      {200, "\"x\"", "||", false},
      {200, "{} {}", "||", false},
      // Line breaks: dropped inside strings only, and never so that two tokens become one.
      {200, "\r\n{\r\n\"message\"\r\n:\n\"m\"}\r\n", "m||200"},
      {200, "{\"message\":\"a\r\nb\nc\",\r\n\"status\":\"s\"}", "abc||s"},
      {200, "{\"message\":\"q\\\"\r\nb\"}", "q\"b||200"},
      {200, "{\"x\":\"a\nb\",\"y\":1\n2}", "||", false},
      {200, "{\"message\":\"a\r\nb", "||", false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Body);
    TTestHost Host;
    Host.FakeHTTP.Answer(Case.Code, Case.Body);
    TCall Call;
    EXPECT_EQ(Call.MakeCall(), Case.Code == 200);
    EXPECT_EQ(Call.StatusCode(), Case.Code);
    EXPECT_EQ(Call.ResponseAsJson() != nullptr, Case.Json);
    EXPECT_EQ(Call.ResponseMessage() + "|" + Call.ResponseError() + "|" + Call.ResponseStatus(), Case.Texts);
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
  EXPECT_EQ(Host.LogColumn("cMethod")[0] + Host.LogColumn("cStatus")[0], "Post0");
  EXPECT_EQ(Call.SuperLogID(), 1);
  Host.Faults.FailOn("HTTPHelper", TFault::NonStandard());
  Host.PayrollConnection.Faults.FailOn("Post", TFault::NonStandard());
  EXPECT_EQ(ErrorOf([&] { Call.MakeCall(); }), ProgramError) << "also when the log fails, too";
  EXPECT_EQ(Call.SuperLogID(), 0);
}

TEST(ProgramError, OfAnUnknownMethodIsLoggedTwice) {
  for (const auto& [Method, First, Second] : {std::tuple{3, "Method=3", "Delete"}, {9, "Method=9", "Method=9"}}) {
    TTestHost Host;
    TCall Call(static_cast<TBeamCallMethod>(Method));
    EXPECT_EQ(ErrorOf([&] { Call.MakeCall(); }), ProgramError);
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
    EXPECT_EQ(Host.LogColumn("cMethod"), (TLines{First, Second}));
    EXPECT_EQ(Host.LogColumn("cLogDetails"),
              (TLines{"Unknown HTTP method",
                      "Unknown HTTP method\r\nBeam API called from  TCall failed due to The Beam Superannuation API "
                      "was called with an unknown Method"}));
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
    EXPECT_EQ(Call.ResponseMessage(), Again ? "" : "m");
    EXPECT_EQ(Host.LogColumn("cStatus"), (TLines{"200", "200"}));
    EXPECT_EQ(Host.LogColumn("cLogDetails"), (TLines{"", "Beam API called from  TCall failed due to bad amount"}));
    EXPECT_EQ(Call.SuperLogID(), 2);
    EXPECT_EQ(Host.FakeHTTP.Requests.size(), 1u);
  }
}

}  // namespace
}  // namespace oxSuperAPI
