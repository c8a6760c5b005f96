#include <algorithm>
#include <cctype>

#include "fund_register.h"
#include "router.h"

namespace sandbox {
namespace {

bool Contains(std::string_view text, std::string_view part) {
  const auto equal = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
  };
  return !std::ranges::search(text, part, equal).empty();
}

Answer Search(const Call& call) {
  const std::string& part = call.ids[0];
  json::array found;
  for (const Fund& fund : FundRegister())
    if (Contains(fund.name, part) || Contains(fund.usi, part) || Contains(fund.abn, part))
      found.push_back({{"uniqueSuperannuationIdentifier", fund.usi},
                       {"australianBusinessNumber", fund.abn},
                       {"productName", fund.name}});
  return JsonAnswer(200, found);
}

constexpr Endpoint kEndpoints[] = {{http::verb::get, "/search/funds/all/{}", Channel::customer, Search}};

}  // namespace

std::span<const Endpoint> FundEndpoints() {
  return kEndpoints;
}

}  // namespace sandbox
