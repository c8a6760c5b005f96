#include "batch_shape.h"

#include <algorithm>
#include <span>

#include "identifiers.h"

namespace sandbox {
namespace {

enum class Kind { text, date, amount, contribution, flag, object, list };

struct Member {
  std::string_view key;
  Kind kind = Kind::text;
  std::span<const Member> inside = {};  ///< of an object, or of each element of a list
};

using enum Kind;

// The wire format, misspellings included: "businessidentifierType" of the payer, the full stops behind the two rates
// and "Text" of the other details are what clients send.

constexpr Member kName[] = {{"familyName"}, {"givenName"}, {"otherGivenName"}, {"suffix"}, {"title"}};
constexpr Member kPhone[] = {{"areaCode"}, {"number"}, {"phoneNumberType"}};
constexpr Member kIdentifier[] = {{"businessIdentifierType"}, {"value"}};
constexpr Member kPayerIdentifier[] = {{"businessidentifierType"}, {"value"}};
constexpr Member kAccount[] = {{"accountName"}, {"accountNumber"}, {"bsb"}};
constexpr Member kWithAccount[] = {{"account", object, kAccount}};
constexpr Member kDatedAmount[] = {{"endDate", date}, {"startDate", date}, {"value", amount}};
constexpr Member kDatedText[] = {{"endDate", date}, {"startDate", date}, {"value"}};

constexpr Member kDefinedBenefits[] = {
    {"actualHoursPaid", amount},
    {"actualPeriodicSalaryOrWagesEarned", amount},
    {"annualSalaryForBenefitsEffectiveDate", date},
    {"annualSalaryForInsuranceEffectiveDate", date},
    {"contractedHours", amount},
    {"definedBenefitEmployerContribution", contribution},
    {"definedBenefitEmployerRate.", object, kDatedAmount},
    {"definedBenefitMemberPostTaxContribution", contribution},
    {"definedBenefitMemberPreTaxContribution", contribution},
    {"definedBenefitMemberRate.", object, kDatedAmount},
    {"definedBenefitsAnnualSalary", list, kDatedAmount},
    {"employeeBenefitCategoryEffectiveDate", date},
    {"employeeLocationIdentifier", object, kDatedText},
    {"employeeStatusEffectiveDate", date},
    {"fullTimeHours", amount},
    {"leaveWithoutPayCode", object, kDatedText},
    {"notionalSuperannuableAllowances", amount},
    {"ordinaryTimeEarnings", amount},
    {"serviceFraction", object, kDatedAmount},
    {"serviceFractionEffectiveDate", date},
    {"superannuableAllowancesPaid", amount},
};
constexpr Member kAddress[] = {{"addressType"}, {"countryCode"}, {"line1"}, {"line2"}, {"line3"},
                               {"line4"},       {"postCode"},    {"state"}, {"suburb"}};
constexpr Member kOtherRegistration[] = {{"endDate", date}, {"startDate", date}, {"Text"}};
constexpr Member kOtherAmount[] = {{"amount", contribution}, {"description"}};
constexpr Member kOtherDetail[] = {{"description"}, {"text"}};

constexpr Member kMember[] = {
    {"address", object, kAddress},
    {"annualSalaryContributionsEndDate", date},
    {"annualSalaryContributionsStartDate", date},
    {"annualSalaryForBenefits", amount},
    {"annualSalaryForContributions", amount},
    {"annualSalaryForInsurance", amount},
    {"atWork", flag},
    {"awardOrProductivityAmount", contribution},
    {"benefitCategory"},
    {"childContributionsAmount", contribution},
    {"definedBenefits", object, kDefinedBenefits},
    {"dob", date},
    {"email"},
    {"employerProvidedTaxFileNumber"},
    {"employmentEndDate", date},
    {"employmentEndReason"},
    {"employmentStartDate", date},
    {"employmentStatus"},
    {"fundRegistrationDate", date},
    {"gender"},
    {"insuranceOptOut", flag},
    {"memberNumber"},
    {"memberRegistrationAmendmentReason"},
    {"memberRegistrationOtherDetails", list, kOtherRegistration},
    {"memberTransactionContextId"},
    {"name", object, kName},
    {"occupationDescription"},
    {"otherContributionAmounts", list, kOtherAmount},
    {"otherContributionDetails", list, kOtherDetail},
    {"otherThirdPartyContributionsAmount", contribution},
    {"payPeriodEndDate", date},
    {"payPeriodStartDate", date},
    {"payrollNumber"},
    {"personalContributionsAmount", contribution},
    {"phoneNumbers", list, kPhone},
    {"salarySacrificedAmount", contribution},
    {"spouseContributionsAmount", contribution},
    {"superContributionCeaseDate", date},
    {"superContributionCommenceDate", date},
    {"superGuaranteeAmount", contribution},
    {"voluntaryAmount", contribution},
    {"weeklyHoursWorked", amount},
};

constexpr Member kFundIdentifier[] = {{"abn"}, {"usi"}};
constexpr Member kSmsf[] = {{"bankDetail", object, kWithAccount},
                            {"electronicServiceAddressAlias"},
                            {"email"},
                            {"fundName"},
                            {"phoneNumbers", list, kPhone}};
constexpr Member kFund[] = {{"fundEmployerNumber"},       {"fundIdentifier", object, kFundIdentifier},
                            {"fundTransactionContextId"}, {"isDefaultFund", flag},
                            {"members", list, kMember},   {"organisationName"},
                            {"smsfDetail", object, kSmsf}};
constexpr Member kEmployerDetail[] = {{"businessIdentifier", object, kIdentifier},
                                      {"email"},
                                      {"name", object, kName},
                                      {"organisationName"},
                                      {"phoneNumbers", list, kPhone}};
constexpr Member kEmployer[] = {
    {"employerDetail", object, kEmployerDetail}, {"employerTransactionContextId"}, {"funds", list, kFund}};
constexpr Member kParticipant[] = {{"clientParticipantNumber"},
                                   {"businessIdentifier", object, kIdentifier},
                                   {"email"},
                                   {"name", object, kName},
                                   {"organisationName"},
                                   {"phoneNumbers", list, kPhone}};
constexpr Member kPayment[] = {{"businessIdentifier", object, kPayerIdentifier},
                               {"directDebitDetail", object, kWithAccount},
                               {"organisationName"},
                               {"paymentType"},
                               {"refundDetail", object, kWithAccount}};
constexpr Member kDetail[] = {
    {"employers", list, kEmployer}, {"participantDetail", object, kParticipant}, {"paymentDetail", object, kPayment}};
constexpr Member kMessage[] = {{"messageId"}, {"processId"}, {"time"}};
constexpr Member kBatch[] = {{"contributionDetail", object, kDetail}, {"identifier", object, kMessage}, {"version"}};

/// One walk over a document.
struct Walk {
  Findings& findings;

  void Object(const json::object& value, std::span<const Member> members, std::string_view context, const Path& path) {
    for (const auto& pair : value) {
      const std::string_view key(pair.key().data(), pair.key().size());
      const auto member = std::ranges::find(members, key, &Member::key);
      const Path place = path / key;
      if (member != members.end()) {
        Value(pair.value(), *member, context, place);
      } else {
        findings.Add(Severity::warning, context, "MEMBER_UNKNOWN", "The service does not know this member", place);
      }
    }
  }

  void Value(const json::value& value, const Member& member, std::string_view context, const Path& path) {
    const auto error = [&](std::string_view code, std::string_view message) {
      findings.Add(Severity::error, context, code, message, path);
    };
    if (value.is_number()) return error("NUMBER_NOT_TEXT", "Numbers travel as text");
    switch (member.kind) {
      case text:
        if (!value.is_string()) error("TEXT_EXPECTED", "This member is a text");
        break;
      case date:
        if (!value.is_string() || !IsDate(View(value.get_string())))
          error("DATE_INVALID", "This member is a date that exists, written yyyy-mm-dd");
        break;
      case amount:
      case contribution:
        if (!value.is_string() || !Cents(View(value.get_string())))
          error("AMOUNT_INVALID", "This member is a text with exactly two decimals");
        break;
      case flag:
        if (!value.is_bool()) error("FLAG_EXPECTED", "This member is true or false");
        break;
      case object:
        if (!value.is_object()) return error("OBJECT_EXPECTED", "This member is an object");
        Object(value.get_object(), member.inside, context, path);
        break;
      case list:
        if (!value.is_array()) return error("LIST_EXPECTED", "This member is an array");
        List(value.get_array(), member, context, path);
        break;
    }
  }

  void List(const json::array& elements, const Member& member, std::string_view context, const Path& path) {
    for (std::size_t i = 0; i < elements.size(); ++i) {
      const Path place{path.up, path.key, i};
      if (elements[i].is_object()) {
        Object(elements[i].get_object(), member.inside, ContextOf(elements[i], member, context), place);
      } else {
        findings.Add(Severity::error, context, "OBJECT_EXPECTED", "Each element is an object", place);
      }
    }
  }

  /// Who a finding inside this element is about.
  static std::string_view ContextOf(const json::value& element, const Member& member, std::string_view outer) {
    const auto own = [&](std::string_view idKey, std::string_view kind) {
      const std::string_view id = TextAt(&element, idKey);
      return id.empty() ? kind : id;
    };
    if (member.key == "members") return own("memberTransactionContextId", "Member");
    if (member.key == "funds") return own("fundTransactionContextId", "Fund");
    if (member.key == "employers") return own("employerTransactionContextId", "Employer");
    return outer;
  }
};

void AddUp(const json::object& value, std::span<const Member> members, Contributions& sum) {
  for (const auto& pair : value) {
    const auto member =
        std::ranges::find(members, std::string_view(pair.key().data(), pair.key().size()), &Member::key);
    if (member == members.end()) continue;
    if (member->kind == object && pair.value().is_object()) AddUp(pair.value().get_object(), member->inside, sum);
    if (member->kind == list && pair.value().is_array()) {
      for (const json::value& element : pair.value().get_array())
        if (element.is_object()) AddUp(element.get_object(), member->inside, sum);
    }
    if (member->kind != contribution || !pair.value().is_string()) continue;
    const std::int64_t cents = Cents(View(pair.value().get_string())).value_or(0);
    sum.cents += cents;
    sum.any |= cents != 0;
    sum.negative |= cents < 0;
  }
}

}  // namespace

void CheckShape(const json::value& batch, Findings& findings) {
  const Path root;
  if (batch.is_object()) {
    Walk{findings}.Object(batch.get_object(), kBatch, "Batch", root);
  } else {
    findings.Add(Severity::error, "Batch", "OBJECT_EXPECTED", "A batch is a JSON object", root);
  }
}

Contributions ContributionsOf(const json::value& member) {
  Contributions sum;
  if (member.is_object()) AddUp(member.get_object(), kMember, sum);
  return sum;
}

}  // namespace sandbox
