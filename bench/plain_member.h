#pragma once

#include "batch_generator.h"

namespace bench {

/// A member's JSON, field by field in the order of the wire, for whatever a peer does with it: the visitor is told each
/// name and the plain field that belongs to it. All names are there that the library reads; what no generated member
/// has is unused.
template <class Visitor>
void DescribeMember(Visitor& Json) {
  using M = TPlainMember;
  Json.Object("address", [&] {
    Json.Text("addressType", &M::addressType);
    Json.Text("countryCode", &M::countryCode);
    Json.Text("line1", &M::line1);
    Json.Text("line2", &M::line2);
    Json.Text("line3", &M::line3);
    Json.Text("line4", &M::line4);
    Json.Text("postCode", &M::postCode);
    Json.Text("state", &M::state);
    Json.Text("suburb", &M::suburb);
  });
  Json.Text("annualSalaryContributionsEndDate", &M::annualSalaryContributionsEndDate);
  Json.Text("annualSalaryContributionsStartDate", &M::annualSalaryContributionsStartDate);
  Json.Amount("annualSalaryForBenefits", &M::annualSalaryForBenefits);
  Json.Amount("annualSalaryForContributions", &M::annualSalaryForContributions);
  Json.Amount("annualSalaryForInsurance", &M::annualSalaryForInsurance);
  Json.Flag("atWork", &M::atWork);
  Json.Amount("awardOrProductivityAmount", &M::awardOrProductivityAmount);
  Json.Text("benefitCategory", &M::benefitCategory);
  Json.Amount("childContributionsAmount", &M::childContributionsAmount);
  Json.Unused("definedBenefits");
  Json.Text("dob", &M::dob);
  Json.Text("email", &M::email);
  Json.Text("employerProvidedTaxFileNumber", &M::employerProvidedTaxFileNumber);
  Json.Text("employmentEndDate", &M::employmentEndDate);
  Json.Text("employmentEndReason", &M::employmentEndReason);
  Json.Text("employmentStartDate", &M::employmentStartDate);
  Json.Text("fundRegistrationDate", &M::fundRegistrationDate);
  Json.Text("gender", &M::gender);
  Json.Flag("insuranceOptOut", &M::insuranceOptOut);
  Json.Text("memberNumber", &M::memberNumber);
  Json.Text("memberRegistrationAmendmentReason", &M::memberRegistrationAmendmentReason);
  Json.Unused("memberRegistrationOtherDetails");
  Json.Text("memberTransactionContextId", &M::memberTransactionContextId);
  Json.Object("name", [&] {
    Json.Text("familyName", &M::familyName);
    Json.Text("givenName", &M::givenName);
    Json.Text("otherGivenName", &M::otherGivenName);
    Json.Text("suffix", &M::suffix);
    Json.Text("title", &M::title);
  });
  Json.Text("occupationDescription", &M::occupationDescription);
  Json.Unused("otherContributionAmounts");
  Json.Unused("otherContributionDetails");
  Json.Amount("otherThirdPartyContributionsAmount", &M::otherThirdPartyContributionsAmount);
  Json.Text("payPeriodEndDate", &M::payPeriodEndDate);
  Json.Text("payPeriodStartDate", &M::payPeriodStartDate);
  Json.Text("payrollNumber", &M::payrollNumber);
  Json.Amount("personalContributionsAmount", &M::personalContributionsAmount);
  Json.Phones("phoneNumbers");
  Json.Amount("salarySacrificedAmount", &M::salarySacrificedAmount);
  Json.Amount("spouseContributionsAmount", &M::spouseContributionsAmount);
  Json.Text("superContributionCeaseDate", &M::superContributionCeaseDate);
  Json.Text("superContributionCommenceDate", &M::superContributionCommenceDate);
  Json.Amount("superGuaranteeAmount", &M::superGuaranteeAmount);
  Json.Amount("voluntaryAmount", &M::voluntaryAmount);
  Json.Amount("weeklyHoursWorked", &M::weeklyHoursWorked);
}

}  // namespace bench
