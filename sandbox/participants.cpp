#include "crypto.h"
#include "findings.h"
#include "participant_checks.h"
#include "participant_records.h"
#include "router.h"

namespace sandbox {
namespace {

Answer Refuse(Findings& findings) {
  const std::size_t errors = findings.Errors();
  return JsonAnswer(400, {{"message", "The participant details were refused: " + std::to_string(errors) +
                                          (errors == 1 ? " error" : " errors")},
                          {"errorCode", "VALIDATION_FAILED"},
                          {"validations", findings.TakeList()}});
}

/// The ids of a list, each beside the client's own number where the record has one.
json::array IdsOf(const json::value& details, const RecordList& list) {
  json::array ids;
  for (const json::value& record : ListAt(&details, list.key)) {
    json::object entry{{list.idKey, TextAt(&record, list.idKey)}};
    const std::string_view number = TextAt(&record, "clientEmployerNumber");
    if (!number.empty()) entry["clientEmployerNumber"] = number;
    ids.push_back(std::move(entry));
  }
  return ids;
}

Answer PostDetails(const Call& call) {
  if (!HasContentType(call.request, "application/json"))
    return ErrorAnswer(415, "CONTENT_TYPE", "The content type must be application/json");
  std::string problem;
  json::value details = Parse(call.request.body(), problem);
  if (!problem.empty()) return ErrorAnswer(400, "JSON_MALFORMED", "The body is not JSON: " + problem);
  Findings findings;
  CheckParticipantDetails(details, findings);
  if (findings.Errors() > 0) return Refuse(findings);

  const std::string number(TextAt(&details, "clientParticipantNumber"));
  bool taken = false;
  call.services.store.Change([&](State& state) {
    const auto known = state.participants.find({call.customer, number});
    std::int64_t lastId = state.lastRecordId;
    taken = TakeOver(details, known == state.participants.end() ? nullptr : &known->second.details, lastId);
    if (!taken) return false;
    state.lastRecordId = lastId;
    state.participants[{call.customer, number}] = {call.customer, number, details};
    return true;
  });
  if (!taken)
    return ErrorAnswer(400, "RECORD_UNKNOWN",
                       "An employer or direct debit authority has an id that this participant does not know; new ones "
                       "have the id 0");
  return JsonAnswer(200, {{"token", RandomText(40)},
                          {"message", "The participant details were stored"},
                          {"clientParticipantNumber", number},
                          {"employers", IdsOf(details, kEmployers)},
                          {"directDebitAuthorities", IdsOf(details, kAuthorities)},
                          {"validations", findings.TakeList()}});
}

/// Answers about one of the caller's participants; 404 when the caller has none of this number.
Answer WithDetails(const Call& call, const std::function<Answer(const json::value& details)>& use) {
  Answer answer = ErrorAnswer(404, "PARTICIPANT_UNKNOWN", "There is no participant with this number");
  call.services.store.Read([&](const State& state) {
    const auto found = state.participants.find({call.customer, call.ids[0]});
    if (found != state.participants.end()) answer = use(found->second.details);
  });
  return answer;
}

// What a client posts and what it reads differ in some names, so an answer holds both. A document is read from a copy
// while it changes, because adding a member moves the others.

void AddCopy(json::object& to, std::string_view newKey, const json::value* from, std::string_view key) {
  if (const json::value* member = At(from, key)) to[newKey] = *member;
}

json::object* ObjectIn(json::object& owner, std::string_view key) {
  json::value* member = owner.if_contains(key);
  return member != nullptr ? member->if_object() : nullptr;
}

json::array* ListIn(json::object& owner, std::string_view key) {
  json::value* member = owner.if_contains(key);
  return member != nullptr ? member->if_array() : nullptr;
}

void AddEmployerReadNames(json::object& employer) {
  const json::value posted = employer;
  if (json::object* identifier = ObjectIn(employer, "businessIdentifier"))
    AddCopy(*identifier, "businessIdentifierValue", At(&posted, "businessIdentifier"), "value");
  if (json::object* contact = ObjectIn(employer, "contact")) {
    const json::value* phone = At(At(&posted, "contact"), "phone");
    for (const std::string_view key : {"areaCode", "number", "phoneNumberType"}) AddCopy(*contact, key, phone, key);
  }
}

void AddAuthorityReadNames(json::object& authority) {
  const json::value posted = authority;
  AddCopy(authority, "employerNumbers", &posted, "employers");
}

json::value AsRead(const json::value& posted) {
  json::value details = posted;
  json::object& participant = details.as_object();
  AddCopy(participant, "redirectURL", &posted, "redirectUrl");
  if (json::object* contact = ObjectIn(participant, "contact"))
    AddCopy(*contact, "title", At(&posted, "contact"), "Title");
  if (json::array* employers = ListIn(participant, kEmployers.key))
    for (json::value& employer : *employers) AddEmployerReadNames(employer.as_object());
  if (json::array* authorities = ListIn(participant, kAuthorities.key))
    for (json::value& authority : *authorities) AddAuthorityReadNames(authority.as_object());
  return details;
}

Answer GetDetails(const Call& call) {
  return WithDetails(call, [](const json::value& details) { return JsonAnswer(200, AsRead(details)); });
}

/// Empty texts while nobody has accepted.
Answer Acceptance(const json::object& record) {
  json::object answer;
  for (const std::string_view key : {kAcceptanceDate, kAcceptingUser})
    answer[key] = record.contains(key) ? record.at(key) : json::value("");
  return JsonAnswer(200, answer);
}

Answer ParticipantTerms(const Call& call) {
  return WithDetails(call, [](const json::value& details) { return Acceptance(details.as_object()); });
}

Answer RecordTerms(const Call& call, const RecordList& list, std::string_view errorCode, std::string_view message) {
  return WithDetails(call, [&](const json::value& details) {
    const json::object* record = FindRecord(details, list, call.ids[1]);
    return record != nullptr ? Acceptance(*record) : ErrorAnswer(404, errorCode, message);
  });
}

Answer EmployerTerms(const Call& call) {
  return RecordTerms(call, kEmployers, "EMPLOYER_UNKNOWN", "The participant has no employer with this id");
}

Answer AuthorityTerms(const Call& call) {
  return RecordTerms(call, kAuthorities, "AUTHORITY_UNKNOWN",
                     "The participant has no direct debit authority with this id");
}

constexpr Endpoint kEndpoints[] = {
    {http::verb::post, "/clearing-house/participant-details", Channel::customer, PostDetails},
    {http::verb::get, "/clearing-house/participant/{}", Channel::customer, GetDetails},
    {http::verb::get, "/clearing-house/participant/{}/terms-acceptance", Channel::customer, ParticipantTerms},
    {http::verb::get, "/clearing-house/participant/{}/employer/{}/terms-acceptance", Channel::customer, EmployerTerms},
    {http::verb::get, "/clearing-house/participant/{}/directDebitAuthority/{}/terms-acceptance", Channel::customer,
     AuthorityTerms},
};

}  // namespace

std::span<const Endpoint> ParticipantEndpoints() {
  return kEndpoints;
}

}  // namespace sandbox
