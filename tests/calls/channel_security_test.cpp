#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/calls/uBeamAPICalls.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"

namespace oxSuperAPI {
namespace {

struct TOutcome {
  bool Result = false;
  std::string Message = "old", Error = "old", Status = "old", ClientID = "old", ClientSecret = "old";
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

TEST(ChannelSecurity, SendsTheCustomerWithTheTokenOfTheAction) {
  const struct {
    TAction Action;
    const char *Path, *TokenSource;
  } Cases[] = {{TAction::Register, "register/U", "BeamSuperGlobal.GetAdminToken"},
               {TAction::Activate, "activate/U", "BeamnSuperGlobal.GetAppToken"},
               {TAction::Reissue, "reissue/U", "GetCustomerToken"}};
  for (const auto& Case : Cases) {
    TActivatedHost Host;
    Host.FakeHTTP.Answer(200, R"({"message":"m","errorCode":"e","status":"s"})");
    const TOutcome Out = Call(Case.Action);
    EXPECT_TRUE(Out.Result);
    EXPECT_EQ(Out.Message + Out.Error + Out.Status, "mes");
    ASSERT_EQ(Host.FakeHTTP.Requests.size(), 2u);
    const TFakeRequest& Request = Host.FakeHTTP.Requests[1];
    EXPECT_EQ(Request.Method, "Post");
    EXPECT_EQ(Request.URL, Dev + "/clearing-house/channel-security/" + Case.Path);
    EXPECT_EQ(Request.Headers, TLines{"authorization: Bearer abc"});
    EXPECT_EQ(Request.Body, R"({"UUID":"U","CustomerNumber":"N","CompanyName":"C","PIN":"P"})");
    EXPECT_EQ(Host.LogColumn("cSource"), (TLines{Case.TokenSource, "Host.Form"}));
    EXPECT_EQ(Host.LogColumn("cRequestBody")[1], R"({"UUID":"*","CustomerNumber":"N","CompanyName":"C","PIN":"P"})");
  }
}

TEST(ChannelSecurity, CutsTheCompanyNameToFiftyUTF16Units) {
  const std::string Emoji = "\xF0\x9F\x98\x80", A48(48, 'a');
  const std::pair<std::string, std::string> Cases[] = {
      {std::string(60, 'x'), std::string(50, 'x')},
      {A48 + Emoji + "z", A48 + Emoji},
      {A48 + "b" + Emoji + "z", A48 + "b"},
      {" two blanks ", " two blanks "},
      {std::string(49, 'x') + "\xC3\xA9z", std::string(49, 'x') + "\xC3\xA9"},
  };
  for (const TAction Action : AllActions)
    for (const auto& [Name, Sent] : Cases) {
      TActivatedHost Host;
      Host.FakeHTTP.Answer(200, "{}");
      Call(Action, Name);
      EXPECT_EQ(Host.FakeHTTP.LastRequest().Body,
                "{\"UUID\":\"U\",\"CustomerNumber\":\"N\",\"CompanyName\":\"" + Sent + "\",\"PIN\":\"P\"}");
    }
}

TEST(ChannelSecurity, NamesTheFirstThingThatIsMissing) {
  const struct {
    const char *Company, *UUID, *PIN, *Number, *Missing;
  } Cases[] = {{"", "", "", "", "CompanyName"},
               {"C", " ", "", "", "UUID"},
               {"C", "U", "", "", "PIN"},
               {"C", "U", "P", "\t", "CustomerNumber"}};
  for (const TAction Action : AllActions) {
    for (const auto& Case : Cases) {
      TActivatedHost Host;
      const TOutcome Out = Call(Action, Case.Company, Case.UUID, Case.PIN, Case.Number);
      EXPECT_FALSE(Out.Result);
      EXPECT_EQ(Out.Message, NotValid + Case.Missing + " is Mandatory");
      EXPECT_EQ(Out.Error + Out.Status, "");
      EXPECT_EQ(Host.RequestNames(), TLines{"token"});
      EXPECT_EQ(Host.LogTable().Rows.size(), 1u);
    }
    TActivatedHost Host;
    EXPECT_FALSE(Call(Action, std::string(50, ' ') + "name").Result) << "nothing is left of the name after the cut";
  }
}

TEST(ChannelSecurity, ReadsThePairUnderTheSpellingOfTheEndpoint) {
  const char Capital[] = R"({"ClientID":"i","ClientSecret":"s"})";
  const char Small[] = R"({"clientId":"i","clientSecret":"s"})";
  for (const auto& [Body, Registered] : {std::pair{Capital, true}, {Small, false}}) {
    TActivatedHost Host;
    Host.FakeHTTP.AnswerURL("/channel-security/", 200, Body);
    TBeamRegister Register;
    Register.SetToken("own");
    static_cast<TBeamAPICall&>(Register).SetToken("the base's");
    Register.SetCompanyName("C");
    Register.SetUUID("U");
    Register.SetPIN("P");
    Register.SetCustomerNumber("N");
    EXPECT_TRUE(Register.MakeCall());
    EXPECT_EQ(Register.ClientID() + Register.ClientSecret(), Registered ? "is" : "");
    EXPECT_EQ(Host.FakeHTTP.LastRequest().Headers, TLines{"authorization: Bearer own"});
    const TOutcome Out = Call(TAction::Activate);
    EXPECT_EQ(Out.ClientID + Out.ClientSecret, Registered ? "" : "is");
  }
}

TEST(ChannelSecurity, HasOneAnswerToABadRequestButForRegistering) {
  for (const TAction Action : AllActions) {
    TActivatedHost Host;
    Host.FakeHTTP.Answer(400, R"({"message":"m","errorCode":"e","status":"s","clientId":"i","clientSecret":"x"})");
    const TOutcome Out = Call(Action);
    EXPECT_FALSE(Out.Result);
    if (Action == TAction::Register) {
      EXPECT_EQ(Out.Message + Out.Error + Out.Status, "mes");
      continue;
    }
    EXPECT_EQ(Out.Message, "The Registration Code of the Common database has not been Pre-Registered with Beam");
    EXPECT_EQ(Out.Error + Out.Status, "");
    EXPECT_EQ(Out.ClientID + Out.ClientSecret, "ix");
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
