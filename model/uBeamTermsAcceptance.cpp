#include "oxSuperAPI/model/uBeamTermsAcceptance.h"

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

template <class Sink>
void TBeamTermsAcceptance::Write(Sink& Json) const {
  Json.AddString("termsAndConditionsAcceptanceDate", TermsAndConditionsAcceptanceDate);
  Json.AddString("userAcceptingTermsAndConditions", UserAcceptingTermsAndConditions);
}

void TBeamTermsAcceptance::LoadFromJsonObject(TJSONView Source) {
  if (!Source.Object()) return;
  const TBeamRecordReader Json(Source);
  TermsAndConditionsAcceptanceDate = Json.Text("termsAndConditionsAcceptanceDate");
  UserAcceptingTermsAndConditions = Json.Text("userAcceptingTermsAndConditions");
}

std::unique_ptr<TJSONObject> TBeamTermsAcceptance::GetAsJsonObject() const {
  return WriteToObject(*this);
}

std::string TBeamTermsAcceptance::GetAsJsonString() const {
  return WriteToText(*this);
}

template void TBeamTermsAcceptance::Write(TJSONObjectHelper&) const;
template void TBeamTermsAcceptance::Write(TJSONTextCounter&) const;
template void TBeamTermsAcceptance::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
