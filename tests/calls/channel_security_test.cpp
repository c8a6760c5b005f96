#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/calls/uBeamAPICalls.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"

namespace oxSuperAPI {
namespace {

struct TOutcome : TTexts {
  bool Result = false;
  std::string ClientID = "old", ClientSecret = "old";
};

enum class TAction { Register, Activate, Reissue };
constexpr TAction AllActions[] = {TAction::Register, TAction::Activate, TAction::Reissue};

TOutcome Call(TAction Action, const std::string& Company = "C", const std::string& UUID = "U",
              const std::string& PIN = "P", const std::string& Number = "N") {
  TOutcome Out;
  if (Action == TAction::Register)
    Out.Result = PostRegisterCustomer(UUID, Number, Company, PIN, "Host.Form", Out.Message, Out.Error, Out.Status);
  else
    Out.Result = PostActivateCustomer(Action == TAction::Reissue, UUID, Number, Company, PIN, "Host.Form", Out.Message,
                                      Out.Error, Out.Status, Out.ClientID, Out.ClientSecret);
  return Out;
}

TEST(ChannelSecurity, SendsTheCustomerWithTheTokenOfTheActionAndFiftyUTF16UnitsOfTheName) {
  const std::string Emoji = "\xF0\x9F\x98\x80", A47 = " " + std::string(46, 'a');
  for (const auto& [Action, Path, TokenSource, Name, SentName] :
       {std::tuple{TAction::Register, "register", "BeamSuperGlobal.GetAdminToken", A47 + "bcdef", A47 + "bcd"},
        {TAction::Activate, "activate", "BeamnSuperGlobal.GetAppToken", A47 + "b" + Emoji + "c", A47 + "b" + Emoji},
        {TAction::Reissue, "reissue", "GetCustomerToken", A47 + "bc" + Emoji + "d", A47 + "bc"}}) {
    TActivatedHost Host;
    Host.FakeHTTP.Answer(200, R"({"message":"m","errorCode":"e","status":"s"})");
    const TOutcome Out = Call(Action, Name);
    EXPECT_TRUE(Out.Result);
    EXPECT_EQ(Out.All(), "m|e|s");
    const std::string Body = R"(,"CustomerNumber":"N","CompanyName":")" + SentName + R"(","PIN":"P"})";
    EXPECT_EQ(Host.LastSent(), std::string("Post /clearing-house/channel-security/") + Path +
                                   "/U|authorization: Bearer abc|{\"UUID\":\"U\"" + Body);
    EXPECT_EQ(Host.LogColumn("cSource"), (TLines{TokenSource, "Host.Form"}));
    EXPECT_EQ(Host.LogColumn("cRequestBody")[1], "{\"UUID\":\"*\"" + Body);
  }
}

TEST(ChannelSecurity, NamesTheFirstThingThatIsMissing) {
  const std::tuple<const char*, const char*, const char*, const char*, const char*> Cases[] = {
      {"", "", "", "", "CompanyName"},
      {"C", " ", "", "", "UUID"},
      {"C", "U", "", "", "PIN"},
      {"C", "U", "P", "\t", "CustomerNumber"},
      {"                                                  cut away", "U", "P", "N", "CompanyName"}};
  for (const TAction Action : AllActions)
    for (const auto& [Company, UUID, PIN, Number, Missing] : Cases) {
      TActivatedHost Host;
      const TOutcome Out = Call(Action, Company, UUID, PIN, Number);
      EXPECT_FALSE(Out.Result);
      EXPECT_EQ(Out.All(), NotValid + Missing + " is Mandatory||");
      EXPECT_EQ(Host.RequestNames(), TLines{"token"});
      EXPECT_EQ(Host.LogTable().Rows.size(), 1u);
    }
}

TEST(ChannelSecurity, ReadsThePairUnderTheSpellingOfTheEndpoint) {
  for (const bool Capital : {true, false}) {
    TActivatedHost Host;
    const std::string Pair = R"({"clientId":"i","clientSecret":"s"})", Other = R"({"ClientID":"i","ClientSecret":"s"})";
    Host.FakeHTTP.AnswerURL("/channel-security/", 200, Capital ? Other : Pair);
    TBeamRegister Register;
    Register.SetCompanyName("C"), Register.SetUUID("U"), Register.SetPIN("P"), Register.SetCustomerNumber("N");
    EXPECT_TRUE(Register.MakeCall());
    EXPECT_EQ(Register.ClientID() + Register.ClientSecret(), Capital ? "is" : "");
    const TOutcome Out = Call(TAction::Activate);
    EXPECT_EQ(Out.ClientID + Out.ClientSecret, Capital ? "" : "is");
  }
}

TEST(ChannelSecurity, HasOneAnswerToABadRequestButForRegistering) {
  for (const TAction Action : AllActions) {
    const bool Registers = Action == TAction::Register;
    TActivatedHost Host;
    Host.FakeHTTP.Answer(400, R"({"message":"m","errorCode":"e","status":"s","clientId":"i","clientSecret":"x"})");
    const TOutcome Out = Call(Action);
    EXPECT_FALSE(Out.Result);
    EXPECT_EQ(Out.All(), Registers
                             ? "m|e|s"
                             : "The Registration Code of the Common database has not been Pre-Registered with Beam||");
    EXPECT_EQ(Out.ClientID + Out.ClientSecret, Registers ? "oldold" : "ix");
  }
}

TEST(ChannelSecurity, TakesInputsThatAreOutputsToo) {
  TActivatedHost Host;
  Host.FakeHTTP.Answer(200, R"({"clientId":"i"})");
  std::string A = "U", B = "N", C = "C", D = "P", E = "Source";
  EXPECT_TRUE(PostActivateCustomer(false, A, B, C, D, E, A, B, C, D, E));
  EXPECT_EQ(Host.FakeHTTP.LastRequest().Body, R"({"UUID":"U","CustomerNumber":"N","CompanyName":"C","PIN":"P"})");
  EXPECT_EQ(D + E, "i");
}

}  // namespace
}  // namespace oxSuperAPI
