#include "oxSuperAPI/reference/http_curl.h"

#include <fstream>

#include "fault_server.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {
namespace {

using namespace std::chrono_literals;

/// libcurl makes the file that SSLKEYLOGFILE names as soon as it starts, in whichever test that is.
struct TKeyLog {
  const std::string FileName =
      (std::filesystem::temp_directory_path() / ("http_curl_test_keys_" + std::to_string(getpid()))).string();
  ~TKeyLog() { std::filesystem::remove(FileName); }
} const KeyLog;

// An environment that would lead every call of this program astray.
const bool Hostile = [] {
  for (const char* Name : {"https_proxy", "HTTPS_PROXY", "ALL_PROXY", "all_proxy"})
    setenv(Name, "http://127.0.0.1:1", 1);
  setenv("SSL_CERT_FILE", "/nonexistent", 1);
  return setenv("SSLKEYLOGFILE", KeyLog.FileName.c_str(), 1) == 0;
}();

enum class TMethod { Get, Post, Put };
using enum TMethod;
constexpr TMethod AllMethods[] = {Get, Post, Put};
constexpr TCut AllCuts[] = {TCut::Farewell, TCut::End, TCut::Reset};

/// What a call came to.
struct TOutcome {
  std::int32_t Status = 0;
  std::string Body, Error, Log;
  TRequestFate Fate = TRequestFate::None;
};

class HTTPCurl : public testing::Test {
 protected:
  void Start(std::vector<TStep> Steps = {}, THTTPCurlOptions Client = {}, TServerOptions Options = {}) {
    FClient.reset();
    FServer = std::make_unique<TFaultServer>(std::move(Steps), Options);
    if (Client.CAFile.empty()) Client.CAFile = FServer->CAFile;
    Client.ConnectTo = {{"api.example:443", "127.0.0.1:" + std::to_string(FServer->Port())}};
    FClient = std::make_unique<THTTPCurl>(Client);
  }

  TOutcome Call(TMethod Method, const TStringList& Body = TStringList({"{}"}),
                const std::string& URL = "https://api.example/a?secret=1", const TStringList& Headers = TStringList()) {
    TOutcome Result;
    TStringList Log, Response;
    try {
      if (Method == Get) Result.Status = FClient->httpNetGet(URL, Headers, Log, Response);
      if (Method == Post) Result.Status = FClient->httpNetPost(URL, Headers, Body, Log, Response);
      if (Method == Put) Result.Status = FClient->httpNetPut(URL, Headers, Body, Log, Response);
    } catch (const THTTPError& Error) {
      Result.Error = Error.what();
      EXPECT_EQ(Error.Fate(), FClient->LastFate());
    }
    Result.Body = Response.Text();
    Result.Log = Log.Text();
    Result.Fate = FClient->LastFate();
    EXPECT_FALSE(Holds(Result.Error + Result.Log, "secret")) << Result.Error << Result.Log;
    return Result;
  }

  // A call that fails with this text.
  void ExpectFailure(TMethod Method, const std::string& Text, TRequestFate Fate) {
    const TOutcome Outcome = Call(Method);
    EXPECT_PRED2(Holds, Outcome.Error, Text);
    EXPECT_EQ(Outcome.Status, 0);
    EXPECT_NE(Outcome.Error, "");
    EXPECT_EQ(Outcome.Body, "");
    EXPECT_EQ(Outcome.Fate, Fate);
  }

  std::unique_ptr<TFaultServer> FServer;
  std::unique_ptr<THTTPCurl> FClient;
};

TEST_F(HTTPCurl, SendsEachRequestOnceWhereverTheConnectionBreaks) {
  const TStringList LargeBody({std::string(300'000, 'x')});
  for (const TMethod Method : AllMethods)
    for (const bool Reused : {false, true})
      for (const TCut Cut : AllCuts)
        for (const TStage Stage :
             {TStage::BeforeHandshake, TStage::AfterHandshake, TStage::AfterHeaders, TStage::AfterRequest})
          for (const bool Large : {false, true}) {
            // A connection that a GET uses again has its handshake behind it.
            if (Reused && Method == Get && Stage < TStage::AfterHeaders) continue;
            SCOPED_TRACE(testing::Message() << "method " << int(Method) << ", reused " << Reused << ", cut " << int(Cut)
                                            << ", stage " << int(Stage) << ", large " << Large);
            std::vector<TStep> Steps(Reused ? 2 : 0);
            Steps.push_back({Stage, Cut});
            Start(Steps);
            for (int Count = 0; Count < (Reused ? 2 : 0); ++Count) ASSERT_EQ(Call(Get).Status, 200);
            const int Before = FServer->Requests;
            ASSERT_EQ(FServer->Connections, Reused ? 1 : 0);

            const TOutcome Outcome = Call(Method, Large ? LargeBody : TStringList({"{}"}));
            EXPECT_EQ(Outcome.Status, 0);
            EXPECT_TRUE(!Outcome.Error.empty() && !Outcome.Log.empty());
            EXPECT_EQ(Outcome.Body, "");
            EXPECT_LE(FServer->Requests, Before + 1);
            EXPECT_EQ(Outcome.Fate,
                      Stage == TStage::BeforeHandshake ? TRequestFate::NotSent : TRequestFate::MayHaveArrived);
            const int After = FServer->Requests;
            const TOutcome Next = Call(Method);
            EXPECT_EQ(Next.Status, 200) << Next.Error << Next.Log;
            EXPECT_EQ(FServer->Requests, After + 1);
          }
}

TEST_F(HTTPCurl, RefusesAnAnswerThatBreaksOff) {
  const std::string OK = "HTTP/1.1 200 OK\r\n", Chunked = OK + "Transfer-Encoding: chunked\r\n\r\n",
                    Continue = "HTTP/1.1 100 Continue\r\n\r\n";
  for (const std::string& Answer :
       {std::string("\r\n"), std::string("HTTP/1."), OK, OK + "Content-Le", OK + "Content-Length: 2\r\n",
        OK + "Content-Length: 2\r\n\r\n", OK + "Content-Length: 3\r\n\r\nok", Chunked + "5\r\nok",
        Chunked + "2\r\nok\r\n", Continue, Continue + OK, std::string("garbage\r\n\r\n"),
        OK + "Content-Encoding: gzip\r\nContent-Length: 2\r\n\r\nok"})
    for (const TMethod Method : {Get, Post})
      for (const TCut Cut : AllCuts) {
        SCOPED_TRACE(Answer + " / " + std::to_string(int(Cut)));
        Start({{}, {TStage::AfterAnswer, Cut, Answer}});
        ASSERT_EQ(Call(Get).Status, 200);
        ExpectFailure(Method, "", TRequestFate::MayHaveArrived);
        EXPECT_EQ(FServer->Requests, 2);
      }
}

TEST_F(HTTPCurl, TellsABodyWithoutLengthFromOneThatWasCut) {
  for (const std::string Body : {"{\"a\":1}", ""})
    for (const TCut Cut : AllCuts) {
      Start({{TStage::AfterAnswer, Cut, "HTTP/1.1 200 OK\r\n\r\n" + Body}});
      const TOutcome Outcome = Call(Post);
      EXPECT_EQ(Outcome.Status, Cut == TCut::Farewell ? 200 : 0);
      EXPECT_EQ(Outcome.Body, Cut == TCut::Farewell ? Body : "");
    }
}

TEST_F(HTTPCurl, KeepsTheConnectionForGetsAndResumesTheSessionOtherwise) {
  Start();
  for (int Count = 0; Count < 3; ++Count) EXPECT_EQ(Call(Get).Status, 200);
  EXPECT_EQ(FServer->Connections, 1);
  EXPECT_EQ(Call(Post).Status + Call(Put).Status, 400);
  EXPECT_EQ(FServer->Connections, 3);
  EXPECT_EQ(FServer->ResumedSessions, 2);
  EXPECT_EQ(Call(Get).Status, 200);
  EXPECT_EQ(FServer->Connections, 3);
  EXPECT_EQ(ReadFile(KeyLog.FileName), "") << "no TLS keys are left behind";

  for (const TMethod Method : AllMethods)
    for (const TCut Cut : {TCut::Farewell, TCut::End}) {  // the server closes the kept one
      Start({{TStage::AfterAnswer, Cut}});
      ASSERT_EQ(Call(Get).Status, 200);
      std::this_thread::sleep_for(30ms);
      const TOutcome Outcome = Call(Method);
      EXPECT_EQ(Outcome.Status, 200) << Outcome.Error << Outcome.Log;
      EXPECT_EQ(FServer->Requests, 2);
    }
}

TEST_F(HTTPCurl, GivesTheAnswerAsItCame) {
  const std::string Interim = "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 103 Early Hints\r\nX: y\r\n\r\n",
                    Empty = "Content-Length: 0\r\n\r\n";
  const struct {
    std::string Answer;
    std::int32_t Status;
    std::string Body;
    // clang-format off
  } Cases[] = {
      {Interim + GoodAnswer, 200, "ok"}, {"HTTP/1.1 204 No Content\r\n\r\n", 204, ""},
      {"HTTP/1.1 500 Broken\r\nContent-Length: 7\r\n\r\na\r\nb\n\xFF ", 500, "a\r\nb\n\xFF "},
      {"HTTP/1.1 302 Found\r\nLocation: https://api.example/b\r\n" + Empty, 302, ""},
      {"HTTP/1.1 401 No\r\nWWW-Authenticate: Basic\r\n" + Empty, 401, ""}, {"HTTP/1.1 417 No\r\n" + Empty, 417, ""},
      {"HTTP/1.1 408 Late\r\nConnection: close\r\n" + Empty, 408, ""},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\na\r\n2\r\nbc\r\n0\r\nT: u\r\n\r\n", 200, "abc"}};
  // clang-format on
  for (const auto& Case : Cases)
    for (const TMethod Method : AllMethods) {
      SCOPED_TRACE(Case.Answer);
      Start({{TStage::Never, TCut::End, Case.Answer}});
      const TOutcome Outcome = Call(Method);
      EXPECT_EQ(Outcome.Status, Case.Status) << Outcome.Error;
      EXPECT_EQ(Outcome.Body, Case.Body);
      EXPECT_EQ(Outcome.Log, "");
      EXPECT_EQ(Outcome.Fate, TRequestFate::Answered);
      EXPECT_EQ(FServer->Requests, 1);
    }
  Start({{TStage::Never, TCut::End, GoodAnswer + "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nevil"}});
  EXPECT_EQ(Call(Get).Body + Call(Get).Body, "okok") << "leftovers of one answer are never taken for the next";
}

TEST_F(HTTPCurl, SendsWhatTheCallerGaveAndNothingElse) {
  Start();
  const TStringList Headers({"authorization: Bearer ", "x-Blank:  ", "x-Empty:", "X-Name: Zo\xC3\xAB"});
  TStringList Large;
  for (int Line = 0; Line < 120'000; ++Line) Large.Add("line " + std::to_string(Line));
  Call(Post, TStringList({"{", "\"a\": 1\r\n", "", "}"}), "https://api.example/a b", Headers);
  Call(Put, TStringList(), "https://api.example/c");
  Call(Post, TStringList({" ", "\t[1]"}), "https://api.example/d", TStringList({"CONTENT-TYPE: text/x"}));
  Call(Post, TStringList({"a=b"}), "https://api.example/e");
  Call(Get, TStringList(), "https://api.example/f");
  Call(Get, TStringList(), "https://api.example/g", Headers);
  Call(Get, TStringList(), "https://api.example/h");
  EXPECT_EQ(Call(Post, Large).Status, 200);
  const auto Received = FServer->Received();
  ASSERT_EQ(Received.size(), 8u);
  EXPECT_EQ(Received[0],
            "POST /a%20b HTTP/1.1\r\nHost: api.example\r\n"
            "authorization: Bearer \r\nx-Blank:\r\nx-Empty:\r\nX-Name: Zo\xC3\xAB\r\nContent-Type: application/json\r\n"
            "Content-Length: 16\r\n\r\n{\r\n\"a\": 1\r\n\r\n\r\n}");
  EXPECT_EQ(Received[1], "PUT /c HTTP/1.1\r\nHost: api.example\r\nContent-Length: 0\r\n\r\n");
  EXPECT_PRED2(Holds, Received[2], "CONTENT-TYPE: text/x\r\nContent-Length: 7\r\n\r\n \r\n\t[1]");
  EXPECT_FALSE(Holds(Received[3], "ontent-Type")) << Received[3];
  EXPECT_EQ(Received[4], "GET /f HTTP/1.1\r\nHost: api.example\r\n\r\n");
  EXPECT_PRED2(Holds, Received[5], "GET /g HTTP/1.1\r\nHost: api.example\r\nauthorization: Bearer \r\nx-Blank:");
  EXPECT_EQ(Received[6], "GET /h HTTP/1.1\r\nHost: api.example\r\n\r\n");
  EXPECT_TRUE(Received[7].ends_with("\r\n\r\n" + Large.Text()));
  EXPECT_FALSE(Holds(Received[7], "Expect")) << "libcurl's habit from 1 MB on";
}

TEST_F(HTTPCurl, SaysWhyThereIsNoTLS) {
  const struct {
    TServerOptions Options;
    std::string Authority, Text;
    // clang-format off
  } Cases[] = {
      {{}, "/nonexistent", "trusted authorities cannot be read"},
      {{.MaxTLSVersion = TLS1_1_VERSION}, "", "handshake failed"}};
  // clang-format on
  for (const auto& Case : Cases) {
    Start({}, {.CAFile = Case.Authority}, Case.Options);
    ExpectFailure(Post, Case.Text, TRequestFate::NotSent);
    EXPECT_EQ(FServer->Requests, 0);
  }
}

TEST_F(HTTPCurl, EndsACallThatTakesTooLongOrTooMuch) {
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
      {{.Answer = "HTTP/1.1 200 OK\r\n" + std::string(2'000'000, 'h')}, {}, ""},
  };
  for (const auto& Case : Cases) {
    Start({Case.Step}, Case.Options);
    ExpectFailure(Get, Case.Text, TRequestFate::MayHaveArrived);
  }
  Start({}, {.MaxResponseBytes = 2});
  EXPECT_EQ(Call(Get).Body, "ok");
}

TEST_F(HTTPCurl, RefusesACallDuringACall) {
  Start({{.DelayMilliseconds = 400}});
  std::thread First([this] { EXPECT_EQ(Call(Post).Status, 200); });
  while (FServer->Received().empty()) std::this_thread::yield();
  TStringList Log, Response;
  EXPECT_THROW(FClient->httpNetGet("https://api.example/", {}, Log, Response), THTTPError);
  First.join();
  EXPECT_EQ(FServer->Requests, 1);
}

TEST_F(HTTPCurl, KnowsThatNothingWasSentWithoutAConnectionAndChecksOptionsAtOnce) {
  THTTPCurl Client;
  EXPECT_EQ(Client.LastFate(), TRequestFate::None);
  for (const char* URL : {"https://127.0.0.1:1/", "http://127.0.0.1/", "https://a/../b"}) {
    TStringList Log, Response;
    EXPECT_THROW(Client.httpNetPost(URL, {}, {}, Log, Response), THTTPError) << URL;
    EXPECT_EQ(Client.LastFate(), TRequestFate::NotSent) << URL;
  }
  EXPECT_THROW(THTTPCurl({.ConnectTo = {{"api.example", "127.0.0.1:1"}}}), TBeamError);
  EXPECT_THROW(THTTPCurl({.ConnectTo = {{"api.example:443", "127.0.0.1:"}}}), TBeamError);
  EXPECT_THROW(THTTPCurl({.TotalTimeout = 0ms}), TBeamError);
}

}  // namespace
}  // namespace oxSuperAPI::tests
