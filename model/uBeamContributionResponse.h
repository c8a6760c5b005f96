#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/model/uBeamSharedRecords.h"

namespace oxSuperAPI {

/// A finding of the service about a batch. Severity and context are the service's own vocabulary, passed through.
class OXSUPERAPI_EXPORT TBeamSuperValidation {
 public:
  /// Texts of the service. @{
  std::string context;
  std::string errorCode;
  std::string message;
  std::string severity;
  std::string path;  ///< read, never written
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  void LoadFromJSONObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  /// @}
};

/// A payment that the employer has to make. `amount` is in dollars; `paymentType` is one of
/// TBeamSuperAPIPaymentMethodString; the biller code belongs to BPAY.
class OXSUPERAPI_EXPORT TBeamSuperPayment {
 public:
  /// Where the money goes and how the bank statement has to name it. @{
  std::string ABN;
  TBeamBankAccount account;
  double amount = 0;
  std::string billerCode;
  std::string customerReferenceNumber;
  std::string organisationName;
  std::string paymentReferenceNumber;
  std::string paymentType;
  std::string USI;
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  /// Raises TBeamConversionError when the amount is missing or malformed.
  void LoadFromJSONObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  /// @}
};

/// The service's answer to a batch. Items are shared: the host may keep one longer than the response.
class OXSUPERAPI_EXPORT TBeamContributionResponse {
 public:
  /// Members of the answer; `processId` names the batch in later requests. @{
  std::string messageId;
  std::string processId;
  std::string time;
  std::string status;
  bool hasErrors = false;
  bool processed = false;
  std::string version;
  /// HTTP status of the call that brought this answer. Never in JSON.
  std::int32_t StatusCode = 0;
  /// @}

  /// Null is ignored. @{
  void AddPayment(std::shared_ptr<TBeamSuperPayment> Payment);
  void AddValidation(std::shared_ptr<TBeamSuperValidation> Validation);
  /// @}

  /// Null past the end; a negative index raises TBeamRangeError. @{
  std::shared_ptr<TBeamSuperPayment> GetPayment(std::ptrdiff_t Index) const;
  std::shared_ptr<TBeamSuperValidation> GetValidation(std::ptrdiff_t Index) const;
  std::size_t GetPaymentsCount() const { return FPayments.size(); }
  std::size_t GetValidationsCount() const { return FValidations.size(); }
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  /// Appends items: loading twice holds those of both answers. Raises as the items do; earlier items stay.
  void LoadFromJSONObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  /// @}

 private:
  std::vector<std::shared_ptr<TBeamSuperValidation>> FValidations;
  std::vector<std::shared_ptr<TBeamSuperPayment>> FPayments;
};

}  // namespace oxSuperAPI
