#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamMemberContribution.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

namespace {

template <class Sink>
void WriteDated(Sink& Json, const TBeamDatedValue& Dated) {
  Json.AddString("endDate", Dated.endDate);
  Json.AddString("startDate", Dated.startDate);
  Json.AddPair("value", Dated.value);
}

template <class Sink>
void WriteDated(Sink& Json, const TBeamDatedText& Dated) {
  Json.AddString("endDate", Dated.endDate);
  Json.AddString("startDate", Dated.startDate);
  Json.AddString("value", Dated.value);
}

void ReadDated(const TBeamRecordReader& Json, const TJSONKey& ValueName, TBeamDatedValue& Dated) {
  Dated.endDate = Json.Text("endDate");
  Dated.startDate = Json.Text("startDate");
  Dated.value = Json.Number(ValueName);
}

void ReadDated(const TBeamRecordReader& Json, const TJSONKey& ValueName, TBeamDatedText& Dated) {
  Dated.endDate = Json.Text("endDate");
  Dated.startDate = Json.Text("startDate");
  Dated.value = Json.Text(ValueName);
}

}  // namespace

template <class Sink>
void TBeamDefinedBenefits::Write(Sink& Json) const {
  Json.AddPair("actualHoursPaid", actualHoursPaid);
  Json.AddPair("actualPeriodicSalaryOrWagesEarned", actualPeriodicSalaryOrWagesEarned);
  Json.AddString("annualSalaryForBenefitsEffectiveDate", annualSalaryForBenefitsEffectiveDate);
  Json.AddString("annualSalaryForInsuranceEffectiveDate", annualSalaryForInsuranceEffectiveDate);
  Json.AddPair("contractedHours", contractedHours);
  Json.AddPair("definedBenefitEmployerContribution", definedBenefitEmployerContribution);
  // kept: wire behaviour, the name of a rate ends in a full stop
  Json.Object("definedBenefitEmployerRate.", IfFilled,
              [&](Sink& Rate) { WriteDated(Rate, definedBenefitEmployerRate); });
  Json.AddPair("definedBenefitMemberPostTaxContribution", definedBenefitMemberPostTaxContribution);
  Json.AddPair("definedBenefitMemberPreTaxContribution", definedBenefitMemberPreTaxContribution);
  Json.Object("definedBenefitMemberRate.", IfFilled, [&](Sink& Rate) { WriteDated(Rate, definedBenefitMemberRate); });
  // kept: wire behaviour, the three notional contributions are not written
  Json.Array("definedBenefitsAnnualSalary", IfFilled, [&](auto& Elements) {
    // kept: wire behaviour, the first entry is not written
    for (std::size_t Index = 1; Index < definedBenefitsAnnualSalary.size(); ++Index) {
      const TBeamDatedValue& Entry = definedBenefitsAnnualSalary[Index];
      if (!Entry.endDate.empty()) Elements.Element(IfFilled, [&](Sink& Salary) { WriteDated(Salary, Entry); });
    }
  });
  Json.AddString("employeeBenefitCategoryEffectiveDate", employeeBenefitCategoryEffectiveDate);
  Json.Object("employeeLocationIdentifier", IfFilled,
              [&](Sink& Location) { WriteDated(Location, employeeLocationIdentifier); });
  Json.AddString("employeeStatusEffectiveDate", employeeStatusEffectiveDate);
  Json.AddPair("fullTimeHours", fullTimeHours);
  Json.Object("leaveWithoutPayCode", IfFilled, [&](Sink& Code) { WriteDated(Code, leaveWithoutPayCode); });
  Json.AddPair("notionalSuperannuableAllowances", notionalSuperannuableAllowances);
  Json.AddPair("ordinaryTimeEarnings", ordinaryTimeEarnings);
  Json.Object("serviceFraction", IfFilled, [&](Sink& Fraction) { WriteDated(Fraction, serviceFraction); });
  Json.AddString("serviceFractionEffectiveDate", serviceFractionEffectiveDate);
  Json.AddPair("superannuableAllowancesPaid", superannuableAllowancesPaid);
}

void TBeamDefinedBenefits::Read(const TBeamRecordReader& Json) {
  actualHoursPaid = Json.Number("actualHoursPaid");
  actualPeriodicSalaryOrWagesEarned = Json.Number("actualPeriodicSalaryOrWagesEarned");
  annualSalaryForBenefitsEffectiveDate = Json.Text("annualSalaryForBenefitsEffectiveDate");
  annualSalaryForInsuranceEffectiveDate = Json.Text("annualSalaryForInsurnacetsEffectiveDate");  // kept: misspelt
  contractedHours = Json.Number("contractedHours");
  definedBenefitEmployerContribution = Json.Number("definedBenefitEmployerContribution");
  ReadDated(Json.Below("definedBenefitEmployerRate"), "value", definedBenefitEmployerRate);  // kept: no full stop
  definedBenefitNotionalEmployerContribution = Json.Number("definedBenefitNotionalEmployerContribution");
  definedBenefitMemberPostTaxContribution = Json.Number("definedBenefitMemberPostTaxContribution");
  definedBenefitMemberPreTaxContribution = Json.Number("definedBenefitMemberPreTaxContribution");
  ReadDated(Json.Below("definedBenefitMemberRate"), "value", definedBenefitMemberRate);  // kept: no full stop
  definedBenefitNotionalEmployerContribution =
      Json.Number("definedBenefitNotionalEmployerContribution");  // kept: twice
  definedBenefitNotionalMemberPostTaxContribution = Json.Number("definedBenefitNotionalMemberPostTaxContribution");
  definedBenefitNotionalMemberPreTaxContribution = Json.Number("definedBenefitNotionalMemberPreTaxContribution");
  // kept: wire behaviour, read from inside each element, under two names of which one is misspelt
  Json.FillTable("definedBenefitsAnnualSalary", definedBenefitsAnnualSalary,
                 [](const TBeamRecordReader& Salary, TBeamDatedValue& Entry) {
                   Entry.endDate = Salary.Below("definedBenefitsAnnualSalary").Text("endDate");
                   Entry.startDate = Salary.Below("definedBenefitsAnnualSalary").Text("startDate");
                   Entry.value = Salary.Below("sefinedBenefitsAnnualSalary").Number("value");
                 });
  employeeBenefitCategoryEffectiveDate = Json.Text("employeeBenefitCategoryEffectiveDate");
  ReadDated(Json.Below("employeeLocationIdentifier"), "value", employeeLocationIdentifier);
  employeeStatusEffectiveDate = Json.Text("employeeStatusEffectiveDate");
  fullTimeHours = Json.Number("fullTimeHours");
  ReadDated(Json.Below("leaveWithoutPayCode"), "Value", leaveWithoutPayCode);  // kept: capital V, written as "value"
  notionalSuperannuableAllowances = Json.Number("notionalSuperannuableAllowances");
  ordinaryTimeEarnings = Json.Number("ordinaryTimeEarnings");
  ReadDated(Json.Below("serviceFraction"), "Value", serviceFraction);  // kept: capital V, written as "value"
  serviceFractionEffectiveDate = Json.Text("serviceFractionEffectiveDate");
  superannuableAllowancesPaid = Json.Number("superannuableAllowancesPaid");
}

template void TBeamDefinedBenefits::Write(TJSONObjectHelper&) const;
template void TBeamDefinedBenefits::Write(TJSONTextCounter&) const;
template void TBeamDefinedBenefits::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
