#pragma once

#include <string>

#include "oxSuperAPI/calls/uBeamAPICall.h"

namespace oxSuperAPI {

/// What enrolling sends about a customer.
struct TBeamCustomer {
  /// Texts of the host, sent as they are. @{
  std::string UUID;
  std::string CustomerNumber;
  std::string CompanyName;  ///< set through SetCompanyName, which keeps 50 characters
  std::string PIN;
  /// @}
};

/// What registering, activating and reissuing have in common: the body and its checks.
class OXSUPERAPI_EXPORT TBeamChannelSecurityCall : public TBeamAPICall {
 public:
  TBeamChannelSecurityCall();

  /// What will be sent; checked by `ValidateRequestBody`, not here. @{
  void SetUUID(std::string UUID) { FCustomer.UUID = std::move(UUID); }
  void SetCustomerNumber(std::string Number) { FCustomer.CustomerNumber = std::move(Number); }
  /// Keeps the first 50 characters.
  void SetCompanyName(const std::string& Value);
  void SetPIN(std::string PIN) { FCustomer.PIN = std::move(PIN); }
  /// @}

  /// Carried, never sent.
  void SetPayrollProduct(std::string Product) { FPayrollProduct = std::move(Product); }
  /// As set so far.
  const TBeamCustomer& Customer() const { return FCustomer; }
  /// As set.
  const std::string& PayrollProduct() const { return FPayrollProduct; }

  /// What the answer brought; "" without a JSON answer that holds them. @{
  const std::string& ClientID() const { return FClientID; }
  const std::string& ClientSecret() const { return FClientSecret; }
  /// @}

  void SetRequestBody() override;
  bool ValidateRequestBody() override;

 protected:
  /// Takes the client credentials from the answer, where they have these names.
  void ReadClient(std::string_view ClientIDName, std::string_view ClientSecretName);

  /// What the public readers give. @{
  TBeamCustomer FCustomer;
  std::string FPayrollProduct;
  std::string FClientID;
  std::string FClientSecret;
  /// @}
};

/// Registers a customer, with the administrator token.
class OXSUPERAPI_EXPORT TBeamRegister : public TBeamChannelSecurityCall {
 public:
  /// This call's own token beside the base's: its header is made of this one. @{
  void SetToken(std::string Token) { FToken = std::move(Token); }
  const std::string& Token() const { return FToken; }
  /// @}

  void SetRequestHeaders() override { AddAuthorization(FToken); }
  bool MakeCall() override;
  void ExtractValuesFromResponse() override;
  std::string ClassName() const override { return "TBeamRegister"; }

 private:
  std::string FToken;
};

/// Activates a registered customer, with the application token, or reissues its credentials, with the customer token.
class OXSUPERAPI_EXPORT TBeamActivate : public TBeamChannelSecurityCall {
 public:
  /// Which of the two requests.
  enum class TCommand : std::uint8_t { Activate, Reissue };
  /// Reissuing sends the same body with another command.
  explicit TBeamActivate(TCommand Command = TCommand::Activate);

  void SetRequestHeaders() override { AddAuthorization(FToken); }
  bool ValidateCommandParameters() override;
  bool MakeCall() override;
  void ExtractValuesFromResponse() override;
  std::string ClassName() const override { return "TBeamActivate"; }

 private:
  std::string FActivateCommand;
};

}  // namespace oxSuperAPI
