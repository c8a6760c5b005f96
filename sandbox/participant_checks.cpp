#include "participant_checks.h"

#include <algorithm>

#include "identifiers.h"
#include "identity_checks.h"
#include "shape.h"

namespace sandbox {
namespace {

using enum Kind;

// The wire format as clients write it: "Title" of the participant's contact has a capital letter, "title" of an
// employer's has none, and the address of the sign-up page is "redirectUrl".

constexpr Member kIdentifier[] = {{"businessIdentifierType"}, {"value"}};
constexpr Member kPhone[] = {{"areaCode"}, {"number"}, {"phoneNumberType"}};
constexpr Member kAddress[] = {{"addressType"}, {"countryCode"}, {"line1"}, {"line2"}, {"line3"},
                               {"line4"},       {"postCode"},    {"state"}, {"suburb"}};
constexpr Member kAccount[] = {{"accountName"}, {"accountNumber"}, {"bsb"}};
constexpr Member kContact[] = {{"email"}, {"familyName"}, {"firstName"}, {"phone", object, kPhone}, {"Title"}};
constexpr Member kEmployerContact[] = {{"email"}, {"familyName"}, {"firstName"}, {"phone", object, kPhone}, {"title"}};
constexpr Member kEmployerNumber[] = {{"clientEmployerNumber"}};
constexpr Member kDefaultFund[] = {{"defaultFundId"}, {"endDate"}, {"startDate"}, {"usi"}};

constexpr Member kAuthority[] = {
    {"account", object, kAccount},
    {"address", object, kAddress},
    {"businessIdentifier", object, kIdentifier},
    {"directDebitAuthorityId"},
    {"employers", list, kEmployerNumber},
    {"endDate"},
    {"organisationName"},
    {"startDate"},
    {"termsAndConditionsAcceptanceDate"},
    {"userAcceptingTermsAndConditions"},
};
constexpr Member kEmployer[] = {
    {"businessIdentifier", object, kIdentifier},
    {"clientEmployerNumber"},
    {"contact", object, kEmployerContact},
    {"defaultFunds", list, kDefaultFund},
    {"employerId"},
    {"organisationName"},
    {"termsAndConditionsAcceptanceDate"},
    {"userAcceptingTermsAndConditions"},
};
constexpr Member kDetails[] = {
    {"address", object, kAddress},
    {"businessIdentifier", object, kIdentifier},
    {"clientParticipantNumber"},
    {"contact", object, kContact},
    {"directDebitAuthorities", list, kAuthority},
    {"employers", list, kEmployer},
    {"organisationName"},
    {"payrollName"},
    {"redirectUrl"},
    {"termsAndConditionsAcceptanceDate"},
    {"userAcceptingTermsAndConditions"},
};

void CheckWhoItIs(const Part& part, const json::value& owner) {
  CheckIdentifier(part, &owner, "businessIdentifierType");
  const Path identifier = part.path / "businessIdentifier";
  if (TextAt(At(&owner, "businessIdentifier"), "value").empty())
    part.Warning("ABN_MISSING", "Without a business identifier nobody can be signed up", identifier / "value");
  if (TextAt(&owner, "organisationName").empty())
    part.Warning("NAME_MISSING", "The organisation has no name", part.path / "organisationName");
}

void CheckEmployer(const json::value& employer, const Path& path, Findings& findings) {
  const Part part{findings, "Employer", path};
  CheckWhoItIs(part, employer);
  if (TextAt(&employer, "clientEmployerNumber").empty())
    part.Error("EMPLOYER_NUMBER_MISSING", "The employer needs its number", path / "clientEmployerNumber");
  const json::array& funds = ListAt(&employer, "defaultFunds");
  for (std::size_t i = 0; i < funds.size(); ++i) {
    const Path fund{&path, "defaultFunds", i};
    if (!IsUsi(TextAt(&funds[i], "usi"), ""))
      part.Warning("USI_UNUSUAL", "The USI has neither of the two usual forms", fund / "usi");
  }
}

void CheckAuthority(const json::value& authority, const json::array& employers, const Path& path, Findings& findings) {
  const Part part{findings, "Authority", path};
  CheckWhoItIs(part, authority);
  CheckAccount(part, At(&authority, "account"), path / "account");
  const json::array& numbers = ListAt(&authority, "employers");
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const std::string_view number = TextAt(&numbers[i], "clientEmployerNumber");
    const bool known = std::ranges::any_of(
        employers, [&](const json::value& employer) { return TextAt(&employer, "clientEmployerNumber") == number; });
    const Path place{&path, "employers", i};
    if (!known) part.Warning("EMPLOYER_UNKNOWN", "The participant has no employer of this number", place);
  }
}

}  // namespace

void CheckParticipantDetails(const json::value& details, Findings& findings) {
  CheckShape(details, kDetails, "Participant", findings);
  if (!details.is_object()) return;
  const Path root;
  const Part part{findings, "Participant", root};
  if (TextAt(&details, "clientParticipantNumber").empty())
    part.Error("PARTICIPANT_NUMBER_MISSING", "The participant needs its number", root / "clientParticipantNumber");
  CheckWhoItIs(part, details);
  const json::array& employers = ListAt(&details, "employers");
  for (std::size_t i = 0; i < employers.size(); ++i) CheckEmployer(employers[i], {&root, "employers", i}, findings);
  const json::array& authorities = ListAt(&details, "directDebitAuthorities");
  for (std::size_t i = 0; i < authorities.size(); ++i)
    CheckAuthority(authorities[i], employers, {&root, "directDebitAuthorities", i}, findings);
}

}  // namespace sandbox
