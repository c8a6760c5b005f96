#include "tool_host.h"

#include "interrupt.h"

namespace oxSuperAPI {
namespace {

std::string PathOf(const std::string& URL) {
  const std::size_t Host = URL.find("://");
  const std::size_t Path = URL.find('/', Host == std::string::npos ? 0 : Host + 3);
  return Path == std::string::npos ? "" : URL.substr(Path, URL.find('?', Path) - Path);
}

}  // namespace

template <class Send>
std::int32_t TToolHost::Record(const std::string& URL, bool MayChange, Send Request) {
  TSentRequest& Sent = FRequests.emplace_back();
  Sent.Path = PathOf(URL);
  Sent.Changes = MayChange && !Sent.Path.ends_with("/token") && !Sent.Path.ends_with("/validate");
  THTTPCurl& HTTP = FHost.HTTPHelper();
  if (Sent.Changes) {
    DeferInterrupt();
    if (BeforeChange) BeforeChange(Sent.Path);
    Sent.Fate = TRequestFate::MayHaveArrived;  // until something better is known
  }
  try {
    Sent.Status = Request(HTTP);
    Sent.Fate = TRequestFate::Answered;
    return Sent.Status;
  } catch (const std::exception& Error) {
    Sent.Fate = HTTP.LastFate();
    Sent.Problem = Error.what();
    throw;
  }
}

std::int32_t TToolHost::httpNetGet(const std::string& URL, const TStringList& Headers, TStringList& LogDetails,
                                   TStringList& Response) {
  return Record(URL, false, [&](THTTPCurl& HTTP) { return HTTP.httpNetGet(URL, Headers, LogDetails, Response); });
}

std::int32_t TToolHost::httpNetPost(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                    TStringList& LogDetails, TStringList& Response) {
  return Record(URL, true, [&](THTTPCurl& HTTP) { return HTTP.httpNetPost(URL, Headers, Body, LogDetails, Response); });
}

std::int32_t TToolHost::httpNetPut(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                   TStringList& LogDetails, TStringList& Response) {
  return Record(URL, true, [&](THTTPCurl& HTTP) { return HTTP.httpNetPut(URL, Headers, Body, LogDetails, Response); });
}

}  // namespace oxSuperAPI
