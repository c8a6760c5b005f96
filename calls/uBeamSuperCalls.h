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
/// One request leaves at most; nothing is retried. A transport or program error is logged and raised as TBeamError; all
/// out arguments then stay cleared, and whether the request arrived is not known to the library.
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

}  // namespace oxSuperAPI
