#include "router.h"

#include <optional>

namespace sandbox {
namespace {

Answer Unauthorised(std::string_view errorCode, std::string_view message) {
  Answer answer = ErrorAnswer(401, errorCode, message);
  answer.headers.emplace_back("WWW-Authenticate", "Bearer");
  return answer;
}

Answer Run(const Endpoint& endpoint, Call call, const Access& access) {
  if (endpoint.channel != Channel::none) {
    if (!access.errorCode.empty()) return Unauthorised(access.errorCode, access.message);
    if (access.channel != endpoint.channel)
      return Unauthorised("TOKEN_WRONG_CHANNEL", "This endpoint needs a token of the " +
                                                     std::string(Name(endpoint.channel)) + " channel, not of the " +
                                                     std::string(Name(access.channel)) + " channel");
  }
  call.customer = access.customer;
  return endpoint.handle(call);
}

}  // namespace

Answer Route(const Request& request, const Access& access, Services& services) {
  const std::vector<std::string> path = PathSegments(View(request.target()));
  bool pathKnown = false;
  for (const auto group : {TokenEndpoints(), HealthEndpoints(), ChannelSecurityEndpoints(), ContributionEndpoints(),
                           ParticipantEndpoints(), NotificationEndpoints(), FundEndpoints()}) {
    for (const Endpoint& endpoint : group) {
      std::optional<std::vector<std::string>> ids = MatchPath(endpoint.pattern, path);
      if (!ids) continue;
      pathKnown = true;
      if (endpoint.method == request.method()) return Run(endpoint, {request, std::move(*ids), {}, services}, access);
    }
  }
  if (pathKnown) return ErrorAnswer(405, "METHOD_NOT_ALLOWED", "This endpoint does not take this method");
  return ErrorAnswer(404, "ENDPOINT_UNKNOWN", "There is no such endpoint");
}

}  // namespace sandbox
