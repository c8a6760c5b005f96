#pragma once

#include <memory>
#include <string>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/foundation/uBeamCompactText.h"
#include "oxSuperAPI/foundation/uBeamLazy.h"
#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/model/uBeamEntryTable.h"
#include "oxSuperAPI/model/uBeamSharedRecords.h"

namespace oxSuperAPI {

/// Where the member lives.
struct OXSUPERAPI_EXPORT TBeamMemberAddress {
  /// Members of "address". @{
  TBeamText addressType;
  TBeamText countryCode;
  TBeamText line1;
  TBeamText line2;
  TBeamText line3;
  TBeamText line4;
  TBeamText postCode;
  TBeamText state;
  TBeamText suburb;

  template <class Sink>
  void Write(Sink& Json) const;
  void Read(const TBeamRecordReader& Json);
  /// @}
};

/// A number or a text with the dates between which it holds (wire form, passed through).
struct OXSUPERAPI_EXPORT TBeamDatedValue {
  /// The period, and the number that holds in it. @{
  TBeamText endDate;
  TBeamText startDate;
  double value = 0;
  /// @}
};
/// The same for a text.
struct OXSUPERAPI_EXPORT TBeamDatedText {
  /// The period, and the text that holds in it. @{
  TBeamText endDate;
  TBeamText startDate;
  TBeamText value;
  /// @}
};

/// An entry without an end date is never written, and the description never is.
struct OXSUPERAPI_EXPORT TBeamRegistrationOtherDetail {
  /// What the fund asks about the member beyond the named fields. @{
  TBeamText description;
  TBeamText endDate;
  TBeamText startDate;
  TBeamText text;
  /// @}
};

/// An entry whose amount is exactly 0 is never written.
struct OXSUPERAPI_EXPORT TBeamOtherContributionAmount {
  /// Dollars, and what for. @{
  double amount = 0;
  TBeamText description;
  /// @}
};

/// An entry without a description is never written.
struct OXSUPERAPI_EXPORT TBeamOtherContributionDetail {
  /// What is told, and about what. @{
  TBeamText description;
  TBeamText text;
  /// @}
};

/// The defined-benefit data of a member. The three notional contributions are read and never written.
struct OXSUPERAPI_EXPORT TBeamDefinedBenefits {
  /// Amounts in dollars, rates and fractions as the fund states them, dates as texts in wire form. @{
  double actualHoursPaid = 0;
  double actualPeriodicSalaryOrWagesEarned = 0;
  TBeamText annualSalaryForBenefitsEffectiveDate;
  TBeamText annualSalaryForInsuranceEffectiveDate;
  double contractedHours = 0;
  double definedBenefitEmployerContribution = 0;
  TBeamDatedValue definedBenefitEmployerRate;
  double definedBenefitNotionalEmployerContribution = 0;
  double definedBenefitMemberPostTaxContribution = 0;
  double definedBenefitMemberPreTaxContribution = 0;
  TBeamDatedValue definedBenefitMemberRate;
  double definedBenefitNotionalMemberPostTaxContribution = 0;
  double definedBenefitNotionalMemberPreTaxContribution = 0;
  /// The first entry is never written, nor one without an end date.
  TBeamEntryTable<TBeamDatedValue> definedBenefitsAnnualSalary;
  TBeamText employeeBenefitCategoryEffectiveDate;
  TBeamDatedText employeeLocationIdentifier;
  TBeamText employeeStatusEffectiveDate;
  double fullTimeHours = 0;
  TBeamDatedText leaveWithoutPayCode;
  double notionalSuperannuableAllowances = 0;
  double ordinaryTimeEarnings = 0;
  TBeamDatedValue serviceFraction;
  TBeamText serviceFractionEffectiveDate;
  double superannuableAllowancesPaid = 0;

  template <class Sink>
  void Write(Sink& Json) const;
  void Read(const TBeamRecordReader& Json);
  /// @}
};

/// One member's line in a contribution batch. Amounts are dollars; dates are texts in wire form (YYYY-MM-DD), passed
/// through unchanged; text flags are "true" or anything else ("" is left out).
///
/// Writer and reader are not mirror images: docs/wire.md lists what is lost on the way back, and why.
class OXSUPERAPI_EXPORT TBeamMemberContribution {
 public:
  /// Under their wire names. What is 0 or "" counts as not told. @{
  TBeamMemberAddress address;
  TBeamText annualSalaryContributionsEndDate;
  TBeamText annualSalaryContributionsStartDate;
  double annualSalaryForBenefits = 0;
  double annualSalaryForContributions = 0;
  double annualSalaryForInsurance = 0;
  TBeamText atWork;  ///< text flag
  double awardOrProductivityAmount = 0;
  TBeamText benefitCategory;
  double childContributionsAmount = 0;
  TBeamLazy<TBeamDefinedBenefits> definedBenefits;
  TBeamText dob;
  TBeamText email;
  TBeamText employerProvidedTaxFileNumber;
  TBeamText employmentEndDate;
  TBeamText employmentEndReason;
  TBeamText employmentStartDate;
  TBeamText employmentStatus;  ///< written, never read back
  TBeamText fundRegistrationDate;
  TBeamText gender;
  TBeamText insuranceOptOut;  ///< text flag
  TBeamText memberNumber;
  TBeamText memberRegistrationAmendmentReason;
  TBeamEntryTable<TBeamRegistrationOtherDetail> memberRegistrationOtherDetails;
  TBeamText memberTransactionContextId;
  TBeamPersonName name;
  TBeamText occupationDescription;
  TBeamEntryTable<TBeamOtherContributionAmount> otherContributionAmounts;
  TBeamEntryTable<TBeamOtherContributionDetail> otherContributionDetails;
  double otherThirdPartyContributionsAmount = 0;
  TBeamText payPeriodEndDate;
  TBeamText payPeriodStartDate;
  TBeamText payrollNumber;
  double personalContributionsAmount = 0;
  TBeamPhoneNumbers phoneNumbers;
  double salarySacrificedAmount = 0;
  double spouseContributionsAmount = 0;
  TBeamText superContributionCeaseDate;
  TBeamText superContributionCommenceDate;
  double superGuaranteeAmount = 0;
  double voluntaryAmount = 0;
  double weeklyHoursWorked = 0;
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  /// Pretty-printed.
  std::string GetAsJsonString() const;
  /// Overwrites what the reader knows and leaves the rest. Raises TBeamConversionError at the first number that is
  /// missing or malformed (only `annualSalaryForBenefits` may be missing); fields read before keep their new values.
  void LoadFromJsonObject(TJSONView Source);

  /// The description of the JSON, for any sink (TJSONObjectHelper, TJSONTextCounter, TJSONTextWriter), and what loading
  /// reads.
  template <class Sink>
  void Write(Sink& Json) const;
  void Read(const TBeamRecordReader& Json);
  /// @}
};

// A batch holds hundreds of thousands of them.
static_assert(sizeof(TBeamMemberContribution) <= 640);

}  // namespace oxSuperAPI
