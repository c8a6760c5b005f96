#include "oxSuperAPI/calls/uBeamGetToken.h"

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"

namespace oxSuperAPI {

TBeamGetToken::TBeamGetToken() {
  SetURLChannel("/auth/token");
}

std::string TBeamGetToken::GetTokenString() const {
  return FBeamToken ? "Bearer " + FBeamToken->TokenString : std::string();
}

void TBeamGetToken::SetRequestHeaders() {
  Headers().Add("Content-Type: application/x-www-form-urlencoded");
}

void TBeamGetToken::SetRequestBody() {
  Body().Add("client_id=" + FClientId + "&client_secret=" + FClientSecret + "&grant_type=client_credentials");
}

bool TBeamGetToken::ValidateRequestBody() {
  return IsMandatoryPropertyPresent("ClientID", FClientId) && IsMandatoryPropertyPresent("ClientSecret", FClientSecret);
}

void TBeamGetToken::ExtractValuesFromResponse() {
  TBeamAPICall::ExtractValuesFromResponse();
  if (FStatusCode == 200)
    ReadToken();
  else
    ReadRefusal();
}

// Overwrites what the base found, even by empty texts.
void TBeamGetToken::ReadRefusal() {
  const TJSONView Json = FJSONResponse.get();
  FResponseMessage = TBeamAPIHelper::SafeJsonValue(Json, "error_description");
  FResponseStatus = TBeamAPIHelper::SafeJsonValue(Json, "error_code");
  FResponseError = TBeamAPIHelper::SafeJsonValue(Json, "error");
  const TJSONValue* Codes = Json.Object() ? Json.Object()->Find("error_codes") : nullptr;
  if (FResponseStatus.empty() && Codes && !Codes->IsNull()) FResponseStatus = PrintJSON(*Codes, TJSONLayout::Compact);
}

void TBeamGetToken::ReadToken() {
  if (!FBeamToken) {
    FOwnToken = std::make_unique<TBeamToken>();
    FBeamToken = FOwnToken.get();
  }
  const auto Text = [this](std::string_view Name) { return TBeamAPIHelper::SafeJsonValue(FJSONResponse.get(), Name); };
  FBeamToken->TokenString = Text("access_token");
  FBeamToken->TokenType = Text("token_type");
  FBeamToken->ExpiresIn = Text("expires_in");
  FBeamToken->ExtExpiresIn = Text("ext_expires_in");
  FBeamToken->ExpiresOn = Text("expires_on");
  FBeamToken->NotBefore = Text("not_before");
  FBeamToken->Resource = Text("resource");
}

}  // namespace oxSuperAPI
