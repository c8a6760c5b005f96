#pragma once

#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "clock.h"

namespace sandbox {

enum class Channel { none, application, administrator, customer };

std::string_view Name(Channel channel);

/// What a bearer token opens, or why it opens nothing.
struct Access {
  Channel channel = Channel::none;
  std::string customer;   ///< uuid, for the customer channel
  std::string errorCode;  ///< empty when the token is good
  std::string message;
};

/// The access tokens that were issued. They are never written anywhere. Safe to use from every thread.
class Tokens {
 public:
  explicit Tokens(const Clock& clock) : clock_(clock) {}

  /// A new token text.
  std::string Issue(Channel channel, const std::string& customer, std::chrono::seconds lifetime);

  /// Judges the value of an authorization header.
  Access Check(std::string_view authorization) const;

  void RevokeAll();

 private:
  struct Grant {
    Channel channel;
    std::string customer;
    TimePoint expires;
  };

  const Clock& clock_;
  std::map<std::string, Grant, std::less<>> grants_;  ///< by token text
  mutable std::mutex mutex_;
};

}  // namespace sandbox
