#include "oxSuperAPI/model/uBeamDDAuthority.h"

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamChildren.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamEmployerNumber::Write(Sink& Json) const {
  Json.AddString("clientEmployerNumber", ClientEmployerNumber);
}

void TBeamEmployerNumber::Read(const TBeamRecordReader& Json) {
  ClientEmployerNumber = Json.Text("clientEmployerNumber");
}

void TBeamEmployerNumber::LoadFromJsonObject(TJSONView Source) {
  if (!Source.Object()) return;
  Read(TBeamRecordReader(Source));
}

template <class Sink>
void TBeamDDAuthority::Write(Sink& Json) const {
  WriteBusinessIdentifier(Json);
  Json.AddString("organisationName", OrganisationName);
  Json.Object("account", Always, [&](Sink& Account) { TBeamBankAccount::Write(Account); });
  Json.AddPair("directDebitAuthorityId", DirectDebitAuthorityId);
  Json.AddString("termsAndConditionsAcceptanceDate", TermsAndConditionsAcceptanceDate);
  Json.AddString("userAcceptingTermsAndConditions", UserAcceptingTermsAndConditions);
  Json.AddString("startDate", StartDate);
  Json.AddString("endDate", EndDate);
  WriteAddress(Json);
  // kept: wire behaviour, a participant's reader looks for "employerNumbers"
  Json.Array("employers", IfFilled, [&](auto& Elements) {
    for (const auto& Child : FEmployerNumbers) Elements.Element(Always, [&](Sink& Number) { Child->Write(Number); });
  });
}

void TBeamDDAuthority::ReadTexts(const TBeamRecordReader& Json) {
  TBeamBankAccount::Read(Json.Below("account"));
  ReadAddress(Json);
  ReadBusinessIdentifier(Json);
  EndDate = Json.Text("endDate");
  OrganisationName = Json.Text("organisationName");
  StartDate = Json.Text("startDate");
  TermsAndConditionsAcceptanceDate = Json.Text("termsAndConditionsAcceptanceDate");
  UserAcceptingTermsAndConditions = Json.Text("userAcceptingTermsAndConditions");
}

void TBeamDDAuthority::LoadFromJsonObject(TJSONView Source) {
  if (!Source.Object()) return;
  const TBeamRecordReader Json(Source);
  ReadTexts(Json);
  DirectDebitAuthorityId = Json.Integer("directDebitAuthorityId");
  // kept: wire behaviour, the employer numbers are not read
}

void TBeamDDAuthority::ReadInParticipant(const TBeamRecordReader& Json) {
  ReadTexts(Json);
  // kept: wire behaviour, the id is not read, and the numbers stand under another name than they are written
  Json.Elements("employerNumbers", [&](const TBeamRecordReader& Number) {
    auto Child = std::make_shared<TBeamEmployerNumber>();
    Child->Read(Number);
    AddEmployerNumber(std::move(Child));
  });
}

void TBeamDDAuthority::AddEmployerNumber(std::shared_ptr<TBeamEmployerNumber> Number) {
  AddChild(FEmployerNumbers, std::move(Number));
}

std::shared_ptr<TBeamEmployerNumber> TBeamDDAuthority::GetEmployerNumber(std::ptrdiff_t Index) const {
  return ChildAt(FEmployerNumbers, Index);
}

std::unique_ptr<TJSONObject> TBeamEmployerNumber::GetAsJsonObject() const {
  return WriteToObject(*this);
}
std::string TBeamEmployerNumber::GetAsJsonString() const {
  return WriteToText(*this);
}
std::unique_ptr<TJSONObject> TBeamDDAuthority::GetAsJsonObject() const {
  return WriteToObject(*this);
}
std::string TBeamDDAuthority::GetAsJsonString() const {
  return WriteToText(*this);
}

template void TBeamEmployerNumber::Write(TJSONObjectHelper&) const;
template void TBeamEmployerNumber::Write(TJSONTextCounter&) const;
template void TBeamEmployerNumber::Write(TJSONTextWriter&) const;
template void TBeamDDAuthority::Write(TJSONObjectHelper&) const;
template void TBeamDDAuthority::Write(TJSONTextCounter&) const;
template void TBeamDDAuthority::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
