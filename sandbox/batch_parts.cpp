#include "batch_parts.h"

#include "batch_shape.h"
#include "crypto.h"

namespace sandbox {
namespace {

constexpr std::size_t kMembersKept = 100;

std::string Either(std::string_view first, std::string_view second) {
  return std::string(first.empty() ? second : first);
}

MemberPart PartOf(const json::value& member) {
  std::string number(TextAt(&member, "memberNumber"));
  if (number.empty()) number = RandomDigits(9);
  return {Either(TextAt(&member, "memberTransactionContextId"), "Member"), std::move(number),
          ContributionsOf(member).cents};
}

}  // namespace

std::vector<FundPart> PartsOf(const json::value& batch) {
  std::vector<FundPart> parts;
  std::size_t kept = 0;
  for (const json::value& employer : ListAt(At(&batch, "contributionDetail"), "employers")) {
    const json::value* employerIdentifier = At(At(&employer, "employerDetail"), "businessIdentifier");
    for (const json::value& fund : ListAt(&employer, "funds")) {
      const json::value* identifier = At(&fund, "fundIdentifier");
      FundPart& part = parts.emplace_back();
      part.contextId = Either(TextAt(&fund, "fundTransactionContextId"), "Fund");
      part.employerAbn = TextAt(employerIdentifier, "value");
      part.abn = TextAt(identifier, "abn");
      part.usi = TextAt(identifier, "usi");
      for (const json::value& member : ListAt(&fund, "members")) {
        part.cents += ContributionsOf(member).cents;
        if (kept++ < kMembersKept) part.members.push_back(PartOf(member));
      }
    }
  }
  return parts;
}

}  // namespace sandbox
