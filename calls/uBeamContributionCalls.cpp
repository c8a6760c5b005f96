#include "oxSuperAPI/calls/uBeamContributionCalls.h"

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/host/uHost.h"

namespace oxSuperAPI {

namespace {

void Stamp(TBeamContributionDetail& Detail) {
  THostSystem& System = Host().System();
  TGUID GUID{};
  if (!System.CreateGUID(GUID)) throw TBeamError("Unable to create the message identifier of a contribution batch");
  Detail.identifier.messageId = GUIDToString(GUID);
  Detail.identifier.time = FormatUTCSeconds(System.LocalToUTC(System.Now()));
}

// Not trimmed: a blank id passes, and the command is then empty.
bool IsProcessIdPresent(const std::string& ProcessId, TStringList& LogDetails) {
  if (!ProcessId.empty()) return true;
  LogDetails.Add("Process Id is required");
  return false;
}

}  // namespace

TBeamPostContributionDetail::TBeamPostContributionDetail() {
  SetURLChannel("/clearing-house");
}

void TBeamPostContributionDetail::SetRequestBody() {
  if (FContributionDetail) Body().Add(FContributionDetail->GetAsJsonString());
}

bool TBeamPostContributionDetail::ValidateCommandParameters() {
  if (FContributionDetail) return true;
  LogDetails().Add("ContributionDetail is not assigned");
  return false;
}

bool TBeamPostContributionDetail::MakeCall() {
  SetURLCommand(FSubmit ? "submit" : "validate");
  if (FContributionDetail) Stamp(*FContributionDetail);
  const bool Accepted = TBeamAPICall::MakeCall();
  return Accepted || (FSubmit && FStatusCode == 400);
}

void TBeamPostContributionDetail::ExtractValuesFromResponse() {
  TBeamAPICall::ExtractValuesFromResponse();
  if (!FContributionResponse) FContributionResponse = std::make_unique<TBeamContributionResponse>();
  FContributionResponse->StatusCode = FStatusCode;
  const TJSONObject* Json = FJSONResponse ? FJSONResponse->AsObject() : nullptr;
  if (Json) FContributionResponse->LoadFromJSONObject(*Json);
}

TBeamGetContributionStatus::TBeamGetContributionStatus() {
  SetBeamCallMethod(bcmGet);
  SetURLChannel("/search/contributions");
}

bool TBeamGetContributionStatus::ValidateCommandParameters() {
  return IsProcessIdPresent(FProcessId, LogDetails());
}

bool TBeamGetContributionStatus::MakeCall() {
  SetURLCommand(FProcessId);
  return TBeamAPICall::MakeCall();
}

void TBeamGetContributionStatus::ExtractValuesFromResponse() {
  TBeamAPICall::ExtractValuesFromResponse();
  if (!FJSONResponse) return;
  FContributionStatus = TBeamAPIHelper::SafeJsonValue(FJSONResponse.get(), "status");
  FPaymentReferenceNumber = TBeamAPIHelper::SafeJsonValue(FJSONResponse.get(), "paymentReferenceNumber");
  FTotalAmount = TBeamAPIHelper::ValueAsDouble(FJSONResponse.get(), "", "totalAmount");
}

TBeamPutCancelContribution::TBeamPutCancelContribution() {
  SetBeamCallMethod(bcmPut);
  SetURLChannel("/clearing-house/cancel");
}

bool TBeamPutCancelContribution::ValidateCommandParameters() {
  return IsProcessIdPresent(FProcessId, LogDetails());
}

bool TBeamPutCancelContribution::MakeCall() {
  SetURLCommand(FProcessId);
  return TBeamAPICall::MakeCall();
}

}  // namespace oxSuperAPI
