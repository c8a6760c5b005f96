#include "oxSuperAPI/calls/uBeamChannelSecurity.h"

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"

namespace oxSuperAPI {

TBeamChannelSecurityCall::TBeamChannelSecurityCall() {
  SetURLChannel("/clearing-house/channel-security");
}

void TBeamChannelSecurityCall::SetCompanyName(const std::string& Value) {
  FCustomer.CompanyName = FirstCharacters(Value, 50);
}

void TBeamChannelSecurityCall::SetRequestBody() {
  TJSONObject Json;
  TJSONObjectHelper(Json)
      .AddString("UUID", FCustomer.UUID, true)
      .AddString("CustomerNumber", FCustomer.CustomerNumber, true)
      .AddString("CompanyName", FCustomer.CompanyName, true)
      .AddString("PIN", FCustomer.PIN, true);
  // Compact: in the log, the mask behind "UUID" then ends at the comma and the text keeps its shape.
  Body().Add(PrintJSON(Json, TJSONLayout::Compact));
}

bool TBeamChannelSecurityCall::ValidateRequestBody() {
  return IsMandatoryPropertyPresent("CompanyName", FCustomer.CompanyName) &&
         IsMandatoryPropertyPresent("UUID", FCustomer.UUID) &&  //
         IsMandatoryPropertyPresent("PIN", FCustomer.PIN) &&
         IsMandatoryPropertyPresent("CustomerNumber", FCustomer.CustomerNumber);
}

void TBeamChannelSecurityCall::ReadClient(std::string_view ClientIDName, std::string_view ClientSecretName) {
  if (!FJSONResponse) return;
  FClientID = TBeamAPIHelper::SafeJsonValue(FJSONResponse.get(), ClientIDName);
  FClientSecret = TBeamAPIHelper::SafeJsonValue(FJSONResponse.get(), ClientSecretName);
}

bool TBeamRegister::MakeCall() {
  SetURLCommand("register/" + FCustomer.UUID);
  return TBeamAPICall::MakeCall();
}

// The two endpoints spell the members with different capitals.
void TBeamRegister::ExtractValuesFromResponse() {
  TBeamAPICall::ExtractValuesFromResponse();
  ReadClient("ClientID", "ClientSecret");
}

TBeamActivate::TBeamActivate(TCommand Command)
    : FActivateCommand(Command == TCommand::Reissue ? "reissue" : "activate") {}

bool TBeamActivate::ValidateCommandParameters() {
  return IsMandatoryPropertyPresent("UUID", FCustomer.UUID);
}

bool TBeamActivate::MakeCall() {
  SetURLCommand(FActivateCommand + "/" + FCustomer.UUID);
  return TBeamAPICall::MakeCall();
}

void TBeamActivate::ExtractValuesFromResponse() {
  TBeamAPICall::ExtractValuesFromResponse();
  ReadClient("clientId", "clientSecret");
}

}  // namespace oxSuperAPI
