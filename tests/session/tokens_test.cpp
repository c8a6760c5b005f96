#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/foundation/uBeamDates.h"

namespace oxSuperAPI {
namespace {

bool SameMoment(TDateTime Left, TDateTime Right) {
  return CompareDateTime(Left, Right) == 0;
}

using TAccessor = TBeamToken* (TBeamSuperGlobal::*)();
const TAccessor AllAccessors[] = {&TBeamSuperGlobal::GetAppToken, &TBeamSuperGlobal::GetAdminToken,
                                  &TBeamSuperGlobal::GetCustomerToken};

TEST(TokenCache, FetchesWithTheClientOfChannelAndEnvironment) {
  const struct {
    const char *Forced, *URL, *AppID, *AdminID;
  } Cases[] = {
      {"DEV", "https://" OXSUPERAPI_API_HOST_DEV, "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f601",
       "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f611"},
      {"QA", "https://" OXSUPERAPI_API_HOST_QA, "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f602",
       "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f612"},
      {"PROD", "https://" OXSUPERAPI_API_HOST_PROD, "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f603",
       "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f613"},
  };
  const char* const Names[] = {"Dev", "QA", "Prod"};
  for (std::size_t Case = 0; Case < 3; ++Case) {
    TTestHost Host;
    Host.FakeIdentity.ForcedEnvironment = Cases[Case].Forced;
    Host.AddActivatedCustomer({.Environment = Names[Case], .ClientID = "own&id", .ClientSecret = "own=secret"});
    Host.FakeHTTP.DefaultAnswer = TFakeAnswer{.Body = R"({"access_token":"t","token_type":"Bearer","expires_in":3599,)"
                                                      R"("ext_expires_in":"7200","expires_on":"1709600000",)"
                                                      R"("not_before":1709596400,"resource":"r"})"};
    const std::string Environment = Names[Case];
    const std::string Bodies[] = {
        std::string("client_id=") + Cases[Case].AppID + "&client_secret=secret-application-" + Environment,
        std::string("client_id=") + Cases[Case].AdminID + "&client_secret=secret-administrator-" + Environment,
        "client_id=own&id&client_secret=own=secret"};
    const char* const Sources[] = {"BeamnSuperGlobal.GetAppToken", "BeamSuperGlobal.GetAdminToken", "GetCustomerToken"};
    const TBeamSuperTokenChannel Channels[] = {bstcApp, bstcAdmin, bstcCustomer};
    for (std::size_t Channel = 0; Channel < 3; ++Channel) {
      SCOPED_TRACE(Environment + Sources[Channel]);
      TBeamToken* Token = (Global().*AllAccessors[Channel])();
      ASSERT_NE(Token, nullptr);
      EXPECT_EQ((Global().*AllAccessors[Channel])(), Token) << "cached";
      const TFakeRequest& Request = Host.FakeHTTP.LastRequest();
      EXPECT_EQ(Request.Method, "Post");
      EXPECT_EQ(Request.URL, std::string(Cases[Case].URL) + "/auth/token");
      EXPECT_EQ(Request.Headers, TLines{"Content-Type: application/x-www-form-urlencoded"});
      EXPECT_EQ(Request.Body, Bodies[Channel] + "&grant_type=client_credentials");
      EXPECT_EQ(Host.FakeHTTP.Requests.size(), Channel + 1);
      EXPECT_EQ(Host.LogColumn("cSource").back(), Sources[Channel]);
      EXPECT_EQ(Token->TokenChannel, Channels[Channel]);
      EXPECT_EQ(static_cast<std::size_t>(Token->Environment), Case + 1);
      EXPECT_EQ(Token->TokenString + Token->TokenType + Token->ExpiresIn + Token->ExtExpiresIn + Token->ExpiresOn +
                    Token->NotBefore + Token->Resource,
                "tBearer3599720017096000001709596400r");
      EXPECT_TRUE(SameMoment(Token->ExpiryDate, IncSeconds(Host.FakeSystem.Time, 3599)));
    }
    for (const std::string& Body : Host.LogColumn("cRequestBody"))
      EXPECT_EQ(Body.find("secret-"), std::string::npos) << "secrets are masked in the call log";
    for (const std::string& Line : Host.LogLines()) EXPECT_EQ(Line.find("secret-"), std::string::npos);
  }
}

TEST(TokenCache, KeepsATokenForTwoMinutesBeyondItsExpiry) {
  for (const TAccessor Accessor : AllAccessors) {
    const struct {
      const char* ExpiresIn;  // as JSON
      double Seconds;
    } Cases[] = {{"\"3600\"", 3600}, {"60", 60}, {"\"abc\"", 0}, {"\"\"", 0}, {"null", 0}, {"\"12.5\"", 0}};
    for (const auto& Case : Cases) {
      SCOPED_TRACE(Case.ExpiresIn);
      TTestHost Host;
      Host.AddActivatedCustomer();
      Host.FakeHTTP.AnswerURL("/auth/token", 200, std::string(R"({"expires_in":)") + Case.ExpiresIn + "}");
      (Global().*Accessor)();
      Host.FakeSystem.AdvanceSeconds(Case.Seconds + 60);
      (Global().*Accessor)();
      Host.FakeSystem.AdvanceSeconds(59.99);
      (Global().*Accessor)();
      EXPECT_EQ(Host.FakeHTTP.Requests.size(), 1u);
      Host.FakeSystem.AdvanceSeconds(0.01);
      (Global().*Accessor)();
      EXPECT_EQ(Host.FakeHTTP.Requests.size(), 2u) << "exactly 120 seconds";
    }
  }
}

TEST(TokenCache, HandsOutAStaleTokenAfterAFailureAndTriesAgainNextTime) {
  for (const TAccessor Accessor : AllAccessors) {
    TTestHost Host;
    Host.AddActivatedCustomer();
    Host.FakeHTTP.AnswerURL("/auth/token", 401, R"({"access_token":"no","expires_in":"3600"})");
    for (std::size_t Round = 1; Round <= 2; ++Round) {
      const TBeamToken* Token = (Global().*Accessor)();
      ASSERT_NE(Token, nullptr);
      EXPECT_EQ(Token->TokenString, "");
      EXPECT_TRUE(SameMoment(Token->ExpiryDate, Host.FakeSystem.Time - 1));
      EXPECT_EQ(Host.FakeHTTP.Requests.size(), Round);
    }
  }
}

TEST(TokenCache, KeepsTheLastCallsTextsSwappedForTwoChannels) {
  const std::string Refused = "No token returned\r\nerror=E\r\nerror_description=D\r\nerror_codes=[7]";
  for (std::size_t Channel = 0; Channel < 3; ++Channel) {
    TTestHost Host;
    Host.AddActivatedCustomer();
    const auto Use = [&] { return (Global().*AllAccessors[Channel])(); };
    const bool Admin = Channel == 1;
    Host.FakeHTTP.Answer(400, R"({"error":"E","error_description":"D","error_codes":[7]})");
    Use();
    EXPECT_EQ(Global().LastAPICallStatus(), Refused);
    EXPECT_EQ(Global().LastAPICallError(), "E");
    EXPECT_EQ(Global().LastAPICallMessage(), Admin ? "GetAdminToken " + Refused : "[7]");
    Host.FakeHTTP.Answer({.Fault = TFault::Standard("reset")});
    EXPECT_EQ(ErrorOf(Use), ProgramError);
    EXPECT_EQ(Global().LastAPICallError(), "E") << "an error leaves the texts as they were";
    Host.FakeHTTP.Answer(200, R"({"access_token":"t"})");
    EXPECT_EQ(Use()->TokenString, "t");
    EXPECT_EQ(Global().LastAPICallStatus(), "Token generated");
    EXPECT_EQ(Global().LastAPICallError(), "");
    EXPECT_EQ(Global().LastAPICallMessage(), Admin ? "GetAdminToken Token generated" : "200");
  }
}

TEST(Token, IsExpiredFromTheEndOfItsBuffer) {
  TTestHost Host;
  TBeamToken Token;
  Token.ExpiryDate = Host.FakeSystem.Time;
  EXPECT_TRUE(Token.IsExpired(0));
  EXPECT_FALSE(Token.IsExpired(1));
  EXPECT_TRUE(Token.IsExpired(-3600));
  Token.ExpiryDate = IncSeconds(Host.FakeSystem.Time, -120);
  EXPECT_TRUE(Token.IsExpired(120));
  EXPECT_FALSE(Token.IsExpired(121));
}

void MakeAndDestroy(TBeamSuperTokenChannel Channel) {
  TBeamToken Token;
  Token.TokenChannel = Channel;
}

TEST(Token, EmptiesTheSlotOfItsChannelWhoeverMadeIt) {
  const struct {
    TBeamSuperTokenChannel Channel;
    TAccessor Accessor;
    bool Empties;
  } Cases[] = {{bstcCustomer, &TBeamSuperGlobal::GetCustomerToken, true},
               {bstcApp, &TBeamSuperGlobal::GetAppToken, true},
               {bstcAdmin, &TBeamSuperGlobal::GetAdminToken, false},
               {bstcNone, &TBeamSuperGlobal::GetCustomerToken, false}};
  for (const auto& Case : Cases) {
    TTestHost Host;
    MakeAndDestroy(Case.Channel);
    EXPECT_EQ(TBeamSuperGlobal::FBeamSuperGlobal, nullptr) << "a dying token makes no instance";
    Host.AddActivatedCustomer();
    Host.AnswerTokens();
    (Global().*Case.Accessor)();
    MakeAndDestroy(Case.Channel);
    (Global().*Case.Accessor)();
    EXPECT_EQ(Host.FakeHTTP.Requests.size(), Case.Empties ? 2u : 1u);
    if (Case.Empties) std::default_delete<TBeamToken>()((Global().*Case.Accessor)());  // even the cached one
  }
}

}  // namespace
}  // namespace oxSuperAPI
