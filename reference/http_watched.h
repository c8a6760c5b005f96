#pragma once

#include <memory>

#include "oxSuperAPI/reference/http_curl.h"
#include "oxSuperAPI/reference/known_secrets.h"

namespace oxSuperAPI {

/// The HTTPS client, and beside it the place where this process learns its credentials: here they pass in clear,
/// before the library masks any of them for the log.
class OXSUPERAPI_EXPORT TWatchedHTTP final : public THTTPCurl {
 public:
  /// Raises TBeamError when an option is malformed.
  TWatchedHTTP(THTTPCurlOptions Options, std::shared_ptr<TKnownSecrets> Known)
      : THTTPCurl(std::move(Options)), FKnown(std::move(Known)) {}

  std::int32_t httpNetGet(const std::string& URL, const TStringList& Headers, TStringList& LogDetails,
                          TStringList& Response) override;
  std::int32_t httpNetPost(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                           TStringList& LogDetails, TStringList& Response) override;
  std::int32_t httpNetPut(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                          TStringList& LogDetails, TStringList& Response) override;

 private:
  std::shared_ptr<TKnownSecrets> FKnown;
};

}  // namespace oxSuperAPI
