#pragma once

#include <memory>
#include <string>

#include "oxSuperAPI/calls/uBeamAPICall.h"
#include "oxSuperAPI/model/uBeamContributionDetail.h"
#include "oxSuperAPI/model/uBeamContributionResponse.h"

namespace oxSuperAPI {

/// Validates or submits a contribution batch.
class OXSUPERAPI_EXPORT TBeamPostContributionDetail : public TBeamAPICall {
 public:
  TBeamPostContributionDetail();

  /// The caller's, may be null; stamped and read during `MakeCall`.
  void SetContributionDetail(TBeamContributionDetail* Detail) { FContributionDetail = Detail; }
  /// False, as at first: the service only validates.
  void SetSubmit(bool Submit) { FSubmit = Submit; }
  /// The answer, made for every answer that arrived, plain text included, or was put in by hand. Null when
  /// a validation failed. @{
  const TBeamContributionResponse* ContributionResponse() const { return FContributionResponse.get(); }
  std::unique_ptr<TBeamContributionResponse> TakeContributionResponse() { return std::move(FContributionResponse); }
  /// @}

  void SetRequestHeaders() override { AddAuthorization(FToken); }
  void SetRequestBody() override;
  bool ValidateCommandParameters() override;
  /// Stamps the batch with a new identifier and the UTC time, then runs the request. A submission that the service
  /// answers with 400 counts as done: what it refuses stands in the response.
  bool MakeCall() override;
  void ExtractValuesFromResponse() override;
  std::string ClassName() const override { return "TBeamPostContributionDetail"; }

 private:
  TBeamContributionDetail* FContributionDetail = nullptr;
  bool FSubmit = false;
  std::unique_ptr<TBeamContributionResponse> FContributionResponse;
};

/// Asks for the state of a batch.
class OXSUPERAPI_EXPORT TBeamGetContributionStatus : public TBeamAPICall {
 public:
  TBeamGetContributionStatus();

  /// The batch, by the identifier that the service gave it.
  void SetProcessId(std::string ProcessId) { FProcessId = std::move(ProcessId); }
  /// Of the JSON answer; "" and 0 without one. The amount is in dollars. @{
  const std::string& ContributionStatus() const { return FContributionStatus; }
  const std::string& PaymentReferenceNumber() const { return FPaymentReferenceNumber; }
  double TotalAmount() const { return FTotalAmount; }
  /// @}

  void SetRequestHeaders() override { AddAuthorization(FToken); }
  bool ValidateCommandParameters() override;
  bool MakeCall() override;
  void ExtractValuesFromResponse() override;
  std::string ClassName() const override { return "TBeamGetContributionStatus"; }

 private:
  std::string FProcessId;
  std::string FContributionStatus;
  std::string FPaymentReferenceNumber;
  double FTotalAmount = 0;
};

/// Cancels a batch.
class OXSUPERAPI_EXPORT TBeamPutCancelContribution : public TBeamAPICall {
 public:
  TBeamPutCancelContribution();

  /// The batch, by the identifier that the service gave it.
  void SetProcessId(std::string ProcessId) { FProcessId = std::move(ProcessId); }

  void SetRequestHeaders() override { AddAuthorization(FToken); }
  bool ValidateCommandParameters() override;
  bool MakeCall() override;
  std::string ClassName() const override { return "TBeamPutCancelContribution"; }

 private:
  std::string FProcessId;
};

}  // namespace oxSuperAPI
