#pragma once

#include <string_view>

/// Every member of every record, each with a value of its own: once as the reader looks it up, once as the writer emits
/// it. Line breaks are for the eye only.
namespace oxSuperAPI {

/// A member with everything that the reader knows; the employment status is not among it.
inline constexpr std::string_view MemberAsRead = R"(
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
"definedBenefitsAnnualSalary":[{"definedBenefitsAnnualSalary":{"endDate":"1 endDate","startDate":"1 startDate"},
"sefinedBenefitsAnnualSalary":{"value":"17.17"}},{"definedBenefitsAnnualSalary":{"endDate":"2 endDate",
"startDate":"2 startDate"},"sefinedBenefitsAnnualSalary":{"value":"18.18"}},
{"definedBenefitsAnnualSalary":{"endDate":"3 endDate","startDate":"3 startDate"},
"sefinedBenefitsAnnualSalary":{"value":"19.19"}},{"definedBenefitsAnnualSalary":{"endDate":"4 endDate",
"startDate":"4 startDate"},"sefinedBenefitsAnnualSalary":{"value":"20.20"}},
{"definedBenefitsAnnualSalary":{"endDate":"5 endDate","startDate":"5 startDate"},
"sefinedBenefitsAnnualSalary":{"value":"21.21"}}],
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
"memberRegistrationOtherDetails":[{"description":"1 description","endDate":"1 endDate","startDate":"1 startDate",
"text":"1 text"},{"description":"2 description","endDate":"2 endDate","startDate":"2 startDate","text":"2 text"},
{"description":"3 description","endDate":"3 endDate","startDate":"3 startDate","text":"3 text"},
{"description":"4 description","endDate":"4 endDate","startDate":"4 startDate","text":"4 text"},
{"description":"5 description","endDate":"5 endDate","startDate":"5 startDate","text":"5 text"}],
"memberTransactionContextId":"memberTransactionContextId","name":{"familyName":"familyName","givenName":"givenName",
"otherGivenName":"otherGivenName","suffix":"suffix","title":"title"},"occupationDescription":"occupationDescription",
"otherContributionAmounts":[{"description":"1 other","amount":"27.27"},{"description":"2 other","amount":"28.28"},
{"description":"3 other","amount":"29.29"},{"description":"4 other","amount":"30.30"},{"description":"5 other",
"amount":"31.31"}],"otherContributionDetails":[{"description":"1 description","text":"1 text"},
{"description":"2 description","text":"2 text"},{"description":"3 description","text":"3 text"},
{"description":"4 description","text":"4 text"},{"description":"5 description","text":"5 text"}],
"otherThirdPartyContributionsAmount":"32.32","payPeriodEndDate":"payPeriodEndDate",
"payPeriodStartDate":"payPeriodStartDate","payrollNumber":"payrollNumber","personalContributionsAmount":"33.33",
"phoneNumbers":[{"areaCode":"1 areaCode","number":"1 number","phoneNumberType":"1 phoneNumberType"},
{"areaCode":"2 areaCode","number":"2 number","phoneNumberType":"2 phoneNumberType"},{"areaCode":"3 areaCode",
"number":"3 number","phoneNumberType":"3 phoneNumberType"},{"areaCode":"4 areaCode","number":"4 number",
"phoneNumberType":"4 phoneNumberType"},{"areaCode":"5 areaCode","number":"5 number",
"phoneNumberType":"5 phoneNumberType"}],"salarySacrificedAmount":"34.34","spouseContributionsAmount":"35.35",
"superContributionCeaseDate":"superContributionCeaseDate",
"superContributionCommenceDate":"superContributionCommenceDate","superGuaranteeAmount":"36.36",
"voluntaryAmount":"37.37","weeklyHoursWorked":"38.38"}
)";

/// The same member with an employment status, written.
inline constexpr std::string_view MemberAsWritten = R"(
{"address":{"addressType":"addressType","countryCode":"countryCode","line1":"line1","line2":"line2","line3":"line3",
"line4":"line4","postCode":"postCode","state":"state","suburb":"suburb"},
"annualSalaryContributionsEndDate":"annualSalaryContributionsEndDate",
"annualSalaryContributionsStartDate":"annualSalaryContributionsStartDate","annualSalaryForBenefits":"1.01",
"annualSalaryForContributions":"2.02","annualSalaryForInsurance":"3.03","atWork":true,
"awardOrProductivityAmount":"4.04","benefitCategory":"benefitCategory","childContributionsAmount":"5.05",
"definedBenefits":{"actualHoursPaid":"6.06","actualPeriodicSalaryOrWagesEarned":"7.07",
"annualSalaryForBenefitsEffectiveDate":"annualSalaryForBenefitsEffectiveDate",
"annualSalaryForInsuranceEffectiveDate":"annualSalaryForInsuranceEffectiveDate","contractedHours":"8.08",
"definedBenefitEmployerContribution":"9.09","definedBenefitEmployerRate.":{"endDate":"definedBenefitEmployerRate end",
"startDate":"definedBenefitEmployerRate start","value":"10.10"},"definedBenefitMemberPostTaxContribution":"12.12",
"definedBenefitMemberPreTaxContribution":"13.13",
"definedBenefitMemberRate.":{"endDate":"definedBenefitMemberRate end","startDate":"definedBenefitMemberRate start",
"value":"14.14"},"definedBenefitsAnnualSalary":[{"endDate":"2 endDate","startDate":"2 startDate","value":"18.18"},
{"endDate":"3 endDate","startDate":"3 startDate","value":"19.19"},{"endDate":"4 endDate","startDate":"4 startDate",
"value":"20.20"},{"endDate":"5 endDate","startDate":"5 startDate","value":"21.21"}],
"employeeBenefitCategoryEffectiveDate":"employeeBenefitCategoryEffectiveDate",
"employeeLocationIdentifier":{"endDate":"employeeLocationIdentifier end",
"startDate":"employeeLocationIdentifier start","value":"employeeLocationIdentifier value"},
"employeeStatusEffectiveDate":"employeeStatusEffectiveDate","fullTimeHours":"22.22",
"leaveWithoutPayCode":{"endDate":"leaveWithoutPayCode end","startDate":"leaveWithoutPayCode start",
"value":"leaveWithoutPayCode value"},"notionalSuperannuableAllowances":"23.23","ordinaryTimeEarnings":"24.24",
"serviceFraction":{"endDate":"serviceFraction end","startDate":"serviceFraction start","value":"25.25"},
"serviceFractionEffectiveDate":"serviceFractionEffectiveDate","superannuableAllowancesPaid":"26.26"},"dob":"dob",
"email":"email","employerProvidedTaxFileNumber":"employerProvidedTaxFileNumber",
"employmentEndDate":"employmentEndDate","employmentEndReason":"employmentEndReason",
"employmentStartDate":"employmentStartDate","employmentStatus":"employmentStatus",
"fundRegistrationDate":"fundRegistrationDate","gender":"gender","insuranceOptOut":false,"memberNumber":"memberNumber",
"memberRegistrationAmendmentReason":"memberRegistrationAmendmentReason",
"memberRegistrationOtherDetails":[{"endDate":"1 endDate","endDate":"1 endDate","startDate":"1 startDate",
"Text":"1 text"},{"endDate":"2 endDate","endDate":"2 endDate","startDate":"2 startDate","Text":"2 text"},
{"endDate":"3 endDate","endDate":"3 endDate","startDate":"3 startDate","Text":"3 text"},{"endDate":"4 endDate",
"endDate":"4 endDate","startDate":"4 startDate","Text":"4 text"},{"endDate":"5 endDate","endDate":"5 endDate",
"startDate":"5 startDate","Text":"5 text"}],"memberTransactionContextId":"memberTransactionContextId",
"name":{"familyName":"familyName","givenName":"givenName","otherGivenName":"otherGivenName","suffix":"suffix",
"title":"title"},"occupationDescription":"occupationDescription","otherContributionAmounts":[{"amount":"27.27",
"description":"1 other"},{"amount":"28.28","description":"2 other"},{"amount":"29.29","description":"3 other"},
{"amount":"30.30","description":"4 other"},{"amount":"31.31","description":"5 other"}],
"otherContributionDetails":[{"description":"1 description","text":"1 text"},{"description":"2 description",
"text":"2 text"},{"description":"3 description","text":"3 text"},{"description":"4 description","text":"4 text"},
{"description":"5 description","text":"5 text"}],"otherThirdPartyContributionsAmount":"32.32",
"payPeriodEndDate":"payPeriodEndDate","payPeriodStartDate":"payPeriodStartDate","payrollNumber":"payrollNumber",
"personalContributionsAmount":"33.33","phoneNumbers":[{"areaCode":"1 areaCode","number":"1 number",
"phoneNumberType":"1 phoneNumberType"},{"areaCode":"2 areaCode","number":"2 number",
"phoneNumberType":"2 phoneNumberType"},{"areaCode":"3 areaCode","number":"3 number",
"phoneNumberType":"3 phoneNumberType"},{"areaCode":"4 areaCode","number":"4 number",
"phoneNumberType":"4 phoneNumberType"},{"areaCode":"5 areaCode","number":"5 number",
"phoneNumberType":"5 phoneNumberType"}],"salarySacrificedAmount":"34.34","spouseContributionsAmount":"35.35",
"superContributionCeaseDate":"superContributionCeaseDate",
"superContributionCommenceDate":"superContributionCommenceDate","superGuaranteeAmount":"36.36",
"voluntaryAmount":"37.37","weeklyHoursWorked":"38.38"}
)";

/// A member of nothing but the numbers that may not be missing.
inline constexpr std::string_view SmallestMember =
    R"({"annualSalaryForContributions":"1","annualSalaryForInsurance":"1",
"awardOrProductivityAmount":"1","childContributionsAmount":"1","otherThirdPartyContributionsAmount":"1",
"personalContributionsAmount":"1","salarySacrificedAmount":"1","spouseContributionsAmount":"1",
"superGuaranteeAmount":"1","voluntaryAmount":"1","weeklyHoursWorked":"1"})";

/// A batch with one employer, one fund and one member of nothing but the amounts it needs.
inline constexpr std::string_view BatchAsRead = R"(
{"contributionDetail":{"employers":[{"employerDetail":{"businessIdentifier":{"businessIdentifierType":"employer businessIdentifierType",
"value":"employer value"},"email":"employer email","name":{"familyName":"employer familyName",
"givenName":"employer givenName","otherGivenName":"employer otherGivenName","suffix":"employer suffix",
"title":"employer title"},"organisationName":"employer organisation",
"phoneNumbers":[{"areaCode":"employer 1 areaCode","number":"employer 1 number",
"phoneNumberType":"employer 1 phoneNumberType"},{"areaCode":"employer 2 areaCode","number":"employer 2 number",
"phoneNumberType":"employer 2 phoneNumberType"}]},"employerTransactionContextId":"employerTransactionContextId",
"funds":[{"fundEmployerNumber":"fundEmployerNumber","fundIdentifier":{"abn":"abn","usi":"usi"},
"fundTransactionContextId":"fundTransactionContextId","isDefaultFund":true,
"members":[{"annualSalaryForContributions":"1.00","annualSalaryForInsurance":"1.00",
"awardOrProductivityAmount":"1.00","childContributionsAmount":"1.00","otherThirdPartyContributionsAmount":"1.00",
"personalContributionsAmount":"1.00","salarySacrificedAmount":"1.00","spouseContributionsAmount":"1.00",
"superGuaranteeAmount":"1.00","voluntaryAmount":"1.00","weeklyHoursWorked":"1.00"}],
"organisationName":"fund organisation","smsfDetail":{"bankDetail":{"account":{"name":"accountName",
"number":"accountNumber","bsb":"bsb"}},"electronicServiceAddressAlias":"electronicServiceAddressAlias",
"email":"smsf email","fundName":"fundName","phoneNumbers":[{"areaCode":"fund 1 areaCode","number":"fund 1 number",
"phoneNumberType":"fund 1 phoneNumberType"},{"areaCode":"fund 2 areaCode","number":"fund 2 number",
"phoneNumberType":"fund 2 phoneNumberType"}]}}]}],
"participantDetail":{"clientParticipantNumber":"clientParticipantNumber",
"businessIdentifier":{"businessIdentifierType":"participant businessIdentifierType","value":"participant value"},
"email":"participant email","name":{"familyName":"participant familyName","givenName":"participant givenName",
"otherGivenName":"participant otherGivenName","suffix":"participant suffix","title":"participant title"},
"organisationName":"participant organisation","phoneNumbers":[{"areaCode":"participant 1 areaCode",
"number":"participant 1 number","phoneNumberType":"participant 1 phoneNumberType"},
{"areaCode":"participant 2 areaCode","number":"participant 2 number",
"phoneNumberType":"participant 2 phoneNumberType"}]},
"paymentDetail":{"businessIdentifier":{"businessIdentifierType":"payment type","value":"payment value"},
"directDebitDetail":{"account":{"accountName":"debit accountName","accountNumber":"debit accountNumber",
"bsb":"debit bsb"}},"organisationName":"payment organisation","paymentType":"DIRECT_DEBIT",
"refundDetail":{"account":{"accountName":"refund accountName","accountNumber":"refund accountNumber",
"bsb":"refund bsb"}}}},"identifier":{"messageId":"messageId","processId":"processId","time":"time"},
"version":"version"}
)";

/// An answer with one payment and one finding.
inline constexpr std::string_view ResponseAsRead = R"(
{"identifier":{"messageId":"messageId","processId":"processId","time":"time"},"status":"status","hasErrors":true,
"payments":[{"abn":"abn","account":{"accountName":"accountName","accountNumber":"accountNumber","bsb":"bsb"},
"amount":"1234.50","billerCode":"billerCode","customerReferenceNumber":"customerReferenceNumber",
"organisationName":"organisationName","paymentReferenceNumber":"paymentReferenceNumber","paymentType":"paymentType",
"usi":"usi"}],"processed":true,"validations":[{"context":"context","errorCode":"errorCode","message":"message",
"severity":"severity","path":"path"}],"version":"version"}
)";

/// The same answer, written.
inline constexpr std::string_view ResponseAsWritten = R"(
{"identifier":{"messageId":"messageId","processId":"processId","time":"time"},"payments":[{"abn":"abn",
"account":{"accountName":"accountName","accountNumber":"accountNumber","bsb":"bsb"},"amount":"1234.50",
"billerCode":"billerCode","customerReferenceNumber":"customerReferenceNumber","organisationName":"organisationName",
"paymentReferenceNumber":"paymentReferenceNumber","paymentType":"paymentType","usi":"usi"}],"processed":true,
"validations":[{"context":"context","errorCode":"errorCode","message":"message","severity":"severity"}],
"version":true}
)";

}  // namespace oxSuperAPI
