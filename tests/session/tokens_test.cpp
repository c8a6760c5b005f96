#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/foundation/uBeamDates.h"

namespace oxSuperAPI {
namespace {

using TAccessor = TBeamToken* (TBeamSuperGlobal::*)();
const TAccessor AllAccessors[] = {&TBeamSuperGlobal::GetAppToken, &TBeamSuperGlobal::GetAdminToken,
                                  &TBeamSuperGlobal::GetCustomerToken};

TEST(TokenCache, FetchesWithTheClientOfChannelAndEnvironment) {
  const std::tuple<std::string, std::string, std::string, std::string> Cases[] = {
      {"Dev", "DEV", "", "1"},
      {"QA", "QA", "https://" OXSUPERAPI_API_HOST_QA, "2"},
      {"Prod", "PROD", "https://" OXSUPERAPI_API_HOST_PROD, "3"}};
  for (const auto& [Name, Forced, Base, IDEnd] : Cases) {
    TTestHost Host;
    Host.FakeIdentity.ForcedEnvironment = Forced;
    Host.AddActivatedCustomer({.Environment = Name, .ClientID = "own&id", .ClientSecret = "own=secret"});
    Host.FakeHTTP.DefaultAnswer = TFakeAnswer{.Body = R"({"access_token":"t","token_type":"Bearer","expires_in":3599,)"
                                                      R"("ext_expires_in":"7200","expires_on":"1709600000",)"
                                                      R"("not_before":1709596400,"resource":"r"})"};
    const std::string OwnID = "client_id=3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f6";
    const std::string Bodies[] = {OwnID + "0" + IDEnd + "&client_secret=secret-application-" + Name,
                                  OwnID + "1" + IDEnd + "&client_secret=secret-administrator-" + Name,
                                  "client_id=own&id&client_secret=own=secret"};
    const char* const Sources[] = {"BeamnSuperGlobal.GetAppToken", "BeamSuperGlobal.GetAdminToken", "GetCustomerToken"};
    const TBeamSuperTokenChannel Channels[] = {bstcApp, bstcAdmin, bstcCustomer};
    for (std::size_t Channel = 0; Channel < 3; ++Channel) {
      SCOPED_TRACE(Name + Sources[Channel]);
      TBeamToken* Token = (Global().*AllAccessors[Channel])();
      ASSERT_NE(Token, nullptr);
      EXPECT_EQ((Global().*AllAccessors[Channel])(), Token) << "cached";
      EXPECT_EQ(Host.FakeHTTP.Requests.size(), Channel + 1);
      EXPECT_EQ(Host.LastSent(), "Post " + Base + "/auth/token|Content-Type: application/x-www-form-urlencoded|" +
                                     Bodies[Channel] + "&grant_type=client_credentials");
      EXPECT_EQ(Host.LogColumn("cSource").back(), Sources[Channel]);
      EXPECT_EQ(Host.LogColumn("cRequestBody").back().find("secret-"), std::string::npos) << "secrets are masked";
      EXPECT_EQ(Token->TokenChannel, Channels[Channel]);
      EXPECT_EQ(std::to_string(static_cast<int>(Token->Environment)), IDEnd);
      EXPECT_EQ(Token->TokenString + Token->TokenType + Token->ExpiresIn + Token->ExtExpiresIn + Token->ExpiresOn +
                    Token->NotBefore + Token->Resource,
                "tBearer3599720017096000001709596400r");
    }
  }
}

TEST(TokenCache, KeepsATokenForTwoMinutesBeyondItsExpiry) {
  const std::pair<const char*, double> Cases[] = {{"\"3600\"", 3600}, {"60", 60},  {"\"abc\"", 0},
                                                  {"\"\"", 0},        {"null", 0}, {"\"12.5\"", 0}};
  for (const TAccessor Accessor : AllAccessors)
    for (const auto& [ExpiresIn, Seconds] : Cases) {
      SCOPED_TRACE(ExpiresIn);
      TTestHost Host;
      Host.AddActivatedCustomer();
      Host.FakeHTTP.AnswerURL("/auth/token", 200, std::string(R"({"expires_in":)") + ExpiresIn + "}");
      (Global().*Accessor)();
      Host.FakeSystem.AdvanceSeconds(Seconds + 119.99);
      (Global().*Accessor)();
      EXPECT_EQ(Host.FakeHTTP.Requests.size(), 1u);
      Host.FakeSystem.AdvanceSeconds(0.01);
      (Global().*Accessor)();
      EXPECT_EQ(Host.FakeHTTP.Requests.size(), 2u) << "exactly 120 seconds";
    }
}

TEST(TokenCache, KeepsTheLastCallsTextsSwappedForTwoChannels) {
  const std::string Refused = "No token returned\r\nerror=E\r\nerror_description=D\r\nerror_codes=[7]";
  const auto Last = [] {
    return TLines{Global().LastAPICallStatus(), Global().LastAPICallError(), Global().LastAPICallMessage()};
  };
  for (const TAccessor Accessor : AllAccessors) {
    TTestHost Host;
    Host.AddActivatedCustomer();
    const auto Use = [&] { return (Global().*Accessor)(); };
    const bool Admin = Accessor == &TBeamSuperGlobal::GetAdminToken;
    const TLines AfterRefusal = {Refused, "E", Admin ? "GetAdminToken " + Refused : "[7]"};
    Host.FakeHTTP.Answer(
        400, R"({"access_token":"no","expires_in":"3600","error":"E","error_description":"D","error_codes":[7]})");
    const TBeamToken* Stale = Use();
    EXPECT_EQ(Stale->TokenString, "");
    EXPECT_TRUE(CompareDateTime(Stale->ExpiryDate, Host.FakeSystem.Time - 1) == 0);
    EXPECT_EQ(Last(), AfterRefusal);
    Host.FakeHTTP.Answer({.Fault = TFault::Standard("reset")});
    EXPECT_EQ(ErrorOf(Use), ProgramError);
    EXPECT_EQ(Last(), AfterRefusal) << "an error leaves the texts as they were";
    Host.FakeHTTP.Answer(200, R"({"access_token":"t"})");
    EXPECT_EQ(Use()->TokenString, "t");
    EXPECT_EQ(Last(), (TLines{"Token generated", "", Admin ? "GetAdminToken Token generated" : "200"}));
  }
}

TEST(Token, EmptiesTheSlotOfItsChannelWhoeverMadeIt) {
  const auto MakeAndDestroy = [](TBeamSuperTokenChannel Channel) {
    TBeamToken Token;
    Token.TokenChannel = Channel;
  };
  const std::tuple<TBeamSuperTokenChannel, TAccessor, bool> Cases[] = {
      {bstcCustomer, &TBeamSuperGlobal::GetCustomerToken, true},
      {bstcApp, &TBeamSuperGlobal::GetAppToken, true},
      {bstcAdmin, &TBeamSuperGlobal::GetAdminToken, false},
      {bstcNone, &TBeamSuperGlobal::GetCustomerToken, false}};
  for (const auto& [Channel, Accessor, Empties] : Cases) {
    TActivatedHost Host;
    MakeAndDestroy(Channel);
    EXPECT_EQ(TBeamSuperGlobal::FBeamSuperGlobal, nullptr) << "a dying token makes no instance";
    (Global().*Accessor)();
    MakeAndDestroy(Channel);
    (Global().*Accessor)();
    EXPECT_EQ(Host.FakeHTTP.Requests.size(), Empties ? 2u : 1u);
    if (Empties) std::default_delete<TBeamToken>()((Global().*Accessor)());  // even the cached one
  }
}

}  // namespace
}  // namespace oxSuperAPI
