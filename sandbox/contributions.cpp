#include "batch_checks.h"
#include "batch_parts.h"
#include "batch_shape.h"
#include "crypto.h"
#include "identifiers.h"
#include "lifecycle.h"
#include "payments.h"
#include "router.h"

namespace sandbox {
namespace {

constexpr Path kWhole;

/// A batch as it was read and judged. The memory of a large one is given back in one piece.
struct Incoming {
  json::monotonic_resource memory;
  json::value batch;
  Findings findings;

  std::string_view MessageId() const { return TextAt(At(&batch, "identifier"), "messageId"); }
};

std::optional<Answer> Read(const Call& call, Incoming& incoming) {
  if (!HasContentType(call.request, "application/json"))
    return ErrorAnswer(415, "CONTENT_TYPE", "The content type must be application/json");
  std::string problem;
  incoming.batch = Parse(call.request.body(), problem, &incoming.memory);
  if (!problem.empty()) return ErrorAnswer(400, "JSON_MALFORMED", "The body is not JSON: " + problem);
  CheckShape(incoming.batch, incoming.findings);
  if (incoming.batch.is_object())
    CheckBatch(incoming.batch, IsoTime(call.services.clock.Now()).substr(0, 10), incoming.findings);
  return std::nullopt;
}

/// The answer that validate and submit share. `processId` is empty when no process began.
json::object Result(const Call& call, Incoming& incoming, std::string_view status, std::string_view processId) {
  const bool errors = incoming.findings.Errors() > 0;
  json::object identifier{{"messageId", incoming.MessageId()}, {"time", IsoTime(call.services.clock.Now())}};
  if (!processId.empty()) identifier["processId"] = processId;
  const std::string_view version = TextAt(&incoming.batch, "version");
  return {{"identifier", std::move(identifier)},
          {"status", errors ? kHasErrors : status},
          {"hasErrors", errors},
          {"processed", !errors},
          {"version", version.empty() ? "1.0" : version},
          {"validations", incoming.findings.TakeList()}};
}

Answer Refuse(const Call& call, Incoming& incoming) {
  const std::size_t errors = incoming.findings.Errors();
  json::object body = Result(call, incoming, kHasErrors, "");
  body["message"] = "The batch was refused: " + std::to_string(errors) + (errors == 1 ? " error" : " errors");
  body["errorCode"] = "VALIDATION_FAILED";
  body["payments"] = json::array();
  return JsonAnswer(400, body);
}

Answer Validate(const Call& call) {
  Incoming incoming;
  if (auto refused = Read(call, incoming)) return *refused;
  if (incoming.findings.Errors() > 0) return Refuse(call, incoming);
  json::object body = Result(call, incoming, kValidated, "");
  body["message"] = "The batch is valid";
  body["paymentInstructions"] = PaymentsFor(incoming.batch, "").list;
  return JsonAnswer(200, body);
}

bool WasSubmitted(const State& state, const Batch& batch) {
  return std::ranges::any_of(state.batches, [&](const auto& other) {
    return other.second.customer == batch.customer && other.second.messageId == batch.messageId;
  });
}

bool HasTwin(const State& state, const Batch& batch) {
  return std::ranges::any_of(state.batches, [&](const auto& other) {
    return other.second.customer == batch.customer && other.second.contentDigest == batch.contentDigest &&
           other.second.status != kCancelled;
  });
}

Answer Submit(const Call& call) {
  Incoming incoming;
  if (auto refused = Read(call, incoming)) return *refused;
  if (incoming.findings.Errors() > 0) return Refuse(call, incoming);

  const TimePoint now = call.services.clock.Now();
  const std::string reference = RandomDigits(12);
  Payments payments = PaymentsFor(incoming.batch, reference);
  Batch batch;
  batch.processId = RandomGuid();
  batch.messageId = incoming.MessageId();
  batch.customer = call.customer;
  batch.participant =
      TextAt(At(At(&incoming.batch, "contributionDetail"), "participantDetail"), "clientParticipantNumber");
  batch.submitted = now;
  batch.paymentReferenceNumber = reference;
  batch.totalCents = payments.totalCents;
  batch.contentDigest = Digest(*At(&incoming.batch, "contributionDetail"));
  batch.funds = PartsOf(incoming.batch);
  bool accepted = false;
  bool hasTwin = false;
  call.services.store.Change([&](State& state) {
    accepted = !WasSubmitted(state, batch);
    hasTwin = HasTwin(state, batch);
    if (accepted) SetStatus(state, state.batches[batch.processId] = batch, kSubmitted, now);
    return accepted;
  });
  if (!accepted)
    return ErrorAnswer(409, "DUPLICATE_MESSAGE", "A batch with this message id has already been submitted");
  if (hasTwin)
    incoming.findings.Add(Severity::warning, "Batch", "POSSIBLE_DUPLICATE",
                          "Another batch holds exactly the same contributions", kWhole / "contributionDetail");
  json::object body = Result(call, incoming, kSubmitted, batch.processId);
  body["message"] = "The batch was accepted";
  body["payments"] = std::move(payments.list);
  body["paymentReferenceNumber"] = reference;
  body["totalAmount"] = CentsText(batch.totalCents);
  return JsonAnswer(200, body);
}

/// Runs `use` on the caller's batch, moved on to where time has brought it; 404 when the caller has no such batch.
Answer WithBatch(const Call& call, const std::function<Answer(State&, Batch&)>& use) {
  Answer answer = ErrorAnswer(404, "PROCESS_UNKNOWN", "There is no batch with this process id");
  call.services.store.Change([&](State& state) {
    const auto found = state.batches.find(call.ids[0]);
    if (found == state.batches.end() || found->second.customer != call.customer) return false;
    Batch& batch = found->second;
    const std::string before = batch.status;
    MoveOnWithTime(state, batch, call.services.clock.Now(), call.services.options.timeStep);
    answer = use(state, batch);
    return batch.status != before;
  });
  return answer;
}

Answer Search(const Call& call) {
  return WithBatch(call, [](State&, Batch& batch) {
    return JsonAnswer(200, {{"processId", batch.processId},
                            {"status", batch.status},
                            {"paymentReferenceNumber", batch.paymentReferenceNumber},
                            {"totalAmount", CentsText(batch.totalCents)}});
  });
}

Answer CancelBatch(const Call& call) {
  return WithBatch(call, [&](State& state, Batch& batch) {
    if (!Cancel(state, batch, call.services.clock.Now()))
      return ErrorAnswer(409, "NOT_CANCELLABLE", "The batch can no longer be cancelled; its status is " + batch.status);
    return JsonAnswer(
        200, {{"processId", batch.processId}, {"status", batch.status}, {"message", "The batch was cancelled"}});
  });
}

constexpr Endpoint kEndpoints[] = {
    {http::verb::post, "/clearing-house/validate", Channel::customer, Validate},
    {http::verb::post, "/clearing-house/submit", Channel::customer, Submit},
    {http::verb::get, "/search/contributions/{}", Channel::customer, Search},
    {http::verb::put, "/clearing-house/cancel/{}", Channel::customer, CancelBatch},
};

}  // namespace

std::span<const Endpoint> ContributionEndpoints() {
  return kEndpoints;
}

}  // namespace sandbox
