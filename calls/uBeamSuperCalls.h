#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "oxSuperAPI/model/uBeamSuperObjects.h"
#include "oxSuperAPI/session/uBeamToken.h"

/// The facades: one function per request, for the host.
///
/// For all of them: `Source` names the calling routine in the call log. Texts come in by value and go out through
/// references, which are cleared first, so one variable may serve as both. `Message`, `Error` and `Status` are the
/// service's texts, or the report of what kept the request from being sent. True means HTTP status 200, unless said
/// otherwise. Result objects belong to the host and are null when there is none.
///
/// At most one request of its own leaves; before it a token may be fetched, and old credentials reissued. Nothing is
/// retried. A transport or program error is logged and raised as TBeamError with one fixed text; all out arguments then
/// stay cleared, and whether the request arrived is not known to the library. Errors before the request is ready, while
/// credentials are loaded or the body is made, pass on as they are: nothing was sent.
namespace oxSuperAPI {

/// Is the service there, and does it accept the customer's token?
OXSUPERAPI_EXPORT bool GetHealthCheck(std::string Source, std::string& Message, std::string& Error,
                                      std::string& Status);

/// Fetches a token with the client-credentials grant and fills `BeamToken`, which stays the caller's and may be null.
/// An answer other than 200 leaves it untouched. `Message` is "Token generated", or several lines that say why not.
OXSUPERAPI_EXPORT bool GetBeamToken(std::string ClientID, std::string ClientSecret, std::string Source,
                                    TBeamToken* BeamToken, std::string& Message, std::string& Error,
                                    std::string& Status);

/// Registers a customer with the service (administrator token). The company name is cut to 50 characters.
OXSUPERAPI_EXPORT bool PostRegisterCustomer(std::string UUID, std::string CustomerNumber, std::string CompanyName,
                                            std::string PIN, std::string Source, std::string& Message,
                                            std::string& Error, std::string& Status);

/// Activates a registered customer (application token), or with `Reissue` exchanges its client credentials (customer
/// token). Mind the order: company name before PIN. A 400 answer has one fixed message.
OXSUPERAPI_EXPORT bool PostActivateCustomer(bool Reissue, std::string UUID, std::string CustomerNumber,
                                            std::string CompanyName, std::string PIN, std::string Source,
                                            std::string& Message, std::string& Error, std::string& Status,
                                            std::string& ClientID, std::string& ClientSecret);

/// Validates a contribution batch, or with `Submit` submits it. The batch, which may be null and stays the caller's, is
/// stamped with a new message identifier and the UTC time, and receives the key of its log row.
/// A submission answered with 400 returns true: look at the response's validations to tell success from refusal.
OXSUPERAPI_EXPORT bool PostContribution(std::string Source, TBeamContributionDetail* ContributionDetail, bool Submit,
                                        std::unique_ptr<TBeamContributionResponse>& ContributionResponse,
                                        std::string& Message, std::string& Error, std::string& Status);

/// The state of a batch; `TotalAmount` in dollars; `LogID` is the key of the log row.
OXSUPERAPI_EXPORT bool GetContributionStatus(std::string Source, std::string ProcessId, std::string& ContributionStatus,
                                             std::string& PaymentReferenceNumber, double& TotalAmount,
                                             std::int32_t& LogID, std::string& Message, std::string& Error,
                                             std::string& Status);

/// Cancels a batch.
OXSUPERAPI_EXPORT bool PutCancelContribution(std::string Source, std::string ProcessId, std::string& Message,
                                             std::string& Error, std::string& Status);

/// Sends the participant, the sign-up data of the customer. The participant stays the caller's; null, or one without a
/// client participant number, is not sent. `TokenForSignup` receives the "token" of the answer.
OXSUPERAPI_EXPORT bool PostParticipantDetails(std::string Source, const TBeamParticipantDetails* ParticipantDetails,
                                              std::string& Message, std::string& Error, std::string& Status,
                                              std::string& TokenForSignup);

/// Reads the participant back. The details come with every JSON answer, an error's included: look at the result first.
OXSUPERAPI_EXPORT bool GetParticipantDetails(std::string Source, std::string ParticipantNumber,
                                             std::unique_ptr<TBeamParticipantDetails>& ParticipantDetails,
                                             std::string& Message, std::string& Error, std::string& Status);

/// Who accepted the terms of an employer or of a direct-debit authority, by the service's id; of the participant when
/// both ids are below 1. Two ids at once are refused. The terms come with every JSON answer, an error's included.
OXSUPERAPI_EXPORT bool GetTermsAcceptances(std::string Source, std::string ParticipantNumber, std::int32_t EmployerId,
                                           std::int32_t DDAuthorityId,
                                           std::unique_ptr<TBeamTermsAcceptance>& TermsAcceptance, std::string& Message,
                                           std::string& Error, std::string& Status);

/// The notifications of a participant ("" for all of the customer's), at most `Count` (500 when it is below 1).
/// `NotificationId` is sent as it is, 0 included. `LogID` is the key of the log row, for the list's `BeamSuperLogID`.
OXSUPERAPI_EXPORT bool GetNotifications(std::string Source, std::string ClientParticipantNumber, std::int32_t Count,
                                        std::int32_t NotificationId, std::unique_ptr<TBeamNotifications>& Notifications,
                                        std::int32_t& LogID, std::string& Message, std::string& Error,
                                        std::string& Status);

/// Always raises TBeamError once the customer token is there: no request of its own, no log row. Kept: the request that
/// would be sent (a post, its path behind a question mark) is none that the service knows.
OXSUPERAPI_EXPORT bool GetDefaultFunds(std::string Source, std::string ParticipantNumber, std::string EmployerId,
                                       std::string DefaultFundId, std::unique_ptr<TBeamDefaultFunds>& DefaultFunds,
                                       std::string& Message, std::string& Error, std::string& Status);

/// Searches the register of funds. `SearchString` becomes part of the URL as it stands.
OXSUPERAPI_EXPORT bool GetSuperFunds(std::string Source, std::string SearchString,
                                     std::unique_ptr<TSuperFundSearchResult>& SearchResults, std::string& Message,
                                     std::string& Error, std::string& Status);

}  // namespace oxSuperAPI
