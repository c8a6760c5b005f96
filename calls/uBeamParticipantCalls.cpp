#include "oxSuperAPI/calls/uBeamParticipantCalls.h"

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"

namespace oxSuperAPI {

namespace {

// A new record with what the answer holds; null without a JSON answer. An array leaves the record empty.
template <class Record>
std::unique_ptr<Record> RecordOf(const TJSONValue* Answer) {
  if (!Answer) return nullptr;
  auto Result = std::make_unique<Record>();
  if (Answer->AsObject()) Result->LoadFromJsonObject(*Answer->AsObject());
  return Result;
}

}  // namespace

TBeamPostParticipantDetails::TBeamPostParticipantDetails() {
  SetURLChannel("/clearing-house/participant-details");
}

void TBeamPostParticipantDetails::SetRequestBody() {
  if (FParticipantDetails) Body().Add(FParticipantDetails->GetAsJsonString());
}

bool TBeamPostParticipantDetails::ValidateRequestBody() {
  if (Body().Text().find("clientParticipantNumber") != std::string::npos) return true;
  LogDetails().Add("ParticipantDetails are missing or incomplete");
  return false;
}

void TBeamPostParticipantDetails::ExtractValuesFromResponse() {
  TBeamAPICall::ExtractValuesFromResponse();
  if (FJSONResponse) FTokenForSignup = TBeamAPIHelper::SafeJsonValue(FJSONResponse.get(), "token");
}

TBeamGetParticipantDetails::TBeamGetParticipantDetails() {
  SetBeamCallMethod(bcmGet);
  SetURLChannel("/clearing-house/participant");
}

bool TBeamGetParticipantDetails::ValidateCommandParameters() {
  return IsMandatoryPropertyPresent("ParticipantNumber", FParticipantNumber);
}

bool TBeamGetParticipantDetails::MakeCall() {
  SetURLCommand(FParticipantNumber);
  return TBeamAPICall::MakeCall();
}

void TBeamGetParticipantDetails::ExtractValuesFromResponse() {
  TBeamAPICall::ExtractValuesFromResponse();
  FParticipantDetails = RecordOf<TBeamParticipantDetails>(FJSONResponse.get());
}

TBeamGetTermsAcceptance::TBeamGetTermsAcceptance() {
  SetBeamCallMethod(bcmGet);
  SetURLChannel("/clearing-house/participant");
}

bool TBeamGetTermsAcceptance::ValidateCommandParameters() {
  const bool NumberPresent = IsMandatoryPropertyPresent("ParticipantNumber", FParticipantNumber);
  if (FEmployerId < 1 || FDDAuthorityId < 1) return NumberPresent;
  LogDetails().Add("EmployerId and DDAuthorityID are mutually exclusive");
  return false;
}

bool TBeamGetTermsAcceptance::MakeCall() {
  SetURLCommand(FParticipantNumber);
  if (FEmployerId >= 1)
    SetURLCommand(FURLCommand + "/employer/" + std::to_string(FEmployerId));
  else if (FDDAuthorityId >= 1)
    SetURLCommand(FURLCommand + "/directDebitAuthority/" + std::to_string(FDDAuthorityId));
  SetURLCommand(FURLCommand + "/terms-acceptance");
  return TBeamAPICall::MakeCall();
}

void TBeamGetTermsAcceptance::ExtractValuesFromResponse() {
  TBeamAPICall::ExtractValuesFromResponse();
  FTermsAcceptance = RecordOf<TBeamTermsAcceptance>(FJSONResponse.get());
}

}  // namespace oxSuperAPI
