#pragma once

#include "../support/documents.h"

/// Every member of every record, each with a value of its own, as the reader looks it up; and what the writer makes of
/// it. Line breaks are for the eye only.
namespace oxSuperAPI {

/// Without line breaks, and with what stands between two "@" five times; "#" is 1 to 5.
inline std::string Expanded(std::string_view Text) {
  std::string Result, Element;
  bool Repeats = false;
  for (const char Character : Text) {
    if (Character == '@' && Repeats)
      for (char Number = '1'; Number <= '5'; ++Number) {
        for (const char Each : Element) Result += Each == '#' ? Number : Each;
        if (Number < '5') Result += ',';
      }
    if (Character == '@') Repeats = !Repeats, Element.clear();
    if (Character != '@' && Character != '\n') (Repeats ? Element : Result) += Character;
  }
  return Result;
}

inline std::string Replaced(std::string Text,
                            std::initializer_list<std::pair<std::string_view, std::string_view>> All) {
  for (const auto& [Old, New] : All) Text = ReplaceFirst(Text, Expanded(Old), Expanded(New));
  return Text;
}

/// A member with everything that the reader knows; the employment status is not among it.
inline const std::string MemberAsRead = Expanded(R"(
{"address":{"addressType":"addressType","countryCode":"countryCode","line1":"line1","line2":"line2","line3":"line3",
"line4":"line4","postCode":"postCode","state":"state","suburb":"suburb"},
"annualSalaryContributionsEndDate":"annualSalaryContributionsEndDate",
"annualSalaryContributionsStartDate":"annualSalaryContributionsStartDate","annualSalaryForBenefits":"1.01",
"annualSalaryForContributions":"2.02","annualSalaryForInsurance":"3.03","atWork":true,
"awardOrProductivityAmount":"4.04","benefitCategory":"benefitCategory","childContributionsAmount":"5.05",
"definedBenefits":{"actualHoursPaid":"6.06","actualPeriodicSalaryOrWagesEarned":"7.07",
"annualSalaryForBenefitsEffectiveDate":"annualSalaryForBenefitsEffectiveDate",
"annualSalaryForInsurnacetsEffectiveDate":"annualSalaryForInsuranceEffectiveDate","contractedHours":"8.08",
"definedBenefitEmployerContribution":"9.09","definedBenefitEmployerRate":{"endDate":"definedBenefitEmployerRate end",
"startDate":"definedBenefitEmployerRate start","value":"10.10"},"definedBenefitNotionalEmployerContribution":"11.11",
"definedBenefitMemberPostTaxContribution":"12.12","definedBenefitMemberPreTaxContribution":"13.13",
"definedBenefitMemberRate":{"endDate":"definedBenefitMemberRate end","startDate":"definedBenefitMemberRate start",
"value":"14.14"},"definedBenefitNotionalMemberPostTaxContribution":"15.15",
"definedBenefitNotionalMemberPreTaxContribution":"16.16",
"definedBenefitsAnnualSalary":[@{"definedBenefitsAnnualSalary":{"endDate":"# endDate","startDate":"# startDate"},
"sefinedBenefitsAnnualSalary":{"value":"17.1#"}}@],
"employeeBenefitCategoryEffectiveDate":"employeeBenefitCategoryEffectiveDate",
"employeeLocationIdentifier":{"endDate":"employeeLocationIdentifier end",
"startDate":"employeeLocationIdentifier start","value":"employeeLocationIdentifier value"},
"employeeStatusEffectiveDate":"employeeStatusEffectiveDate","fullTimeHours":"22.22",
"leaveWithoutPayCode":{"endDate":"leaveWithoutPayCode end","startDate":"leaveWithoutPayCode start",
"Value":"leaveWithoutPayCode value"},"notionalSuperannuableAllowances":"23.23","ordinaryTimeEarnings":"24.24",
"serviceFraction":{"endDate":"serviceFraction end","startDate":"serviceFraction start","Value":"25.25"},
"serviceFractionEffectiveDate":"serviceFractionEffectiveDate","superannuableAllowancesPaid":"26.26"},"dob":"dob",
"email":"email","employerProvidedTaxFileNumber":"employerProvidedTaxFileNumber",
"employmentEndDate":"employmentEndDate","employmentEndReason":"employmentEndReason",
"employmentStartDate":"employmentStartDate","fundRegistrationDate":"fundRegistrationDate","gender":"gender",
"insuranceOptOut":false,"memberNumber":"memberNumber",
"memberRegistrationAmendmentReason":"memberRegistrationAmendmentReason",
"memberRegistrationOtherDetails":[@{"description":"# description","endDate":"# endDate","startDate":"# startDate",
"text":"# text"}@],"memberTransactionContextId":"memberTransactionContextId","name":{"familyName":"familyName",
"givenName":"givenName","otherGivenName":"otherGivenName","suffix":"suffix","title":"title"},
"occupationDescription":"occupationDescription","otherContributionAmounts":[@{"description":"# other",
"amount":"27.2#"}@],"otherContributionDetails":[@{"description":"# description","text":"# text"}@],
"otherThirdPartyContributionsAmount":"32.32","payPeriodEndDate":"payPeriodEndDate",
"payPeriodStartDate":"payPeriodStartDate","payrollNumber":"payrollNumber","personalContributionsAmount":"33.33",
"phoneNumbers":[@{"areaCode":"# areaCode","number":"# number","phoneNumberType":"# phoneNumberType"}@],
"salarySacrificedAmount":"34.34","spouseContributionsAmount":"35.35",
"superContributionCeaseDate":"superContributionCeaseDate",
"superContributionCommenceDate":"superContributionCommenceDate","superGuaranteeAmount":"36.36",
"voluntaryAmount":"37.37","weeklyHoursWorked":"38.38"}
)");

/// The same member with an employment status, written.
inline const std::string MemberAsWritten =
    Replaced(MemberAsRead,
             {{"annualSalaryForInsurnacetsEffectiveDate", "annualSalaryForInsuranceEffectiveDate"},
              {"definedBenefitEmployerRate\"", "definedBenefitEmployerRate.\""},
              {"definedBenefitMemberRate\"", "definedBenefitMemberRate.\""},
              {R"("definedBenefitNotionalEmployerContribution":"11.11",)", ""},
              {R"("definedBenefitNotionalMemberPostTaxContribution":"15.15",)", ""},
              {R"("definedBenefitNotionalMemberPreTaxContribution":"16.16",)", ""},
              {R"(@{"definedBenefitsAnnualSalary":{"endDate":"# endDate","startDate":"# startDate"},
"sefinedBenefitsAnnualSalary":{"value":"17.1#"}}@)",
               R"(@{"endDate":"# endDate","startDate":"# startDate","value":"17.1#"}@)"},
              {R"({"endDate":"1 endDate","startDate":"1 startDate","value":"17.11"},)",
               ""},  // never written, the others move up
              {R"("Value":"leave)", R"("value":"leave)"},
              {R"("Value":"25.25")", R"("value":"25.25")"},
              {R"("fundRegistrationDate")", R"("employmentStatus":"employmentStatus","fundRegistrationDate")"},
              {R"(@{"description":"# description","endDate":"# endDate","startDate":"# startDate","text":"# text"}@)",
               R"(@{"endDate":"# endDate","endDate":"# endDate","startDate":"# startDate","Text":"# text"}@)"},
              {R"(@{"description":"# other","amount":"27.2#"}@)", R"(@{"amount":"27.2#","description":"# other"}@)"}});

/// A member of nothing but the numbers that may not be missing.
inline constexpr std::string_view SmallestMember =
    R"({"annualSalaryForContributions":"1","annualSalaryForInsurance":"1","awardOrProductivityAmount":"1",
"childContributionsAmount":"1","otherThirdPartyContributionsAmount":"1","personalContributionsAmount":"1",
"salarySacrificedAmount":"1","spouseContributionsAmount":"1","superGuaranteeAmount":"1","voluntaryAmount":"1",
"weeklyHoursWorked":"1"})";

/// A batch with one employer, one fund and one member of nothing but the amounts it needs.
inline const std::string BatchAsRead = Expanded(R"(
{"contributionDetail":{"employers":[{"employerDetail":{"businessIdentifier":{"businessIdentifierType":"employer businessIdentifierType",
"value":"employer value"},"email":"employer email","name":{"familyName":"employer familyName",
"givenName":"employer givenName","otherGivenName":"employer otherGivenName","suffix":"employer suffix",
"title":"employer title"},"organisationName":"employer organisation",
"phoneNumbers":[@{"areaCode":"employer # areaCode","number":"employer # number",
"phoneNumberType":"employer # phoneNumberType"}@]},"employerTransactionContextId":"employerTransactionContextId",
"funds":[{"fundEmployerNumber":"fundEmployerNumber","fundIdentifier":{"abn":"abn","usi":"usi"},
"fundTransactionContextId":"fundTransactionContextId","isDefaultFund":true,
"members":[{"annualSalaryForContributions":"1.00","annualSalaryForInsurance":"1.00",
"awardOrProductivityAmount":"1.00","childContributionsAmount":"1.00","otherThirdPartyContributionsAmount":"1.00",
"personalContributionsAmount":"1.00","salarySacrificedAmount":"1.00","spouseContributionsAmount":"1.00",
"superGuaranteeAmount":"1.00","voluntaryAmount":"1.00","weeklyHoursWorked":"1.00"}],
"organisationName":"fund organisation","smsfDetail":{"bankDetail":{"account":{"name":"accountName",
"number":"accountNumber","bsb":"bsb"}},"electronicServiceAddressAlias":"electronicServiceAddressAlias",
"email":"smsf email","fundName":"fundName","phoneNumbers":[@{"areaCode":"fund # areaCode","number":"fund # number",
"phoneNumberType":"fund # phoneNumberType"}@]}}]}],
"participantDetail":{"clientParticipantNumber":"clientParticipantNumber",
"businessIdentifier":{"businessIdentifierType":"participant businessIdentifierType","value":"participant value"},
"email":"participant email","name":{"familyName":"participant familyName","givenName":"participant givenName",
"otherGivenName":"participant otherGivenName","suffix":"participant suffix","title":"participant title"},
"organisationName":"participant organisation","phoneNumbers":[@{"areaCode":"participant # areaCode",
"number":"participant # number","phoneNumberType":"participant # phoneNumberType"}@]},
"paymentDetail":{"businessIdentifier":{"businessIdentifierType":"payment type","value":"payment value"},
"directDebitDetail":{"account":{"accountName":"debit accountName","accountNumber":"debit accountNumber",
"bsb":"debit bsb"}},"organisationName":"payment organisation","paymentType":"DIRECT_DEBIT",
"refundDetail":{"account":{"accountName":"refund accountName","accountNumber":"refund accountNumber",
"bsb":"refund bsb"}}}},"identifier":{"messageId":"messageId","processId":"processId","time":"time"},
"version":"version"}
)");
inline const std::string BatchAsWritten =
    Replaced(BatchAsRead, {{R"("businessIdentifierType":"payment type")", R"("businessidentifierType":"payment type")"},
                           {R"("name":"accountName")", R"("accountName":"accountName")"},
                           {R"("number":"accountNumber")", R"("accountNumber":"accountNumber")"}});

/// An answer with one payment and one finding.
inline const std::string ResponseAsRead = Expanded(R"(
{"identifier":{"messageId":"messageId","processId":"processId","time":"time"},"status":"status","hasErrors":true,
"payments":[{"abn":"abn","account":{"accountName":"accountName","accountNumber":"accountNumber","bsb":"bsb"},
"amount":"1234.50","billerCode":"billerCode","customerReferenceNumber":"customerReferenceNumber",
"organisationName":"organisationName","paymentReferenceNumber":"paymentReferenceNumber","paymentType":"paymentType",
"usi":"usi"}],"processed":true,"validations":[{"context":"context","errorCode":"errorCode","message":"message",
"severity":"severity","path":"path"}],"version":"version"}
)");
inline const std::string ResponseAsWritten =
    Replaced(ResponseAsRead, {{R"("status":"status","hasErrors":true,)", ""},
                              {R"(,"path":"path")", ""},
                              {R"("version":"version")", R"("version":true)"}});

}  // namespace oxSuperAPI
