#pragma once

#include <cstdint>
#include <string_view>

#include "json.h"

namespace sandbox {

/// A list in the participant details whose elements the clearing house numbers.
struct RecordList {
  std::string_view key;
  std::string_view idKey;
};
inline constexpr RecordList kEmployers{"employers", "employerId"};
inline constexpr RecordList kAuthorities{"directDebitAuthorities", "directDebitAuthorityId"};

/// The element with this id; null when there is none.
const json::object* FindRecord(const json::value& details, const RecordList& list, std::string_view id);
json::object* FindRecord(json::value& details, const RecordList& list, std::string_view id);

/// Gives every employer and direct debit authority of posted `details` its id: the one that it has in `known` (the
/// details posted before; null the first time), else the next after `lastId`. Acceptances of the terms that the new
/// details do not name are taken over. False when they name an id that `known` has not; everything may be half done
/// then.
bool TakeOver(json::value& details, const json::value* known, std::int64_t& lastId);

// Texts that travel: who accepted the terms and conditions, and when.
inline constexpr std::string_view kAcceptanceDate = "termsAndConditionsAcceptanceDate";
inline constexpr std::string_view kAcceptingUser = "userAcceptingTermsAndConditions";

}  // namespace sandbox
