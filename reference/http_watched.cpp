#include "oxSuperAPI/reference/http_watched.h"

#include <initializer_list>

#include "oxSuperAPI/reference/log_masking.h"

namespace oxSuperAPI {

namespace {

/// Credentials come in short messages; a batch or a list of notifications is not worth reading twice.
constexpr std::size_t Longest = 64u << 10;

void LearnFrom(const TStringList& Lines, const std::shared_ptr<TKnownSecrets>& Known) noexcept try {
  std::size_t Size = 0;
  for (const std::string& Line : Lines) Size += Line.size();
  if (Size > 0 && Size <= Longest) TLogMasker(TLogMasking::Tokens, Known).Mask(Lines.Text());
} catch (...) {
  // A request that was answered is not to fail for want of memory here.
}

// The call that `Send` makes: what is sent is learned before it, so that its own log lines hide it already.
template <class Call>
std::int32_t Watched(const std::shared_ptr<TKnownSecrets>& Known, std::initializer_list<const TStringList*> Sent,
                     const TStringList& Response, Call Send) {
  for (const TStringList* Each : Sent) LearnFrom(*Each, Known);
  const std::int32_t Status = Send();
  LearnFrom(Response, Known);
  return Status;
}

}  // namespace

std::int32_t TWatchedHTTP::httpNetGet(const std::string& URL, const TStringList& Headers, TStringList& LogDetails,
                                      TStringList& Response) {
  return Watched(FKnown, {&Headers}, Response,
                 [&] { return THTTPCurl::httpNetGet(URL, Headers, LogDetails, Response); });
}

std::int32_t TWatchedHTTP::httpNetPost(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                       TStringList& LogDetails, TStringList& Response) {
  return Watched(FKnown, {&Headers, &Body}, Response,
                 [&] { return THTTPCurl::httpNetPost(URL, Headers, Body, LogDetails, Response); });
}

std::int32_t TWatchedHTTP::httpNetPut(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                      TStringList& LogDetails, TStringList& Response) {
  return Watched(FKnown, {&Headers, &Body}, Response,
                 [&] { return THTTPCurl::httpNetPut(URL, Headers, Body, LogDetails, Response); });
}

}  // namespace oxSuperAPI
