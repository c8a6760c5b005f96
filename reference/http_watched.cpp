#include "oxSuperAPI/reference/http_watched.h"

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

}  // namespace

std::int32_t TWatchedHTTP::httpNetGet(const std::string& URL, const TStringList& Headers, TStringList& LogDetails,
                                      TStringList& Response) {
  LearnFrom(Headers, FKnown);
  const std::int32_t Status = THTTPCurl::httpNetGet(URL, Headers, LogDetails, Response);
  LearnFrom(Response, FKnown);
  return Status;
}

std::int32_t TWatchedHTTP::httpNetPost(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                       TStringList& LogDetails, TStringList& Response) {
  LearnFrom(Headers, FKnown);
  LearnFrom(Body, FKnown);
  const std::int32_t Status = THTTPCurl::httpNetPost(URL, Headers, Body, LogDetails, Response);
  LearnFrom(Response, FKnown);
  return Status;
}

std::int32_t TWatchedHTTP::httpNetPut(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                      TStringList& LogDetails, TStringList& Response) {
  LearnFrom(Headers, FKnown);
  LearnFrom(Body, FKnown);
  const std::int32_t Status = THTTPCurl::httpNetPut(URL, Headers, Body, LogDetails, Response);
  LearnFrom(Response, FKnown);
  return Status;
}

}  // namespace oxSuperAPI
