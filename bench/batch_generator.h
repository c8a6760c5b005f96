#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "oxSuperAPI/model/uBeamContributionDetail.h"

namespace bench {

// Batches as a large employer sends them, the same in every run: one employer, forty funds, and members with about
// forty fields each. Names, numbers and addresses are put together at random; nobody is meant.

/// The same batch without the library: what the peers write and read. A field is left out when it is empty.
struct TPlainPhone {
  std::string areaCode;
  std::string number;
  std::string phoneNumberType;
};

struct TPlainMember {
  std::string addressType;
  std::string countryCode;
  std::string line1;
  std::string line2;
  std::string line3;
  std::string line4;
  std::string postCode;
  std::string state;
  std::string suburb;
  std::string annualSalaryContributionsEndDate;
  std::string annualSalaryContributionsStartDate;
  double annualSalaryForBenefits = 0;
  double annualSalaryForContributions = 0;
  double annualSalaryForInsurance = 0;
  std::string atWork;
  double awardOrProductivityAmount = 0;
  std::string benefitCategory;
  double childContributionsAmount = 0;
  std::string dob;
  std::string email;
  std::string employerProvidedTaxFileNumber;
  std::string employmentEndDate;
  std::string employmentEndReason;
  std::string employmentStartDate;
  std::string fundRegistrationDate;
  std::string gender;
  std::string insuranceOptOut;
  std::string memberNumber;
  std::string memberRegistrationAmendmentReason;
  std::string memberTransactionContextId;
  std::string familyName;
  std::string givenName;
  std::string otherGivenName;
  std::string suffix;
  std::string title;
  std::string occupationDescription;
  double otherThirdPartyContributionsAmount = 0;
  std::string payPeriodEndDate;
  std::string payPeriodStartDate;
  std::string payrollNumber;
  double personalContributionsAmount = 0;
  std::vector<TPlainPhone> phoneNumbers;
  double salarySacrificedAmount = 0;
  double spouseContributionsAmount = 0;
  std::string superContributionCeaseDate;
  std::string superContributionCommenceDate;
  double superGuaranteeAmount = 0;
  double voluntaryAmount = 0;
  double weeklyHoursWorked = 0;
};

struct TPlainFund {
  std::string fundEmployerNumber;
  std::string abn;
  std::string usi;
  bool isDefaultFund = false;
  std::vector<TPlainMember> members;
};

struct TPlainBatch {
  std::string employerTransactionContextId;
  std::vector<TPlainFund> funds;
  std::string clientParticipantNumber;
  std::string paymentType;
  std::string messageId;
  std::string time;
  std::string version;
};

/// The batch of that many members; the first members of a larger one are those of a smaller one.
TPlainBatch GenerateBatch(std::size_t Members);
/// The same values in the library's records.
std::unique_ptr<oxSuperAPI::TBeamContributionDetail> ToRecords(const TPlainBatch& Plain);

}  // namespace bench
