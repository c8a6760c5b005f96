#include "http.h"

#include <charconv>

namespace sandbox {
namespace {

std::string Decode(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned byte = 0;
    if (text[i] == '%' && i + 2 < text.size()) {
      const char* end = text.data() + i + 3;
      if (std::from_chars(text.data() + i + 1, end, byte, 16).ptr == end) {
        plain += static_cast<char>(byte);
        i += 2;
        continue;
      }
    }
    plain += text[i];
  }
  return plain;
}

}  // namespace

Answer JsonAnswer(unsigned status, const json::value& body) {
  return {status, {{"Content-Type", "application/json; charset=utf-8"}}, json::serialize(body)};
}

Answer ErrorAnswer(unsigned status, std::string_view errorCode, std::string_view message) {
  return JsonAnswer(status, {{"message", message}, {"errorCode", errorCode}});
}

std::vector<std::string> PathSegments(std::string_view target) {
  std::string_view path = target.substr(0, target.find('?'));
  std::vector<std::string> segments;
  if (path.starts_with('/')) path.remove_prefix(1);
  for (;;) {
    const std::size_t slash = path.find('/');
    segments.push_back(Decode(path.substr(0, slash)));
    if (slash == std::string_view::npos) return segments;
    path.remove_prefix(slash + 1);
  }
}

std::optional<std::vector<std::string>> MatchPath(std::string_view pattern, const std::vector<std::string>& path) {
  const std::vector<std::string> expected = PathSegments(pattern);
  if (expected.size() != path.size()) return std::nullopt;
  std::vector<std::string> ids;
  for (std::size_t i = 0; i < path.size(); ++i) {
    if (expected[i] == "{}" && !path[i].empty()) {
      ids.push_back(path[i]);
    } else if (expected[i] != path[i]) {
      return std::nullopt;
    }
  }
  return ids;
}

std::string_view QueryValue(std::string_view target, std::string_view name) {
  const std::size_t question = target.find('?');
  std::string_view query = question == std::string_view::npos ? std::string_view() : target.substr(question + 1);
  while (!query.empty()) {
    const std::string_view pair = query.substr(0, query.find('&'));
    query.remove_prefix(std::min(query.size(), pair.size() + 1));
    if (pair.size() > name.size() && pair.starts_with(name) && pair[name.size()] == '=')
      return pair.substr(name.size() + 1);
  }
  return {};
}

bool HasContentType(const Request& request, std::string_view type) {
  const std::string_view value = View(request[http::field::content_type]);
  return boost::beast::iequals(value.substr(0, type.size()), type) &&
         (value.size() == type.size() || value[type.size()] == ';' || value[type.size()] == ' ');
}

}  // namespace sandbox
