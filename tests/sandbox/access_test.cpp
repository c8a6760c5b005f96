#include "office.h"

namespace sandbox_test {
namespace {

TEST(Certificates, OpenTheServiceHostsAndNothingElse) {
  Sandbox sandbox({"--host", "one.example", "--host", "two.example"});
  for (const std::string host : {"one.example", "two.example", "localhost", "three.example"})
    EXPECT_EQ(Client(sandbox, host).Send("GET", "/x").status, host == "three.example" ? 0 : 404) << host;
  Client stranger(sandbox, "one.example");
  stranger.caFile = "/etc/ssl/certs/ca-certificates.crt";
  EXPECT_EQ(stranger.Send("GET", "/x").status, 0);
}

TEST_F(Office, RefusesATokenWithAnOAuthError) {
  const std::string id = std::string("client_id=") + kAppClient, secret = std::string("&client_secret=") + kAppSecret,
                    grant = "&grant_type=client_credentials", wrong = std::string("&client_secret=") + kAdminSecret;
  const std::tuple<std::string, long, const char*, const char*> cases[] = {
      {id + secret + "&grant_type=password", 400, "unsupported_grant_type", "[70003]"},
      {id + secret + grant + "\r\n", 400, "unsupported_grant_type", "[70003]"},
      {id + secret, 400, "invalid_request", "[900144]"},
      {"client_id=" + secret + grant, 400, "invalid_request", "[900144]"},
      {"client_id=nobody" + secret + grant, 400, "unauthorized_client", "[700016]"},
      {id + wrong + grant, 401, "invalid_client", "[7000215]"},
  };
  for (const auto& [form, status, error, codes] : cases) {
    const Reply reply = client.Send("POST", "/auth/token", form, "application/x-www-form-urlencoded");
    EXPECT_EQ(reply.status, status) << form;
    EXPECT_EQ(reply.Text("error"), error) << form;
    EXPECT_EQ(reply.Text("error_codes"), codes) << form;
  }
  EXPECT_EQ(client.Send("POST", "/auth/token", id, "application/json").Text("error"), "invalid_request");
}

TEST_F(Office, EachEndpointOpensToItsOwnTokenOnly) {
  const std::string customer = client.token;
  const std::string app = SignIn(client, kAppClient, kAppSecret), admin = SignIn(client, kAdminClient, kAdminSecret);
  // clang-format off
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"GET", "/clearing-house/healthcheck/ping", customer},
      {"POST", "/clearing-house/channel-security/register/U", admin},
      {"POST", "/clearing-house/channel-security/activate/U", app},
      {"POST", "/clearing-house/channel-security/reissue/U", customer}, {"POST", "/clearing-house/validate", customer},
      {"POST", "/clearing-house/submit", customer}, {"GET", "/search/contributions/P", customer},
      {"PUT", "/clearing-house/cancel/P", customer}, {"POST", "/clearing-house/participant-details", customer},
      {"GET", "/clearing-house/participant/P", customer},
      {"GET", "/clearing-house/participant/P/terms-acceptance", customer},
      {"GET", "/clearing-house/participant/P/employer/1/terms-acceptance", customer},
      {"GET", "/clearing-house/participant/P/directDebitAuthority/1/terms-acceptance", customer},
      {"GET", "/clearing-house/notifications", customer}, {"GET", "/clearing-house/notifications/P", customer},
      {"GET", "/search/funds/all/x", customer}};
  // clang-format on
  for (const auto& [method, path, opener] : cases)
    for (const std::string& token : {customer, app, admin, std::string("forged"), std::string()}) {
      client.token = token;
      const Reply reply = client.Send(method, path);
      EXPECT_EQ(reply.status != 401, token == opener) << path << " " << reply.body;
      EXPECT_EQ(reply.status == 401, reply.Text("errorCode").starts_with("TOKEN_")) << reply.body;
    }
}

TEST(Tokens, EndWithTimeAndWhenRevoked) {
  Sandbox sandbox({"--pre-register-all", "--token-lifetime", "60"});
  Client client(sandbox);
  const auto ping = [&] { return client.Send("GET", "/clearing-house/healthcheck/ping"); };
  const json::value token = AskToken(client, kAppClient, kAppSecret).Json();
  EXPECT_EQ(token.at("expires_in"), "60") << "a text";
  const auto second = [&](const char* name) { return std::stoll(token.at(name).as_string().c_str()); };
  EXPECT_EQ(second("expires_on") - second("not_before"), 60);
  const Reply customer = BecomeCustomer(client);
  for (const auto& [seconds, status] : {std::pair{0, 200}, {59, 200}, {2, 401}}) {
    client.Control("POST", "clock", R"({"advanceSeconds":)" + std::to_string(seconds) + "}");
    EXPECT_EQ(ping().status, status) << seconds;
  }
  EXPECT_EQ(ping().Text("errorCode"), "TOKEN_EXPIRED");
  SignIn(client, customer.Text("clientId"), customer.Text("clientSecret"));
  EXPECT_EQ(ping().status, 200);
  client.Control("DELETE", "tokens");
  EXPECT_EQ(ping().Text("errorCode"), "TOKEN_UNKNOWN");
}

TEST(Activation, NeedsARegistrationAndItsPin) {
  Sandbox sandbox({"--pre-registered", "GIVEN", "--pre-registered", "TWO"});
  Client client(sandbox);
  const std::string admin = SignIn(client, kAdminClient, kAdminSecret), app = SignIn(client, kAppClient, kAppSecret);
  EXPECT_EQ(Enrol(client, "activate", "U").status, 400);
  EXPECT_EQ(Enrol(client, "activate", "TWO").status, 200);
  EXPECT_EQ(Enrol(client, "activate", "GIVEN").status, 200);
  EXPECT_EQ(Enrol(client, "activate", "GIVEN").status, 409);

  client.token = admin;
  const Reply registered = Enrol(client, "register", "U", "1");
  EXPECT_TRUE(!registered.Text("ClientID").empty() && !registered.Text("ClientSecret").empty());
  EXPECT_EQ(AskToken(client, registered.Text("ClientID"), registered.Text("ClientSecret")).status, 400);
  client.token = app;
  EXPECT_EQ(Enrol(client, "activate", "U", "2").status, 403);
  EXPECT_EQ(Enrol(client, "activate", "U", "1").status, 200);

  client.Control("POST", "pre-register", R"({"uuid":"LATER"})");
  EXPECT_EQ(Enrol(client, "activate", "LATER").status, 200);
}

TEST_F(Office, RefusesAnActivationWhoseBodySaysSomethingElse) {
  SignIn(client, kAppClient, kAppSecret);
  const auto activate = [&](const std::string& body, const char* type) {
    return client.Send("POST", "/clearing-house/channel-security/activate/U", body, type).status;
  };
  EXPECT_EQ(activate("{}", "text/plain"), 415);
  const std::pair<const char*, long> cases[] = {
      {"{", 400},
      {"[]", 422},
      {R"({"UUID":"V","CustomerNumber":"1","CompanyName":"A","PIN":"1"})", 422},
      {R"({"UUID":"U","CustomerNumber":"1","CompanyName":"A"})", 422},
      {R"({"UUID":"U","CustomerNumber":1,"CompanyName":"A","PIN":"1"})", 422},
      {R"({"UUID":"U","CustomerNumber":"1","CompanyName":"A","PIN":"1"})", 200}};
  for (const auto& [body, status] : cases) EXPECT_EQ(activate(body, "application/json"), status) << body;
}

TEST_F(Office, ReissueReplacesTheSecret) {
  const Reply old = BecomeCustomer(client, "OTHER");
  EXPECT_EQ(Enrol(client, "reissue", "KEY-15500").status, 403) << "a customer cannot reissue another's secret";
  EXPECT_EQ(Enrol(client, "reissue", "OTHER", "wrong").status, 403);
  const Reply fresh = Enrol(client, "reissue", "OTHER");
  EXPECT_EQ(fresh.status, 200);
  EXPECT_NE(fresh.Text("clientSecret"), old.Text("clientSecret"));
  EXPECT_EQ(client.Send("GET", "/clearing-house/healthcheck/ping").status, 200) << "tokens stay good";
  EXPECT_EQ(AskToken(client, old.Text("clientId"), old.Text("clientSecret")).status, 401);
  EXPECT_EQ(AskToken(client, fresh.Text("clientId"), fresh.Text("clientSecret")).status, 200);
}

}  // namespace
}  // namespace sandbox_test
