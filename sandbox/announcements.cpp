#include "announcements.h"

#include "identifiers.h"
#include "payments.h"

namespace sandbox {
namespace {

constexpr std::size_t kKept = 5000;

// Clients unwrap a payload textually: they put a quote for every backslash and quote, and undo no other escape. A
// payload with a quote, a backslash or a control character in a text would not survive that, so none leaves. Braces do
// no harm: within the string they never stand beside an unescaped quote.
std::string Plain(std::string_view text) {
  std::string plain(text);
  for (char& c : plain) {
    if (c == '"') c = '\'';
    if (c == '\\') c = '/';
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') c = ' ';
  }
  return plain;
}

void AnnouncePayload(State& state, const Batch& batch, std::string_view type, const json::object& payload,
                     TimePoint when) {
  state.notifications.push_back({++state.lastNotificationId, batch.customer, batch.participant, batch.processId,
                                 std::string(type), when, json::serialize(payload)});
  if (state.notifications.size() > kKept) state.notifications.pop_front();
}

/// What a fund says about a fund of the batch, or about one member in it.
struct FundAnswer {
  const FundPart& fund;
  const MemberPart* member;  ///< null: about all of them
  std::int64_t cents;
  std::int64_t refund;       ///< 0: accepted
  std::int64_t refundTotal;  ///< of the payment that brings the refund
};

void AddParameter(json::array& parameters, std::string_view name, std::string_view value) {
  if (!value.empty()) parameters.push_back({{"name", name}, {"value", Plain(value)}});
}

json::array Parameters(const FundAnswer& answer, const Batch& batch) {
  json::array parameters;
  if (answer.member != nullptr) {
    AddParameter(parameters, "SuperannuationFundDetails.MemberClient.Identifier", answer.member->memberNumber);
    AddParameter(parameters, "ContextID", answer.member->contextId);
  } else {
    AddParameter(parameters, "ContextID", answer.fund.contextId);
  }
  AddParameter(parameters, "Identifier", answer.fund.abn);
  AddParameter(parameters, "Scheme", "ABN");
  AddParameter(parameters, "EmployersABNDimension", answer.fund.employerAbn);
  AddParameter(parameters, "ReportPartyTypeDimension", answer.member != nullptr ? "MemberClient" : "SuperFund");
  AddParameter(parameters, "SuperFundUniqueSuperannuationIdentifierDimension", answer.fund.usi);
  AddParameter(parameters, "SuperFundABNDimension", answer.fund.abn);
  if (answer.refund != 0) {
    AddParameter(parameters, "RefundAmount", CentsText(answer.refund));
    AddParameter(parameters, "RefundPaymentTotal", CentsText(answer.refundTotal));
    AddParameter(parameters, "RefundPaymentReferenceNumber", batch.paymentReferenceNumber + "R");
    AddParameter(parameters, "elementname", "contributionAmount");
    AddParameter(parameters, "elementvalue", CentsText(answer.cents));
  }
  return parameters;
}

struct Wording {
  std::string_view errorCode, severity, shortDescription, detailedDescription;
};

Wording WordingOf(const FundAnswer& answer) {
  if (answer.refund != 0)
    return {"CONTRIBUTION_REFUNDED", "Error", "Contribution refunded",
            "The fund could not allocate the contribution and sends it back"};
  if (answer.cents == 0)
    return {"REGISTRATION_ACCEPTED", "Information", "Registration accepted", "The fund has registered the member"};
  return {"CONTRIBUTION_ACCEPTED", "Information", "Contribution accepted", "The fund has booked the contribution"};
}

void Announce(State& state, const Batch& batch, const FundAnswer& answer, TimePoint when) {
  const Wording wording = WordingOf(answer);
  const std::string amount = CentsText(answer.refund != 0 ? answer.refund : answer.cents);
  json::object event{{"contextId", Plain(answer.member != nullptr ? answer.member->contextId : answer.fund.contextId)},
                     {"severityCode", wording.severity},
                     {"errorCode", wording.errorCode},
                     {"shortDescription", wording.shortDescription},
                     {"detailedDescription", wording.detailedDescription}};
  json::object payload{{"summary", std::string(wording.shortDescription) + ": " + amount}};
  // Parameters occur at both places on the wire: inside the event item, and beside it.
  if (answer.member == nullptr) {
    event["parameters"] = Parameters(answer, batch);
    payload["eventItem"] = std::move(event);
    AnnouncePayload(state, batch, "CONTRIBUTION_RESPONSE", payload, when);
  } else {
    payload["eventItem"] = std::move(event);
    payload["parameters"] = Parameters(answer, batch);
    AnnouncePayload(state, batch, "MEMBER_RESPONSE", payload, when);
  }
}

const MemberPart* FirstPaidMember(const Batch& batch) {
  for (const FundPart& fund : batch.funds)
    for (const MemberPart& member : fund.members)
      if (member.cents > 0) return &member;
  return nullptr;
}

}  // namespace

void AnnounceStatus(State& state, const Batch& batch) {
  AnnouncePayload(state, batch, "STATUS", {{"statusMessage", batch.status}}, batch.since);
}

void AnnounceFundAnswers(State& state, const Batch& batch, Refunds refunds) {
  const MemberPart* first = FirstPaidMember(batch);
  const auto refundOf = [&](const MemberPart& member) {
    const bool due = refunds == Refunds::all || (refunds == Refunds::firstMember && &member == first);
    return due && member.cents > 0 ? member.cents : 0;
  };
  for (const FundPart& fund : batch.funds) {
    std::int64_t refund = refunds == Refunds::all ? fund.cents : 0;
    if (refunds == Refunds::firstMember)
      for (const MemberPart& member : fund.members) refund += refundOf(member);
    Announce(state, batch, {fund, nullptr, fund.cents, refund, refund}, batch.since);
    for (const MemberPart& member : fund.members)
      Announce(state, batch, {fund, &member, member.cents, refundOf(member), refund}, batch.since);
  }
}

void AnnounceRefund(State& state, const Batch& batch, const FundPart& fund, const MemberPart& member,
                    std::int64_t cents, TimePoint when) {
  Announce(state, batch, {fund, &member, member.cents, cents, cents}, when);
}

void AnnounceException(State& state, const Batch& batch, const PaymentException& exception, TimePoint when) {
  json::object properties;
  for (const auto& property : exception.properties)
    properties[Plain(property.key())] = Plain(View(property.value().as_string()));
  AnnouncePayload(state, batch, "EXCEPTION",
                  {{"exceptionType", Plain(exception.type)},
                   {"message", Plain(exception.message)},
                   {"properties", std::move(properties)}},
                  when);
}

PaymentException UnmatchedPayment(const Batch& batch) {
  const json::object account = ClearingAccount();
  return {"PAYMENT_NOT_MATCHED",
          "The payment could not be matched with the batch; pay again as described",
          {{"Amount", CentsText(batch.totalCents)},
           {"BSB", account.at("bsb")},
           {"Account", account.at("accountNumber")},
           {"Account Name", account.at("accountName")},
           {"RefNo", batch.paymentReferenceNumber},
           {"BPAY® Biller Code", kBillerCode},
           {"Reference", batch.paymentReferenceNumber}}};
}

}  // namespace sandbox
