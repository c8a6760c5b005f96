#include "batch_shape.h"

#include <algorithm>

#include "identifiers.h"
#include "shape.h"

namespace sandbox {
namespace {

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
  CheckShape(batch, kBatch, "Batch", findings);
}

Contributions ContributionsOf(const json::value& member) {
  Contributions sum;
  if (member.is_object()) AddUp(member.get_object(), kMember, sum);
  return sum;
}

}  // namespace sandbox
