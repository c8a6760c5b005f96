#include "payrun/json_batch.h"

#include <gtest/gtest.h>

#include "oxSuperAPI/reference/json_rapidjson.h"
#include "payrun_builder.h"

namespace oxSuperAPI {
namespace {

constexpr const char* Keys[] = {"annualSalaryForContributions",
                                "annualSalaryForInsurance",
                                "awardOrProductivityAmount",
                                "childContributionsAmount",
                                "otherThirdPartyContributionsAmount",
                                "personalContributionsAmount",
                                "salarySacrificedAmount",
                                "spouseContributionsAmount",
                                "superGuaranteeAmount",
                                "voluntaryAmount",
                                "weeklyHoursWorked"};

/// A member with every amount; `Odd` has `Value` instead of 1.10.
std::string Member(const std::string& Odd = "", const std::string& Value = "") {
  std::string Text = R"({"payrollNumber":"E7","employmentStatus":"Casual")";
  for (const std::string Key : Keys) Text += ",\"" + Key + "\":\"" + (Key == Odd ? Value : "1.10") + "\"";
  return Text + "}";
}

TPayRun Read(const std::string& Members) {
  TJSONRapidJson Parser;
  return ReadJSONBatch(
      R"({"identifier":{"messageId":"old"},"contributionDetail":{"employers":[{"funds":[{"members":[)" + Members +
          "]}]}]}}",
      Parser);
}

TEST(JSONBatch, AddsUpTheContributionsAloneAndListsThePathsThatTheReaderDoesNotTakeOver) {
  const TPayRun Run = Read(Member() + "," + Member("superGuaranteeAmount", "0"));
  EXPECT_EQ("", Places(Run));
  ASSERT_EQ(1u, Run.Batches.size());
  EXPECT_EQ(8 * 110 + 7 * 110, Run.Batches[0].Cents);
  ASSERT_EQ(2u, Run.NotSent.size());
  EXPECT_EQ("contributionDetail.employers[0].funds[0].members[0].employmentStatus", Run.NotSent[0].Reason);
}

TEST(JSONBatch, NamesMemberAndKeyOfAnAmountThatIsRefused) {
  const TPayRun Run =
      Read(Member() + "," + Member("voluntaryAmount", "ten") + "," + Member("weeklyHoursWorked", "") + ",7");
  ASSERT_EQ(3u, Run.Findings.size());
  const char* Expected[][2] = {{"member 2 (payroll number E7)", "voluntaryAmount"},
                               {"member 3 (payroll number E7)", "weeklyHoursWorked"},
                               {"employer 1, fund 1, member 4", "no JSON object"}};
  for (std::size_t Index = 0; Index < 3; ++Index)
    for (const char* Piece : Expected[Index])
      EXPECT_NE(std::string::npos, Run.Findings[Index].Reason.find(Piece)) << Run.Findings[Index].Reason;
}

TEST(JSONBatch, RefusesWhatIsNoBatch) {
  TJSONRapidJson Parser;
  for (const char* Text : {"", "[]", "{", "{}", R"({"contributionDetail":{"employers":[]}})",
                           R"({"contributionDetail":{"employers":[null,1]}})"}) {
    const TPayRun Run = ReadJSONBatch(Text, Parser);
    EXPECT_TRUE(HasErrors(Run.Findings)) << Text;
  }
}

}  // namespace
}  // namespace oxSuperAPI
