#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "http.h"
#include "services.h"

namespace sandbox {

/// One request on its way through an endpoint.
struct Call {
  const Request& request;
  std::vector<std::string> ids;  ///< what stood in the places of "{}", decoded
  std::string customer;          ///< uuid of the caller, on the customer channel
  Services& services;
};

/// One line of the service's table. Segments "{}" of the pattern match every non-empty text.
struct Endpoint {
  http::verb method;
  std::string_view pattern;
  Channel channel;  ///< whose token opens it; none: open to all
  Answer (*handle)(const Call&);
};

// The groups of endpoints, one file each: token_endpoint.cpp, health.cpp, channel_security.cpp, contributions.cpp,
// participants.cpp, notifications.cpp, funds.cpp.
std::span<const Endpoint> TokenEndpoints();
std::span<const Endpoint> HealthEndpoints();
std::span<const Endpoint> ChannelSecurityEndpoints();
std::span<const Endpoint> ContributionEndpoints();
std::span<const Endpoint> ParticipantEndpoints();
std::span<const Endpoint> NotificationEndpoints();
std::span<const Endpoint> FundEndpoints();

/// Finds the endpoint, checks the token and runs it: 404, 405 and 401 are answered here.
Answer Route(const Request& request, const Access& access, Services& services);

}  // namespace sandbox
