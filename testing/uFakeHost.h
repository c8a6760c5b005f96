#pragma once

#include <memory>
#include <string>

#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/testing/uFakeCipher.h"
#include "oxSuperAPI/testing/uFakeConnection.h"
#include "oxSuperAPI/testing/uFakeDatabase.h"
#include "oxSuperAPI/testing/uFakeEditor.h"
#include "oxSuperAPI/testing/uFakeHttp.h"
#include "oxSuperAPI/testing/uFakeIdentity.h"
#include "oxSuperAPI/testing/uFakeJsonParser.h"
#include "oxSuperAPI/testing/uFakeLog.h"
#include "oxSuperAPI/testing/uFakeSettings.h"
#include "oxSuperAPI/testing/uFakeSystem.h"
#include "oxSuperAPI/testing/uFault.h"

namespace oxSuperAPI {

/// The names of the tables that the library reads and writes. @{
inline constexpr char CredentialTableName[] = "_iptblBeamSuperCustomerIDs";
inline constexpr char LogTableName[] = "_iptblBeamSuperLog";
inline constexpr char EntitiesTableName[] = "Entities";
/// @}

/// A row of the credential table, in plain text.
struct TFakeCredentials {
  /// Invented defaults of an activated customer. @{
  std::string UCID = "{ABCDEF00-0000-4000-8000-00000000CAFE}";
  std::string Environment = "Dev";  ///< "Dev", "QA" or "Prod"
  std::string UUID = "KEY-15001";
  std::string ClientID = "client-id";
  std::string ClientSecret = "client-secret";
  std::string CustomerNumber = "15001";
  std::string PIN = "2468";
  std::string CompanyName = "Example Pty Ltd";
  std::string AcknowledgementToken = "acknowledged";
  TDateTime DateLastIssued = 45346.5;  ///< ten days before the fake clock's start
  /// @}
};

/// Where a row of credentials is kept.
enum class TFakeSide { Common, Payroll, Both };
/// Whether a fake host makes itself the host of the process.
enum class TFakeRegistration { Register, Leave };

/// A complete host in memory, for the tests of a host's authors and for our own: nothing leaves the process, nothing
/// depends on the machine, and every facility can be told to fail. Each facility can also be used on its own.
///
/// The two databases have the tables of the library (the log and Entities in the payroll database only), all empty.
/// Call `TBeamSuperGlobal::Finalize` before one fake host goes and the next one comes: tokens and credentials of the
/// library outlive a host otherwise.
class TFakeHost : public THost {
 public:
  /// Registers itself as the host of this process, and takes itself away on destruction, unless told to `Leave` that.
  explicit TFakeHost(TFakeRegistration Registration = TFakeRegistration::Register);
  ~TFakeHost() override;
  TFakeHost(const TFakeHost&) = delete;
  TFakeHost& operator=(const TFakeHost&) = delete;

  /// The facilities, to be scripted and read by a test. `Has...Connection` false: the host gives null for it. @{
  TFakeHTTP FakeHTTP;
  TFakeJSONParser FakeJSON;
  TFakeSettings FakeSettings;
  TFakeCipher FakeCipher;
  TFakeLog FakeLog;
  TFakeIdentity FakeIdentity;
  TFakeSystem FakeSystem;
  TFakeEditor FakeEditor;
  TFakeDatabase CommonDatabase;
  TFakeDatabase PayrollDatabase;
  TFakeConnection CommonConnection{CommonDatabase};
  TFakeConnection PayrollConnection{PayrollDatabase};
  bool HasCommonConnection = true;
  bool HasPayrollConnection = true;
  /// @}

  /// Faults of the host's own operations: a facility that cannot even be reached.
  TFaults Faults{
      "HTTPHelper",       "JSONParser", "Settings", "Cipher", "Log", "Identity", "System", "ADOMainCommonConnection",
      "ADOMainConnection"};

  /// Stores the customer's identifier, enciphered, where the library looks for it.
  void SetCustomerUCID(const std::string& UCID = TFakeCredentials().UCID);
  /// Adds a row, enciphered as the library does it, to the credential table of one or both databases.
  void AddCredentials(const TFakeCredentials& Credentials, TFakeSide Side = TFakeSide::Both);
  /// An activated customer with everything in its place: SetCustomerUCID and AddCredentials.
  void AddActivatedCustomer(const TFakeCredentials& Credentials = {});

  /// Tables of the databases above; EntitiesTable and LogTable are in the payroll database. `Both` raises. @{
  TFakeTable& CredentialTable(TFakeSide Side);
  TFakeTable& LogTable() { return PayrollDatabase.Table(LogTableName); }
  TFakeTable& EntitiesTable() { return PayrollDatabase.Table(EntitiesTableName); }
  /// @}

  THTTPHelper& HTTPHelper() override;
  TJSONParser& JSONParser() override;
  THostSettings& Settings() override;
  THostCipher& Cipher() override;
  THostLog& Log() override;
  THostIdentity& Identity() override;
  THostSystem& System() override;
  TADOConnection* ADOMainCommonConnection() override;
  TADOConnection* ADOMainConnection() override;
  std::unique_ptr<TfrmResponseEditor> CreateResponseEditor(TEditorKind Kind) override;

 private:
  bool FRegistered;
};

}  // namespace oxSuperAPI
