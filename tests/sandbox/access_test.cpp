#include <filesystem>

#include "office.h"

namespace sandbox_test {
namespace {

TEST(Certificates, OpenTheServiceHostsAndNothingElse) {
  Sandbox sandbox({"--host", "one.example", "--host", "two.example"});
  const struct {
    const char* host;
    bool opens;
  } cases[] = {{"one.example", true}, {"two.example", true}, {"localhost", true}, {"three.example", false}};
  for (const auto& c : cases) {
    Client client(sandbox, c.host);
    EXPECT_EQ(client.Send("GET", "/x").status, c.opens ? 404 : 0) << c.host;
  }
  Client stranger(sandbox, "one.example");
  stranger.caFile = "/etc/ssl/certs/ca-certificates.crt";
  EXPECT_EQ(stranger.Send("GET", "/x").status, 0);
}

TEST(TokenEndpoint, RefusesWhatIsWrongWithAnOAuthError) {
  Sandbox sandbox;
  Client client(sandbox);
  const std::string id = std::string("client_id=") + kAppClient, secret = std::string("client_secret=") + kAppSecret;
  const struct {
    std::string form;
    long status;
    const char* error;
    const char* codes;
  } cases[] = {
      {id + "&" + secret + "&grant_type=password", 400, "unsupported_grant_type", "[70003]"},
      {id + "&" + secret + "&grant_type=client_credentials\r\n", 400, "unsupported_grant_type", "[70003]"},
      {id + "&" + secret, 400, "invalid_request", "[900144]"},
      {"client_id=&" + secret + "&grant_type=client_credentials", 400, "invalid_request", "[900144]"},
      {"client_id=nobody&" + secret + "&grant_type=client_credentials", 400, "unauthorized_client", "[700016]"},
      {id + "&client_secret=" + kAdminSecret + "&grant_type=client_credentials", 401, "invalid_client", "[7000215]"},
  };
  for (const auto& c : cases) {
    const Reply reply = client.Send("POST", "/auth/token", c.form, "application/x-www-form-urlencoded");
    EXPECT_EQ(reply.status, c.status) << c.form;
    EXPECT_EQ(reply.Text("error"), c.error) << c.form;
    EXPECT_EQ(reply.Text("error_codes"), c.codes) << c.form;
    EXPECT_NE(reply.Text("error_description"), "");
  }
  EXPECT_EQ(client.Send("POST", "/auth/token", id, "application/json").Text("error"), "invalid_request");
}

TEST(TokenEndpoint, GivesTheLifetimeAsText) {
  Sandbox sandbox({"--token-lifetime", "120"});
  Client client(sandbox);
  const json::value token = AskToken(client, kAdminClient, kAdminSecret).Json();
  EXPECT_EQ(token.at("expires_in"), "120");
  EXPECT_EQ(token.at("token_type"), "Bearer");
  EXPECT_EQ(
      std::stoll(token.at("expires_on").as_string().c_str()) - std::stoll(token.at("not_before").as_string().c_str()),
      120);
}

TEST(Channels, EachEndpointOpensToItsOwnTokenOnly) {
  Sandbox sandbox({"--pre-register-all"});
  Client client(sandbox);
  BecomeCustomer(client);
  const std::string customer = client.token;
  const std::string app = SignIn(client, kAppClient, kAppSecret), admin = SignIn(client, kAdminClient, kAdminSecret);
  const struct {
    const char* method;
    const char* path;
    const std::string& opener;
  } cases[] = {{"GET", "/clearing-house/healthcheck/ping", customer},
               {"POST", "/clearing-house/channel-security/register/U", admin},
               {"POST", "/clearing-house/channel-security/activate/U", app},
               {"POST", "/clearing-house/channel-security/reissue/U", customer},
               {"POST", "/clearing-house/validate", customer},
               {"POST", "/clearing-house/submit", customer},
               {"GET", "/search/contributions/P", customer},
               {"PUT", "/clearing-house/cancel/P", customer}};
  for (const auto& c : cases) {
    for (const std::string& token : {customer, app, admin, std::string("forged"), std::string()}) {
      client.token = token;
      const Reply reply = client.Send(c.method, c.path);
      EXPECT_EQ(reply.status != 401, token == c.opener) << c.path << " " << reply.body;
      EXPECT_EQ(reply.status == 401, !reply.Text("errorCode").rfind("TOKEN_", 0)) << reply.body;
    }
  }
}

TEST(Tokens, EndWithTimeAndWhenRevoked) {
  Sandbox sandbox({"--pre-register-all", "--token-lifetime", "60"});
  Client client(sandbox);
  const auto ping = [&] { return client.Send("GET", "/clearing-house/healthcheck/ping"); };
  const Reply customer = BecomeCustomer(client);
  EXPECT_EQ(ping().status, 200);
  client.Control("POST", "clock", R"({"advanceSeconds":59})");
  EXPECT_EQ(ping().status, 200);
  client.Control("POST", "clock", R"({"advanceSeconds":2})");
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
  EXPECT_NE(registered.Text("ClientID"), "");
  EXPECT_NE(registered.Text("ClientSecret"), "");
  EXPECT_EQ(AskToken(client, registered.Text("ClientID"), registered.Text("ClientSecret")).status, 400);
  client.token = app;
  EXPECT_EQ(Enrol(client, "activate", "U", "2").status, 403);
  EXPECT_EQ(Enrol(client, "activate", "U", "1").status, 200);

  client.Control("POST", "pre-register", R"({"uuid":"LATER"})");
  EXPECT_EQ(Enrol(client, "activate", "LATER").status, 200);
}

TEST(Activation, RefusesABodyThatSaysSomethingElse) {
  Sandbox sandbox({"--pre-register-all"});
  Client client(sandbox);
  SignIn(client, kAppClient, kAppSecret);
  const struct {
    const char* body;
    long status;
  } cases[] = {{"{", 400},
               {"[]", 422},
               {R"({"UUID":"V","CustomerNumber":"1","CompanyName":"A","PIN":"1"})", 422},
               {R"({"UUID":"U","CustomerNumber":"1","CompanyName":"A"})", 422},
               {R"({"UUID":"U","CustomerNumber":1,"CompanyName":"A","PIN":"1"})", 422},
               {R"({"UUID":"U","CustomerNumber":"1","CompanyName":"A","PIN":"1"})", 200}};
  for (const auto& c : cases)
    EXPECT_EQ(client.Send("POST", "/clearing-house/channel-security/activate/U", c.body).status, c.status) << c.body;
  EXPECT_EQ(client.Send("POST", "/clearing-house/channel-security/activate/U", "{}", "text/plain").status, 415);
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
