#include "oxSuperAPI/testing/uFakeHost.h"

namespace oxSuperAPI {

namespace {

void AddCredentialTable(TFakeDatabase& Database) {
  Database.AddTable(CredentialTableName,
                    {{"cUCID"},
                     {"cUUID"},
                     {"cClientID"},
                     {"cClientSecret"},
                     {"cCustomerNumber"},
                     {"cPIN"},
                     {"cCompanyName"},
                     {"cAcknowledgementToken"},
                     {"cEnvironment"},
                     {"dDateLastIssued", TFakeColumnKind::DateTime}},
                    {"cUCID", "cEnvironment"});
}

void AddLogTable(TFakeDatabase& Database) {
  Database.AddTable(LogTableName, {{"idBeamSuperLog", TFakeColumnKind::Identity},
                                   {"cSource", TFakeColumnKind::Text, 100},
                                   {"cURL"},
                                   {"cMethod"},
                                   {"iAgentID", TFakeColumnKind::Integer},
                                   {"cRequestHeader"},
                                   {"cRequestBody"},
                                   {"cResponse"},
                                   {"cLogDetails"},
                                   {"cStatus", TFakeColumnKind::Text, 3}});
}

}  // namespace

TFakeHost::TFakeHost(TFakeRegistration Registration) : FRegistered(Registration == TFakeRegistration::Register) {
  AddCredentialTable(CommonDatabase);
  AddCredentialTable(PayrollDatabase);
  AddLogTable(PayrollDatabase);
  PayrollDatabase.AddTable(EntitiesTableName, {{"cSTPGatewayUsername"}, {"cClientNumber"}});
  if (FRegistered) RegisterHost(this);
}

TFakeHost::~TFakeHost() {
  if (!FRegistered) return;
  try {
    if (&Host() == this) RegisterHost(nullptr);
  } catch (const TBeamError&) {
    // Somebody took it away already.
  }
}

void TFakeHost::SetCustomerUCID(const std::string& UCID) {
  FakeSettings.Values["BeamSuperUCID"] = TFakeCipher::Encipher(UCID);
}

void TFakeHost::AddCredentials(const TFakeCredentials& Credentials, TFakeSide Side) {
  const auto AddTo = [&](TFakeSide One) {
    CredentialTable(One).Add({{"cUCID", TFakeCipher::Encipher(Credentials.UCID)},
                              {"cEnvironment", TFakeCipher::Encipher(Credentials.Environment)},
                              {"cUUID", TFakeCipher::Encipher(Credentials.UUID)},
                              {"cClientID", TFakeCipher::Encipher(Credentials.ClientID)},
                              {"cClientSecret", TFakeCipher::Encipher(Credentials.ClientSecret)},
                              {"cCustomerNumber", TFakeCipher::Encipher(Credentials.CustomerNumber)},
                              {"cPIN", TFakeCipher::Encipher(Credentials.PIN)},
                              {"cCompanyName", TFakeCipher::Encipher(Credentials.CompanyName)},
                              {"cAcknowledgementToken", Credentials.AcknowledgementToken},
                              {"dDateLastIssued", Credentials.DateLastIssued}});
  };
  if (Side != TFakeSide::Payroll) AddTo(TFakeSide::Common);
  if (Side != TFakeSide::Common) AddTo(TFakeSide::Payroll);
}

void TFakeHost::AddActivatedCustomer(const TFakeCredentials& Credentials) {
  SetCustomerUCID(Credentials.UCID);
  AddCredentials(Credentials);
}

TFakeTable& TFakeHost::CredentialTable(TFakeSide Side) {
  if (Side == TFakeSide::Both) throw TBeamError("The credential table of one database is meant, not of both");
  return (Side == TFakeSide::Common ? CommonDatabase : PayrollDatabase).Table(CredentialTableName);
}

THTTPHelper& TFakeHost::HTTPHelper() {
  Faults.Check("HTTPHelper");
  return FakeHTTP;
}
TJSONParser& TFakeHost::JSONParser() {
  Faults.Check("JSONParser");
  return FakeJSON;
}
THostSettings& TFakeHost::Settings() {
  Faults.Check("Settings");
  return FakeSettings;
}
THostCipher& TFakeHost::Cipher() {
  Faults.Check("Cipher");
  return FakeCipher;
}
THostLog& TFakeHost::Log() {
  Faults.Check("Log");
  return FakeLog;
}
THostIdentity& TFakeHost::Identity() {
  Faults.Check("Identity");
  return FakeIdentity;
}
THostSystem& TFakeHost::System() {
  Faults.Check("System");
  return FakeSystem;
}
TADOConnection* TFakeHost::ADOMainCommonConnection() {
  Faults.Check("ADOMainCommonConnection");
  return HasCommonConnection ? &CommonConnection : nullptr;
}
TADOConnection* TFakeHost::ADOMainConnection() {
  Faults.Check("ADOMainConnection");
  return HasPayrollConnection ? &PayrollConnection : nullptr;
}
std::unique_ptr<TfrmResponseEditor> TFakeHost::CreateResponseEditor(TEditorKind Kind) {
  return FakeEditor.Create(Kind);
}

}  // namespace oxSuperAPI
