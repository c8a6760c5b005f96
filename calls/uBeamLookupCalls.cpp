#include "oxSuperAPI/calls/uBeamLookupCalls.h"

#include "oxSuperAPI/foundation/uBeamText.h"

namespace oxSuperAPI {

TBeamGetNotifications::TBeamGetNotifications() {
  SetBeamCallMethod(bcmGet);
  SetURLChannel("/clearing-house/notifications");
}

// Each step trims what stands so far.
bool TBeamGetNotifications::MakeCall() {
  if (!FClientParticipantNumber.empty()) SetURLCommand(FURLCommand + "/" + FClientParticipantNumber);
  SetURLCommand(FURLCommand + "?count=" + std::to_string(FCount < 1 ? 500 : FCount));
  SetURLCommand(FURLCommand + "&notificationId=" + std::to_string(FNotificationId));
  return TBeamAPICall::MakeCall();
}

void TBeamGetNotifications::ExtractValuesFromResponse() {
  TBeamAPICall::ExtractValuesFromResponse();
  FNotifications.reset();
  if (!FJSONResponse) return;
  FNotifications = std::make_unique<TBeamNotifications>();
  FNotifications->LoadFromJsonObject(FJSONResponse.get());
}

TBeamGetDefaultFunds::TBeamGetDefaultFunds() : TBeamAPICall(TConstruction::NotConstructed) {
  SetURLChannel("/clearing-house/participant");
}

bool TBeamGetDefaultFunds::ValidateCommandParameters() {
  return IsMandatoryPropertyPresent("ParticipantNumber", FParticipantNumber) &&
         IsMandatoryPropertyPresent("EmployerId", FEmployerId);
}

bool TBeamGetDefaultFunds::MakeCall() {
  if (!Trim(FParticipantNumber).empty()) SetURLCommand(FParticipantNumber);
  if (!FEmployerId.empty()) {
    SetURLCommand(FURLCommand + "?employer/" + FEmployerId + "/default");  // kept: wire behaviour, the question mark
    if (!FDefaultFundId.empty()) SetURLCommand(FURLCommand + "/" + FDefaultFundId);
  }
  return TBeamAPICall::MakeCall();
}

void TBeamGetDefaultFunds::ExtractValuesFromResponse() {
  TBeamAPICall::ExtractValuesFromResponse();
  FDefaultFunds.reset();
  if (!FJSONResponse) return;
  FDefaultFunds = std::make_unique<TBeamDefaultFunds>();
  FDefaultFunds->LoadFromJsonObject(FJSONResponse.get());
}

TBeamGetFundSearch::TBeamGetFundSearch() {
  SetBeamCallMethod(bcmGet);
  SetURLChannel("/search/funds/all");
}

bool TBeamGetFundSearch::ValidateCommandParameters() {
  return IsMandatoryPropertyPresent("Search String", FSearchString);
}

bool TBeamGetFundSearch::MakeCall() {
  SetURLCommand(FSearchString);
  return TBeamAPICall::MakeCall();
}

void TBeamGetFundSearch::ExtractValuesFromResponse() {
  TBeamAPICall::ExtractValuesFromResponse();
  FSearchResults.reset();
  if (!FJSONResponse) return;
  FSearchResults = std::make_unique<TSuperFundSearchResult>();
  FSearchResults->LoadFromJSONObject(FJSONResponse.get());
}

}  // namespace oxSuperAPI
