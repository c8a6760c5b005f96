#pragma once

#include <curl/curl.h>

#include <string>

#include "oxSuperAPI/reference/http_proxy.h"
#include "oxSuperAPI/reference/http_tls_watch.h"

namespace oxSuperAPI {

/// What libcurl knows of the transfer that the handle did last.
template <class Value>
Value Get(CURL* Handle, CURLINFO Info) {
  Value Result{};
  curl_easy_getinfo(Handle, Info, &Result);
  return Result;
}

/// A call that libcurl gave up, or whose answer is not whole.
struct TFailedCall {
  CURL* Handle;          ///< borrowed
  CURLcode Code;         ///< CURLE_OK when only the answer is not whole
  const char* Details;   ///< libcurl's own words; may be ""
  bool NothingSent;      ///< it failed before the request
  const TProxy* Proxy;   ///< that it went through, or null
  const TTLSWatch& TLS;  ///< of this handle
};

/// Why libcurl gave up, in words for a person. Its own words are added where they say more.
std::string Explain(const TFailedCall& Call);

/// Addresses, phases and amounts, for the log.
std::string Diagnose(const TFailedCall& Call);

}  // namespace oxSuperAPI
