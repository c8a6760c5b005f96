#include "payrun/json_batch.h"

#include <cmath>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "payrun/losses.h"

namespace oxSuperAPI {
namespace {

std::string Place(const char* Name, std::size_t Index) {
  return std::string(Name) + " " + std::to_string(Index + 1);
}

const TJSONArray* ArrayAt(const TJSONValue* Parent, const char* Name) {
  const TJSONObject* Object = Parent ? Parent->AsObject() : nullptr;
  const TJSONValue* Member = Object ? Object->Find(Name) : nullptr;
  return Member ? Member->AsArray() : nullptr;
}

/// Loads each member alone: the error of a whole batch would not say which member it is about.
void CheckMembers(const TJSONValue& Fund, const std::string& Where, TPayRun& Run) {
  const TJSONArray* Members = ArrayAt(&Fund, "members");
  for (std::size_t Index = 0; Members && Index < Members->Count(); ++Index) {
    const TJSONObject* Member = Members->At(Index)->AsObject();
    const std::string Payroll = TBeamAPIHelper::SafeJsonValue(Member, "payrollNumber");
    const std::string Name =
        Where + ", " + Place("member", Index) + (Payroll.empty() ? "" : " (payroll number " + Payroll + ")");
    const auto Fail = [&](const std::string& Reason) {
      Run.Findings.push_back({TFindingSeverity::Error, 0, "", 0, Name + ": " + Reason});
    };
    if (!Member) {
      Fail("is no JSON object");
      continue;
    }
    try {
      TBeamMemberContribution().LoadFromJsonObject(*Member);
    } catch (const TBeamError& Error) {
      Fail(std::string(Error.what()) + " (every amount has to be there, \"0\" if there is none)");
    }
  }
}

void CheckAllMembers(const TJSONObject& Root, TPayRun& Run) {
  const TJSONArray* Employers = ArrayAt(Root.Find("contributionDetail"), "employers");
  for (std::size_t E = 0; Employers && E < Employers->Count(); ++E) {
    const TJSONArray* Funds = ArrayAt(Employers->At(E), "funds");
    for (std::size_t F = 0; Funds && F < Funds->Count(); ++F)
      CheckMembers(*Funds->At(F), Place("employer", E) + ", " + Place("fund", F), Run);
  }
}

/// What stands in the file and is gone once the batch is written again.
void ListLosses(const TJSONValue& File, const TBeamContributionDetail& Detail, TPayRun& Run) {
  const TJSONValue Written(std::move(*Detail.GetAsJsonObject()));
  for (const std::string& Path : LostPaths(SaidValues(File), SaidValues(Written)))
    if (!Path.starts_with("identifier.")) Run.NotSent.push_back({0, Path, {}});
}

}  // namespace

TPayRun ReadJSONBatch(std::string_view Text, TJSONParser& Parser) {
  TPayRun Run;
  const auto Refuse = [&](const std::string& Reason) {
    Run.Findings.push_back({TFindingSeverity::Error, 0, "", 0, Reason});
  };
  const auto Document = Parser.Parse(Text);
  const TJSONObject* Root = Document ? Document->AsObject() : nullptr;
  if (!Root) {
    Refuse("the file is no JSON object");
    return Run;
  }
  CheckAllMembers(*Root, Run);
  TPayRunBatch Batch;
  Batch.Detail = std::make_unique<TBeamContributionDetail>();
  try {
    Batch.Detail->LoadFromJsonObject(*Root);
  } catch (const TBeamError& Error) {
    if (Run.Findings.empty()) Refuse(Error.what());
    return Run;
  }
  if (Batch.Detail->GetContributionEmployerCount() == 0) Refuse("contributionDetail.employers holds no employer");
  ListLosses(*Document, *Batch.Detail, Run);
  Batch.Cents = TotalCents(*Batch.Detail);
  Run.Batches.push_back(std::move(Batch));
  return Run;
}

std::int64_t TotalCents(const TBeamMemberContribution& Member) {
  const TBeamDefinedBenefits& Benefits = *Member.definedBenefits;
  const auto Cents = [](double Dollars) { return static_cast<std::int64_t>(std::llround(Dollars * 100)); };
  std::int64_t Total = 0;
  for (const double Amount :
       {Member.superGuaranteeAmount, Member.awardOrProductivityAmount, Member.personalContributionsAmount,
        Member.salarySacrificedAmount, Member.voluntaryAmount, Member.spouseContributionsAmount,
        Member.childContributionsAmount, Member.otherThirdPartyContributionsAmount,
        Benefits.definedBenefitMemberPreTaxContribution, Benefits.definedBenefitMemberPostTaxContribution,
        Benefits.definedBenefitEmployerContribution})
    Total += Cents(Amount);
  for (const TBeamOtherContributionAmount& Other : Member.otherContributionAmounts) Total += Cents(Other.amount);
  return Total;
}

std::int64_t TotalCents(const TBeamContributionFund& Fund) {
  std::int64_t Total = 0;
  for (std::size_t Index = 0; Index < Fund.GetMemberContributionCount(); ++Index)
    Total += TotalCents(*Fund.GetMemberContribution(static_cast<std::ptrdiff_t>(Index)));
  return Total;
}

std::int64_t TotalCents(const TBeamContributionDetail& Detail) {
  std::int64_t Total = 0;
  for (std::size_t E = 0; E < Detail.GetContributionEmployerCount(); ++E) {
    const auto Employer = Detail.GetContributionEmployer(static_cast<std::ptrdiff_t>(E));
    for (std::size_t F = 0; F < Employer->GetContributionFundCount(); ++F)
      Total += TotalCents(*Employer->GetContributionFund(static_cast<std::ptrdiff_t>(F)));
  }
  return Total;
}

}  // namespace oxSuperAPI
