#pragma once

#include <memory>
#include <string>

#include "oxSuperAPI/foundation/uBeamEnumerations.h"
#include "oxSuperAPI/host/uHostDatabase.h"

namespace oxSuperAPI {

/// One customer's client credentials for the current environment, kept enciphered in `_iptblBeamSuperCustomerIDs` of
/// the common and of the payroll database. A row is identified by the enciphered pair of identifier and environment.
class OXSUPERAPI_EXPORT TBeamSuperCredentials : public std::enable_shared_from_this<TBeamSuperCredentials> {
 public:
  /// Empty; nothing is read.
  TBeamSuperCredentials() = default;
  /// Loads at once, as `Load(pUCID)`.
  explicit TBeamSuperCredentials(std::string pUCID);

  /// In plain text; enciphered only in the databases. `DateLastIssued` is local time, 0 for never. Secrets: never for a
  /// log. @{
  std::string UCID;
  std::string UUID;
  std::string ClientID;
  std::string ClientSecret;
  std::string CustomerNumber;
  std::string PIN;
  std::string CompanyName;
  std::string AcknowledgementToken;  ///< the one text that is stored as it is
  TDateTime DateLastIssued = 0;
  /// @}

  /// Reads the newer of the two copies and brings the other one up to date; "" stands for the current customer, whose
  /// identifier is created if there is none. Without a row the fields are cleared and `UCID` stays. Credentials that
  /// are older than six months are reissued on the way, when this is the process-wide object.
  ///
  /// Any error once the databases are asked is written to the host log and raised as TBeamError "Unable to load the
  /// credentials to call Super Clearing APIs"; an error while the identifier is determined passes on as it is. Fields
  /// read before it, and `UCID` always, keep their new values.
  void Load(std::string pUCID);

  /// Writes both databases. Any error is written to the host log and raised as TBeamError "Error saving Super Clearing
  /// Credentials"; the common database may then be written already.
  void Save();

  /// Both halves of the pair are there.
  bool GetActivated() const { return !ClientID.empty() && !ClientSecret.empty(); }
  /// Last issued more than two years ago: only a new registration helps.
  bool GetIsExpired() const;
  /// Always true, whatever `DateLastIssued` says: kept for hosts that ask. The real test is the six-month rule of
  /// `Load`.
  bool GetNeedsReIssuing() const;

 private:
  void LoadFromDatabases();
  void ReadFrom(const TADOQuery& Row);
  bool ReissueIfOld();
  void CopyTo(TADOQuery& Target, const TDBStatement& Key) const;
  TDBStatement SaveStatement() const;
};

}  // namespace oxSuperAPI
