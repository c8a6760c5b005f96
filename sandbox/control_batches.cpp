#include <algorithm>
#include <functional>
#include <stdexcept>

#include "announcements.h"
#include "control.h"
#include "identifiers.h"
#include "lifecycle.h"

namespace sandbox {
namespace {

json::value ToJson(const Batch& batch) {
  return {{"processId", batch.processId},
          {"messageId", batch.messageId},
          {"customer", batch.customer},
          {"status", batch.status},
          {"since", IsoTime(batch.since)},
          {"submitted", IsoTime(batch.submitted)},
          {"paymentReferenceNumber", batch.paymentReferenceNumber},
          {"totalCents", batch.totalCents}};
}

Answer Batches(const ControlCall& call) {
  json::array batches;
  call.services.store.Change([&](State& state) {
    const bool moved = MoveAllOnWithTime(state, call.services.clock.Now(), call.services.options.timeStep);
    for (const auto& [processId, batch] : state.batches) batches.push_back(ToJson(batch));
    return moved;
  });
  return JsonAnswer(200, {{"batches", std::move(batches)}});
}

/// Runs `use` on the batch named in the path; 404 when there is none.
Answer WithBatch(const ControlCall& call, const std::function<Answer(State&, Batch&)>& use) {
  Answer answer = ErrorAnswer(404, "PROCESS_UNKNOWN", "There is no batch with this process id");
  call.services.store.Change([&](State& state) {
    const auto found = state.batches.find(call.ids[0]);
    if (found == state.batches.end()) return false;
    answer = use(state, found->second);
    return true;
  });
  return answer;
}

/// To the status named in the body, or one step along the road when the body is empty.
Answer MoveBatch(const ControlCall& call) {
  const json::value body = call.Body();
  const std::string status(TextAt(&body, "status"));
  if (!status.empty() && !IsStatus(status)) throw std::invalid_argument("There is no status \"" + status + "\"");
  return WithBatch(call, [&](State& state, Batch& batch) {
    const TimePoint now = call.services.clock.Now();
    if (status.empty()) {
      MoveOn(state, batch, now);
    } else {
      SetStatus(state, batch, status, now);
    }
    return JsonAnswer(200, ToJson(batch));
  });
}

/// The member with this context id; the first one when it is empty.
std::pair<const FundPart*, const MemberPart*> FindMember(const Batch& batch, std::string_view contextId) {
  for (const FundPart& fund : batch.funds)
    for (const MemberPart& member : fund.members)
      if (contextId.empty() || member.contextId == contextId) return {&fund, &member};
  return {};
}

Answer RefundMember(const ControlCall& call) {
  const json::value body = call.Body();
  const std::string_view amount = TextAt(&body, "amount");
  const std::optional<std::int64_t> cents = Cents(amount);
  if (At(&body, "amount") != nullptr && (!cents || *cents <= 0))
    throw std::invalid_argument("The amount is a text with two decimals, such as \"12.50\"");
  return WithBatch(call, [&](State& state, Batch& batch) {
    const auto [fund, member] = FindMember(batch, TextAt(&body, "contextId"));
    if (member == nullptr) throw std::invalid_argument("The batch keeps no member with this contextId");
    const std::int64_t refund = cents.value_or(member->cents);
    if (refund <= 0) throw std::invalid_argument("The member brought no money: name an amount");
    AnnounceRefund(state, batch, *fund, *member, refund, call.services.clock.Now());
    return Done();
  });
}

/// What the body leaves out is that of a payment which could not be matched.
Answer RaiseException(const ControlCall& call) {
  const json::value body = call.Body();
  const json::value* properties = At(&body, "properties");
  const auto isText = [](const auto& property) { return property.value().is_string(); };
  if (properties != nullptr && (!properties->is_object() || !std::ranges::all_of(properties->get_object(), isText)))
    throw std::invalid_argument("The properties are an object of texts");
  return WithBatch(call, [&](State& state, Batch& batch) {
    PaymentException exception = UnmatchedPayment(batch);
    if (At(&body, "exceptionType") != nullptr) exception.type = TextAt(&body, "exceptionType");
    if (At(&body, "message") != nullptr) exception.message = TextAt(&body, "message");
    if (properties != nullptr) exception.properties = properties->get_object();
    AnnounceException(state, batch, exception, call.services.clock.Now());
    return Done();
  });
}

constexpr ControlEndpoint kControls[] = {
    {http::verb::get, "/__sandbox/batches", Batches},
    {http::verb::post, "/__sandbox/batches/{}", MoveBatch},
    {http::verb::post, "/__sandbox/batches/{}/refund", RefundMember},
    {http::verb::post, "/__sandbox/batches/{}/exception", RaiseException},
};

}  // namespace

std::span<const ControlEndpoint> BatchControls() {
  return kControls;
}

}  // namespace sandbox
