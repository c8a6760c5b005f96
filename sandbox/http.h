#pragma once

#include <boost/beast/http.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "json.h"

namespace sandbox {

namespace http = boost::beast::http;
using Request = http::request<http::string_body>;

inline std::string_view View(boost::beast::string_view text) {
  return {text.data(), text.size()};
}

/// What goes back. Length, date and connection headers are added on the way out.
struct Answer {
  unsigned status = 200;
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;
};

Answer JsonAnswer(unsigned status, const json::value& body);

/// {"message":...,"errorCode":...}
Answer ErrorAnswer(unsigned status, std::string_view errorCode, std::string_view message);

/// The decoded segments of the path: "/a/b%20c?x=1" gives "a" and "b c". An ill-formed escape stays as it stands.
std::vector<std::string> PathSegments(std::string_view target);

/// The texts in the places of "{}" in the pattern; nothing when the path is another one. "{}" matches no empty text.
std::optional<std::vector<std::string>> MatchPath(std::string_view pattern, const std::vector<std::string>& path);

/// The value of `name` in the query, not decoded; empty when there is none.
std::string_view QueryValue(std::string_view target, std::string_view name);

/// Whether the content type of the request is `type`, whatever parameters follow it.
bool HasContentType(const Request& request, std::string_view type);

}  // namespace sandbox
