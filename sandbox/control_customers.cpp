#include <stdexcept>

#include "control.h"
#include "participant_records.h"

namespace sandbox {
namespace {

Answer PreRegister(const ControlCall& call) {
  const json::value body = call.Body();
  const std::string uuid(TextAt(&body, "uuid"));
  if (uuid.empty()) throw std::invalid_argument("The body needs the text uuid");
  call.services.store.Change([&](State& state) {
    state.customers[uuid].uuid = uuid;
    state.customers[uuid].preRegistered = true;
    return true;
  });
  return Done();
}

Answer Customers(const ControlCall& call) {
  json::array customers;
  call.services.store.Read([&](const State& state) {
    for (const auto& [uuid, customer] : state.customers)
      customers.push_back({{"uuid", uuid},
                           {"customerNumber", customer.customerNumber},
                           {"companyName", customer.companyName},
                           {"clientId", customer.clientId},
                           {"preRegistered", customer.preRegistered},
                           {"activated", customer.activated}});
  });
  return JsonAnswer(200, {{"customers", std::move(customers)}});
}

/// Also holds what the service's own answer leaves out: whose participant it is.
Answer Participants(const ControlCall& call) {
  json::array participants;
  call.services.store.Read([&](const State& state) {
    for (const auto& [key, participant] : state.participants)
      participants.push_back(
          {{"customer", participant.customer}, {"number", participant.number}, {"details", participant.details}});
  });
  return JsonAnswer(200, {{"participants", std::move(participants)}});
}

/// The record that the body names: the participant itself, one of its employers or one of its authorities.
json::object* RecordOf(json::value& details, const json::value& body) {
  const std::string_view employer = TextAt(&body, kEmployers.idKey), authority = TextAt(&body, kAuthorities.idKey);
  if (!employer.empty()) return FindRecord(details, kEmployers, employer);
  if (!authority.empty()) return FindRecord(details, kAuthorities, authority);
  return &details.as_object();
}

/// Numbers are each customer's own: where several have this one, the body may say which is meant; all, otherwise.
Answer AcceptTerms(const ControlCall& call) {
  const json::value body = call.Body();
  for (const std::string_view key : {kEmployers.idKey, kAuthorities.idKey})
    if (At(&body, key) != nullptr && TextAt(&body, key).empty()) throw std::invalid_argument("An id is a text");
  const std::string_view customer = TextAt(&body, "customer");
  const bool dated = At(&body, "date") != nullptr;
  json::array accepted;
  call.services.store.Change([&](State& state) {
    for (auto& [key, participant] : state.participants) {
      if (participant.number != call.ids[0] || (!customer.empty() && participant.customer != customer)) continue;
      json::object* record = RecordOf(participant.details, body);
      if (record == nullptr) continue;
      (*record)[kAcceptanceDate] = dated ? std::string(TextAt(&body, "date")) : IsoTime(call.services.clock.Now());
      (*record)[kAcceptingUser] = TextAt(&body, "user");
      accepted.push_back({{"customer", participant.customer}, {kAcceptanceDate, record->at(kAcceptanceDate)}});
    }
    return !accepted.empty();
  });
  if (accepted.empty())
    return ErrorAnswer(404, "RECORD_UNKNOWN", "There is no such participant, employer or direct debit authority");
  return JsonAnswer(200, {{"accepted", std::move(accepted)}});
}

constexpr ControlEndpoint kControls[] = {
    {http::verb::post, "/__sandbox/pre-register", PreRegister},
    {http::verb::get, "/__sandbox/customers", Customers},
    {http::verb::get, "/__sandbox/participants", Participants},
    {http::verb::post, "/__sandbox/participants/{}/terms-acceptance", AcceptTerms},
};

}  // namespace

std::span<const ControlEndpoint> CustomerControls() {
  return kControls;
}

}  // namespace sandbox
