#include "tokens.h"

#include <boost/beast/core/string.hpp>

#include "crypto.h"

namespace sandbox {

std::string_view Name(Channel channel) {
  switch (channel) {
    case Channel::application:
      return "application";
    case Channel::administrator:
      return "administrator";
    case Channel::customer:
      return "customer";
    case Channel::none:
      break;
  }
  return "none";
}

std::string Tokens::Issue(Channel channel, const std::string& customer, std::chrono::seconds lifetime) {
  std::string token = RandomText(64);
  const TimePoint now = clock_.Now();
  const std::lock_guard lock(mutex_);
  // A stale token is remembered for a while, so that its owner learns that it expired.
  std::erase_if(grants_, [&](const auto& grant) { return grant.second.expires + std::chrono::hours(24) < now; });
  grants_[token] = {channel, customer, now + lifetime};
  return token;
}

Access Tokens::Check(std::string_view authorization) const {
  constexpr std::string_view kScheme = "Bearer ";
  Access access;
  if (!boost::beast::iequals(authorization.substr(0, kScheme.size()), kScheme) ||
      authorization.size() == kScheme.size()) {
    access.errorCode = "TOKEN_MISSING";
    access.message = "The request carries no bearer token";
    return access;
  }
  const std::lock_guard lock(mutex_);
  const auto grant = grants_.find(authorization.substr(kScheme.size()));
  if (grant == grants_.end()) {
    access.errorCode = "TOKEN_UNKNOWN";
    access.message = "The bearer token was not issued by this service, or was revoked";
    return access;
  }
  access.channel = grant->second.channel;
  access.customer = grant->second.customer;
  if (grant->second.expires <= clock_.Now()) {
    access.errorCode = "TOKEN_EXPIRED";
    access.message = "The bearer token has expired";
  }
  return access;
}

void Tokens::RevokeAll() {
  const std::lock_guard lock(mutex_);
  grants_.clear();
}

}  // namespace sandbox
