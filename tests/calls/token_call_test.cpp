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
    std::string Texts;
  } Cases[] = {
      {200, R"({"access_token":"t"})", "Token generated||200"},
      {200, R"({"status":"ok","errorCode":"e","message":"m"})", "Token generated|e|ok"},
      {200, "plain", "Token generated||"},
      {400, R"({"error":"e","error_description":"d","error_codes":[700016, 90002]})",
       None + "\r\nerror=e\r\nerror_description=d\r\nerror_codes=[700016,90002]|e|[700016,90002]"},
      {400, R"({"error_code":"c","error_codes":[1]})", None + "\r\nerror_codes=c||c"},
      {401, R"({"error":"e","message":"base","status":"base","errorCode":"base"})", None + "\r\nerror=e|e|"},
      {500, R"({"error_description":"d"})", None + "\r\nResponse=d||"},
      {500, "plain", None + "\r\nResponse=||"},
      {201, R"({"access_token":"t"})", None + "\r\nResponse=||"},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Body);
    TTestHost Host;
    Host.FakeHTTP.Answer(Case.Code, Case.Body);
    TBeamToken Token;
    Token.TokenString = Token.ExpiresIn = "before";
    Token.ExpiryDate = 7;
    TTexts Out;
    EXPECT_EQ(GetBeamToken("i&d", "s=&", "Host.Token", &Token, Out.Message, Out.Error, Out.Status), Case.Code == 200);
    EXPECT_EQ(Out.All(), Case.Texts);
    EXPECT_EQ(Token.TokenString, Case.Code != 200 ? "before" : &Case == Cases ? "t" : "");
    EXPECT_EQ(Token.ExpiresIn, Case.Code != 200 ? "before" : "");
    EXPECT_EQ(Token.ExpiryDate, 7);
    EXPECT_EQ(Host.FakeHTTP.LastRequest().Body, "client_id=i&d&client_secret=s=&&grant_type=client_credentials");
    EXPECT_EQ(Host.LogColumn("cRequestBody"), TLines{"client_id**&d&client_secret***&&grant_type=client_credentials"});
    EXPECT_EQ(Host.LogColumn("cSource"), TLines{"Host.Token"});
  }
}

TEST(TokenCall, SendsNothingWithoutIdOrSecret) {
  for (const auto& [ID, Secret, Missing] : {std::tuple{" ", "s", "ClientID"}, {"i", "\t", "ClientSecret"}}) {
    TTestHost Host;
    TTexts Out;
    EXPECT_FALSE(GetBeamToken(ID, Secret, "s", nullptr, Out.Message, Out.Error, Out.Status));
    EXPECT_EQ(Out.All(), None + "\r\nResponse=" + NotValid + Missing + " is Mandatory||");
    EXPECT_TRUE(Host.FakeHTTP.Requests.empty() && Host.LogTable().Rows.empty());
  }
}

}  // namespace
}  // namespace oxSuperAPI
