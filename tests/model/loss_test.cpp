// What a record loses and gains on the way from its writer to its reader and back: guards the differences that the wire
// wants from well-meant repair.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "../support/documents.h"
#include "maximal_documents.h"
#include "oxSuperAPI/model/uBeamSuperObjects.h"

namespace oxSuperAPI {
namespace {

using TPaths = std::vector<std::string>;

void CollectPaths(const TJSONValue& Value, const std::string& Path, TPaths& Paths) {
  if (const TJSONObject* Object = Value.AsObject())
    for (const TJSONPair& Member : Object->Members()) CollectPaths(Member.Value, Path + "/" + Member.Name, Paths);
  else if (const TJSONArray* Array = Value.AsArray())
    for (std::size_t Index = 0; Index < Array->Count(); ++Index)
      CollectPaths(*Array->At(Index), Path + "/" + std::to_string(Index), Paths);
  else
    Paths.push_back(Path + "=" + PrintJSON(Value, TJSONLayout::Compact));
}

TPaths PathsOf(std::string_view Text) {
  TPaths Paths;
  CollectPaths(Document(Text), "", Paths);
  std::ranges::sort(Paths);
  return Paths;
}

TPaths Without(const TPaths& All, const TPaths& Taken) {
  TPaths Rest;
  std::ranges::set_difference(All, Taken, std::back_inserter(Rest));
  return Rest;
}

void Load(TBeamContributionResponse& Record, const TJSONObject& Source) {
  Record.LoadFromJSONObject(Source);
}
void Load(auto& Record, const TJSONObject& Source) {
  Record.LoadFromJsonObject(Source);
}

std::string WithoutLineBreaks(std::string_view Text) {
  std::string Result(Text);
  std::erase(Result, '\n');
  return Result;
}

// Loads `Text` into a new record, and checks that both sinks write `Expected`.
template <class Record>
void ExpectWritten(Record& Loaded, std::string_view Text, std::string_view Expected) {
  Load(Loaded, *Document(Text).AsObject());
  if constexpr (std::is_same_v<Record, TBeamMemberContribution>) Loaded.employmentStatus = "employmentStatus";
  const auto Tree = Loaded.GetAsJsonObject();
  EXPECT_EQ(PrintJSON(*Tree, TJSONLayout::Compact), WithoutLineBreaks(Expected));
  EXPECT_EQ(PrintJSON(*Tree, TJSONLayout::Pretty), Loaded.GetAsJsonString());
}

template <class Record>
void ExpectLoss(const std::string& Text, TPaths Lost, TPaths Gained) {
  Record Loaded;
  Load(Loaded, *Document(Text).AsObject());
  const TPaths Before = PathsOf(Text);
  const TPaths After = PathsOf(Loaded.GetAsJsonString());
  std::ranges::sort(Lost);
  std::ranges::sort(Gained);
  EXPECT_EQ(Without(Before, After), Lost);
  EXPECT_EQ(Without(After, Before), Gained);
}

std::string BatchAsWritten() {
  std::string Text(BatchAsRead);
  Text = ReplaceFirst(Text, R"("businessIdentifierType":"payment type")", R"("businessidentifierType":"payment type")");
  Text = ReplaceFirst(Text, R"("name":"accountName")", R"("accountName":"accountName")");
  return ReplaceFirst(Text, R"("number":"accountNumber")", R"("accountNumber":"accountNumber")");
}

std::string MemberWithoutDefinedBenefits() {
  const std::size_t Start = MemberAsWritten.find(R"("definedBenefits":)");
  const std::size_t End = MemberAsWritten.find(R"("dob":)");
  return ReplaceFirst(MemberAsWritten, MemberAsWritten.substr(Start, End - Start), "");
}

TEST(Loss, EveryFieldOfEveryRecordIsWrittenInItsPlaceAndBothFormsAgree) {
  TBeamMemberContribution Member;
  ExpectWritten(Member, MemberAsRead, MemberAsWritten);
  TBeamContributionDetail Batch;
  ExpectWritten(Batch, BatchAsRead, BatchAsWritten());
  TBeamContributionResponse Response;
  ExpectWritten(Response, ResponseAsRead, ResponseAsWritten);

  const auto Employer = Batch.GetContributionEmployer(0);
  const auto Fund = Employer->GetContributionFund(0);
  EXPECT_EQ(PrintJSON(*Employer->GetAsJsonObject(), TJSONLayout::Pretty), Employer->GetAsJsonString());
  EXPECT_EQ(PrintJSON(*Fund->GetAsJsonObject(), TJSONLayout::Pretty), Fund->GetAsJsonString());
  const auto Payment = Response.GetPayment(0);
  const auto Finding = Response.GetValidation(0);
  EXPECT_EQ(PrintJSON(*Payment->GetAsJsonObject(), TJSONLayout::Pretty), Payment->GetAsJsonString());
  EXPECT_EQ(PrintJSON(*Finding->GetAsJsonObject(), TJSONLayout::Pretty), Finding->GetAsJsonString());
}

TEST(Loss, AMemberReadBackLosesItsEmploymentStatusAndTheTextsOfOtherDetails) {
  TPaths Lost = {R"(/employmentStatus="employmentStatus")"};
  for (const char* Index : {"0", "1", "2", "3", "4"})
    Lost.push_back("/memberRegistrationOtherDetails/" + std::string(Index) + "/Text=\"" +
                   static_cast<char>(*Index + 1) + " text\"");
  ExpectLoss<TBeamMemberContribution>(MemberWithoutDefinedBenefits(), Lost, {});
}

TEST(Loss, DefinedBenefitsAreReadUnderOtherNamesThanTheyAreWritten) {
  const std::string Benefits = "/definedBenefits/";
  TPaths Lost = {Benefits + "annualSalaryForInsurnacetsEffectiveDate=\"annualSalaryForInsuranceEffectiveDate\"",
                 Benefits + "definedBenefitNotionalEmployerContribution=\"11.11\"",
                 Benefits + "definedBenefitNotionalMemberPostTaxContribution=\"15.15\"",
                 Benefits + "definedBenefitNotionalMemberPreTaxContribution=\"16.16\"",
                 Benefits + "leaveWithoutPayCode/Value=\"leaveWithoutPayCode value\"",
                 Benefits + "serviceFraction/Value=\"25.25\""};
  TPaths Gained = {Benefits + "annualSalaryForInsuranceEffectiveDate=\"annualSalaryForInsuranceEffectiveDate\"",
                   Benefits + "leaveWithoutPayCode/value=\"leaveWithoutPayCode value\"",
                   Benefits + "serviceFraction/value=\"25.25\""};
  const auto Add = [&](TPaths& Paths, const std::string& Name, const std::string& End, const std::string& Start,
                       const std::string& Value) {
    Paths.push_back(Benefits + Name + "endDate=\"" + End + '"');
    Paths.push_back(Benefits + Name + "startDate=\"" + Start + '"');
    if (!Value.empty()) Paths.push_back(Benefits + Name + "value=\"" + Value + '"');
  };
  for (const auto& [Rate, Value] :
       {std::pair{"definedBenefitEmployerRate", "10.10"}, std::pair{"definedBenefitMemberRate", "14.14"}}) {
    const std::string Name = Rate;
    Add(Lost, Name + "/", Name + " end", Name + " start", Value);
    Add(Gained, Name + "./", Name + " end", Name + " start", Value);
  }
  const char* const Salaries[] = {"17.17", "18.18", "19.19", "20.20", "21.21"};
  for (std::size_t Index = 0; Index < std::size(Salaries); ++Index) {
    const std::string Element = "definedBenefitsAnnualSalary/" + std::to_string(Index);
    const std::string Number = std::to_string(Index + 1);
    Add(Lost, Element + "/definedBenefitsAnnualSalary/", Number + " endDate", Number + " startDate", "");
    Lost.push_back(Benefits + Element + "/sefinedBenefitsAnnualSalary/value=\"" + Salaries[Index] + '"');
    if (Index == 0) continue;  // the first is never written, the others move up
    Add(Gained, "definedBenefitsAnnualSalary/" + std::to_string(Index - 1) + "/", Number + " endDate",
        Number + " startDate", Salaries[Index]);
  }
  // The descriptions and texts of other details are the member's, read and not written as they were.
  for (int Index = 0; Index < 5; ++Index) {
    const std::string Element = "/memberRegistrationOtherDetails/" + std::to_string(Index) + "/";
    const std::string Number = std::to_string(Index + 1);
    Lost.push_back(Element + "description=\"" + Number + " description\"");
    Lost.push_back(Element + "text=\"" + Number + " text\"");
    Gained.push_back(Element + "Text=\"" + Number + " text\"");
    Gained.push_back(Element + "endDate=\"" + Number + " endDate\"");
  }
  ExpectLoss<TBeamMemberContribution>(std::string(MemberAsRead), Lost, Gained);
}

TEST(Loss, ABatchReadBackLosesThePaymentIdentifierTypeAndTheFundsAccount) {
  const std::string Account = "/contributionDetail/employers/0/funds/0/smsfDetail/bankDetail/account/";
  ExpectLoss<TBeamContributionDetail>(
      BatchAsWritten(),
      {"/contributionDetail/paymentDetail/businessIdentifier/businessidentifierType=\"payment type\"",
       Account + "accountName=\"accountName\"", Account + "accountNumber=\"accountNumber\""},
      {});
}

TEST(Loss, AnAnswerReadAndWrittenLosesItsStatusAndThePathsAndTradesItsVersionForAFlag) {
  ExpectLoss<TBeamContributionResponse>(
      std::string(ResponseAsRead),
      {"/status=\"status\"", "/hasErrors=true", "/validations/0/path=\"path\"", "/version=\"version\""},
      {"/version=true"});
}

}  // namespace
}  // namespace oxSuperAPI
