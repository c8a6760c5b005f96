#pragma once

#include <cstdint>
#include <string>

#include "oxSuperAPI/host/uHostStrings.h"

namespace oxSuperAPI {

/// The host's blocking HTTPS client.
///
/// Each operation sends at most one request, whatever happens on the way: a submission that arrives twice pays twice.
/// It returns the HTTP status, whatever it is, and raises when no complete answer came back.
/// `Headers` holds one header a line ("name: value"). `LogDetails` receives diagnostics, which end up in the call's
/// log row, so neither headers nor bodies belong there. `Response` arrives empty and receives the body as it came.
class OXSUPERAPI_EXPORT THTTPHelper {
 public:
  virtual ~THTTPHelper() = default;
  /// One request. The lines of `Body` travel with CR LF between them and must arrive unchanged. @{
  virtual std::int32_t httpNetGet(const std::string& URL, const TStringList& Headers, TStringList& LogDetails,
                                  TStringList& Response) = 0;
  virtual std::int32_t httpNetPost(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                   TStringList& LogDetails, TStringList& Response) = 0;
  virtual std::int32_t httpNetPut(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                  TStringList& LogDetails, TStringList& Response) = 0;
  /// @}
};

}  // namespace oxSuperAPI
