#include "crypto.h"
#include "router.h"

namespace sandbox {

void Services::PreRegister() {
  if (options.preRegistered.empty()) return;
  store.Change([&](State& state) {
    for (const std::string& uuid : options.preRegistered) {
      Customer& customer = state.customers[uuid];
      customer.uuid = uuid;
      if (!customer.activated) customer.preRegistered = true;
    }
    return true;
  });
}

namespace {

constexpr std::size_t kSecretLength = 32;

/// The body that all three calls share.
struct Application {
  std::string uuid, customerNumber, companyName, pin;
};

/// Fills `application`; the answer is set when the body is refused. A body that is JSON but says the wrong thing is
/// 422, because clients take a 400 of these endpoints for "not pre-registered".
std::optional<Answer> ReadApplication(const Call& call, Application& application) {
  if (!HasContentType(call.request, "application/json"))
    return ErrorAnswer(415, "CONTENT_TYPE", "The content type must be application/json");
  std::string problem;
  const json::value body = Parse(call.request.body(), problem);
  if (!problem.empty()) return ErrorAnswer(400, "JSON_MALFORMED", "The body is not JSON: " + problem);
  const struct {
    std::string_view key;
    std::string& value;
  } fields[] = {{"UUID", application.uuid},
                {"CustomerNumber", application.customerNumber},
                {"CompanyName", application.companyName},
                {"PIN", application.pin}};
  for (const auto& field : fields) {
    field.value = TextAt(&body, field.key);
    if (field.value.empty())
      return ErrorAnswer(422, "FIELD_MISSING", "The body needs the text " + std::string(field.key));
  }
  if (application.uuid != call.ids[0])
    return ErrorAnswer(422, "UUID_MISMATCH", "UUID in the body is not the one in the path");
  return std::nullopt;
}

std::string PinDigest(const Application& application) {
  return Digest(application.uuid + "\n" + application.pin);
}

void Take(Customer& customer, const Application& application) {
  customer.uuid = application.uuid;
  customer.customerNumber = application.customerNumber;
  customer.companyName = application.companyName;
  customer.pinDigest = PinDigest(application);
}

/// Announces a customer. The secret in the answer opens nothing: activating issues the one that does.
Answer Register(const Call& call) {
  Application application;
  if (auto refused = ReadApplication(call, application)) return *refused;
  std::string clientId;
  call.services.store.Change([&](State& state) {
    Customer& customer = state.customers[application.uuid];
    Take(customer, application);
    if (customer.clientId.empty()) customer.clientId = RandomGuid();
    customer.preRegistered = true;
    clientId = customer.clientId;
    return true;
  });
  // Capital letters here, small ones in the answers of activate and reissue: wire behaviour.
  return JsonAnswer(
      200, {{"ClientID", clientId}, {"ClientSecret", RandomText(kSecretLength)}, {"message", "Customer registered"}});
}

Answer Activate(const Call& call) {
  Application application;
  if (auto refused = ReadApplication(call, application)) return *refused;
  const std::string secret = RandomText(kSecretLength);
  Answer answer;
  call.services.store.Change([&](State& state) {
    const auto found = state.customers.find(application.uuid);
    const bool known = found != state.customers.end();
    if (!call.services.options.preRegisterAll && !(known && found->second.preRegistered)) {
      answer = known && found->second.activated
                   ? ErrorAnswer(409, "ALREADY_ACTIVATED", "The customer is activated; register it again first")
                   : ErrorAnswer(400, "NOT_PRE_REGISTERED", "The customer has not been pre-registered");
      return false;
    }
    if (known && !found->second.pinDigest.empty() && found->second.pinDigest != PinDigest(application)) {
      answer = ErrorAnswer(403, "PIN_MISMATCH", "The PIN is not the one the customer was registered with");
      return false;
    }
    Customer& customer = state.customers[application.uuid];
    Take(customer, application);
    if (customer.clientId.empty()) customer.clientId = RandomGuid();
    customer.secretDigest = Digest(secret);
    customer.preRegistered = false;
    customer.activated = true;
    answer =
        JsonAnswer(200, {{"clientId", customer.clientId}, {"clientSecret", secret}, {"message", "Customer activated"}});
    return true;
  });
  return answer;
}

/// A new secret for an activated customer; the old one opens nothing from here on, tokens it opened stay good.
Answer Reissue(const Call& call) {
  Application application;
  if (auto refused = ReadApplication(call, application)) return *refused;
  if (application.uuid != call.customer)
    return ErrorAnswer(403, "CUSTOMER_MISMATCH", "The token belongs to another customer");
  const std::string secret = RandomText(kSecretLength);
  Answer answer;
  call.services.store.Change([&](State& state) {
    const auto found = state.customers.find(application.uuid);
    if (found == state.customers.end() || !found->second.activated) {
      answer = ErrorAnswer(400, "NOT_ACTIVATED", "The customer is not activated");
      return false;
    }
    Customer& customer = found->second;
    if (customer.pinDigest != PinDigest(application)) {
      answer = ErrorAnswer(403, "PIN_MISMATCH", "The PIN is not the one the customer was activated with");
      return false;
    }
    customer.secretDigest = Digest(secret);
    answer = JsonAnswer(
        200, {{"clientId", customer.clientId}, {"clientSecret", secret}, {"message", "Credentials reissued"}});
    return true;
  });
  return answer;
}

constexpr Endpoint kEndpoints[] = {
    {http::verb::post, "/clearing-house/channel-security/register/{}", Channel::administrator, Register},
    {http::verb::post, "/clearing-house/channel-security/activate/{}", Channel::application, Activate},
    {http::verb::post, "/clearing-house/channel-security/reissue/{}", Channel::customer, Reissue},
};

}  // namespace

std::span<const Endpoint> ChannelSecurityEndpoints() {
  return kEndpoints;
}

}  // namespace sandbox
