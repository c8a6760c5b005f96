#include <gtest/gtest.h>

#include <functional>

#include "../support/test_host.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"

namespace oxSuperAPI {
namespace {

/// A call by source "s" that writes its three texts and appends to the other text what else it hands out.
using TUse = std::function<bool(TTexts&, std::string&)>;

/// Makes the call for an activated customer and compares what is sent ("" for nothing) and what comes back.
void Expect(const TUse& Use, std::int32_t Code, const char* Body, const std::string& Sent, const std::string& Expected,
            const std::string& Posted = "") {
  SCOPED_TRACE(Sent + " " + Body);
  TActivatedHost Host;
  Host.FakeHTTP.Answer(Code, Body);
  TTexts Out;
  std::string Found;
  EXPECT_EQ(Use(Out, Found), Code == 200 && !Sent.empty());
  EXPECT_EQ(Out.All() + "|" + Found, Expected);
  ASSERT_EQ(Host.FakeHTTP.Requests.size(), Sent.empty() ? 1u : 2u) << "the token's included";
  EXPECT_EQ(Host.LogColumn("cSource"), Sent.empty() ? TLines{"GetCustomerToken"} : (TLines{"GetCustomerToken", "s"}));
  if (Sent.empty()) return;
  EXPECT_EQ(Host.LastSent(), Sent + "|authorization: Bearer abc|" + Posted);
}

TEST(HealthCheck, PingsWithTheCustomerTokenAndHandsOutTheTexts) {
  const TUse Ping = [](auto& Out, auto&) { return GetHealthCheck("s", Out.Message, Out.Error, Out.Status); };
  const std::string URL = "Get /clearing-house/healthcheck/ping";
  Expect(Ping, 200, "pong", URL, "|||");
  Expect(Ping, 200, R"({"message":"up"})", URL, "up||200|");
  Expect(Ping, 401, R"({"message":"no","errorCode":"E1"})", URL, "no|E1|401|");
}

TEST(PostParticipantDetails, HandsOutTheTokenAndSendsNothingWithoutAParticipantNumber) {
  TBeamParticipantDetails Unnumbered, Mentioned;
  Unnumbered.OrganisationName = "Example Pty Ltd";
  Mentioned.OrganisationName = "a clientParticipantNumber in a text";  // the check looks at the text alone
  const auto Post = [](const TBeamParticipantDetails* Participant) -> TUse {
    return [=](auto& Out, auto& Token) {
      return PostParticipantDetails("s", Participant, Out.Message, Out.Error, Out.Status, Token);
    };
  };
  const std::string URL = "Post /clearing-house/participant-details";
  Expect(Post(&Mentioned), 200, R"({"token":"signup","message":"m"})", URL, "m||200|signup",
         Mentioned.GetAsJsonString());
  Expect(Post(&Mentioned), 200, "plain", URL, "|||", Mentioned.GetAsJsonString());
  Expect(Post(&Mentioned), 400, R"({"message":"m","errorCode":"E","token":"t"})", URL, "m|E|400|t",
         Mentioned.GetAsJsonString());
  const std::string Incomplete = NotValid + "ParticipantDetails are missing or incomplete|||";
  Expect(Post(&Unnumbered), 200, "{}", "", Incomplete);
  Expect(Post(nullptr), 200, "{}", "", Incomplete);
}

TEST(GetParticipantDetails, LoadsEveryJsonAnswer) {
  const TUse Get = [](auto& Out, auto& Found) {
    auto Details = std::make_unique<TBeamParticipantDetails>();
    const bool Result = GetParticipantDetails("s", " P 1 ", Details, Out.Message, Out.Error, Out.Status);
    Found = Details ? Details->OrganisationName : "no result";
    return Result;
  };
  const std::string URL = "Get /clearing-house/participant/P 1";
  Expect(Get, 200, R"({"organisationName":"Org","message":"m"})", URL, "m||200|Org");
  Expect(Get, 404, R"({"message":"not there","Code":"C"})", URL, "not there|C|404|");
  Expect(Get, 200, R"([{"organisationName":"Org"}])", URL, "||200|");
  Expect(Get, 200, "plain", URL, "|||no result");
}

TEST(GetTermsAcceptances, TheCommandNamesTheEmployerOrElseTheAuthority) {
  const auto Get = [](const char* Number, std::int32_t Employer, std::int32_t Authority, const std::string& Command,
                      const std::string& Expected = "||200|u") {
    const TUse Use = [=](auto& Out, auto& Found) {
      auto Terms = std::make_unique<TBeamTermsAcceptance>();
      const bool Result =
          GetTermsAcceptances("s", Number, Employer, Authority, Terms, Out.Message, Out.Error, Out.Status);
      Found = Terms ? Terms->UserAcceptingTermsAndConditions : "no result";
      return Result;
    };
    Expect(Use, 200, R"({"userAcceptingTermsAndConditions":"u"})",
           Command.empty() ? "" : "Get /clearing-house/participant/" + Command + "/terms-acceptance", Expected);
  };
  Get("P1", 5, 0, "P1/employer/5");
  Get("P1", 0, 7, "P1/directDebitAuthority/7");
  Get("P1 ", -1, -2, "P1");
  Get("P1", 5, -7, "P1/employer/5");
  const std::string Exclusive = "EmployerId and DDAuthorityID are mutually exclusive|||no result";
  Get("P1", 3, 4, "", NotValid + Exclusive);
  Get(" ", 3, 4, "", NotValid + "ParticipantNumber is Mandatory\r\n" + Exclusive);
}

TEST(GetNotifications, TheCommandGrowsInThreeSteps) {
  const auto Get = [](const char* Participant, std::int32_t Count, std::int32_t Id, const std::string& Command,
                      const char* Body, const std::string& Expected) {
    const TUse Use = [=](auto& Out, auto& Found) {
      auto List = std::make_unique<TBeamNotifications>();
      std::int32_t LogID = -1;
      const bool Result =
          GetNotifications("s", Participant, Count, Id, List, LogID, Out.Message, Out.Error, Out.Status);
      Found = (List ? std::to_string(List->GetNotificationCount()) : "no result") + " in row " + std::to_string(LogID);
      return Result;
    };
    Expect(Use, 200, Body, "Get /clearing-house/notifications" + Command, Expected);
  };
  const char Two[] = R"([{"payload":"a","processId":"p"},{"payload":1,"processId":2}])";
  Get("", 0, 0, "?count=500&notificationId=0", Two, "||200|2 in row 2");
  Get("P1", 20, 9, "/P1?count=20&notificationId=9", Two, "||200|2 in row 2");
  Get("P1 ", -3, -1, "/P1?count=500&notificationId=-1", R"({"message":"no"})", "no||200|0 in row 2");
  Get(" ", 1, 0, "/?count=1&notificationId=0", "plain", "|||no result in row 2");
}

TEST(GetSuperFunds, SearchesWithTheTextAsItStands) {
  const auto Search = [](const char* Text) -> TUse {
    return [=](auto& Out, auto& Found) {
      auto Funds = std::make_unique<TSuperFundSearchResult>();
      const bool Result = GetSuperFunds("s", Text, Funds, Out.Message, Out.Error, Out.Status);
      Found = Funds ? std::to_string(Funds->FundCount) : "no result";
      return Result;
    };
  };
  const std::string URL = "Get /search/funds/all/rest & super";
  Expect(Search(" rest & super "), 200, R"([{"productName":"A"},{"productName":"B"}])", URL, "||200|2");
  Expect(Search("rest & super"), 500, R"({"message":"m"})", URL, "m||500|0");
  Expect(Search("rest & super"), 200, "plain", URL, "|||no result");
  Expect(Search(" \t"), 200, "", "", NotValid + "Search String is Mandatory|||no result");
}

TEST(GetDefaultFunds, RaisesBeforeAnyRequestOrRowOfItsOwn) {
  TActivatedHost Host;
  auto Funds = std::make_unique<TBeamDefaultFunds>();
  TTexts Out;
  const auto Get = [&] { GetDefaultFunds("s", "P1", "5", "F1", Funds, Out.Message, Out.Error, Out.Status); };
  EXPECT_TRUE(ErrorOf(Get).starts_with("TBeamGetDefaultFunds "));
  EXPECT_EQ(Funds, nullptr);
  EXPECT_EQ(Out.All(), "||");
  EXPECT_EQ(Host.RequestNames(), TLines{"token"});
  EXPECT_EQ(Host.LogTable().Rows.size(), 1u);
}

}  // namespace
}  // namespace oxSuperAPI
