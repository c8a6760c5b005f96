#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "oxSuperAPI/calls/uBeamAPICall.h"
#include "oxSuperAPI/model/uBeamDefaultFunds.h"
#include "oxSuperAPI/model/uBeamFundSearch.h"
#include "oxSuperAPI/model/uBeamNotifications.h"

namespace oxSuperAPI {

/// Fetches notifications.
class OXSUPERAPI_EXPORT TBeamGetNotifications : public TBeamAPICall {
 public:
  TBeamGetNotifications();

  /// "" asks for the notifications of all participants.
  void SetClientParticipantNumber(std::string Number) { FClientParticipantNumber = std::move(Number); }
  /// Less than 1 asks for 500.
  void SetCount(std::int32_t Count) { FCount = Count; }
  /// Sent as it is, 0 included.
  void SetNotificationId(std::int32_t Id) { FNotificationId = Id; }
  /// Null without a JSON answer. @{
  const TBeamNotifications* Notifications() const { return FNotifications.get(); }
  std::unique_ptr<TBeamNotifications> TakeNotifications() { return std::move(FNotifications); }
  /// @}

  void SetRequestHeaders() override { AddAuthorization(FToken); }
  bool MakeCall() override;
  void ExtractValuesFromResponse() override;
  std::string ClassName() const override { return "TBeamGetNotifications"; }

 private:
  std::unique_ptr<TBeamNotifications> FNotifications;
  std::int32_t FCount = 0;
  std::int32_t FNotificationId = 0;
  std::string FClientParticipantNumber;
};

/// Asks for the default funds of an employer, and never gets to it: without the base's lists, `MakeCall` raises
/// TBeamError at its first step. Kept: the request that it would send (a post, its path behind a question mark) is none
/// that the service knows.
class OXSUPERAPI_EXPORT TBeamGetDefaultFunds : public TBeamAPICall {
 public:
  TBeamGetDefaultFunds();

  /// Participant and employer are mandatory, the fund is not. @{
  void SetParticipantNumber(std::string Number) { FParticipantNumber = std::move(Number); }
  void SetEmployerId(std::string Id) { FEmployerId = std::move(Id); }
  void SetDefaultFundId(std::string Id) { FDefaultFundId = std::move(Id); }
  /// @}

  /// Null without a JSON answer. @{
  const TBeamDefaultFunds* DefaultFunds() const { return FDefaultFunds.get(); }
  std::unique_ptr<TBeamDefaultFunds> TakeDefaultFunds() { return std::move(FDefaultFunds); }
  /// @}

  void SetRequestHeaders() override { AddAuthorization(FToken); }
  bool ValidateCommandParameters() override;
  bool MakeCall() override;
  void ExtractValuesFromResponse() override;
  std::string ClassName() const override { return "TBeamGetDefaultFunds"; }

 private:
  std::string FParticipantNumber;
  std::unique_ptr<TBeamDefaultFunds> FDefaultFunds;
  std::string FDefaultFundId;
  std::string FEmployerId;
};

/// Searches the register of funds.
class OXSUPERAPI_EXPORT TBeamGetFundSearch : public TBeamAPICall {
 public:
  TBeamGetFundSearch();

  /// Mandatory; becomes part of the URL as it stands.
  void SetSearchString(std::string Text) { FSearchString = std::move(Text); }
  /// Null without a JSON answer. @{
  const TSuperFundSearchResult* SearchResults() const { return FSearchResults.get(); }
  std::unique_ptr<TSuperFundSearchResult> TakeSearchResults() { return std::move(FSearchResults); }
  /// @}

  void SetRequestHeaders() override { AddAuthorization(FToken); }
  bool ValidateCommandParameters() override;
  bool MakeCall() override;
  void ExtractValuesFromResponse() override;
  std::string ClassName() const override { return "TBeamGetFundSearch"; }

 private:
  std::unique_ptr<TSuperFundSearchResult> FSearchResults;
  std::string FSearchString;
};

}  // namespace oxSuperAPI
