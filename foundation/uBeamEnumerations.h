#pragma once

#include <cstdint>

#include "oxSuperAPI/foundation/uBeamTable.h"
#include "oxSuperAPI/generated/uBeamHosts.h"

/// The closed vocabularies that the whole library shares, and their texts. Ordinals are compared and stored and most
/// texts are sent or stored: neither may change.
namespace oxSuperAPI {

/// The HTTP verb of a call, as the call log names it.
enum class TBeamCallMethod : std::uint8_t { bcmPost, bcmGet, bcmPut, bcmDelete, bcmUpdate };

/// Whether the service is offered to this customer at all.
enum class TBeamSuperEnabled : std::uint8_t { bseUnknown, bseYes, bseNo, bseSuspended };

/// How far the customer has come: from no service through activation to expired credentials.
enum class TBeamSuperStatus : std::uint8_t {
  bssUnknown,
  bssNotEnabled,
  bssEnabled,
  bssActivated,
  bssNearlyExpired,
  bssExpired
};

/// Which installation of the service is addressed; undecided until the host has been asked.
enum class TBeamSuperEnvironment : std::uint8_t { bsenvUnknown, bsenvIntgDev, bsenvAcptQa, bsenvProdLive };

/// How the employer pays a batch.
enum class TBeamSuperPaymentMethod : std::uint8_t { bspmDC, bspmDD, bspmBPay, bspmPayID, bspmOther };

/// The stages of a batch as a host stores them, by ordinal.
enum class TBeamSuperAction : std::uint8_t {
  bsaCreated,
  bsaValidated,
  bsaHasErrors,
  bsaSubmitted,
  bsaAwaitingPayment,
  bsaAwaitingClearance,
  bsaReconciled,
  bsaSentToFund,
  bsaSentToFundWithRefund,
  bsaCancelled,
  bsaRefunded,
  bsaUnknown,  // not at an end of the list: its ordinal 11 is stored
  bsaMarkedAsProcessed
};

/// The mark on a line of a batch.
enum class TBeamSuperTransError : std::uint8_t { bsteNone, bsteError, bsteMoved };

/// For which of the service's channels a token was issued.
enum class TBeamSuperTokenChannel : std::uint8_t { bstcNone, bstcAdmin, bstcCustomer, bstcApp };

/// An outcome with a third value for a raised error.
enum class TBeamSuperResult : std::uint8_t { bsrFalse, bsrTrue, bsrException };

/// How the credentials in the common database compare with those in the payroll database.
enum class TBeamSuperCredentialsState : std::uint8_t {
  bscsNone,
  bscsCommonOnly,
  bscsPayrollOnly,
  bscsPayrollNewer,
  bscsSame,
  bscsCommonNewer
};

/// The payroll application that loads the library.
enum class TPayrollProduct : std::uint8_t { ppKestrel, ppOsprey };

/// Names of the methods in the call log. `bcmUpdate` is "Patch" on the wire: name and verb differ.
inline constexpr TBeamTable<TBeamCallMethod, 5> TBeamMethodString{{"Post", "Get", "Put", "Delete", "Patch"}};

/// For screens and logs.
inline constexpr TBeamTable<TBeamSuperEnabled, 4> TTBeamSuperAvailable{{"Unknown", "Yes", "No", "Suspended"}};

/// For screens and logs.
inline constexpr TBeamTable<TBeamSuperStatus, 6> TTBeamSuperStatusString{
    {"Unknown", "Not Enabled", "Enabled", "Activated", "Nearly Expired", "Expired"}};

/// Stored, enciphered, in the credential table: part of the stored format.
inline constexpr TBeamTable<TBeamSuperEnvironment, 4> TBeamSuperEnvironmentString{{"Unknown", "Dev", "QA", "Prod"}};

/// For screens and logs.
inline constexpr TBeamTable<TBeamSuperPaymentMethod, 5> TBeamSuperPaymentMethodString{
    {"Direct Credit (EFT/DC)", "Direct Debit (DD)", "BPay", "PayID", "Pass Through"}};

/// The service's names. `bspmOther` is shown as "Pass Through" and sent as "PASS_THROUGH".
inline constexpr TBeamTable<TBeamSuperPaymentMethod, 5> TBeamSuperAPIPaymentMethodString{
    {"DIRECT_CREDIT", "DIRECT_DEBIT", "BPAY", "PAYID", "PASS_THROUGH"}};

/// "Marked as Processed" has a lower-case "as", unlike the others.
inline constexpr TBeamTable<TBeamSuperAction, 13> TBeamSuperActionString{
    {"Created", "Validated", "Has Errors", "Submitted", "Awaiting Payment", "Awaiting Clearance", "Reconciled",
     "Sent To Fund", "Sent To Fund With Refund", "Cancelled", "Refunded", "Unknown", "Marked as Processed"}};

/// For screens; a line without an error has no mark.
inline constexpr TBeamTable<TBeamSuperTransError, 3> TBeamSuperTransErrorString{{"", "Error", "Moved"}};

/// The products as people know them.
inline constexpr TBeamTable<TPayrollProduct, 2> TPayrollProductStrings{{"Kestrel", "Osprey"}};

/// Base of every request's URL, without a trailing slash. An undecided environment has a prompt instead of an address.
inline constexpr TBeamTable<TBeamSuperEnvironment, 4> BaseBeamURL{
    {"select an environment", "https://" OXSUPERAPI_API_HOST_DEV, "https://" OXSUPERAPI_API_HOST_QA,
     "https://" OXSUPERAPI_API_HOST_PROD}};

/// A customer's access token is appended to open the participant sign-up portal signed in.
inline constexpr TBeamTable<TBeamSuperEnvironment, 4> BaseBeamSignUpUrl{
    {"select an environment", "https://" OXSUPERAPI_PORTAL_HOST_DEV "/#access_token=",
     "https://" OXSUPERAPI_PORTAL_HOST_QA "/#access_token=", "https://" OXSUPERAPI_PORTAL_HOST_PROD "/#access_token="}};

/// For the host to set; the library neither reads nor writes it.
OXSUPERAPI_EXPORT extern TPayrollProduct BeamPayrollProduct;

static_assert(static_cast<int>(TBeamSuperAction::bsaUnknown) == 11);
static_assert(static_cast<int>(TBeamSuperAction::bsaMarkedAsProcessed) == 12);

using enum TBeamCallMethod;
using enum TBeamSuperEnabled;
using enum TBeamSuperStatus;
using enum TBeamSuperEnvironment;
using enum TBeamSuperPaymentMethod;
using enum TBeamSuperAction;
using enum TBeamSuperTransError;
using enum TBeamSuperTokenChannel;
using enum TBeamSuperResult;
using enum TBeamSuperCredentialsState;
using enum TPayrollProduct;

}  // namespace oxSuperAPI
