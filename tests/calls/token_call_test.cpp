#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/calls/uBeamGetToken.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"

namespace oxSuperAPI {
namespace {

const std::string None = "No token returned";

TEST(TokenCall, SaysWhatCameOfIt) {
  const struct {
    std::int32_t Code;
    const char* Body;
    bool Result;
    std::string Message;
    const char *Error, *Status;
  } Cases[] = {
      {200, R"({"access_token":"t"})", true, "Token generated", "", "200"},
      {200, R"({"status":"ok","errorCode":"e","message":"m"})", true, "Token generated", "e", "ok"},
      {200, "plain", true, "Token generated", "", ""},
      {200, "[]", true, "Token generated", "", "200"},
      {400, R"({"error":"e","error_description":"d","error_codes":[700016, 90002]})", false,
       None + "\r\nerror=e\r\nerror_description=d\r\nerror_codes=[700016,90002]", "e", "[700016,90002]"},
      {400, R"({"error_code":"c","error_codes":[1]})", false, None + "\r\nerror_codes=c", "", "c"},
      {401, R"({"error":"e"})", false, None + "\r\nerror=e", "e", ""},
      {401, R"({"error":"e","message":"base","status":"base","errorCode":"base"})", false, None + "\r\nerror=e", "e",
       ""},
      {500, R"({"error_description":"d"})", false, None + "\r\nResponse=d", "", ""},
      {500, "{}", false, None + "\r\nResponse=", "", ""},
      {500, "plain", false, None + "\r\nResponse=", "", ""},
      {201, R"({"access_token":"t"})", false, None + "\r\nResponse=", "", ""},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Body);
    TTestHost Host;
    Host.FakeHTTP.Answer(Case.Code, Case.Body);
    TBeamToken Token;
    Token.TokenString = Token.ExpiresIn = "before";
    Token.Environment = bsenvAcptQa;
    Token.ExpiryDate = 7;
    std::string Message = "old", Error = "old", Status = "old";
    EXPECT_EQ(GetBeamToken("i&d", "s=&", "Host.Token", &Token, Message, Error, Status), Case.Result);
    EXPECT_EQ(Message, Case.Message);
    EXPECT_EQ(Error, Case.Error);
    EXPECT_EQ(Status, Case.Status);
    const bool Brought = std::string(Case.Body) == R"({"access_token":"t"})";
    EXPECT_EQ(Token.TokenString, Case.Code != 200 ? "before" : Brought ? "t" : "");
    EXPECT_EQ(Token.ExpiresIn, Case.Code != 200 ? "before" : "");
    EXPECT_EQ(Token.Environment, bsenvAcptQa);
    EXPECT_EQ(Token.TokenChannel, bstcNone);
    EXPECT_EQ(Token.ExpiryDate, 7);
    EXPECT_EQ(Host.FakeHTTP.LastRequest().Body, "client_id=i&d&client_secret=s=&&grant_type=client_credentials");
    EXPECT_EQ(Host.LogColumn("cRequestBody"), TLines{"client_id**&d&client_secret***&&grant_type=client_credentials"});
    EXPECT_EQ(Host.LogColumn("cSource"), TLines{"Host.Token"});
  }
}

TEST(TokenCall, SendsNothingWithoutIdOrSecret) {
  for (const auto& [ID, Secret, Missing] :
       {std::tuple{"", "", "ClientID"}, {" ", "s", "ClientID"}, {"i", "\t", "ClientSecret"}}) {
    TTestHost Host;
    std::string Message, Error = "old", Status = "old";
    EXPECT_FALSE(GetBeamToken(ID, Secret, "s", nullptr, Message, Error, Status));
    EXPECT_EQ(Message, None + "\r\nResponse=" + NotValid + Missing + " is Mandatory");
    EXPECT_EQ(Error + Status, "");
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty());
    EXPECT_TRUE(Host.LogTable().Rows.empty());
  }
}

TEST(TokenCall, MakesATokenOfItsOwnWhenItIsGivenNone) {
  TTestHost Host;
  Host.AnswerTokens("abc");
  std::string Message, Error, Status;
  EXPECT_TRUE(GetBeamToken("i", "s", "s", nullptr, Message, Error, Status));
  TBeamGetToken Call;
  EXPECT_EQ(Call.GetTokenString(), "");
  Call.SetClientID("i");
  Call.SetClientSecret("s");
  EXPECT_TRUE(Call.MakeCall());
  ASSERT_NE(Call.BeamToken(), nullptr);
  EXPECT_EQ(Call.BeamToken()->TokenString, "abc");
  EXPECT_EQ(Call.GetTokenString(), "Bearer abc");
}

TEST(TokenCall, LeavesTextsClearedAndTokenUntouchedWhenItRaises) {
  TTestHost Host;
  Host.FakeHTTP.Answer({.Fault = TFault::Standard("refused")});
  TBeamToken Token;
  Token.TokenString = "before";
  std::string Text = "old", Error = "old", Status = "old";
  EXPECT_EQ(ErrorOf([&] { GetBeamToken("i", "s", "s", &Token, Text, Error, Status); }), ProgramError);
  EXPECT_EQ(Text + Error + Status, "");
  EXPECT_EQ(Token.TokenString, "before");
  EXPECT_EQ(Host.LogColumn("cLogDetails"), TLines{"Beam API called from  TBeamGetToken failed due to refused"});
  EXPECT_EQ(Host.LogColumn("cRequestBody"), TLines{"client_id**&client_secret**&grant_type=client_credentials"});
}

}  // namespace
}  // namespace oxSuperAPI
