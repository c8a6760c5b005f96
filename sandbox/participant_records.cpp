#include "participant_records.h"

#include <algorithm>
#include <set>

namespace sandbox {
namespace {

/// Whether two records without an id are the same one: an employer by its number, an authority by its account and
/// start.
bool IsSame(const RecordList& list, const json::value& one, const json::value& other) {
  const auto equal = [&](std::string_view key) { return TextAt(&one, key) == TextAt(&other, key); };
  if (list.key == kEmployers.key) return equal("clientEmployerNumber");
  const json::value *account = At(&one, "account"), *otherAccount = At(&other, "account");
  return equal("startDate") && TextAt(account, "bsb") == TextAt(otherAccount, "bsb") &&
         TextAt(account, "accountNumber") == TextAt(otherAccount, "accountNumber");
}

void KeepAcceptance(json::object& record, const json::value& known) {
  if (record.contains(kAcceptanceDate) || record.contains(kAcceptingUser)) return;
  for (const std::string_view key : {kAcceptanceDate, kAcceptingUser})
    if (const json::value* member = At(&known, key)) record[key] = *member;
}

bool NumberRecords(json::value& details, const json::value* known, const RecordList& list, std::int64_t& lastId) {
  json::value* records = details.as_object().if_contains(list.key);
  if (records == nullptr) return true;
  std::set<std::string_view> taken;
  for (json::value& record : records->as_array()) {
    const std::string_view wanted = TextAt(&record, list.idKey);
    const bool isNew = wanted.empty() || wanted == "0";
    const json::array& candidates = ListAt(known, list.key);
    const auto found = std::ranges::find_if(candidates, [&](const json::value& candidate) {
      const std::string_view id = TextAt(&candidate, list.idKey);
      return !taken.contains(id) && (isNew ? IsSame(list, record, candidate) : id == wanted);
    });
    if (found != candidates.end()) {
      taken.insert(TextAt(&*found, list.idKey));
      KeepAcceptance(record.as_object(), *found);
      record.as_object()[list.idKey] = TextAt(&*found, list.idKey);
    } else if (isNew) {
      record.as_object()[list.idKey] = std::to_string(++lastId);
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace

const json::object* FindRecord(const json::value& details, const RecordList& list, std::string_view id) {
  for (const json::value& record : ListAt(&details, list.key))
    if (TextAt(&record, list.idKey) == id) return &record.as_object();
  return nullptr;
}

json::object* FindRecord(json::value& details, const RecordList& list, std::string_view id) {
  return const_cast<json::object*>(FindRecord(std::as_const(details), list, id));
}

bool TakeOver(json::value& details, const json::value* known, std::int64_t& lastId) {
  if (known != nullptr) KeepAcceptance(details.as_object(), *known);
  return NumberRecords(details, known, kEmployers, lastId) && NumberRecords(details, known, kAuthorities, lastId);
}

}  // namespace sandbox
