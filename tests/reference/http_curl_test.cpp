#include "oxSuperAPI/reference/http_curl.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <openssl/ssl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "fault_server.h"

namespace oxSuperAPI::tests {
namespace {

const std::string KeyLog =
    (std::filesystem::temp_directory_path() / ("http_curl_test_keys_" + std::to_string(getpid()))).string();

// An environment that would lead every call of this program astray.
const bool Hostile = [] {
  for (const char* Name : {"https_proxy", "HTTPS_PROXY", "ALL_PROXY", "all_proxy"})
    setenv(Name, "http://127.0.0.1:1", 1);
  setenv("SSL_CERT_FILE", "/nonexistent", 1);
  return setenv("SSLKEYLOGFILE", KeyLog.c_str(), 1) == 0;
}();

enum class TMethod { Get, Post, Put };
constexpr TMethod AllMethods[] = {TMethod::Get, TMethod::Post, TMethod::Put};

/// What a call came to.
struct TOutcome {
  std::int32_t Status = 0;
  std::string Body, Error, Log;
  TRequestFate Fate = TRequestFate::None;
};

/// Answers one CONNECT and ends.
class TProxy {
 public:
  explicit TProxy(std::string Answer) : FListener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    FAddress.sin_family = AF_INET;
    FAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t Size = sizeof FAddress;
    const auto Address = reinterpret_cast<sockaddr*>(&FAddress);
    EXPECT_TRUE(bind(FListener, Address, Size) == 0 && listen(FListener, 1) == 0);
    getsockname(FListener, Address, &Size);
    FThread = std::thread([this, Answer] {
      pollfd Poll{FListener, POLLIN, 0};
      if (poll(&Poll, 1, 5000) != 1) return;
      const int Socket = accept(FListener, nullptr, nullptr);
      char Buffer[4096];
      FRequest.assign(Buffer, static_cast<std::size_t>(std::max<ssize_t>(0, recv(Socket, Buffer, sizeof Buffer, 0))));
      send(Socket, Answer.data(), Answer.size(), MSG_NOSIGNAL);
      close(Socket);
    });
  }
  ~TProxy() {
    if (FThread.joinable()) FThread.join();
    close(FListener);
  }
  int Port() const { return ntohs(FAddress.sin_port); }
  std::string Request() {
    if (FThread.joinable()) FThread.join();
    return FRequest;
  }

 private:
  int FListener;
  sockaddr_in FAddress{};
  std::string FRequest;
  std::thread FThread;
};

class HTTPCurl : public testing::Test {
 protected:
  void Start(std::vector<TStep> Steps = {}, TServerOptions Options = {}, THTTPCurlOptions Client = {}) {
    FClient.reset();
    FServer = std::make_unique<TFaultServer>(std::move(Steps), Options);
    if (Client.CAFile.empty()) Client.CAFile = FServer->CAFile();
    Client.ConnectTo = {{"api.example:443", "127.0.0.1:" + std::to_string(FServer->Port())}};
    FClient = std::make_unique<THTTPCurl>(Client);
  }

  TOutcome Call(TMethod Method, const TStringList& Body = TStringList({"{}"}),
                const std::string& URL = "https://api.example/a?secret=1", const TStringList& Headers = TStringList()) {
    TOutcome Result;
    TStringList Log, Response;
    try {
      if (Method == TMethod::Get) Result.Status = FClient->httpNetGet(URL, Headers, Log, Response);
      if (Method == TMethod::Post) Result.Status = FClient->httpNetPost(URL, Headers, Body, Log, Response);
      if (Method == TMethod::Put) Result.Status = FClient->httpNetPut(URL, Headers, Body, Log, Response);
    } catch (const THTTPError& Error) {
      Result.Error = Error.what();
      EXPECT_EQ(Error.Fate(), FClient->LastFate());
    }
    Result.Body = Response.Text();
    Result.Log = Log.Text();
    Result.Fate = FClient->LastFate();
    EXPECT_EQ(Result.Error.find("secret"), std::string::npos) << Result.Error;
    EXPECT_EQ(Result.Log.find("secret"), std::string::npos) << Result.Log;
    return Result;
  }

  std::unique_ptr<TFaultServer> FServer;
  std::unique_ptr<THTTPCurl> FClient;
};

TEST_F(HTTPCurl, SendsEachRequestOnceWhereverTheConnectionBreaks) {
  const TStringList LargeBody({std::string(300'000, 'x')});
  for (const TMethod Method : AllMethods)
    for (const bool Reused : {false, true})
      for (const TCut Cut : {TCut::Farewell, TCut::End, TCut::Reset})
        for (const TStage Stage :
             {TStage::BeforeHandshake, TStage::AfterHandshake, TStage::AfterHeaders, TStage::AfterRequest})
          for (const bool Large : {false, true}) {
            // A connection that a GET uses again has its handshake behind it.
            if (Reused && Method == TMethod::Get && Stage < TStage::AfterHeaders) continue;
            SCOPED_TRACE(testing::Message() << "method " << int(Method) << ", reused " << Reused << ", cut " << int(Cut)
                                            << ", stage " << int(Stage) << ", large " << Large);
            std::vector<TStep> Steps(Reused ? 2 : 0);
            Steps.push_back({Stage, Cut});
            Start(Steps);
            for (int Count = 0; Count < (Reused ? 2 : 0); ++Count) ASSERT_EQ(Call(TMethod::Get).Status, 200);
            const int Before = FServer->Requests();
            ASSERT_EQ(FServer->Connections(), Reused ? 1 : 0);

            const TOutcome Outcome = Call(Method, Large ? LargeBody : TStringList({"{}"}));
            EXPECT_EQ(Outcome.Status, 0);
            EXPECT_NE(Outcome.Error, "");
            EXPECT_NE(Outcome.Log, "");
            EXPECT_EQ(Outcome.Body, "");
            EXPECT_LE(FServer->Requests(), Before + 1);
            EXPECT_EQ(Outcome.Fate,
                      Stage == TStage::BeforeHandshake ? TRequestFate::NotSent : TRequestFate::MayHaveArrived);
            const int After = FServer->Requests();
            const TOutcome Next = Call(Method);
            EXPECT_EQ(Next.Status, 200) << Next.Error << Next.Log;
            EXPECT_EQ(FServer->Requests(), After + 1);
          }
}

TEST_F(HTTPCurl, RefusesAnAnswerThatBreaksOff) {
  const std::string Answers[] = {
      "",
      "HTTP/1.",
      "HTTP/1.1 200 OK\r\n",
      "HTTP/1.1 200 OK\r\nContent-Le",
      "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n",
      "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n",
      "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nok",
      "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nok",
      "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nok\r\n",
      "HTTP/1.1 100 Continue\r\n\r\n",
      "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\n",
      "garbage\r\n\r\n",
      "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 2\r\n\r\nok",
  };
  for (const std::string& Answer : Answers)
    for (const TMethod Method : {TMethod::Get, TMethod::Post})
      for (const TCut Cut : {TCut::Farewell, TCut::End, TCut::Reset}) {
        SCOPED_TRACE(Answer + " / " + std::to_string(int(Cut)));
        Start({{}, {TStage::AfterAnswer, Cut, Answer.empty() ? "\r\n" : Answer}});
        ASSERT_EQ(Call(TMethod::Get).Status, 200);
        const TOutcome Outcome = Call(Method);
        EXPECT_EQ(Outcome.Status, 0);
        EXPECT_EQ(Outcome.Fate, TRequestFate::MayHaveArrived);
        EXPECT_EQ(Outcome.Body, "");
        EXPECT_EQ(FServer->Requests(), 2);
      }
}

TEST_F(HTTPCurl, TellsABodyWithoutLengthFromOneThatWasCut) {
  for (const std::string Body : {"{\"a\":1}", ""})
    for (const TCut Cut : {TCut::Farewell, TCut::End, TCut::Reset}) {
      Start({{TStage::AfterAnswer, Cut, "HTTP/1.1 200 OK\r\n\r\n" + Body}});
      const TOutcome Outcome = Call(TMethod::Post);
      EXPECT_EQ(Outcome.Status, Cut == TCut::Farewell ? 200 : 0);
      EXPECT_EQ(Outcome.Body, Cut == TCut::Farewell ? Body : "");
    }
}

TEST_F(HTTPCurl, OpensANewConnectionWhenTheServerClosedTheKeptOne) {
  for (const TMethod Method : AllMethods)
    for (const TCut Cut : {TCut::Farewell, TCut::End}) {
      Start({{TStage::AfterAnswer, Cut}});
      ASSERT_EQ(Call(TMethod::Get).Status, 200);
      std::this_thread::sleep_for(std::chrono::milliseconds(30));
      const TOutcome Outcome = Call(Method);
      EXPECT_EQ(Outcome.Status, 200) << Outcome.Error << Outcome.Log;
      EXPECT_EQ(FServer->Requests(), 2);
    }
}

TEST_F(HTTPCurl, KeepsTheConnectionForGetsAndResumesTheSessionOtherwise) {
  Start();
  for (int Count = 0; Count < 3; ++Count) EXPECT_EQ(Call(TMethod::Get).Status, 200);
  EXPECT_EQ(FServer->Connections(), 1);
  EXPECT_EQ(Call(TMethod::Post).Status, 200);
  EXPECT_EQ(Call(TMethod::Put).Status, 200);
  EXPECT_EQ(FServer->Connections(), 3);
  EXPECT_EQ(FServer->ResumedSessions(), 2);
  EXPECT_EQ(Call(TMethod::Get).Status, 200);
  EXPECT_EQ(FServer->Connections(), 3);
}

TEST_F(HTTPCurl, GivesTheAnswerAsItCame) {
  const std::string Interim = "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 103 Early Hints\r\nX: y\r\n\r\n";
  const struct {
    std::string Answer;
    std::int32_t Status;
    std::string Body;
  } Cases[] = {
      {Interim + GoodAnswer, 200, "ok"},
      {"HTTP/1.1 204 No Content\r\n\r\n", 204, ""},
      {"HTTP/1.1 500 Broken\r\nContent-Length: 7\r\n\r\na\r\nb\n\xFF ", 500, "a\r\nb\n\xFF "},
      {"HTTP/1.1 302 Found\r\nLocation: https://api.example/b\r\nContent-Length: 0\r\n\r\n", 302, ""},
      {"HTTP/1.1 401 No\r\nWWW-Authenticate: Basic\r\nContent-Length: 0\r\n\r\n", 401, ""},
      {"HTTP/1.1 417 No\r\nContent-Length: 0\r\n\r\n", 417, ""},
      {"HTTP/1.1 408 Late\r\nConnection: close\r\nContent-Length: 0\r\n\r\n", 408, ""},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\na\r\n2\r\nbc\r\n0\r\nT: u\r\n\r\n", 200, "abc"},
  };
  for (const auto& Case : Cases)
    for (const TMethod Method : AllMethods) {
      SCOPED_TRACE(Case.Answer);
      Start({{TStage::Never, TCut::End, Case.Answer}});
      const TOutcome Outcome = Call(Method);
      EXPECT_EQ(Outcome.Status, Case.Status) << Outcome.Error;
      EXPECT_EQ(Outcome.Body, Case.Body);
      EXPECT_EQ(Outcome.Log, "");
      EXPECT_EQ(Outcome.Fate, TRequestFate::Answered);
      EXPECT_EQ(FServer->Requests(), 1);
    }
}

TEST_F(HTTPCurl, NeverTakesLeftoversOfOneAnswerForTheNext) {
  Start({{TStage::Never, TCut::End, GoodAnswer + "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nevil"}});
  EXPECT_EQ(Call(TMethod::Get).Body, "ok");
  EXPECT_EQ(Call(TMethod::Get).Body, "ok");
}

TEST_F(HTTPCurl, SendsWhatTheCallerGaveAndNothingElse) {
  Start();
  const TStringList Headers({"authorization: Bearer ", "x-Blank:  ", "x-Empty:", "X-Name: Zo\xC3\xAB"});
  Call(TMethod::Post, TStringList({"{", "\"a\": 1\r\n", "", "}"}), "https://api.example/a b", Headers);
  Call(TMethod::Put, TStringList(), "https://api.example/c");
  Call(TMethod::Post, TStringList({" ", "\t[1]"}), "https://api.example/d", TStringList({"CONTENT-TYPE: text/x"}));
  Call(TMethod::Post, TStringList({"a=b"}), "https://api.example/e");
  Call(TMethod::Get, TStringList(), "https://api.example/f");
  const auto Received = FServer->Received();
  ASSERT_EQ(Received.size(), 5u);
  EXPECT_EQ(Received[0],
            "POST /a%20b HTTP/1.1\r\nHost: api.example\r\n"
            "authorization: Bearer \r\nx-Blank:\r\nx-Empty:\r\nX-Name: Zo\xC3\xAB\r\nContent-Type: application/json\r\n"
            "Content-Length: 16\r\n\r\n{\r\n\"a\": 1\r\n\r\n\r\n}");
  EXPECT_EQ(Received[1], "PUT /c HTTP/1.1\r\nHost: api.example\r\nContent-Length: 0\r\n\r\n");
  EXPECT_NE(Received[2].find("CONTENT-TYPE: text/x\r\nContent-Length: 7\r\n\r\n \r\n\t[1]"), std::string::npos)
      << Received[2];
  EXPECT_EQ(Received[3].find("ontent-Type"), std::string::npos) << Received[3];
  EXPECT_EQ(Received[4], "GET /f HTTP/1.1\r\nHost: api.example\r\n\r\n");
}

TEST_F(HTTPCurl, StreamsALargeBodyWhole) {
  Start();
  TStringList Body;
  for (int Line = 0; Line < 120'000; ++Line) Body.Add("line " + std::to_string(Line));
  EXPECT_EQ(Call(TMethod::Post, Body).Status, 200);
  const std::string Received = FServer->Received()[0];
  EXPECT_TRUE(Received.ends_with("\r\n\r\n" + Body.Text()));
  EXPECT_EQ(Received.find("Expect"), std::string::npos);  // libcurl's habit from 1 MB on
}

TEST_F(HTTPCurl, SaysWhatIsWrongWithACertificate) {
  const struct {
    TServerOptions Options;
    bool OtherAuthority;
    std::string Text;
  } Cases[] = {
      {{.Name = "other.example"}, false, "for another name"},
      {{.ValidFromDay = -3, .ValidToDay = -1}, false, "date"},
      {{.ValidFromDay = 1, .ValidToDay = 2}, false, "date"},
      {{}, true, "not trusted"},
      {{.MaxTLSVersion = TLS1_1_VERSION}, false, "handshake failed"},
  };
  const TFaultServer Other;
  for (const auto& Case : Cases) {
    Start({}, Case.Options, {.CAFile = Case.OtherAuthority ? Other.CAFile() : ""});
    const TOutcome Outcome = Call(TMethod::Post);
    EXPECT_NE(Outcome.Error.find(Case.Text), std::string::npos) << Outcome.Error;
    EXPECT_EQ(Outcome.Fate, TRequestFate::NotSent);
    EXPECT_EQ(FServer->Requests(), 0);
  }
  Start({}, {}, {.CAFile = "/nonexistent"});
  EXPECT_NE(Call(TMethod::Get).Error.find("trusted authorities cannot be read"), std::string::npos);
}

TEST_F(HTTPCurl, EndsACallThatTakesTooLongOrTooMuch) {
  using namespace std::chrono_literals;
  const std::string Endless = "HTTP/1.1 200 OK\r\n" + std::string(2'000'000, 'h');
  std::string ManyHeaders = "HTTP/1.1 200 OK\r\n";
  while (ManyHeaders.size() < 2'000'000) ManyHeaders += "x: " + std::string(1000, 'y') + "\r\n";
  const struct {
    TStep Step;
    THTTPCurlOptions Options;
    std::string Text;
  } Cases[] = {
      {{.DelayMilliseconds = 1500}, {.TotalTimeout = 200ms}, "no complete answer in time"},
      {{.DelayMilliseconds = 3000}, {.StallTimeout = 1s}, "no complete answer in time"},
      {{.Answer = GoodAnswer}, {.MaxResponseBytes = 1}, "larger than allowed"},
      {{.Answer = ManyHeaders}, {}, "larger than allowed"},
      {{.Answer = Endless}, {}, ""},
  };
  for (const auto& Case : Cases) {
    Start({Case.Step}, {}, Case.Options);
    const TOutcome Outcome = Call(TMethod::Get);
    EXPECT_NE(Outcome.Error.find(Case.Text), std::string::npos) << Outcome.Error;
    EXPECT_EQ(Outcome.Status, 0);
    EXPECT_EQ(Outcome.Fate, TRequestFate::MayHaveArrived);
  }
  Start({}, {}, {.MaxResponseBytes = 2});
  EXPECT_EQ(Call(TMethod::Get).Body, "ok");
}

TEST_F(HTTPCurl, UsesAProxyOnlyWhenConfigured) {
  Start({}, {}, {.Proxy = "http://127.0.0.1:1"});
  const TOutcome Outcome = Call(TMethod::Post);
  EXPECT_NE(Outcome.Error.find("no connection"), std::string::npos) << Outcome.Error;
  EXPECT_EQ(Outcome.Fate, TRequestFate::NotSent);
  Start({}, {}, {.Proxy = "http://127.0.0.1:1", .NoProxy = {"else.example", "api.example"}});
  EXPECT_EQ(Call(TMethod::Post).Status, 200);
}

TEST_F(HTTPCurl, KnowsThatNothingPassedAProxyThatRefuses) {
  TProxy Proxy("HTTP/1.1 403 Forbidden\r\nContent-Length: 0\r\n\r\n");
  Start({}, {}, {.Proxy = "http://127.0.0.1:" + std::to_string(Proxy.Port())});
  const TOutcome Outcome =
      Call(TMethod::Post, TStringList({"{}"}), "https://api.example/", TStringList({"authorization: Bearer secret"}));
  EXPECT_NE(Outcome.Error.find("403"), std::string::npos) << Outcome.Error;
  EXPECT_EQ(Outcome.Fate, TRequestFate::NotSent);
  EXPECT_EQ(Proxy.Request().find("CONNECT "), 0u) << Proxy.Request();
  EXPECT_EQ(Proxy.Request().find("secret"), std::string::npos) << Proxy.Request();
}

TEST_F(HTTPCurl, LeavesNoTLSKeysBehind) {
  Start();
  EXPECT_EQ(Call(TMethod::Get).Status, 200);
  EXPECT_EQ(std::ifstream(KeyLog).peek(), std::ifstream::traits_type::eof());
  std::remove(KeyLog.c_str());
}

TEST_F(HTTPCurl, RefusesACallDuringACall) {
  Start({{.DelayMilliseconds = 400}});
  std::thread First([this] { EXPECT_EQ(Call(TMethod::Post).Status, 200); });
  while (FServer->Received().empty()) std::this_thread::yield();
  TStringList Log, Response;
  EXPECT_THROW(FClient->httpNetGet("https://api.example/", {}, Log, Response), THTTPError);
  First.join();
  EXPECT_EQ(FServer->Requests(), 1);
}

TEST_F(HTTPCurl, KnowsThatNothingWasSentWithoutAConnection) {
  THTTPCurl Client;
  EXPECT_EQ(Client.LastFate(), TRequestFate::None);
  for (const char* URL : {"https://127.0.0.1:1/", "http://127.0.0.1/", "https://a/../b"}) {
    TStringList Log, Response;
    EXPECT_THROW(Client.httpNetPost(URL, {}, {}, Log, Response), THTTPError) << URL;
    EXPECT_EQ(Client.LastFate(), TRequestFate::NotSent) << URL;
  }
}

TEST(HTTPCurlOptions, AreCheckedAtOnce) {
  using namespace std::chrono_literals;
  EXPECT_THROW(THTTPCurl({.ConnectTo = {{"api.example", "127.0.0.1:1"}}}), TBeamError);
  EXPECT_THROW(THTTPCurl({.ConnectTo = {{"api.example:443", "127.0.0.1:"}}}), TBeamError);
  EXPECT_THROW(THTTPCurl({.TotalTimeout = 0ms}), TBeamError);
}

}  // namespace
}  // namespace oxSuperAPI::tests
