#pragma once

#include <memory>
#include <string>

#include "oxSuperAPI/foundation/uBeamEnumerations.h"
#include "oxSuperAPI/session/uBeamSuperCredentials.h"
#include "oxSuperAPI/session/uBeamToken.h"

namespace oxSuperAPI {

/// The process-wide state: environment, availability and status of the service, the customer's identifier, the cached
/// tokens and the credentials. Made on first use, freed by `Finalize` alone. For one thread and one company: call
/// `Finalize` before the host switches to another company.
///
/// The host may call back into it, `SetOptedIn` and `Finalize` included, from any of its own facilities.
class OXSUPERAPI_EXPORT TBeamSuperGlobal : public std::enable_shared_from_this<TBeamSuperGlobal> {
 public:
  /// The single instance, made on the first call.
  static TBeamSuperGlobal& BeamSuperGlobal();
  /// Frees tokens, credentials and the instance. Call it before the library is unloaded.
  static void Finalize();

  /// The process-wide credentials. The first call loads them for the current customer; later ones return them as they
  /// stand. Owned by the library, valid until `Finalize`. Raises as `TBeamSuperCredentials::Load`; credentials that
  /// could not be loaded the first time are not kept.
  static TBeamSuperCredentials& BeamSuperCredentials();
  /// The same, loaded anew for the customer `pUCID` ("" for the current one).
  static TBeamSuperCredentials& BeamSuperCredentials(std::string pUCID);

  /// Development outside the service's country; elsewhere by the rule of domain, computer name and forced setting,
  /// decided once.
  TBeamSuperEnvironment GetBeamSuperEnvironment();
  /// By the host's country alone, decided once: bseYes or bseNo. @{
  TBeamSuperEnabled GetBeamSuperEnabled();
  bool GetIsBeamSuperEnabled() { return GetBeamSuperEnabled() == bseYes; }
  /// @}

  /// Decided afresh on each call from the settings and the common database, whose errors pass on. Changes no
  /// setting and no row. A row without a client id leaves the status of the last call.
  TBeamSuperStatus GetBeamSuperStatus();
  /// Activated, and the credentials not expired: `GetBeamSuperStatus` asked anew, whose errors pass on.
  bool GetIsBeamSuperActive();

  /// The company's stored choice, read from the host at each call.
  bool GetOptedIn();
  /// Stores the choice and drops the application and the customer token; the status is unknown until it is decided
  /// anew.
  void SetOptedIn(bool pValue);

  /// The customer's identifier; made and stored, enciphered, when the company has none. "" outside the country.
  std::string GetCustomerUCID();
  /// Always true: kept for hosts that ask.
  bool GetStoreCredentialsInDB() const { return true; }

  /// The token of a channel: the cached one while it is good, else a fetched one. After a failed fetch an empty token
  /// that is stale from birth, so that the next request tries again; the reason stands in the last-call texts. Null
  /// only when the host dropped the token while it was being fetched. Owned by the library; ask again for each use.
  /// Raises when the token call, or loading the credentials, does. @{
  TBeamToken* GetAppToken();
  TBeamToken* GetAdminToken();
  TBeamToken* GetCustomerToken();
  /// @}

  /// Texts of the last token call. `LastAPICallStatus` holds the message; `LastAPICallMessage` holds the status, or on
  /// the administrator channel "GetAdminToken " and the message: kept, hosts show them so. @{
  const std::string& LastAPICallMessage() const { return FLastAPICallMessage; }
  const std::string& LastAPICallStatus() const { return FLastAPICallStatus; }
  const std::string& LastAPICallError() const { return FLastAPICallError; }
  /// @}

  /// Obtains the customer's first client credentials and stores them. True also when the health check shows that the
  /// customer is active already. `pMessage` receives the outcome for people. `pSource` is reserved: both requests of an
  /// activation carry "BeamSuperGlobal.ActivateCustomer" in the call log. Raises as Load, Save and the calls do.
  bool ActivateCustomer(std::string pSource, std::string& pMessage);
  /// Exchanges the client credentials of an activated customer and stores the new pair.
  bool ReissueCredentials(std::string pSource, std::string& pMessage);

  /// The instance, or null. Exported for hosts that must know without creating it.
  static TBeamSuperGlobal* FBeamSuperGlobal;

  ~TBeamSuperGlobal();

 private:
  friend class TBeamToken;
  friend class TBeamSuperCredentials;
  using TTokenSlot = std::unique_ptr<TBeamToken> TBeamSuperGlobal::*;
  struct TClientChannel;

  TBeamSuperGlobal() = default;
  void Release();

  // Tokens.
  TBeamToken* ValidToken(TTokenSlot Slot);
  TBeamToken* FetchClientToken(const TClientChannel& Channel);
  static TBeamToken* PutStaleToken(TTokenSlot Slot, TBeamSuperTokenChannel Channel);
  static TBeamToken* FetchToken(TTokenSlot Slot, const std::string& ClientID, const std::string& ClientSecret,
                                const std::string& Source, bool AdminTexts);
  void ForgetToken(TBeamToken& Dying);

  // Credentials.
  static std::shared_ptr<TBeamSuperCredentials> LoadCredentials(const std::string& pUCID);
  static TBeamSuperCredentials& ProcessWideCredentials();
  static bool IsProcessWide(const TBeamSuperCredentials& Credentials);

  // Activation.
  static std::string FindCustomerNumber();

  std::unique_ptr<TBeamToken> FBeamSuperCustomerToken;
  std::unique_ptr<TBeamToken> FBeamSuperAppToken;
  std::unique_ptr<TBeamToken> FBeamSuperAdminToken;
  TBeamSuperEnvironment FBeamSuperEnvironment = bsenvUnknown;
  TBeamSuperStatus FBeamSuperStatus = bssUnknown;
  TBeamSuperEnabled FBeamSuperEnabled = bseUnknown;
  std::string FBeamSuperCustomerUCID;
  std::string FLastAPICallMessage;
  std::string FLastAPICallStatus;
  std::string FLastAPICallError;

  std::shared_ptr<TBeamSuperCredentials> FCredentials;
  std::shared_ptr<TBeamSuperGlobal> FSelf;  // what Finalize lets go; calls in progress hold on until they return
};

}  // namespace oxSuperAPI
