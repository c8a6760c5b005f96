#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamChildren.h"
#include "oxSuperAPI/model/uBeamContributionDetail.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamContributionEmployer::Write(Sink& Json) const {
  Json.Object("employerDetail", IfFilled, [&](Sink& Detail) {
    Detail.Object("businessIdentifier", IfFilled, [&](Sink& Identifier) {
      Identifier.AddString("businessIdentifierType", employerDetail.businessIdentifierType);
      Identifier.AddString("value", employerDetail.businessIdentifierValue);
    });
    Detail.AddString("email", employerDetail.email);
    Detail.Object("name", IfFilled, [&](Sink& Name) { employerDetail.name.Write(Name); });
    Detail.AddString("organisationName", employerDetail.organisationName);
    WritePhoneNumbers(Detail, employerDetail.phoneNumbers);
  });
  Json.AddString("employerTransactionContextId", employerTransactionContextId);
  Json.Array("funds", IfFilled, [&](auto& Elements) {
    for (const auto& Child : FFunds) Elements.Element(Always, [&](Sink& Fund) { Child->Write(Fund); });
  });
}

void TBeamContributionEmployer::LoadFromJsonObject(TJSONView Source) {
  if (Source.Object()) Read(TBeamRecordReader(Source));
}

void TBeamContributionEmployer::Read(const TBeamRecordReader& Json) {
  Json.Object("employerDetail", [&](const TBeamRecordReader& Detail) {
    Detail.Object("businessIdentifier", [&](const TBeamRecordReader& Identifier) {
      employerDetail.businessIdentifierType = Identifier.Text("businessIdentifierType");
      employerDetail.businessIdentifierValue = Identifier.Text("value");
    });
    employerDetail.email = Detail.Text("email");
    Detail.Object("name", [&](const TBeamRecordReader& Name) { employerDetail.name.Read(Name); });
    employerDetail.organisationName = Detail.Text("organisationName");
    Detail.FillTable("phoneNumbers", employerDetail.phoneNumbers, ReadPhoneNumber);  // kept: not emptied first
  });
  employerTransactionContextId = Json.Text("employerTransactionContextId");
  Json.Array("funds", [&](const TBeamRecordReader& Fund) {
    auto Child = std::make_shared<TBeamContributionFund>();
    Child->Read(Fund);
    AddContributionFund(std::move(Child));
  });
}

void TBeamContributionEmployer::AddContributionFund(std::shared_ptr<TBeamContributionFund> Fund) {
  AddChild(FFunds, std::move(Fund));
}

std::shared_ptr<TBeamContributionFund> TBeamContributionEmployer::GetContributionFund(std::ptrdiff_t Index) const {
  return ChildAt(FFunds, Index);
}

std::unique_ptr<TJSONObject> TBeamContributionEmployer::GetAsJsonObject() const {
  return WriteToObject(*this);
}

std::string TBeamContributionEmployer::GetAsJsonString() const {
  return WriteToText(*this);
}

template void TBeamContributionEmployer::Write(TJSONObjectHelper&) const;
template void TBeamContributionEmployer::Write(TJSONTextCounter&) const;
template void TBeamContributionEmployer::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
