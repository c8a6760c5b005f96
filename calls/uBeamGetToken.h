#pragma once

#include <memory>
#include <string>

#include "oxSuperAPI/calls/uBeamAPICall.h"
#include "oxSuperAPI/session/uBeamToken.h"

namespace oxSuperAPI {

/// The OAuth client-credentials grant. The only call with a form body, without an authorization header, and never shown
/// in an editor.
class OXSUPERAPI_EXPORT TBeamGetToken : public TBeamAPICall {
 public:
  TBeamGetToken();

  /// The plain client credentials; both mandatory. @{
  void SetClientID(std::string ClientID) { FClientId = std::move(ClientID); }
  void SetClientSecret(std::string ClientSecret) { FClientSecret = std::move(ClientSecret); }
  const std::string& ClientID() const { return FClientId; }
  const std::string& ClientSecret() const { return FClientSecret; }
  /// @}

  /// The token to fill; stays the caller's. Null lets the call make one of its own, which goes with the call. @{
  void SetBeamToken(TBeamToken* BeamToken) { FBeamToken = BeamToken; }
  TBeamToken* BeamToken() const { return FBeamToken; }
  /// @}

  /// "Bearer " and the token's text; "" while there is no token object. @{
  std::string GetTokenString() const;
  std::string BearerToken() const { return GetTokenString(); }
  /// @}

  void SetRequestHeaders() override;
  /// Id and secret are inserted as they are: a secret that holds "&" breaks the form.
  void SetRequestBody() override;
  bool ValidateRequestBody() override;
  void ExtractValuesFromResponse() override;
  std::string ClassName() const override { return "TBeamGetToken"; }
  bool MayBeShownInEditor() const final { return false; }

 private:
  void ReadRefusal();
  void ReadToken();

  TBeamToken* FBeamToken = nullptr;
  std::string FClientId;
  std::string FClientSecret;
  std::unique_ptr<TBeamToken> FOwnToken;
};

}  // namespace oxSuperAPI
