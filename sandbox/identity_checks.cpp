#include "identity_checks.h"

#include <algorithm>

#include "identifiers.h"

namespace sandbox {

void CheckIdentifier(const Part& part, const json::value* owner, std::string_view typeKey) {
  const json::value* identifier = At(owner, "businessIdentifier");
  const std::string_view type = TextAt(identifier, typeKey), value = TextAt(identifier, "value");
  if (value.empty()) return;
  const Path inside = part.path / "businessIdentifier";
  if (type == "WPN") {
    const bool digits = std::ranges::all_of(value, [](char c) { return c >= '0' && c <= '9'; });
    if (!digits || value.size() < 8 || value.size() > 11)
      part.Error("WPN_INVALID", "A withholding payer number has 8 to 11 digits", inside / "value");
    return;
  }
  if (!type.empty() && type != "ABN")
    part.Warning("IDENTIFIER_TYPE_UNKNOWN", "The identifier type is ABN or WPN", inside / typeKey);
  if (!IsAbn(value)) part.Error("ABN_INVALID", "The ABN fails its check", inside / "value");
}

void CheckAccount(const Part& part, const json::value* account, const Path& path) {
  if (!IsBsb(TextAt(account, "bsb"))) part.Error("BSB_INVALID", "The account needs a BSB of six digits", path / "bsb");
  if (!IsAccountNumber(TextAt(account, "accountNumber")))
    part.Error("ACCOUNT_INVALID", "The account needs a number of one to ten digits", path / "accountNumber");
}

}  // namespace sandbox
