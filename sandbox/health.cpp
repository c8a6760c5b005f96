#include "router.h"

namespace sandbox {
namespace {

Answer Ping(const Call&) {
  return JsonAnswer(200, {{"status", "OK"}, {"message", "The clearing house is up"}});
}

constexpr Endpoint kEndpoints[] = {{http::verb::get, "/clearing-house/healthcheck/ping", Channel::customer, Ping}};

}  // namespace

std::span<const Endpoint> HealthEndpoints() {
  return kEndpoints;
}

}  // namespace sandbox
