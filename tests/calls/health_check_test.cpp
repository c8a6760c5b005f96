#include <gtest/gtest.h>

#include "../support/test_host.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"

namespace oxSuperAPI {
namespace {

TEST(HealthCheck, PingsWithTheCustomerTokenAndHandsOutTheTexts) {
  const struct {
    std::int32_t Status;
    const char* Body;
    bool Result;
    const char *Message, *Error, *StatusText;
  } Cases[] = {
      {200, "pong", true, "", "", ""},
      {200, "", true, "", "", ""},
      {200, R"({"message":"up"})", true, "up", "", "200"},
      {401, R"({"message":"no","errorCode":"E1"})", false, "no", "E1", "401"},
      {503, "<html>", false, "", "", ""},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Body);
    TActivatedHost Host;
    Host.FakeHTTP.Answer(Case.Status, Case.Body);
    std::string Message = "old", Error = "old", Status = "old";
    EXPECT_EQ(GetHealthCheck("Host.Ping", Message, Error, Status), Case.Result);
    EXPECT_EQ(Message, Case.Message);
    EXPECT_EQ(Error, Case.Error);
    EXPECT_EQ(Status, Case.StatusText);
    const TFakeRequest& Request = Host.FakeHTTP.LastRequest();
    EXPECT_EQ(Request.Method, "Get");
    EXPECT_EQ(Request.URL, Dev + "/clearing-house/healthcheck/ping");
    EXPECT_EQ(Request.Headers, TLines{"authorization: Bearer abc"});
    EXPECT_EQ(Host.LogColumn("cSource"), (TLines{"GetCustomerToken", "Host.Ping"}));
  }
}

TEST(HealthCheck, RaisesWhenTheTokenIsDroppedWhileItIsFetched) {
  TActivatedHost Host;
  Host.FakeHTTP.AnswerURL("/auth/token", {.Body = R"({"access_token":"t","expires_in":"9"})", .During = [](auto&) {
                                            TBeamSuperGlobal::BeamSuperGlobal().SetOptedIn(true);
                                          }});
  std::string Message = "old", Error = "old", Status = "old";
  EXPECT_THROW(GetHealthCheck("s", Message, Error, Status), TBeamError);
  EXPECT_EQ(Message + Error + Status, "");
  EXPECT_EQ(Host.FakeHTTP.CountOf("ping"), 0u);
}

}  // namespace
}  // namespace oxSuperAPI
