#include "oxSuperAPI/model/uBeamMemberContribution.h"

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamMemberAddress::Write(Sink& Json) const {
  Json.AddString("addressType", addressType);
  Json.AddString("countryCode", countryCode);
  Json.AddString("line1", line1);
  Json.AddString("line2", line2);
  Json.AddString("line3", line3);
  Json.AddString("line4", line4);
  Json.AddString("postCode", postCode);
  Json.AddString("state", state);
  Json.AddString("suburb", suburb);
}

void TBeamMemberAddress::Read(const TBeamRecordReader& Json) {
  addressType = Json.Text("addressType");
  countryCode = Json.Text("countryCode");
  line1 = Json.Text("line1");
  line2 = Json.Text("line2");
  line3 = Json.Text("line3");
  line4 = Json.Text("line4");
  postCode = Json.Text("postCode");
  state = Json.Text("state");
  suburb = Json.Text("suburb");
}

template <class Sink>
void TBeamMemberContribution::Write(Sink& Json) const {
  Json.Object("address", IfFilled, [&](Sink& Address) { address.Write(Address); });
  Json.AddString("annualSalaryContributionsEndDate", annualSalaryContributionsEndDate);
  Json.AddString("annualSalaryContributionsStartDate", annualSalaryContributionsStartDate);
  Json.AddPair("annualSalaryForBenefits", annualSalaryForBenefits);
  Json.AddPair("annualSalaryForContributions", annualSalaryForContributions);
  Json.AddPair("annualSalaryForInsurance", annualSalaryForInsurance);
  Json.AddStringAsBool("atWork", atWork);
  Json.AddPair("awardOrProductivityAmount", awardOrProductivityAmount);
  Json.AddString("benefitCategory", benefitCategory);
  Json.AddPair("childContributionsAmount", childContributionsAmount);
  Json.Object("definedBenefits", IfFilled, [&](Sink& DefinedBenefits) { definedBenefits->Write(DefinedBenefits); });
  Json.AddString("dob", dob);
  Json.AddString("email", email);
  Json.AddString("employerProvidedTaxFileNumber", employerProvidedTaxFileNumber);
  Json.AddString("employmentEndDate", employmentEndDate);
  Json.AddString("employmentEndReason", employmentEndReason);
  Json.AddString("employmentStartDate", employmentStartDate);
  Json.AddString("employmentStatus", employmentStatus);
  Json.AddString("fundRegistrationDate", fundRegistrationDate);
  Json.AddString("gender", gender);
  Json.AddStringAsBool("insuranceOptOut", insuranceOptOut);
  Json.AddString("memberNumber", memberNumber);
  Json.AddString("memberRegistrationAmendmentReason", memberRegistrationAmendmentReason);
  Json.Array("memberRegistrationOtherDetails", IfFilled, [&](auto& Elements) {
    for (const TBeamRegistrationOtherDetail& Entry : memberRegistrationOtherDetails) {
      if (Entry.endDate.empty()) continue;
      Elements.Element(IfFilled, [&](Sink& Detail) {
        Detail.AddString("endDate", Entry.endDate);  // kept: wire behaviour, no description but the end date twice
        Detail.AddString("endDate", Entry.endDate);
        Detail.AddString("startDate", Entry.startDate);
        Detail.AddString("Text", Entry.text);  // kept: wire behaviour, a capital T only here
      });
    }
  });
  Json.AddString("memberTransactionContextId", memberTransactionContextId);
  Json.Object("name", IfFilled, [&](Sink& Name) { name.Write(Name); });
  Json.AddString("occupationDescription", occupationDescription);
  Json.Array("otherContributionAmounts", IfFilled, [&](auto& Elements) {
    for (const TBeamOtherContributionAmount& Entry : otherContributionAmounts) {
      if (Entry.amount == 0) continue;
      Elements.Element(IfFilled, [&](Sink& Other) {
        Other.AddPair("amount", Entry.amount);
        Other.AddString("description", Entry.description);
      });
    }
  });
  Json.Array("otherContributionDetails", IfFilled, [&](auto& Elements) {
    for (const TBeamOtherContributionDetail& Entry : otherContributionDetails) {
      if (Entry.description.empty()) continue;
      Elements.Element(IfFilled, [&](Sink& Other) {
        Other.AddString("description", Entry.description);
        Other.AddString("text", Entry.text);
      });
    }
  });
  Json.AddPair("otherThirdPartyContributionsAmount", otherThirdPartyContributionsAmount);
  Json.AddString("payPeriodEndDate", payPeriodEndDate);
  Json.AddString("payPeriodStartDate", payPeriodStartDate);
  Json.AddString("payrollNumber", payrollNumber);
  Json.AddPair("personalContributionsAmount", personalContributionsAmount);
  WritePhoneNumbers(Json, phoneNumbers);
  Json.AddPair("salarySacrificedAmount", salarySacrificedAmount);
  Json.AddPair("spouseContributionsAmount", spouseContributionsAmount);
  Json.AddString("superContributionCeaseDate", superContributionCeaseDate);
  Json.AddString("superContributionCommenceDate", superContributionCommenceDate);
  Json.AddPair("superGuaranteeAmount", superGuaranteeAmount);
  Json.AddPair("voluntaryAmount", voluntaryAmount);
  Json.AddPair("weeklyHoursWorked", weeklyHoursWorked);
}

void TBeamMemberContribution::LoadFromJsonObject(TJSONView Source) {
  if (Source.Object()) Read(TBeamRecordReader(Source));
}

// The order decides which fields have their new values when a number is refused.
void TBeamMemberContribution::Read(const TBeamRecordReader& Json) {
  Json.Object("address", [&](const TBeamRecordReader& Address) { address.Read(Address); });
  annualSalaryContributionsEndDate = Json.Text("annualSalaryContributionsEndDate");
  annualSalaryContributionsStartDate = Json.Text("annualSalaryContributionsStartDate");
  annualSalaryForBenefits = Json.NumberOrZero("annualSalaryForBenefits");  // kept: the only number that may be missing
  annualSalaryForContributions = Json.Number("annualSalaryForContributions");
  annualSalaryForInsurance = Json.Number("annualSalaryForInsurance");
  atWork = Json.Text("atWork");  // kept: wire behaviour, a JSON boolean read as its text
  awardOrProductivityAmount = Json.Number("awardOrProductivityAmount");
  benefitCategory = Json.Text("benefitCategory");
  childContributionsAmount = Json.Number("childContributionsAmount");
  Json.Object("definedBenefits", [&](const TBeamRecordReader& Benefits) { definedBenefits->Read(Benefits); });
  dob = Json.Text("dob");
  email = Json.Text("email");
  employerProvidedTaxFileNumber = Json.Text("employerProvidedTaxFileNumber");
  employmentEndDate = Json.Text("employmentEndDate");
  employmentEndReason = Json.Text("employmentEndReason");
  employmentStartDate = Json.Text("employmentStartDate");
  // kept: wire behaviour, employmentStatus is not read back
  fundRegistrationDate = Json.Text("fundRegistrationDate");
  gender = Json.Text("gender");
  insuranceOptOut = Json.Text("insuranceOptOut");  // kept: wire behaviour, as atWork
  memberNumber = Json.Text("memberNumber");
  memberRegistrationAmendmentReason = Json.Text("memberRegistrationAmendmentReason");
  Json.ReplaceTable("memberRegistrationOtherDetails", memberRegistrationOtherDetails,
                    [](const TBeamRecordReader& Detail, TBeamRegistrationOtherDetail& Entry) {
                      Entry.description = Detail.Text("description");  // kept: wire behaviour, never written
                      Entry.endDate = Detail.Text("endDate");
                      Entry.startDate = Detail.Text("startDate");
                      Entry.text = Detail.Text("text");  // kept: wire behaviour, written as "Text"
                    });
  memberTransactionContextId = Json.Text("memberTransactionContextId");
  name.Read(Json.Below("name"));
  occupationDescription = Json.Text("occupationDescription");
  Json.ReplaceTable("otherContributionAmounts", otherContributionAmounts,
                    [](const TBeamRecordReader& Other, TBeamOtherContributionAmount& Entry) {
                      Entry.description = Other.Text("description");  // kept: before the amount, which may be refused
                      Entry.amount = Other.Number("amount");
                    });
  Json.ReplaceTable("otherContributionDetails", otherContributionDetails,
                    [](const TBeamRecordReader& Other, TBeamOtherContributionDetail& Entry) {
                      Entry.description = Other.Text("description");
                      Entry.text = Other.Text("text");
                    });
  otherThirdPartyContributionsAmount = Json.Number("otherThirdPartyContributionsAmount");
  payPeriodEndDate = Json.Text("payPeriodEndDate");
  payPeriodStartDate = Json.Text("payPeriodStartDate");
  payrollNumber = Json.Text("payrollNumber");
  personalContributionsAmount = Json.Number("personalContributionsAmount");
  Json.ReplaceTable("phoneNumbers", phoneNumbers, ReadPhoneNumber);
  salarySacrificedAmount = Json.Number("salarySacrificedAmount");
  spouseContributionsAmount = Json.Number("spouseContributionsAmount");
  superContributionCeaseDate = Json.Text("superContributionCeaseDate");
  superContributionCommenceDate = Json.Text("superContributionCommenceDate");
  superGuaranteeAmount = Json.Number("superGuaranteeAmount");
  voluntaryAmount = Json.Number("voluntaryAmount");
  weeklyHoursWorked = Json.Number("weeklyHoursWorked");
}

std::unique_ptr<TJSONObject> TBeamMemberContribution::GetAsJsonObject() const {
  return WriteToObject(*this);
}

std::string TBeamMemberContribution::GetAsJsonString() const {
  return WriteToText(*this);
}

template void TBeamMemberContribution::Write(TJSONObjectHelper&) const;
template void TBeamMemberContribution::Write(TJSONTextCounter&) const;
template void TBeamMemberContribution::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
