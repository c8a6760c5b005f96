#include <algorithm>

#include "crypto.h"
#include "router.h"

namespace sandbox {
namespace {

/// Client ids of the two system channels: the same constants that every client of the service is built with.
struct SystemClient {
  Channel channel;
  std::string_view clientId;
};
constexpr SystemClient kSystemClients[] = {
    {Channel::application, "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f601"},    // integration
    {Channel::application, "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f602"},    // acceptance
    {Channel::application, "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f603"},    // production
    {Channel::administrator, "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f611"},  // integration
    {Channel::administrator, "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f612"},  // acceptance
    {Channel::administrator, "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f613"},  // production
};

struct Client {
  Channel channel = Channel::none;
  std::string customer;
  std::string secretDigest;
};

Client FindClient(std::string_view clientId, Services& services) {
  for (const SystemClient& known : kSystemClients) {
    if (known.clientId != clientId) continue;
    const Options& options = services.options;
    return {known.channel, "",
            Digest(known.channel == Channel::application ? options.applicationSecret : options.administratorSecret)};
  }
  Client client;
  services.store.Read([&](const State& state) {
    for (const auto& [uuid, customer] : state.customers)
      if (customer.activated && customer.clientId == clientId)
        client = {Channel::customer, uuid, customer.secretDigest};
  });
  return client;
}

/// The value of a form field as it stands in the body: clients of this service do not encode.
std::string_view FormValue(std::string_view form, std::string_view name) {
  while (!form.empty()) {
    const std::string_view pair = form.substr(0, form.find('&'));
    form.remove_prefix(std::min(form.size(), pair.size() + 1));
    if (pair.size() > name.size() && pair.starts_with(name) && pair[name.size()] == '=')
      return pair.substr(name.size() + 1);
  }
  return {};
}

Answer OAuthError(const Call& call, unsigned status, std::string_view error, int code, std::string_view description) {
  return JsonAnswer(status, {{"error", error},
                             {"error_description", "SBX" + std::to_string(code) + ": " + std::string(description)},
                             {"error_codes", json::array{code}},
                             {"timestamp", IsoTime(call.services.clock.Now())},
                             {"trace_id", RandomGuid()},
                             {"correlation_id", RandomGuid()}});
}

Answer Token(const Call& call) {
  const std::string_view form = call.request.body();
  const std::string_view clientId = FormValue(form, "client_id");
  const std::string_view secret = FormValue(form, "client_secret");
  const std::string_view grant = FormValue(form, "grant_type");
  if (!HasContentType(call.request, "application/x-www-form-urlencoded"))
    return OAuthError(call, 400, "invalid_request", 9001441,
                      "The content type must be application/x-www-form-urlencoded");
  if (clientId.empty() || secret.empty() || grant.empty())
    return OAuthError(call, 400, "invalid_request", 900144,
                      "The body must hold client_id, client_secret and grant_type");
  if (grant != "client_credentials")
    return OAuthError(call, 400, "unsupported_grant_type", 70003, "Only the grant client_credentials is known here");
  const Client client = FindClient(clientId, call.services);
  if (client.channel == Channel::none)
    return OAuthError(call, 400, "unauthorized_client", 700016, "There is no client with this client_id");
  if (client.secretDigest != Digest(secret))
    return OAuthError(call, 401, "invalid_client", 7000215, "The client_secret is wrong");

  using std::chrono::floor;
  using std::chrono::seconds;
  const seconds lifetime = call.services.options.tokenLifetime;
  const auto now = floor<seconds>(call.services.clock.Now()).time_since_epoch();
  return JsonAnswer(200, {{"token_type", "Bearer"},
                          {"expires_in", std::to_string(lifetime.count())},
                          {"ext_expires_in", std::to_string(lifetime.count())},
                          {"expires_on", std::to_string((now + lifetime).count())},
                          {"not_before", std::to_string(now.count())},
                          {"resource", "api://beam-sandbox"},
                          {"access_token", call.services.tokens.Issue(client.channel, client.customer, lifetime)}});
}

constexpr Endpoint kEndpoints[] = {{http::verb::post, "/auth/token", Channel::none, Token}};

}  // namespace

std::span<const Endpoint> TokenEndpoints() {
  return kEndpoints;
}

}  // namespace sandbox
