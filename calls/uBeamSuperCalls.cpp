#include "oxSuperAPI/calls/uBeamSuperCalls.h"

#include "oxSuperAPI/calls/uBeamAPICalls.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"

namespace oxSuperAPI {

namespace {

template <class... Texts>
void Clear(Texts&... Outputs) {
  (Outputs.clear(), ...);
}

// The token may be missing only when the host dropped it while it was being fetched.
std::string CustomerTokenText() {
  const TBeamToken* Token = TBeamSuperGlobal::BeamSuperGlobal().GetCustomerToken();
  if (!Token) throw TBeamError("The customer token was dropped while it was being obtained");
  return Token->TokenString;
}

void ReadOut(const TBeamAPICall& Call, std::string& Message, std::string& Error, std::string& Status) {
  Message = Call.ResponseMessage();
  Error = Call.ResponseError();
  Status = Call.ResponseStatus();
}

void SetCustomer(TBeamChannelSecurityCall& Call, std::string& UUID, std::string& CustomerNumber,
                 const std::string& CompanyName, std::string& PIN) {
  Call.SetUUID(std::move(UUID));
  Call.SetCustomerNumber(std::move(CustomerNumber));
  Call.SetCompanyName(CompanyName);
  Call.SetPIN(std::move(PIN));
}

}  // namespace

bool GetHealthCheck(std::string Source, std::string& Message, std::string& Error, std::string& Status) {
  Clear(Message, Error, Status);
  TBeamHealthCheck Call;
  Call.SetSource(std::move(Source));
  Call.SetToken(CustomerTokenText());
  const bool Result = Call.MakeCall();
  ReadOut(Call, Message, Error, Status);
  return Result;
}

bool GetBeamToken(std::string ClientID, std::string ClientSecret, std::string Source, TBeamToken* BeamToken,
                  std::string& Message, std::string& Error, std::string& Status) {
  Clear(Message, Error, Status);
  TBeamGetToken Call;
  Call.SetSource(std::move(Source));
  Call.SetClientID(std::move(ClientID));
  Call.SetClientSecret(std::move(ClientSecret));
  Call.SetBeamToken(BeamToken);
  const bool Result = Call.MakeCall();
  Status = Call.ResponseStatus();
  Error = Call.ResponseError();
  if (Result) {
    Message = "Token generated";
    return true;
  }
  Message = "No token returned";
  if (Error.empty() && Status.empty()) {
    Message += "\r\nResponse=" + Call.ResponseMessage();
    return false;
  }
  if (!Error.empty()) Message += "\r\nerror=" + Error;
  if (!Call.ResponseMessage().empty()) Message += "\r\nerror_description=" + Call.ResponseMessage();
  if (!Status.empty()) Message += "\r\nerror_codes=" + Status;
  return false;
}

bool PostRegisterCustomer(std::string UUID, std::string CustomerNumber, std::string CompanyName, std::string PIN,
                          std::string Source, std::string& Message, std::string& Error, std::string& Status) {
  Clear(Message, Error, Status);
  TBeamRegister Call;
  Call.SetSource(std::move(Source));
  const TBeamToken* Token = TBeamSuperGlobal::BeamSuperGlobal().GetAdminToken();
  if (!Token) {
    Message = TBeamSuperGlobal::BeamSuperGlobal().LastAPICallMessage();
    return false;
  }
  Call.SetToken(Token->TokenString);
  SetCustomer(Call, UUID, CustomerNumber, CompanyName, PIN);
  const bool Result = Call.MakeCall();
  ReadOut(Call, Message, Error, Status);
  return Result;
}

bool PostActivateCustomer(bool Reissue, std::string UUID, std::string CustomerNumber, std::string CompanyName,
                          std::string PIN, std::string Source, std::string& Message, std::string& Error,
                          std::string& Status, std::string& ClientID, std::string& ClientSecret) {
  Clear(Message, Error, Status, ClientID, ClientSecret);
  TBeamActivate Call(Reissue ? TBeamActivate::TCommand::Reissue : TBeamActivate::TCommand::Activate);
  Call.SetSource(std::move(Source));
  TBeamSuperGlobal& Global = TBeamSuperGlobal::BeamSuperGlobal();
  const TBeamToken* Token = Reissue ? Global.GetCustomerToken() : Global.GetAppToken();
  if (!Token) {
    const TBeamSuperGlobal& Current = TBeamSuperGlobal::BeamSuperGlobal();
    Message = Current.LastAPICallMessage();
    Error = Current.LastAPICallError();
    Status = Current.LastAPICallStatus();
    return false;
  }
  Call.SetToken(Token->TokenString);
  SetCustomer(Call, UUID, CustomerNumber, CompanyName, PIN);
  const bool Result = Call.MakeCall();
  if (Call.StatusCode() == 400)
    Message = "The Registration Code of the Common database has not been Pre-Registered with Beam";
  else
    ReadOut(Call, Message, Error, Status);
  ClientID = Call.ClientID();
  ClientSecret = Call.ClientSecret();
  return Result;
}

bool PostContribution(std::string Source, TBeamContributionDetail* ContributionDetail, bool Submit,
                      std::unique_ptr<TBeamContributionResponse>& ContributionResponse, std::string& Message,
                      std::string& Error, std::string& Status) {
  Clear(Message, Error, Status);
  ContributionResponse.reset();
  TBeamPostContributionDetail Call;
  Call.SetSource(std::move(Source));
  Call.SetToken(CustomerTokenText());
  Call.SetContributionDetail(ContributionDetail);
  Call.SetSubmit(Submit);
  const bool Result = Call.MakeCall();
  if (ContributionDetail) ContributionDetail->BeamSuperLogID = Call.SuperLogID();
  ContributionResponse = Call.TakeContributionResponse();
  ReadOut(Call, Message, Error, Status);
  return Result;
}

bool GetContributionStatus(std::string Source, std::string ProcessId, std::string& ContributionStatus,
                           std::string& PaymentReferenceNumber, double& TotalAmount, std::int32_t& LogID,
                           std::string& Message, std::string& Error, std::string& Status) {
  Clear(ContributionStatus, PaymentReferenceNumber, Message, Error, Status);
  TotalAmount = 0;
  LogID = 0;
  TBeamGetContributionStatus Call;
  Call.SetSource(std::move(Source));
  Call.SetToken(CustomerTokenText());
  Call.SetProcessId(std::move(ProcessId));
  const bool Result = Call.MakeCall();
  ContributionStatus = Call.ContributionStatus();
  PaymentReferenceNumber = Call.PaymentReferenceNumber();
  TotalAmount = Call.TotalAmount();
  LogID = Call.SuperLogID();
  ReadOut(Call, Message, Error, Status);
  return Result;
}

bool PutCancelContribution(std::string Source, std::string ProcessId, std::string& Message, std::string& Error,
                           std::string& Status) {
  Clear(Message, Error, Status);
  TBeamPutCancelContribution Call;
  Call.SetSource(std::move(Source));
  Call.SetToken(CustomerTokenText());
  Call.SetProcessId(std::move(ProcessId));
  const bool Result = Call.MakeCall();
  ReadOut(Call, Message, Error, Status);
  return Result;
}

bool PostParticipantDetails(std::string Source, const TBeamParticipantDetails* ParticipantDetails, std::string& Message,
                            std::string& Error, std::string& Status, std::string& TokenForSignup) {
  Clear(Message, Error, Status, TokenForSignup);
  TBeamPostParticipantDetails Call;
  Call.SetSource(std::move(Source));
  Call.SetToken(CustomerTokenText());
  Call.SetParticipantDetails(ParticipantDetails);
  const bool Result = Call.MakeCall();
  ReadOut(Call, Message, Error, Status);
  TokenForSignup = Call.TokenForSignup();
  return Result;
}

bool GetParticipantDetails(std::string Source, std::string ParticipantNumber,
                           std::unique_ptr<TBeamParticipantDetails>& ParticipantDetails, std::string& Message,
                           std::string& Error, std::string& Status) {
  Clear(Message, Error, Status);
  ParticipantDetails.reset();
  TBeamGetParticipantDetails Call;
  Call.SetSource(std::move(Source));
  Call.SetToken(CustomerTokenText());
  Call.SetParticipantNumber(std::move(ParticipantNumber));
  const bool Result = Call.MakeCall();
  ParticipantDetails = Call.TakeParticipantDetails();
  ReadOut(Call, Message, Error, Status);
  return Result;
}

bool GetTermsAcceptances(std::string Source, std::string ParticipantNumber, std::int32_t EmployerId,
                         std::int32_t DDAuthorityId, std::unique_ptr<TBeamTermsAcceptance>& TermsAcceptance,
                         std::string& Message, std::string& Error, std::string& Status) {
  Clear(Message, Error, Status);
  TermsAcceptance.reset();
  TBeamGetTermsAcceptance Call;
  Call.SetSource(std::move(Source));
  Call.SetToken(CustomerTokenText());
  Call.SetParticipantNumber(std::move(ParticipantNumber));
  Call.SetEmployerId(EmployerId);
  Call.SetDDAuthorityId(DDAuthorityId);
  const bool Result = Call.MakeCall();
  TermsAcceptance = Call.TakeTermsAcceptance();
  ReadOut(Call, Message, Error, Status);
  return Result;
}

bool GetNotifications(std::string Source, std::string ClientParticipantNumber, std::int32_t Count,
                      std::int32_t NotificationId, std::unique_ptr<TBeamNotifications>& Notifications,
                      std::int32_t& LogID, std::string& Message, std::string& Error, std::string& Status) {
  Clear(Message, Error, Status);
  Notifications.reset();
  LogID = 0;
  TBeamGetNotifications Call;
  Call.SetSource(std::move(Source));
  const TBeamToken* Token = TBeamSuperGlobal::BeamSuperGlobal().GetCustomerToken();
  if (!Token) {
    Message = "No token obtained";
    return false;
  }
  Call.SetToken(Token->TokenString);
  Call.SetClientParticipantNumber(std::move(ClientParticipantNumber));
  Call.SetCount(Count);
  Call.SetNotificationId(NotificationId);
  const bool Result = Call.MakeCall();
  Notifications = Call.TakeNotifications();
  LogID = Call.SuperLogID();
  ReadOut(Call, Message, Error, Status);
  return Result;
}

bool GetDefaultFunds(std::string Source, std::string ParticipantNumber, std::string EmployerId,
                     std::string DefaultFundId, std::unique_ptr<TBeamDefaultFunds>& DefaultFunds, std::string& Message,
                     std::string& Error, std::string& Status) {
  Clear(Message, Error, Status);
  DefaultFunds.reset();
  TBeamGetDefaultFunds Call;
  Call.SetSource(std::move(Source));
  Call.SetToken(CustomerTokenText());
  Call.SetParticipantNumber(std::move(ParticipantNumber));
  Call.SetEmployerId(std::move(EmployerId));
  Call.SetDefaultFundId(std::move(DefaultFundId));
  const bool Result = Call.MakeCall();
  DefaultFunds = Call.TakeDefaultFunds();
  ReadOut(Call, Message, Error, Status);
  return Result;
}

bool GetSuperFunds(std::string Source, std::string SearchString, std::unique_ptr<TSuperFundSearchResult>& SearchResults,
                   std::string& Message, std::string& Error, std::string& Status) {
  Clear(Message, Error, Status);
  SearchResults.reset();
  TBeamGetFundSearch Call;
  Call.SetSource(std::move(Source));
  Call.SetToken(CustomerTokenText());
  Call.SetSearchString(std::move(SearchString));
  const bool Result = Call.MakeCall();
  SearchResults = Call.TakeSearchResults();
  ReadOut(Call, Message, Error, Status);
  return Result;
}

}  // namespace oxSuperAPI
