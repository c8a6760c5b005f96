#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "oxSuperAPI/calls/uBeamAPICall.h"
#include "oxSuperAPI/model/uBeamParticipantDetails.h"
#include "oxSuperAPI/model/uBeamTermsAcceptance.h"

namespace oxSuperAPI {

/// Sends the participant.
class OXSUPERAPI_EXPORT TBeamPostParticipantDetails : public TBeamAPICall {
 public:
  TBeamPostParticipantDetails();

  /// The caller's, may be null; read during `MakeCall`.
  void SetParticipantDetails(const TBeamParticipantDetails* Details) { FParticipantDetails = Details; }
  /// "" without a JSON answer that holds it.
  const std::string& TokenForSignup() const { return FTokenForSignup; }

  void SetRequestHeaders() override { AddAuthorization(FToken); }
  void SetRequestBody() override;
  /// Looks for the name of the member that must be there anywhere in the body's text.
  bool ValidateRequestBody() override;
  void ExtractValuesFromResponse() override;
  std::string ClassName() const override { return "TBeamPostParticipantDetails"; }

 private:
  const TBeamParticipantDetails* FParticipantDetails = nullptr;
  std::string FTokenForSignup;
};

/// Reads the participant.
class OXSUPERAPI_EXPORT TBeamGetParticipantDetails : public TBeamAPICall {
 public:
  TBeamGetParticipantDetails();

  /// Mandatory.
  void SetParticipantNumber(std::string Number) { FParticipantNumber = std::move(Number); }
  /// Null without a JSON answer; empty for an answer that is an array. @{
  const TBeamParticipantDetails* ParticipantDetails() const { return FParticipantDetails.get(); }
  std::unique_ptr<TBeamParticipantDetails> TakeParticipantDetails() { return std::move(FParticipantDetails); }
  /// @}

  void SetRequestHeaders() override { AddAuthorization(FToken); }
  bool ValidateCommandParameters() override;
  bool MakeCall() override;
  void ExtractValuesFromResponse() override;
  std::string ClassName() const override { return "TBeamGetParticipantDetails"; }

 private:
  std::unique_ptr<TBeamParticipantDetails> FParticipantDetails;
  std::string FParticipantNumber;
};

/// Reads the terms acceptance of an employer, of a direct-debit authority or of the participant itself.
class OXSUPERAPI_EXPORT TBeamGetTermsAcceptance : public TBeamAPICall {
 public:
  TBeamGetTermsAcceptance();

  /// Mandatory.
  void SetParticipantNumber(std::string Number) { FParticipantNumber = std::move(Number); }
  /// An id below 1 counts as none; both together are refused. @{
  void SetEmployerId(std::int32_t Id) { FEmployerId = Id; }
  void SetDDAuthorityId(std::int32_t Id) { FDDAuthorityId = Id; }
  /// @}

  /// Null without a JSON answer; empty for an answer that is an array. @{
  const TBeamTermsAcceptance* TermsAcceptance() const { return FTermsAcceptance.get(); }
  std::unique_ptr<TBeamTermsAcceptance> TakeTermsAcceptance() { return std::move(FTermsAcceptance); }
  /// @}

  void SetRequestHeaders() override { AddAuthorization(FToken); }
  bool ValidateCommandParameters() override;
  bool MakeCall() override;
  void ExtractValuesFromResponse() override;
  std::string ClassName() const override { return "TBeamGetTermsAcceptance"; }

 private:
  std::unique_ptr<TBeamTermsAcceptance> FTermsAcceptance;
  std::string FParticipantNumber;
  std::int32_t FEmployerId = 0;
  std::int32_t FDDAuthorityId = 0;
};

}  // namespace oxSuperAPI
