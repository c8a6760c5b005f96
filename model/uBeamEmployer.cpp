#include "oxSuperAPI/model/uBeamEmployer.h"

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamChildren.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamEmployer::Write(Sink& Json) const {
  Json.AddString("clientEmployerNumber", FClientEmployerNumber);
  WriteBusinessIdentifier(Json);
  Json.AddString("organisationName", OrganisationName);
  WriteContact(Json, "title");  // kept: wire behaviour, lower-case here and "Title" in a participant
  Json.Array("defaultFunds", IfFilled, [&](auto& Elements) {
    for (const auto& Child : FDefaultFunds) Elements.Element(Always, [&](Sink& Fund) { Child->Write(Fund); });
  });
  Json.AddPair("employerId", EmployerId);
  Json.AddString("organisationName", OrganisationName);  // kept: wire behaviour, a second time
  Json.AddString("termsAndConditionsAcceptanceDate", TermsAndConditionsAcceptanceDate);
  Json.AddString("userAcceptingTermsAndConditions", UserAcceptingTermsAndConditions);
}

void TBeamEmployer::LoadFromJsonObject(TJSONView Source) {
  if (!Source.Object()) return;
  const TBeamRecordReader Json(Source);
  const TBeamRecordReader Identifier = Json.Below("businessIdentifier");
  BusinessIdentifierType = Identifier.Text("businessIdentifierType");
  BusinessIdentifierValue = Identifier.Text("businessIdentifierValue");  // kept: wire behaviour, written as "value"
  SetClientEmployerNumber(std::string(Json.Text("clientEmployerNumber")));
  const TBeamRecordReader Contact = Json.Below("contact");
  ReadContactName(Contact);
  ReadContactPhone(Contact);  // kept: wire behaviour, written one level deeper, below "phone"
  ContactTitle = Contact.Text("title");
  ReadDefaultFunds(Json);
  EmployerId = Json.Integer("employerId");
  ReadOrganisation(Json);
}

void TBeamEmployer::ReadInParticipant(const TBeamRecordReader& Json, const TBeamRecordReader& ParticipantContact) {
  SetClientEmployerNumber(std::string(Json.Text("clientEmployerNumber")));
  ReadBusinessIdentifier(Json);
  ReadContactName(Json.Below("contact"));
  ReadContactPhone(ParticipantContact.Below("phone"));               // kept: wire behaviour, not the employer's own
  ContactTitle = ParticipantContact.Below("contact").Text("title");  // kept: wire behaviour, so it is normally empty
  ReadDefaultFunds(Json);
  ReadOrganisation(Json);
  // kept: wire behaviour, the employer id is not read here
}

void TBeamEmployer::ReadDefaultFunds(const TBeamRecordReader& Json) {
  Json.Elements("defaultFunds", [&](const TBeamRecordReader& Fund) {
    auto Child = std::make_shared<TBeamDefaultFund>();
    Child->ReadInEmployer(Fund);
    AddDefaultFund(std::move(Child));
  });
}

void TBeamEmployer::ReadOrganisation(const TBeamRecordReader& Json) {
  OrganisationName = Json.Text("organisationName");
  TermsAndConditionsAcceptanceDate = Json.Text("termsAndConditionsAcceptanceDate");
  UserAcceptingTermsAndConditions = Json.Text("userAcceptingTermsAndConditions");
}

void TBeamEmployer::SetClientEmployerNumber(std::string Value) {
  if (FClientEmployerNumber.empty()) FClientEmployerNumber = std::move(Value);
}

void TBeamEmployer::AddDefaultFund(std::shared_ptr<TBeamDefaultFund> Fund) {
  AddChild(FDefaultFunds, std::move(Fund));
}

std::shared_ptr<TBeamDefaultFund> TBeamEmployer::GetDefaultFund(std::ptrdiff_t Index) const {
  return ChildAt(FDefaultFunds, Index);
}

std::unique_ptr<TJSONObject> TBeamEmployer::GetAsJsonObject() const {
  return WriteToObject(*this);
}

std::string TBeamEmployer::GetAsJsonString() const {
  return WriteToText(*this);
}

template void TBeamEmployer::Write(TJSONObjectHelper&) const;
template void TBeamEmployer::Write(TJSONTextCounter&) const;
template void TBeamEmployer::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
