#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "oxSuperAPI/host/uHostHttp.h"
#include "oxSuperAPI/reference/http_certificate.h"
#include "oxSuperAPI/reference/http_request.h"

namespace oxSuperAPI {

/// Leads the connections for one host elsewhere; the URL, the Host header and the certificate check keep the host.
struct THTTPConnectTo {
  std::string From;  ///< "host:port" as in the URL, the port always given ("api.example:443")
  std::string To;    ///< "address:port" ("127.0.0.1:8443")
};

/// A secret, asked for when a call needs it. What it raises ends the call before anything is sent.
using THTTPSecret = std::function<std::string()>;

/// Nothing is ever read from the environment, from .netrc or from a curl configuration file.
struct THTTPCurlOptions {
  std::string CAFile = {};                ///< PEM file with the only authorities to trust; "" is the system's store
  std::string ClientCertificate = {};     ///< PEM file, with what leads to its authority; "" is none
  std::string ClientKey = {};             ///< PEM file, the owner's alone; "" is the one of the certificate
  THTTPSecret ClientKeyPassphrase = {};   ///< empty when the key is not enciphered
  std::string Proxy = {};                 ///< as ParseProxy takes it; "" is none
  std::string ProxyUser = {};             ///< unless the URL has one; "" is none
  THTTPSecret ProxyPassword = {};         ///< of ProxyUser
  std::string ProxyCAFile = {};           ///< for an https proxy; "" is CAFile
  std::vector<std::string> NoProxy = {};  ///< as TNoProxy takes them
  std::vector<THTTPConnectTo> ConnectTo = {};        ///< no entry: as the URL says
  std::chrono::milliseconds ConnectTimeout{15'000};  ///< until the TLS connection stands, through a proxy or not
  std::chrono::seconds StallTimeout{90};             ///< without a byte in either direction; waiting counts
  std::chrono::milliseconds TotalTimeout{300'000};   ///< for the whole call
  std::size_t MaxResponseBytes = 64u << 20;          ///< a longer answer is refused
};

/// The HTTPS client on libcurl.
///
/// At most one request leaves for each call (docs/adr/0002-one-request-a-call.md). Certificates are always verified, by
/// the rules of docs/https.md, redirects are not followed, compressed answers are neither asked for nor taken. A GET
/// may use the connection that the call before left open; a POST or PUT opens its own. A call that fails raises
/// THTTPError and adds addresses and timings, no content, to `LogDetails`. Serves one call at a time; a call during a
/// call, from whatever thread, is refused.
class OXSUPERAPI_EXPORT THTTPCurl : public THTTPHelper {
 public:
  /// Raises TBeamError when an option is malformed.
  explicit THTTPCurl(THTTPCurlOptions Options = {});
  ~THTTPCurl() override;

  std::int32_t httpNetGet(const std::string& URL, const TStringList& Headers, TStringList& LogDetails,
                          TStringList& Response) override;
  std::int32_t httpNetPost(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                           TStringList& LogDetails, TStringList& Response) override;
  std::int32_t httpNetPut(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                          TStringList& LogDetails, TStringList& Response) override;

  /// What became of the last call's request, or is known of it so far. For callers that do not see the THTTPError
  /// itself; may be asked from any thread.
  TRequestFate LastFate() const { return FLastFate; }

  /// What the server of the last call showed, at that call or when the connection was made, its own first; also when it
  /// was refused. Empty when it came to no handshake.
  const std::vector<TServerCertificate>& ServerCertificates() const;
  /// The server's clock by the Date header of the last call's answer, in seconds since 1970-01-01 UTC.
  std::optional<std::int64_t> ServerTime() const { return FServerTime; }
  /// Whether calls to `Host` ("host" or "host:port") go through the proxy.
  bool UsesProxy(const std::string& Host) const;

 private:
  struct TSession;
  std::int32_t Send(const char* Method, const std::string& URL, const TStringList& Headers, const TStringList* Body,
                    TStringList& LogDetails, TStringList& Response);

  std::unique_ptr<TSession> FSession;
  std::atomic<bool> FBusy = false;
  std::atomic<TRequestFate> FLastFate = TRequestFate::None;
  std::optional<std::int64_t> FServerTime;
};

}  // namespace oxSuperAPI
