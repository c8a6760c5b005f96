#include <cmath>
#include <functional>

#include "loss.h"
#include "maximal_documents.h"
#include "oxSuperAPI/model/uBeamMemberContribution.h"

namespace oxSuperAPI {
namespace {

// The message with which a document is refused, "" when it is read.
std::string Refusal(TBeamMemberContribution& Member, std::string_view Text) {
  try {
    Load(Member, Text);
    return "";
  } catch (const TBeamConversionError& Error) {
    return Error.what();
  }
}

// A member of nothing but the numbers that may not be missing, and further members.
std::string SmallestWith(std::string_view More) {
  return ReplaceFirst(SmallestMember, "{", "{" + std::string(More) + ",");
}

TEST(MemberContribution, OnlyWhatIsFilledIsWritten) {
  const std::tuple<const char*, std::function<void(TBeamMemberContribution&)>, const char*> Cases[] = {
      {"nothing", [](auto&) {}, "{}"},
      {"two fields", [](auto& Member) { Member.payrollNumber = "P1", Member.superGuaranteeAmount = 1234.5; },
       R"({"payrollNumber":"P1","superGuaranteeAmount":"1234.50"})"},
      {"amounts just inside and on the bounds of zero",
       [](auto& Member) { Member.voluntaryAmount = 0.0099999, Member.weeklyHoursWorked = -0.01; },
       R"({"weeklyHoursWorked":"-0.01"})"},
      {"text flags", [](auto& Member) { Member.atWork = "TRUE", Member.insuranceOptOut = "yes"; },
       R"({"atWork":true,"insuranceOptOut":false})"},
      {"a rate of a value only", [](auto& Member) { Member.definedBenefits->definedBenefitEmployerRate.value = 9.5; },
       R"({"definedBenefits":{"definedBenefitEmployerRate.":{"value":"9.50"}}})"},
      {"annual salaries: the first, and one without an end date",
       [](auto& Member) {
         Member.definedBenefits->definedBenefitsAnnualSalary[0] = {"2024-06-30", "2023-07-01", 1};
         Member.definedBenefits->definedBenefitsAnnualSalary[2] = {"", "2023-07-01", 2};
       },
       "{}"},
      {"the last annual salary",
       [](auto& Member) {
         Member.definedBenefits->definedBenefitsAnnualSalary[4] = {"2024-06-30", "", 0.5};
       },
       R"({"definedBenefits":{"definedBenefitsAnnualSalary":[{"endDate":"2024-06-30","value":"0.50"}]}})"},
      {"list entries without what makes them count",
       [](auto& Member) {
         Member.memberRegistrationOtherDetails[0] = {"description", "", "2024-01-01", "text"};
         Member.otherContributionAmounts[0] = {0, "description"};
         Member.otherContributionDetails[0] = {"", "text"};
         Member.phoneNumbers[0] = {"02", "", "HOME"};
       },
       "{}"},
      {"gaps in lists are closed",
       [](auto& Member) { Member.phoneNumbers[1].number = "1", Member.phoneNumbers[4].number = "2"; },
       R"({"phoneNumbers":[{"number":"1"},{"number":"2"}]})"},
      {"an amount that is not zero but too small to be written",
       [](auto& Member) {
         Member.otherContributionAmounts[0].amount = 0.004;
         Member.otherContributionAmounts[1] = {0.004, "d"};
       },
       R"({"otherContributionAmounts":[{"description":"d"}]})"},
  };
  for (const auto& [What, Fill, Json] : Cases) {
    TBeamMemberContribution Member;
    Fill(Member);
    EXPECT_EQ(Written(Member), Json) << What;
  }
  TBeamMemberContribution Member;
  Member.voluntaryAmount = std::nan("");
  EXPECT_THROW(Member.GetAsJsonString(), TBeamConversionError);
  EXPECT_THROW(Member.GetAsJsonObject(), TBeamConversionError);
}

TEST(MemberContribution, EachFieldIsReadFromItsOwnKey) {  // those that the writer does not show
  const auto Member = Loaded<TBeamMemberContribution>(MemberAsRead);
  EXPECT_EQ(Member.annualSalaryForBenefits, 1.01);
  EXPECT_EQ(Member.atWork + Member.insuranceOptOut, "truefalse");
  EXPECT_EQ(Member.memberRegistrationOtherDetails[4].description, "5 description");
  EXPECT_EQ(Member.definedBenefits->definedBenefitNotionalEmployerContribution, 11.11);
  EXPECT_EQ(Member.definedBenefits->definedBenefitNotionalMemberPostTaxContribution, 15.15);
  EXPECT_EQ(Member.definedBenefits->definedBenefitNotionalMemberPreTaxContribution, 16.16);
  EXPECT_EQ(Member.definedBenefits->definedBenefitsAnnualSalary[0].startDate, "1 startDate");
  EXPECT_EQ(Member.definedBenefits->definedBenefitsAnnualSalary[0].value, 17.11);
}

TEST(MemberContribution, EveryNumberButOneMustBeThere) {
  // clang-format off
  for (const char* Name :
       {"annualSalaryForContributions", "annualSalaryForInsurance", "awardOrProductivityAmount",
        "childContributionsAmount", "otherThirdPartyContributionsAmount", "personalContributionsAmount",
        "salarySacrificedAmount", "spouseContributionsAmount", "superGuaranteeAmount", "voluntaryAmount",
        "weeklyHoursWorked", "actualHoursPaid", "actualPeriodicSalaryOrWagesEarned", "contractedHours",
        "definedBenefitEmployerContribution", "definedBenefitNotionalEmployerContribution",
        "definedBenefitMemberPostTaxContribution", "definedBenefitMemberPreTaxContribution",
        "definedBenefitNotionalMemberPostTaxContribution", "definedBenefitNotionalMemberPreTaxContribution",
        "fullTimeHours", "notionalSuperannuableAllowances", "ordinaryTimeEarnings", "superannuableAllowancesPaid",
        "amount"}) {
    // clang-format on
    TBeamMemberContribution Member;
    const std::string Key = '"' + std::string(Name) + "\":\"";
    EXPECT_EQ(Refusal(Member, ReplaceFirst(MemberAsRead, Key, "\"missing\":\"")),
              std::string(Name) + " value >< is not a floating point number");
    EXPECT_EQ(Refusal(Member, ReplaceFirst(MemberAsRead, Key, Key + "$")).substr(0, std::string(Name).size() + 9),
              std::string(Name) + " value >$");
  }
  TBeamMemberContribution Member;
  Member.annualSalaryForBenefits = 5;
  EXPECT_EQ(Refusal(Member, ReplaceFirst(MemberAsRead, "annualSalaryForBenefits", "missing")), "");
  EXPECT_EQ(Member.annualSalaryForBenefits, 0);
}

TEST(MemberContribution, FieldsBeforeARefusedNumberKeepTheirNewValues) {
  TBeamMemberContribution Member;
  Member.annualSalaryForInsurance = 7;
  Member.payrollNumber = "old";
  EXPECT_EQ(Refusal(Member, R"({"payrollNumber":"new","annualSalaryForInsurance":"8","annualSalaryForBenefits":"9",
                                "address":{"line1":"new"}})"),
            "annualSalaryForContributions value >< is not a floating point number");
  EXPECT_EQ(Member.address.line1, "new");
  EXPECT_EQ(Member.annualSalaryForBenefits, 9);
  EXPECT_EQ(Member.annualSalaryForInsurance, 7);
  EXPECT_EQ(Member.payrollNumber, "old");
}

TEST(MemberContribution, WhatIsMissingBecomesEmptyOrStays) {
  TBeamMemberContribution Member;
  Load(Member, MemberAsRead);
  Member.employmentStatus = "stays";
  Load(Member, SmallestWith(R"("employmentStatus":"not read","definedBenefits":null,"address":"no object")"));
  EXPECT_EQ(Member.employmentStatus, "stays");
  EXPECT_EQ(Member.address.line1, "line1") << "read only from an object";
  EXPECT_EQ(Member.definedBenefits->fullTimeHours, 22.22) << "read only from an object";
  EXPECT_EQ(Member.phoneNumbers[4].number, "5 number") << "read only from an array";
  EXPECT_EQ(Member.dob, "");
  EXPECT_EQ(Member.name.familyName, "") << "read whether or not there is a name";
}

TEST(MemberContribution, ListsAreEmptiedAndFilledUpToFiveButNotTheAnnualSalaries) {
  TBeamMemberContribution Member;
  Load(Member, MemberAsRead);
  Load(Member, SmallestWith(R"("memberRegistrationOtherDetails":[{"text":"one"}],"otherContributionAmounts":[],
    "otherContributionDetails":[{},{"text":"two"}],"phoneNumbers":[{"number":"1"},{"number":"2"},{"number":"3"},
    {"number":"4"},{"number":"5"},{"number":"6"},7])"));
  const auto& Details = Member.memberRegistrationOtherDetails;
  EXPECT_EQ(Details[0].text + Details[0].description + Details[4].text, "one");
  EXPECT_EQ(Member.otherContributionAmounts[0].amount, 0);
  EXPECT_EQ(Member.otherContributionDetails[1].text, "two");
  EXPECT_EQ(Member.phoneNumbers[4].number + Member.phoneNumbers[0].areaCode, "5");

  const std::size_t Start = MemberAsRead.find(R"([{"definedBenefitsAnnualSalary":)"),
                    End = MemberAsRead.find("]", Start);
  const std::string Two =
      R"([{"sefinedBenefitsAnnualSalary":{"value":"91"}},{"sefinedBenefitsAnnualSalary":{"value":"92"}})";
  Load(Member, ReplaceFirst(MemberAsRead, MemberAsRead.substr(Start, End - Start), Two));
  const auto& Salaries = Member.definedBenefits->definedBenefitsAnnualSalary;
  EXPECT_EQ(Salaries[1].value, 92);
  EXPECT_EQ(Salaries[1].endDate + Salaries[2].endDate, "3 endDate") << "not emptied first";
}

TEST(MemberContribution, WrittenDefinedBenefitsCannotBeReadBack) {
  TBeamMemberContribution Member;
  EXPECT_EQ(Refusal(Member, MemberAsWritten), "value value >< is not a floating point number");
  EXPECT_THROW(Load(Member, SmallestWith(R"("phoneNumbers":["02"])")), TBeamTypeError);
}

}  // namespace
}  // namespace oxSuperAPI
