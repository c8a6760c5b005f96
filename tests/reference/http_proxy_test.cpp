#include "oxSuperAPI/reference/http_proxy.h"

#include "../support/connect_proxy.h"
#include "oxSuperAPI/reference/http_client_key.h"
#include "oxSuperAPI/reference/http_curl.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {
namespace {

using namespace std::chrono_literals;

TEST(Proxy, IsTakenApartAndNeverShown) {
  EXPECT_EQ(ParseProxy("").URL, "");
  EXPECT_EQ(ParseProxy("proxy:3128").URL, "http://proxy:3128");
  EXPECT_EQ(ParseProxy("HTTPS://[FD00::1]:3128/").URL, "https://[fd00::1]:3128");
  const TProxy Proxy = ParseProxy("http://o%20ffice:p%40ss:w%3Ard@proxy.example:3128");
  EXPECT_EQ(Proxy.User + "|" + Proxy.Password + "|" + Proxy.URL, "o ffice|p@ss:w:rd|http://proxy.example:3128");
  for (const char* URL : {"socks5://p:1", "http://", "http://p", "http://p:0", "http://p:65536", "http://p:1x",
                          "http://p:1/x", "http://:s3cret@p:1", "http://u:s3cret%0@p:1", "http://u:s3cret%00@p:1",
                          "http://u:s3cret@p q:1", "http://[p]:1", "http://p\r\n:1"}) {
    const std::string Error = ErrorOf([&] { ParseProxy(URL); });
    EXPECT_TRUE(Holds(Error, "http.proxy") && !Holds(Error, "s3cret")) << URL << Error;
  }
}

TEST(NoProxy, KnowsNamesDomainsAddressesAndNetworks) {
  const TNoProxy None({}),
      Some({"api.example", ".dot.example", "*.star.example", "10.0.0.0/8", "192.0.2.7", "fd00::/9", "[2001:db8::1]"}),
      All({"*"});
  const std::pair<const char*, bool> Cases[] = {
      {"api.example", true},      {"API.example.", true}, {"x.api.example", true}, {"xapi.example", false},
      {"example", false},         {"dot.example", true},  {"a.dot.example", true}, {"a.star.example", true},
      {"10.255.0.1", true},       {"11.0.0.1", false},    {"192.0.2.7", true},     {"192.0.2.70", false},
      {"fd7f::1", true},          {"[fd80::1]", false},   {"[2001:db8::1]", true}, {"2001:db8::2", false},
      {"10.0.0.1.example", false}};
  for (const auto& [Host, Covered] : Cases) EXPECT_EQ(Some.Covers(Host), Covered) << Host;
  for (const char* Loopback : {"localhost", "LOCALHOST", "a.localhost", "127.0.0.1", "127.9.9.9", "[::1]", "::1"})
    EXPECT_TRUE(None.Covers(Loopback)) << Loopback;
  for (const char* Other : {"localhost.example", "128.0.0.1", "::2", "api.example"}) {
    EXPECT_FALSE(None.Covers(Other)) << Other;
    EXPECT_TRUE(All.Covers(Other)) << Other;
  }
  for (const char* Wrong : {"", ".", "a b", "10.0.0.0/33", "10.0.0.0/", "10.0.0.0/x", "10.0.0/8", "http://a", "a,b"})
    EXPECT_ERROR(TNoProxy({Wrong}), "http.no_proxy");
}

/// A server, a proxy that leads to it, and a client that uses it unless a test says otherwise.
class HTTPProxy : public testing::Test {
 protected:
  void Start(TProxyOptions Proxy, THTTPCurlOptions Client = {}) {
    Proxy.Target = FServer.Port();
    const std::string Scheme = Proxy.IsTLS ? "https://" : "http://";
    FClient.reset();
    FProxy = std::make_unique<TConnectProxy>(Proxy);
    Client.CAFile = FServer.CAFile;
    if (Proxy.IsTLS) Client.ProxyCAFile = FDirectory.Write("proxy.pem", FProxy->Authority);
    Client.Proxy = Scheme + (Proxy.IsTLS ? "localhost:" : "127.0.0.1:") + std::to_string(FProxy->Port());
    FClient = std::make_unique<THTTPCurl>(Client);
  }
  // The error text and the log, or "" after a good answer.
  std::string Post(const std::string& URL = "https://api.example/a") {
    TStringList Log, Response;
    try {
      EXPECT_EQ(
          FClient->httpNetPost(URL, TStringList({"authorization: Bearer s3cret"}), TStringList({"{}"}), Log, Response),
          200);
      return "";
    } catch (const THTTPError& Error) {
      EXPECT_FALSE(Holds(Error.what() + Log.Text(), "s3cret")) << Error.what() << Log.Text();
      FFate = Error.Fate();
      return Error.what();
    }
  }
  void ExpectRefusal(const std::string& Text) {
    const int Before = FServer.Requests;
    EXPECT_PRED2(Holds, Post(), Text);
    EXPECT_EQ(FFate, TRequestFate::NotSent);
    EXPECT_EQ(FServer.Requests, Before);
    for (const std::string& Asked : FProxy->Asked()) EXPECT_FALSE(Holds(Asked, "Bearer")) << Asked;
  }

  TTemporaryDirectory FDirectory;
  TFaultServer FServer;
  std::unique_ptr<TConnectProxy> FProxy;
  std::unique_ptr<THTTPCurl> FClient;
  TRequestFate FFate = TRequestFate::None;
};

const std::string Credentials = "b2ZmaWNlOnMzY3JldA==";  // office:s3cret

THTTPCurlOptions SignedIn(const std::string& Password = "s3cret") {
  return {.ProxyUser = "office", .ProxyPassword = [Password] { return Password; }};
}

TEST_F(HTTPProxy, CarriesOneRequestAndKeepsItsCredentialsToItself) {
  setenv("NO_PROXY", "*", 1);  // nothing of the environment counts
  for (const bool IsTLS : {false, true}) {
    TProxyOptions Options{.Credentials = Credentials, .IsTLS = IsTLS};
    Options.Plan.Leaf.Names = "DNS:localhost";
    Start(Options, SignedIn());
    const int Before = FServer.Requests;
    EXPECT_EQ(Post(), "");
    EXPECT_EQ(FServer.Requests, Before + 1);
    ASSERT_EQ(FProxy->Asked().size(), 1u);
    EXPECT_TRUE(FProxy->Asked()[0].starts_with("CONNECT api.example:443 HTTP/1.1\r\n")) << FProxy->Asked()[0];
    EXPECT_FALSE(Holds(FServer.Received().back(), "roxy")) << FServer.Received().back();
    EXPECT_EQ(FClient->ServerCertificates().front().Subject, "CN=api.example");
  }
  unsetenv("NO_PROXY");
}

TEST_F(HTTPProxy, SaysWhoRefusedWhat) {
  const std::tuple<TProxyOptions, THTTPCurlOptions, std::string> Cases[] = {
      {{.Credentials = Credentials}, {}, "wants another user name or password (its status 407)"},
      {{.Credentials = Credentials}, SignedIn("s3cret2"), "wants another user name or password"},
      {{.Answer = "HTTP/1.1 403 No\r\nContent-Length: 2\r\n\r\nno"}, {}, "does not allow connections"},
      {{.Answer = "HTTP/1.1 502 No\r\n\r\n"}, {}, "cannot reach this host (its status 502)"},
      {{.Answer = "HTTP/1.1 302 No\r\nLocation: https://api.example/\r\n\r\n"},
       {},
       "refuses the connection (its status"},
      {{.Answer = "garbage\r\n\r\n"}, {}, "the proxy 127.0.0.1"},
      {{.Answer = "HTTP/1."}, {}, "the proxy 127.0.0.1"},
      {{.Answer = "HTTP/1.1 200 OK\r\nX: " + std::string(400'000, 'x')}, {}, "the proxy 127.0.0.1"},
      {{.Hangs = true}, {.ConnectTimeout = 200ms}, "no connection in time through the proxy 127.0.0.1"},
  };
  for (const auto& [Proxy, Client, Text] : Cases) {
    SCOPED_TRACE(Text);
    Start(Proxy, Client);
    ExpectRefusal(Text);
  }
  // A tunnel that leads nowhere is not the proxy's fault.
  Start({.Answer = "HTTP/1.1 200 OK\r\n\r\n"});
  EXPECT_FALSE(Holds(Post(), "the proxy"));
}

TEST_F(HTTPProxy, HasACertificateOfItsOwn) {
  TProxyOptions Options{.IsTLS = true};
  Start(Options);
  ExpectRefusal("the certificate of the proxy is refused: it is for another name (asked for was localhost");
  Options.Plan.Leaf.Names = "DNS:localhost";
  Options.Plan.Leaf.Key = "RSA-1024";
  Start(Options);
  ExpectRefusal("the certificate of the proxy is refused: it is too weak");
  Options.Plan.Leaf.Key = "P-256";
  Start(Options);
  EXPECT_PRED2(Holds, Post("https://other.example/"), "the certificate of the server is refused: it is for another");
}

TEST_F(HTTPProxy, MayBeOutOfReach) {
  for (const char* URL : {"http://127.0.0.1:1", "https://127.0.0.1:1"}) {
    FClient = std::make_unique<THTTPCurl>(THTTPCurlOptions{.Proxy = URL});
    EXPECT_PRED2(Holds, Post(), "no connection to the proxy 127.0.0.1:1");
    EXPECT_EQ(FFate, TRequestFate::NotSent);
  }
}

TEST_F(HTTPProxy, IsPassedByWhereItIsNotWanted) {
  const std::string Port = std::to_string(FServer.Port());
  const std::pair<THTTPCurlOptions, std::string> Cases[] = {
      {{.ConnectTo = {{"api.example:443", "127.0.0.1:" + Port}}}, "https://api.example/"},  // leads to loopback
      {{}, "https://localhost:" + Port + "/"}};
  for (const auto& [Options, URL] : Cases) {
    Start({.Answer = "HTTP/1.1 403 No\r\n\r\n"}, Options);
    Post(URL);
    EXPECT_TRUE(FProxy->Asked().empty());
  }
  EXPECT_EQ(FServer.Requests, 1) << "the second one is refused for its name";
}

TEST(ClientCertificate, IsShownToAServerThatAsks) {
  const TFaultServer Server({}, {.WantsClientKey = true});
  const TTemporaryDirectory Directory;
  TChainPlan Plan;
  Plan.Leaf.ExtendedUsage = "clientAuth";
  const TServerIdentity Client = MakeIdentity(Plan);
  const std::string Certificate = Directory.Write("c.pem", PEMOf(Client.Leaf.get())),
                    Plain = Directory.Write("k.pem", PEMOf(Client.Key.get())),
                    Sealed = Directory.Write("s.pem", PEMOf(Client.Key.get(), "s3cret")),
                    Both = Directory.Write("b.pem", PEMOf(Client.Leaf.get()) + PEMOf(Client.Key.get())),
                    Wide = Directory.Write("w.pem", PEMOf(Client.Key.get()), 0640),
                    Other = Directory.Write("o.pem", PEMOf(KeyOf("P-256", 9).get()));
  const struct {
    std::string Certificate, Key, Passphrase, Error;
  } Cases[] = {{Certificate, Plain, "", ""},
               {Certificate, Sealed, "s3cret", ""},
               {Both, "", "", ""},
               {"", "", "", "Check http.client_certificate"},
               {Certificate, Sealed, "wrong s3cret", "does not open it"},
               {Certificate, Sealed, "", "does not open it"},
               {Certificate, Wide, "", "chmod 600"},
               {Certificate, Other, "", "is not the one of the client certificate"},
               {Certificate, "", "", "holds no private key"},
               {Plain, Plain, "", "holds no certificate"},
               {Directory / "none", Plain, "", "Cannot read the client certificate"}};
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Certificate + " " + Case.Key + " " + Case.Passphrase);
    THTTPCurl HTTP({.CAFile = Server.CAFile,
                    .ClientCertificate = Case.Certificate,
                    .ClientKey = Case.Key,
                    .ClientKeyPassphrase = [&] { return Case.Passphrase; },
                    .ConnectTo = {{"api.example:443", "127.0.0.1:" + std::to_string(Server.Port())}}});
    TStringList Log, Response;
    const std::string Error =
        ErrorOf([&] { HTTP.httpNetPost("https://api.example/", {}, TStringList({"{}"}), Log, Response); });
    EXPECT_PRED2(Holds, Error, Case.Error);
    EXPECT_EQ(Error.empty(), Case.Error.empty()) << Error;
    EXPECT_FALSE(Holds(Error + Log.Text(), "s3cret"));
  }
  EXPECT_EQ(Server.Requests, 3);
}

}  // namespace
}  // namespace oxSuperAPI::tests
