#include "oxSuperAPI/reference/http_curl.h"

#include <curl/curl.h>
#include <poll.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "oxSuperAPI/reference/http_client_key.h"
#include "oxSuperAPI/reference/http_failure.h"
#include "oxSuperAPI/reference/http_proxy.h"
#include "oxSuperAPI/reference/http_tls_watch.h"

namespace oxSuperAPI {

namespace {

/// All headers of an answer together; more is an attack.
constexpr std::size_t MaxHeaderBytes = 1u << 18;
/// A connection that stayed unused for longer is not used again: the server may be about to close it.
constexpr long MaxIdleSeconds = 20;

struct TListFree {
  void operator()(curl_slist* List) const { curl_slist_free_all(List); }
};
using TCurlList = std::unique_ptr<curl_slist, TListFree>;

void Append(TCurlList& List, const std::string& Line) {
  curl_slist* const Longer = curl_slist_append(List.get(), Line.c_str());
  if (!Longer) throw std::bad_alloc();
  static_cast<void>(List.release());  // the first node stays the first
  List.reset(Longer);
}

/// Hands out a body piece by piece, CR LF between its lines. There is no way back to its start.
class TBodyReader {
 public:
  explicit TBodyReader(const TStringList& Lines) : FLines(Lines) {}

  std::size_t Size() const {
    std::size_t Result = FLines.IsEmpty() ? 0 : 2 * (FLines.Count() - 1);
    for (const std::string& Line : FLines) Result += Line.size();
    return Result;
  }

  std::size_t Read(char* Out, std::size_t Room) {
    std::size_t Done = 0;
    while (Done < Room && FPiece + 1 < 2 * FLines.Count()) {
      const std::string_view Piece = FPiece % 2 == 0 ? std::string_view(FLines[FPiece / 2]) : "\r\n";
      const std::size_t Count = std::min(Room - Done, Piece.size() - FOffset);
      std::memcpy(Out + Done, Piece.data() + FOffset, Count);
      Done += Count;
      FOffset += Count;
      if (FOffset < Piece.size()) break;
      FOffset = 0;
      ++FPiece;
    }
    return Done;
  }

 private:
  const TStringList& FLines;
  std::size_t FPiece = 0;  // even: a line, odd: the break behind it
  std::size_t FOffset = 0;
};

/// One call while it runs.
struct TExchange {
  std::atomic<TRequestFate>& Fate;  // NotSent until the request begins to leave
  std::size_t MaxResponseBytes;
  bool Stopped = false;    // libcurl was about to send it once more
  bool Headed = false;     // the headers of the answer are complete
  bool Delimited = false;  // ... and say where its body ends
  bool Encoded = false;    // ... and announce a compressed body
  bool TooLarge = false;
  std::size_t HeaderBytes = 0;
  std::string Date = {};  // as its header has it
  std::string Answer = {};
};

// The callbacks of libcurl. None lets an exception pass into C.

/// libcurl asks before each request that it puts on a connection. It repeats one by itself, on a new connection, when
/// a reused connection turns out dead: this is where that ends.
int OnBeforeRequest(void* Context, char*, char*, int, int) noexcept {
  auto& Exchange = *static_cast<TExchange*>(Context);
  if (Exchange.Fate != TRequestFate::NotSent) {
    Exchange.Stopped = true;
    return CURL_PREREQFUNC_ABORT;
  }
  Exchange.Fate = TRequestFate::MayHaveArrived;
  return CURL_PREREQFUNC_OK;
}

CURLcode OnTLSContext(CURL*, void* Context, void* Watch) noexcept {
  static_cast<TTLSWatch*>(Watch)->Attach(static_cast<SSL_CTX*>(Context));
  return CURLE_OK;
}

std::size_t OnBodyWanted(char* Out, std::size_t, std::size_t Room, void* Context) noexcept {
  return static_cast<TBodyReader*>(Context)->Read(Out, Room);
}

std::size_t OnHeader(char* Data, std::size_t, std::size_t Size, void* Context) noexcept {
  auto& Exchange = *static_cast<TExchange*>(Context);
  const std::string_view Line(Data, Size);
  Exchange.HeaderBytes += Size;
  if (Exchange.HeaderBytes > MaxHeaderBytes) {
    Exchange.TooLarge = true;
    return 0;
  }
  try {
    const std::string Name = HeaderName(Line);
    if (Line.starts_with("HTTP/")) Exchange.Headed = Exchange.Delimited = Exchange.Encoded = false;
    if (Line == "\r\n" || Line == "\n") Exchange.Headed = true;
    if (Name == "content-length" || Name == "transfer-encoding") Exchange.Delimited = true;
    if (Name == "date") Exchange.Date = Line.substr(5);
    if (Name == "content-encoding" && Line.find("identity") == std::string_view::npos) Exchange.Encoded = true;
  } catch (...) {
    return 0;
  }
  return Size;
}

std::size_t OnBody(char* Data, std::size_t, std::size_t Size, void* Context) noexcept {
  auto& Exchange = *static_cast<TExchange*>(Context);
  if (Size > Exchange.MaxResponseBytes - Exchange.Answer.size()) {
    Exchange.TooLarge = true;
    return 0;
  }
  try {
    Exchange.Answer.append(Data, Size);
  } catch (...) {
    return 0;
  }
  return Size;
}

template <class Value>
void Set(CURL* Handle, CURLoption Option, Value Setting) {
  const CURLcode Code = curl_easy_setopt(Handle, Option, Setting);
  if (Code == CURLE_OUT_OF_MEMORY) throw std::bad_alloc();
  if (Code != CURLE_OK) throw TBeamError("libcurl refuses option " + std::to_string(Option) + ": it is too old");
}

/// The caller's lines as they stand, and the ones that keep libcurl from adding its own.
TCurlList WireHeaders(const TStringList& Headers, const TStringList* Body) {
  TCurlList Result;
  bool HasContentType = false;
  for (const std::string& Line : Headers) {
    const std::string Name = HeaderName(Line);
    HasContentType |= Name == "content-type";
    const bool IsBlank = Line.find_first_not_of(' ', Name.size() + 1) == std::string::npos;
    // "name:" makes libcurl drop the header; with a semicolon it sends it without a value.
    Append(Result, IsBlank ? Line.substr(0, Name.size()) + ";" : Line);
  }
  Append(Result, "Accept:");  // only the lines that the library asked for
  if (Body) Append(Result, "Expect:");
  if (Body && !HasContentType && LooksLikeJSON(*Body)) Append(Result, "Content-Type: application/json");
  return Result;
}

bool IsHostAndPort(std::string_view Text) {
  const std::size_t Colon = Text.rfind(':');
  return Colon != std::string_view::npos && Colon > 0 && Colon + 1 < Text.size() &&
         Text.find_first_not_of("0123456789", Colon + 1) == std::string_view::npos;
}

}  // namespace

/// What outlives a call. The handle keeps the connection, the TLS session, the resolved names and, since no directory
/// of certificates is set, the loaded certificate store.
struct THTTPCurl::TSession {
  struct TCleanup {
    void operator()(CURL* Curl) const { curl_easy_cleanup(Curl); }
  };
  explicit TSession(THTTPCurlOptions Given)
      : Options(std::move(Given)), Proxy(ParseProxy(Options.Proxy)), NoProxy(Options.NoProxy) {}

  THTTPCurlOptions Options;
  TProxy Proxy;
  TNoProxy NoProxy;
  TCurlList ConnectTo;
  TTLSWatch TLS;
  bool IsClean = false;  // the last call ended well
  std::unique_ptr<CURL, TCleanup> Handle;

  /// Whether the connection of the last call may serve another one. libcurl keeps one on which sending failed, and does
  /// not see that a server has said farewell. An idle connection has nothing to say but that.
  bool IsReusable() const {
    const auto Socket = Get<curl_socket_t>(Handle.get(), CURLINFO_ACTIVESOCKET);
    pollfd Poll{Socket, POLLIN, 0};
    return IsClean && Socket != CURL_SOCKET_BAD && poll(&Poll, 1, 0) == 0;
  }

  /// Loopback needs no proxy, also when it is only where ConnectTo leads.
  bool UsesProxy(const std::string& HostAndPort) const {
    if (Proxy.URL.empty()) return false;
    const THostPort Place = SplitHostPort(HostAndPort);
    if (NoProxy.Covers(Place.Host)) return false;
    static const TNoProxy LoopbackOnly({});
    return std::ranges::none_of(Options.ConnectTo, [&](const THTTPConnectTo& Entry) {
      const THostPort From = SplitHostPort(Entry.From);
      return From.Host == Place.Host && From.Port == (Place.Port.empty() ? "443" : Place.Port) &&
             LoopbackOnly.Covers(SplitHostPort(Entry.To).Host);
    });
  }

  /// Leaves nothing of the call before in the handle. `HostAndPort` is of the URL.
  void Reset(const std::string& HostAndPort) {
    const bool Tunnel = UsesProxy(HostAndPort);
    CURL* const Curl = Handle.get();
    const bool Reuse = IsReusable();
    curl_easy_reset(Curl);
    Set(Curl, CURLOPT_FRESH_CONNECT, Reuse ? 0L : 1L);
    IsClean = false;
    TLS.StartCall(SplitHostPort(HostAndPort).Host, Tunnel && Proxy.IsTLS ? Proxy.Host : "");
    Set(Curl, CURLOPT_NOSIGNAL, 1L);
    Set(Curl, CURLOPT_PROTOCOLS_STR, "https");
    Set(Curl, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    Set(Curl, CURLOPT_PATH_AS_IS, 1L);
    Set(Curl, CURLOPT_FOLLOWLOCATION, 0L);
    Set(Curl, CURLOPT_MAXCONNECTS, 1L);
    Set(Curl, CURLOPT_MAXAGE_CONN, MaxIdleSeconds);
    Set(Curl, CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));

    Set(Curl, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    Set(Curl, CURLOPT_SSL_VERIFYPEER, 1L);
    Set(Curl, CURLOPT_SSL_VERIFYHOST, 2L);
    Set(Curl, CURLOPT_SSL_CTX_FUNCTION, &OnTLSContext);
    Set(Curl, CURLOPT_SSL_CTX_DATA, &TLS);
    if (!Options.CAFile.empty()) Set(Curl, CURLOPT_CAINFO, Options.CAFile.c_str());
    Set(Curl, CURLOPT_CAPATH, static_cast<char*>(nullptr));  // with a directory, the store would not be kept

    // Set even when empty: unset, libcurl asks the environment.
    Set(Curl, CURLOPT_PROXY, Tunnel ? Proxy.URL.c_str() : "");
    Set(Curl, CURLOPT_NOPROXY, "");
    if (Tunnel) SetProxy(Curl);
    if (!Options.ClientCertificate.empty()) SetClientCertificate(Curl);
    Set(Curl, CURLOPT_HEADEROPT, static_cast<long>(CURLHEADER_SEPARATE));
    Set(Curl, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    Set(Curl, CURLOPT_CONNECT_TO, ConnectTo.get());

    Set(Curl, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(Options.ConnectTimeout.count()));
    Set(Curl, CURLOPT_TIMEOUT_MS, static_cast<long>(Options.TotalTimeout.count()));
    Set(Curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    Set(Curl, CURLOPT_LOW_SPEED_TIME, static_cast<long>(Options.StallTimeout.count()));
  }

 private:
  void SetProxy(CURL* Curl) {
    const std::string& CAFile = Options.ProxyCAFile.empty() ? Options.CAFile : Options.ProxyCAFile;
    Set(Curl, CURLOPT_PROXY_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    Set(Curl, CURLOPT_PROXY_SSL_VERIFYPEER, 1L);
    Set(Curl, CURLOPT_PROXY_SSL_VERIFYHOST, 2L);
    if (!CAFile.empty()) Set(Curl, CURLOPT_PROXY_CAINFO, CAFile.c_str());
    Set(Curl, CURLOPT_PROXY_CAPATH, static_cast<char*>(nullptr));
    // Basic: the only scheme that is done with one CONNECT.
    Set(Curl, CURLOPT_PROXYAUTH, CURLAUTH_BASIC);
    const std::string& User = Proxy.User.empty() ? Options.ProxyUser : Proxy.User;
    if (User.empty()) return;
    Set(Curl, CURLOPT_PROXYUSERNAME, User.c_str());
    if (Proxy.User.empty() && Options.ProxyPassword)
      Set(Curl, CURLOPT_PROXYPASSWORD, Options.ProxyPassword().c_str());
    else
      Set(Curl, CURLOPT_PROXYPASSWORD, Proxy.Password.c_str());
  }

  void SetClientCertificate(CURL* Curl) {
    const TClientKey Key = ReadClientKey(Options.ClientCertificate, Options.ClientKey, Options.ClientKeyPassphrase);
    const auto SetBlob = [&](CURLoption Option, const std::string& Text) {
      curl_blob Blob{const_cast<char*>(Text.data()), Text.size(), CURL_BLOB_COPY};
      Set(Curl, Option, &Blob);
    };
    SetBlob(CURLOPT_SSLCERT_BLOB, Key.Certificates);
    SetBlob(CURLOPT_SSLKEY_BLOB, Key.Key);
  }
};

THTTPCurl::THTTPCurl(THTTPCurlOptions Options) : FSession(std::make_unique<TSession>(std::move(Options))) {
  static const CURLcode Started = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (Started != CURLE_OK) throw TBeamError("libcurl cannot be started");
  const THTTPCurlOptions& Own = FSession->Options;
  if (Own.ConnectTimeout.count() <= 0 || Own.StallTimeout.count() <= 0 || Own.TotalTimeout.count() <= 0)
    throw TBeamError("The HTTP time-outs must be positive");
  if (!Own.ProxyUser.empty() && !FSession->Proxy.User.empty())
    throw TBeamError("The proxy's user stands both in its URL (http.proxy) and apart (http.proxy_user): choose one");
  for (const auto& [From, To] : Own.ConnectTo) {
    if (!IsHostAndPort(From) || !IsHostAndPort(To))
      throw TBeamError("The HTTP connect-to entry \"" + From + "\" -> \"" + To + "\" needs host:port on both sides");
    Append(FSession->ConnectTo, From + ":" + To);
  }
  FSession->Handle.reset(curl_easy_init());
  if (!FSession->Handle) throw TBeamError("libcurl cannot be started");
}

THTTPCurl::~THTTPCurl() = default;

std::int32_t THTTPCurl::httpNetGet(const std::string& URL, const TStringList& Headers, TStringList& LogDetails,
                                   TStringList& Response) {
  return Send("GET", URL, Headers, nullptr, LogDetails, Response);
}

std::int32_t THTTPCurl::httpNetPost(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                    TStringList& LogDetails, TStringList& Response) {
  return Send("POST", URL, Headers, &Body, LogDetails, Response);
}

std::int32_t THTTPCurl::httpNetPut(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                   TStringList& LogDetails, TStringList& Response) {
  return Send("PUT", URL, Headers, &Body, LogDetails, Response);
}

const std::vector<TServerCertificate>& THTTPCurl::ServerCertificates() const {
  return FSession->TLS.ServerCertificates();
}

bool THTTPCurl::UsesProxy(const std::string& Host) const {
  return FSession->UsesProxy(Host);
}

std::int32_t THTTPCurl::Send(const char* Method, const std::string& URL, const TStringList& Headers,
                             const TStringList* Body, TStringList& LogDetails, TStringList& Response) {
  if (FBusy.exchange(true)) throw THTTPError("An HTTP call is already running on this client", TRequestFate::NotSent);
  struct TRelease {
    std::atomic<bool>& Busy;
    ~TRelease() { Busy = false; }
  } const Release{FBusy};
  FLastFate = TRequestFate::NotSent;
  FServerTime.reset();

  const TWireURL Target = EncodeURL(URL);
  CheckHeaders(Headers);
  const TCurlList Lines = WireHeaders(Headers, Body);
  TExchange Exchange{.Fate = FLastFate, .MaxResponseBytes = FSession->Options.MaxResponseBytes};
  static const TStringList NoBody;
  TBodyReader Reader(Body ? *Body : NoBody);
  char Details[CURL_ERROR_SIZE] = "";

  FSession->Reset(Target.Host);
  CURL* const Curl = FSession->Handle.get();
  Set(Curl, CURLOPT_ERRORBUFFER, Details);
  Set(Curl, CURLOPT_URL, Target.Text.c_str());
  Set(Curl, CURLOPT_HTTPHEADER, Lines.get());
  Set(Curl, CURLOPT_PREREQFUNCTION, &OnBeforeRequest);
  Set(Curl, CURLOPT_PREREQDATA, &Exchange);
  Set(Curl, CURLOPT_HEADERFUNCTION, &OnHeader);
  Set(Curl, CURLOPT_HEADERDATA, &Exchange);
  Set(Curl, CURLOPT_WRITEFUNCTION, &OnBody);
  Set(Curl, CURLOPT_WRITEDATA, &Exchange);
  if (Body) {
    Set(Curl, CURLOPT_UPLOAD, 1L);
    Set(Curl, CURLOPT_CUSTOMREQUEST, Method);
    Set(Curl, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(Reader.Size()));
    Set(Curl, CURLOPT_READFUNCTION, &OnBodyWanted);
    Set(Curl, CURLOPT_READDATA, &Reader);
    // On a connection that turns out dead the outcome of a submission would be unknown for no good reason.
    Set(Curl, CURLOPT_FRESH_CONNECT, 1L);
  }

  const CURLcode Code = curl_easy_perform(Curl);
  const auto Status = static_cast<std::int32_t>(Get<long>(Curl, CURLINFO_RESPONSE_CODE));
  const TFailedCall Failed{.Handle = Curl,
                           .Code = Code,
                           .Details = Details,
                           .NothingSent = FLastFate == TRequestFate::NotSent,
                           .Proxy = FSession->UsesProxy(Target.Host) ? &FSession->Proxy : nullptr,
                           .TLS = FSession->TLS};
  std::string Reason;
  if (Exchange.Stopped)
    Reason = "the server closed the kept connection without an answer";
  else if (Exchange.TooLarge)
    Reason = "the answer is larger than allowed";
  else if (Code != CURLE_OK)
    Reason = Explain(Failed);
  else if (!Exchange.Headed || Status < 200)  // libcurl takes headers that break off for an empty answer
    Reason = "the answer was cut short";
  else if (!Exchange.Delimited && Status != 204 && Status != 304 && !FSession->TLS.SaidFarewell())
    Reason = "the answer was cut short";
  else if (Exchange.Encoded)
    Reason = "the answer is compressed although that was not asked for";

  if (!Reason.empty()) {
    LogDetails.Add(Diagnose(Failed));
    throw THTTPError(std::string(Method) + " to " + Target.Host + " failed: " + Reason +
                         (FLastFate == TRequestFate::NotSent ? ". Nothing was sent" : ". The request may have arrived"),
                     FLastFate);
  }
  FLastFate = TRequestFate::Answered;
  FSession->IsClean = true;
  if (const std::time_t Time = curl_getdate(Exchange.Date.c_str(), nullptr); Time != -1) FServerTime = Time;
  Response.SetText(std::move(Exchange.Answer));
  return Status;
}

}  // namespace oxSuperAPI
