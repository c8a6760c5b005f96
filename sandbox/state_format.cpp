#include "state_format.h"

#include <stdexcept>

namespace sandbox {
namespace {

// The names below are the format of the state file: change them only together with "format".
constexpr std::int64_t kFormat = 2;

TimePoint TimeAt(const json::value& value, const char* key) {
  return TimePoint(std::chrono::milliseconds(value.at(key).as_int64()));
}

json::value ToJson(const Customer& customer) {
  return {{"uuid", customer.uuid},
          {"customerNumber", customer.customerNumber},
          {"companyName", customer.companyName},
          {"pinDigest", customer.pinDigest},
          {"clientId", customer.clientId},
          {"secretDigest", customer.secretDigest},
          {"preRegistered", customer.preRegistered},
          {"activated", customer.activated}};
}

Customer CustomerFrom(const json::value& value) {
  Customer customer;
  customer.uuid = TextAt(&value, "uuid");
  customer.customerNumber = TextAt(&value, "customerNumber");
  customer.companyName = TextAt(&value, "companyName");
  customer.pinDigest = TextAt(&value, "pinDigest");
  customer.clientId = TextAt(&value, "clientId");
  customer.secretDigest = TextAt(&value, "secretDigest");
  customer.preRegistered = value.at("preRegistered").as_bool();
  customer.activated = value.at("activated").as_bool();
  return customer;
}

json::value ToJson(const MemberPart& member) {
  return {{"contextId", member.contextId}, {"memberNumber", member.memberNumber}, {"cents", member.cents}};
}

MemberPart MemberFrom(const json::value& value) {
  MemberPart member;
  member.contextId = TextAt(&value, "contextId");
  member.memberNumber = TextAt(&value, "memberNumber");
  member.cents = value.at("cents").as_int64();
  return member;
}

json::value ToJson(const FundPart& fund) {
  json::array members;
  for (const MemberPart& member : fund.members) members.push_back(ToJson(member));
  return {{"contextId", fund.contextId}, {"employerAbn", fund.employerAbn}, {"abn", fund.abn}, {"usi", fund.usi},
          {"cents", fund.cents},         {"members", std::move(members)}};
}

FundPart FundFrom(const json::value& value) {
  FundPart fund;
  fund.contextId = TextAt(&value, "contextId");
  fund.employerAbn = TextAt(&value, "employerAbn");
  fund.abn = TextAt(&value, "abn");
  fund.usi = TextAt(&value, "usi");
  fund.cents = value.at("cents").as_int64();
  for (const json::value& member : value.at("members").as_array()) fund.members.push_back(MemberFrom(member));
  return fund;
}

json::value ToJson(const Batch& batch) {
  json::array funds;
  for (const FundPart& fund : batch.funds) funds.push_back(ToJson(fund));
  return {{"processId", batch.processId},
          {"messageId", batch.messageId},
          {"customer", batch.customer},
          {"participant", batch.participant},
          {"status", batch.status},
          {"since", batch.since.time_since_epoch().count()},
          {"submitted", batch.submitted.time_since_epoch().count()},
          {"paymentReferenceNumber", batch.paymentReferenceNumber},
          {"totalCents", batch.totalCents},
          {"contentDigest", batch.contentDigest},
          {"funds", std::move(funds)}};
}

Batch BatchFrom(const json::value& value) {
  Batch batch;
  batch.processId = TextAt(&value, "processId");
  batch.messageId = TextAt(&value, "messageId");
  batch.customer = TextAt(&value, "customer");
  batch.participant = TextAt(&value, "participant");
  batch.status = TextAt(&value, "status");
  batch.since = TimeAt(value, "since");
  batch.submitted = TimeAt(value, "submitted");
  batch.paymentReferenceNumber = TextAt(&value, "paymentReferenceNumber");
  batch.totalCents = value.at("totalCents").as_int64();
  batch.contentDigest = TextAt(&value, "contentDigest");
  for (const json::value& fund : value.at("funds").as_array()) batch.funds.push_back(FundFrom(fund));
  return batch;
}

json::value ToJson(const Participant& participant) {
  return {{"customer", participant.customer}, {"number", participant.number}, {"details", participant.details}};
}

Participant ParticipantFrom(const json::value& value) {
  Participant participant;
  participant.customer = TextAt(&value, "customer");
  participant.number = TextAt(&value, "number");
  participant.details = value.at("details");
  return participant;
}

json::value ToJson(const Notification& notification) {
  return {{"id", notification.id},
          {"customer", notification.customer},
          {"participant", notification.participant},
          {"processId", notification.processId},
          {"type", notification.type},
          {"created", notification.created.time_since_epoch().count()},
          {"payload", notification.payload}};
}

Notification NotificationFrom(const json::value& value) {
  Notification notification;
  notification.id = value.at("id").as_int64();
  notification.customer = TextAt(&value, "customer");
  notification.participant = TextAt(&value, "participant");
  notification.processId = TextAt(&value, "processId");
  notification.type = TextAt(&value, "type");
  notification.created = TimeAt(value, "created");
  notification.payload = TextAt(&value, "payload");
  return notification;
}

}  // namespace

State StateFrom(const std::string& text) {
  const json::value document = json::parse(text);
  if (document.at("format").as_int64() != kFormat) throw std::runtime_error("unknown format number");
  State state;
  for (const json::value& value : document.at("customers").as_array()) {
    Customer customer = CustomerFrom(value);
    state.customers[customer.uuid] = std::move(customer);
  }
  for (const json::value& value : document.at("batches").as_array()) {
    Batch batch = BatchFrom(value);
    state.batches[batch.processId] = std::move(batch);
  }
  for (const json::value& value : document.at("participants").as_array()) {
    Participant participant = ParticipantFrom(value);
    state.participants[{participant.customer, participant.number}] = std::move(participant);
  }
  for (const json::value& value : document.at("notifications").as_array())
    state.notifications.push_back(NotificationFrom(value));
  state.lastRecordId = document.at("lastRecordId").as_int64();
  state.lastNotificationId = document.at("lastNotificationId").as_int64();
  return state;
}

std::string TextFrom(const State& state) {
  json::array customers, batches, participants, notifications;
  for (const auto& [uuid, customer] : state.customers) customers.push_back(ToJson(customer));
  for (const auto& [processId, batch] : state.batches) batches.push_back(ToJson(batch));
  for (const auto& [key, participant] : state.participants) participants.push_back(ToJson(participant));
  for (const Notification& notification : state.notifications) notifications.push_back(ToJson(notification));
  const json::value document = {{"format", kFormat},
                                {"customers", std::move(customers)},
                                {"batches", std::move(batches)},
                                {"participants", std::move(participants)},
                                {"notifications", std::move(notifications)},
                                {"lastRecordId", state.lastRecordId},
                                {"lastNotificationId", state.lastNotificationId}};
  return json::serialize(document) + "\n";
}

}  // namespace sandbox
