#include <curl/curl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "office.h"

namespace sandbox_test {
namespace {

/// libcurl takes the missing end mark of TLS for an end: the body alone shows that something is missing.
constexpr const char* kCutWithoutLength = R"({"fault":"cut-without-length"})";

TEST_F(Office, FaultsBreakTheConversationWhereTheySay) {
  // What the client may see; whether the request was read whole; whether the submission counts.
  const std::tuple<const char*, std::vector<int>, bool, bool> cases[] = {
      {R"({"fault":"reset-before-read"})", {CURLE_SEND_ERROR, CURLE_RECV_ERROR, CURLE_GOT_NOTHING}, false, false},
      {R"({"fault":"reset-after-read"})", {CURLE_RECV_ERROR, CURLE_GOT_NOTHING}, true, true},
      {R"({"fault":"reset-after-read","handle":false})", {CURLE_RECV_ERROR, CURLE_GOT_NOTHING}, true, false},
      {R"({"fault":"close-after-read"})", {CURLE_GOT_NOTHING}, true, true},
      {R"({"fault":"reset-mid-response"})", {CURLE_RECV_ERROR, CURLE_PARTIAL_FILE}, true, true},
      {R"({"fault":"truncate"})", {CURLE_PARTIAL_FILE}, true, true},
      {R"({"fault":"truncate","body":"x","sendBytes":1})", {CURLE_PARTIAL_FILE}, true, false},
      {kCutWithoutLength, {CURLE_OK, CURLE_RECV_ERROR}, true, true},
      {R"({"fault":"chunked-cut"})", {CURLE_PARTIAL_FILE}, true, true},
      {R"({"fault":"garbage"})", {CURLE_UNSUPPORTED_PROTOCOL, CURLE_WEIRD_SERVER_REPLY}, true, false},
      {R"({"fault":"drip","dripBytes":50,"dripMs":1})", {CURLE_OK}, true, true},
      {R"({"delayMs":3000})", {CURLE_OPERATION_TIMEDOUT}, true, true},
      {R"({"delayMs":10})", {CURLE_OK}, true, true},
      {R"({"status":503,"body":"{}"})", {CURLE_OK}, true, false},
      {R"({"status":503,"handle":true})", {CURLE_OK}, true, true},
  };
  for (const auto& [preset, curl, complete, booked] : cases) {
    client.Control("DELETE", "requests");
    ASSERT_EQ(client.Control("POST", "presets", preset).status, 200) << preset;
    const std::size_t before = Booked();
    {
      // A body of its own for the reset before reading: large enough not to fit into the network's buffers.
      json::value batch = SampleBatch(preset);
      if (!complete) batch.as_object()["version"] = std::string(8u << 20, 'v');
      Client fresh(sandbox);
      fresh.token = client.token;
      fresh.timeoutMilliseconds = 1500;
      const Reply reply = Post(fresh, "submit", batch);
      EXPECT_NE(std::ranges::find(curl, reply.curl), curl.end()) << preset << " gave " << reply.curl;
      EXPECT_EQ(reply.body.ends_with('}'), reply.curl == CURLE_OK && preset != kCutWithoutLength) << preset;
    }
    EXPECT_EQ(Booked() - before, booked ? 1u : 0u) << preset;
    const json::value requests = Requests();
    ASSERT_EQ(requests.at("count"), 1) << preset;
    EXPECT_EQ(requests.at("requests").at(0).at("complete").as_bool(), complete) << preset;
  }
}

TEST_F(Office, ConnectionFaultsHitTheNextConnection) {
  for (const char* fault : {"reset-on-connect", "reset-in-handshake"}) {
    client.Control("POST", "presets", std::string(R"({"fault":")") + fault + "\"}");
    Client fresh(sandbox);
    EXPECT_EQ(fresh.Send("GET", "/x").status, 0) << fault;
    EXPECT_EQ(fresh.Send("GET", "/x").status, 404) << "only once";
  }
  client.Control("POST", "presets", R"({"fault":"close-after-response"})");
  EXPECT_EQ(client.Send("GET", "/first").connects, 0);
  EXPECT_EQ(client.Send("GET", "/second").connects, 1);
}

TEST_F(Office, PresetsApplyInOrderToTheTargetsTheyName) {
  client.Control("POST", "presets",
                 R"([{"path":"/search","method":"PUT","status":500}, {"path":"/search","status":501,"times":2},
                     {"path":"/search","status":502,"body":{"a":1},"headers":{"X-Y":"z"}},
                     {"path":"/never","times":0}])");
  const auto search = [&] { return client.Send("GET", "/search/contributions/none"); };
  EXPECT_EQ(client.Send("GET", "/clearing-house/healthcheck/ping").status, 200);
  EXPECT_EQ(search().status + search().status, 2 * 501);
  EXPECT_EQ(search().body, R"({"a":1})");
  EXPECT_EQ(search().status, 404);
  EXPECT_EQ(client.Control("GET", "presets").Text("waiting"), "2");
  client.Control("DELETE", "presets");
  EXPECT_EQ(client.Control("GET", "presets").Text("waiting"), "0");
  client.Control("POST", "presets", R"({"bodyBase64":"YQ==","bodyRepeat":5})");
  EXPECT_EQ(search().body, "aaaaa");
  for (const char* wrong : {R"({"fualt":"none"})", R"({"fault":"x"})", R"({"status":"500"})", R"([1])", "{"})
    EXPECT_EQ(client.Control("POST", "presets", wrong).status, 400) << wrong;
}

TEST_F(Office, ListsWhatItReceivedUntilItIsReset) {
  client.Control("DELETE", "requests");
  client.Send("PUT", "/clearing-house/cancel/a%20b?x=1", "{\"k\":\"v\"}");
  client.Send("GET", "/search/contributions/none");
  const json::value all = Requests();
  EXPECT_EQ(all.at("count"), 2) << "the control path itself is not listed";
  const json::value& first = all.at("requests").at(0);
  const std::pair<const char*, json::value> members[] = {
      {"/method", "PUT"},         {"/target", "/clearing-house/cancel/a%20b?x=1"},
      {"/body", "{\"k\":\"v\"}"}, {"/channel", "customer"},
      {"/status", 404},           {"/headers/authorization", json::string("Bearer " + client.token)}};
  for (const auto& [pointer, value] : members) EXPECT_EQ(first.at_pointer(pointer), value);
  EXPECT_EQ(first.at("connection"), all.at("requests").at(1).at("connection"));
  const json::value searches = client.Control("GET", "requests?path=/search").Json();
  EXPECT_EQ(searches.at("requests").as_array().size(), 1u);

  Post(client, "submit", SampleBatch());
  client.Control("POST", "presets", R"({"status":500})");
  EXPECT_EQ(client.Control("POST", "reset").status, 200);
  EXPECT_EQ(Booked(), 0u);
  EXPECT_EQ(Requests().at("count"), 0);
  EXPECT_EQ(client.Send("GET", "/clearing-house/healthcheck/ping").Text("errorCode"), "TOKEN_UNKNOWN");
}

TEST(State, OutlivesARestart) {
  const std::string file = ::testing::TempDir() + "sandbox-state-" + std::to_string(::getpid());
  const std::vector<std::string> options = {"--state", file, "--pre-registered", "KEY-15500", "--time-step", "0"};
  constexpr const char* kKept[] = {"/clearing-house/notifications", "/clearing-house/participant/P1",
                                   "/clearing-house/participant/P1/terms-acceptance"};
  std::vector<std::string> before;
  Reply customer, sent;
  {
    Sandbox sandbox(options);
    Client client(sandbox);
    customer = BecomeCustomer(client);
    sent = Post(client, "submit", SampleBatch());
    Move(client, ProcessId(sent), "Sent To Fund");
    client.Send("POST", "/clearing-house/participant-details",
                R"({"clientParticipantNumber":"P1","employers":[{"clientEmployerNumber":"E1"}]})");
    client.Control("POST", "participants/P1/terms-acceptance", R"({"user":"Jo"})");
    for (const char* path : kKept) before.push_back(client.Send("GET", path).body);
    EXPECT_EQ(sandbox.Stop(), 0);
  }
  struct stat status {};
  ASSERT_EQ(::stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  std::ifstream stream(file);
  const std::string text((std::istreambuf_iterator<char>(stream)), {});
  for (const std::string& secret : {customer.Text("clientSecret"), std::string("123456782"), std::string("4711")})
    EXPECT_EQ(text.find(secret), std::string::npos) << "no secret is kept in clear";
  {
    Sandbox sandbox(options);
    Client client(sandbox);
    EXPECT_NE(SignIn(client, customer.Text("clientId"), customer.Text("clientSecret")), "");
    EXPECT_EQ(Post(client, "submit", SampleBatch()).status, 409);
    EXPECT_EQ(client.Send("GET", "/search/contributions/" + ProcessId(sent)).Text("status"), "Sent To Fund");
    for (std::size_t i = 0; i < before.size(); ++i) EXPECT_EQ(client.Send("GET", kKept[i]).body, before[i]) << kKept[i];
    client.Control("POST", "batches/" + ProcessId(sent) + "/refund");
    EXPECT_EQ(client.Send("GET", "/clearing-house/notifications?notificationId=6").Json().at(0).at("notificationId"), 7)
        << "numbers go on";
    SignIn(client, kAppClient, kAppSecret);
    EXPECT_EQ(Enrol(client, "activate", "KEY-15500").status, 409) << "a pre-registration is used up";
  }
  std::ofstream(file) << "{\"format\":9}";
  Sandbox refused({"--state", file});
  EXPECT_EQ(refused.WaitForEnd(5), 1);
  std::filesystem::remove(file);
}

TEST(Process, EndsWhenItIsAskedToAndRefusesWrongOptions) {
  for (const int signal : {SIGTERM, SIGINT, 0}) {
    Sandbox sandbox;
    Client client(sandbox);
    client.Send("GET", "/x");  // a kept connection does not hold it back, nor does a delayed answer
    client.Control("POST", "presets", R"({"delayMs":60000})");
    std::jthread waiting([&] { Client(sandbox).Send("GET", "/slow"); });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const std::string ca = sandbox.CaFile();
    signal != 0 ? static_cast<void>(::kill(sandbox.Pid(), signal)) : sandbox.CloseInput();
    EXPECT_EQ(sandbox.WaitForEnd(5), 0) << signal;
    EXPECT_FALSE(std::filesystem::exists(ca));
  }
  Sandbox brief({"--lifetime", "0.2"});
  EXPECT_EQ(brief.WaitForEnd(5), 0);
  for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
           {"--port", "x"}, {"--time-step", "-1"}, {"--nonsense"}, {"--secrets", "/nonexistent"}}) {
    Sandbox sandbox(options);
    EXPECT_EQ(sandbox.WaitForEnd(5), 2) << options[0];
  }
}

}  // namespace
}  // namespace sandbox_test
