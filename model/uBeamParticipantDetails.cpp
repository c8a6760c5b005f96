#include "oxSuperAPI/model/uBeamParticipantDetails.h"

#include <optional>
#include <ranges>

#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/foundation/uBeamISODates.h"
#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamChildren.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamParticipantDetails::Write(Sink& Json) const {
  Json.AddString("clientParticipantNumber", FClientParticipantNumber);
  Json.AddString("organisationName", OrganisationName);
  WriteBusinessIdentifier(Json);
  WriteAddress(Json);
  WriteContact(Json, "Title");  // kept: wire behaviour, a capital T only here
  Json.Array("directDebitAuthorities", IfFilled, [&](auto& Elements) {
    for (const auto& Child : FDDAuthorities)
      Elements.Element(Always, [&](Sink& Authority) { Child->Write(Authority); });
  });
  Json.Array("employers", IfFilled, [&](auto& Elements) {
    for (const auto& Child : FEmployers) Elements.Element(Always, [&](Sink& Employer) { Child->Write(Employer); });
  });
  Json.AddString("payrollName", PayrollName);
  Json.AddString("redirectUrl", RedirectURL);  // kept: wire behaviour, read as "redirectURL"
  Json.AddString("userAcceptingTermsAndConditions", UserAcceptingTermsAndConditions);
  Json.AddString("termsAndConditionsAcceptanceDate", TermsAndConditionsAcceptanceDate);
}

// The order decides which fields have their new values when a member is of the wrong kind.
void TBeamParticipantDetails::Load(const TJSONObject& Source) {
  const TBeamRecordReader Json(Source);
  FClientParticipantNumber = Json.Text("clientParticipantNumber");  // kept: overwrites, unlike the setter
  ReadBusinessIdentifier(Json);
  OrganisationName = Json.Text("organisationName");
  ReadAddress(Json);
  ContactTitle = Json.Below("contact").Text("title");  // kept: wire behaviour, written as "Title"
  ReadContactName(Json.Below("contact"));
  const TJSONObject* ContactObject = nullptr;
  TBeamAPIHelper::SafeJsonObject(Source, "contact", ContactObject);  // kept: the one object that may not be a text
  const TBeamRecordReader Contact(ContactObject);
  ReadContactPhone(Contact.Below("phone"));
  Json.Elements("directDebitAuthorities", [&](const TBeamRecordReader& Authority) {
    auto Child = std::make_shared<TBeamDDAuthority>();
    Child->ReadInParticipant(Authority);
    AddDDAuthority(std::move(Child));
  });
  Json.Elements("employers", [&](const TBeamRecordReader& Employer) {
    auto Child = std::make_shared<TBeamEmployer>();
    Child->ReadInParticipant(Employer, Contact);
    AddEmployer(std::move(Child));
  });
  PayrollName = Json.Text("payrollName");
  RedirectURL = Json.Text("redirectURL");  // kept: wire behaviour, written as "redirectUrl"
  UserAcceptingTermsAndConditions = Json.Text("userAcceptingTermsAndConditions");
  TermsAndConditionsAcceptanceDate = Json.Text("termsAndConditionsAcceptanceDate");
}

void TBeamParticipantDetails::LoadFromJsonObject(TJSONView Source) {
  if (!Source.Object()) return;
  try {
    Load(*Source.Object());
  } catch (const std::exception& Error) {
    throw TBeamError(std::string("Unable to load the Participant Details obtained from Super Clearing APIs\r\n") +
                     Error.what());
  }
}

bool TBeamParticipantDetails::IsUserAcceptanceUpToDate(TDateTime pChangedDate) const {
  if (!(pChangedDate >= 5.0)) return false;  // NaN, too
  const auto AcceptedSince = [pChangedDate](const std::string& AcceptanceDate) {
    const std::optional<TDateTime> Accepted = ParseISODateTime(AcceptanceDate);
    return Accepted && CompareDateTime(*Accepted, pChangedDate) >= 0;
  };
  if (!AcceptedSince(TermsAndConditionsAcceptanceDate)) return false;
  const TBeamDDAuthority* Authority = AuthorityInForce();
  if (Authority && !AcceptedSince(Authority->TermsAndConditionsAcceptanceDate)) return false;
  return FEmployers.empty() || AcceptedSince(FEmployers.front()->TermsAndConditionsAcceptanceDate);
}

const TBeamDDAuthority* TBeamParticipantDetails::AuthorityInForce() const {
  for (const auto& Authority : FDDAuthorities | std::views::reverse)
    if (Authority->EndDate.empty()) return Authority.get();
  return nullptr;
}

void TBeamParticipantDetails::SetClientParticipantNumber(std::string Value) {
  if (FClientParticipantNumber.empty()) FClientParticipantNumber = std::move(Value);
}

void TBeamParticipantDetails::AddDDAuthority(std::shared_ptr<TBeamDDAuthority> Authority) {
  AddChild(FDDAuthorities, std::move(Authority));
}

void TBeamParticipantDetails::AddEmployer(std::shared_ptr<TBeamEmployer> Employer) {
  AddChild(FEmployers, std::move(Employer));
}

std::shared_ptr<TBeamDDAuthority> TBeamParticipantDetails::GetDDAuthority(std::ptrdiff_t Index) const {
  return ChildAt(FDDAuthorities, Index);
}

std::shared_ptr<TBeamEmployer> TBeamParticipantDetails::GetEmployer(std::ptrdiff_t Index) const {
  return ChildAt(FEmployers, Index);
}

std::unique_ptr<TJSONObject> TBeamParticipantDetails::GetAsJsonObject() const {
  return WriteToObject(*this);
}

std::string TBeamParticipantDetails::GetAsJsonString() const {
  return WriteToText(*this);
}

template void TBeamParticipantDetails::Write(TJSONObjectHelper&) const;
template void TBeamParticipantDetails::Write(TJSONTextCounter&) const;
template void TBeamParticipantDetails::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
