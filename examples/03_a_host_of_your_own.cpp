// 03: a whole host in one file. What is the application's own is written out; JSON, databases and cipher come from the
// reference host's adapters, each of which is usable on its own. Its HTTP client answers by itself, so that the example
// runs without a service: put your own there, or the reference host's THTTPCurl.
#include <iostream>
#include <map>

#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/reference/cipher_openssl.h"
#include "oxSuperAPI/reference/db_sqlite.h"
#include "oxSuperAPI/reference/json_rapidjson.h"
#include "oxSuperAPI/reference/schema.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"

using namespace oxSuperAPI;

namespace {

// Blocking, and at most one request a call. Raise when no complete answer came.
class MyHTTP : public THTTPHelper {
 public:
  std::int32_t httpNetGet(const std::string&, const TStringList&, TStringList&, TStringList& Response) override {
    Response.SetText(R"({"status":"UP"})");
    return 200;
  }
  std::int32_t httpNetPost(const std::string& URL, const TStringList&, const TStringList&, TStringList&,
                           TStringList& Response) override {
    const bool IsToken = URL.ends_with("/auth/token");
    Response.SetText(IsToken ? R"({"access_token":"abc","expires_in":"3599"})" : R"({"message":"not here"})");
    return IsToken ? 200 : 404;
  }
  std::int32_t httpNetPut(const std::string&, const TStringList&, const TStringList&, TStringList&,
                          TStringList&) override {
    return 404;
  }
};

class MySettings : public THostSettings {
 public:
  std::string GetCurrentSystemValue(const std::string& Name, const std::string& Default, bool) override {
    const auto Found = FValues.find(Name);
    return Found == FValues.end() ? Default : Found->second;
  }
  void SetCurrentSystemValue(const std::string& Name, const std::string& Value, bool) override {
    FValues[Name] = Value;
  }

 private:
  std::map<std::string, std::string> FValues;
};

class MyLog : public THostLog {
 public:
  void AddToLog(const std::string& Text, int Kind, TLogSeverity Severity) override {
    std::cout << "[" << Kind << "/" << static_cast<int>(Severity) << "] " << Text << '\n';
  }
};

class MyIdentity : public THostIdentity {
 public:
  std::uint8_t CountryCode() override { return 5; }
  std::string GetDomainName() override { return "UK.example"; }  // leads to the development environment
  std::string ComputerName() override { return "PAYROLL01"; }
  std::string ForceBeamSuperEnvironment() override { return ""; }
  std::optional<std::int32_t> CurrentAgent() override { return 1; }
  std::string LoginDatabaseName() override { return "Login"; }
  std::string CommonDatabaseName() override { return "Common"; }
  std::string CustomerKey() override { return "KEY"; }
  std::string CustomerPIN() override { return "2468"; }
  std::string RegisteredCompanyName() override { return "Example Pty Ltd"; }
  std::string ScrambledClientSecret(std::string_view, std::string_view) override { return ""; }
};

class MyHost : public THost {
 public:
  MyHost() {
    CreateSchema(FCommon, TDatabaseRole::Common);
    CreateSchema(FPayroll, TDatabaseRole::Payroll);
  }

  THTTPHelper& HTTPHelper() override { return FHTTP; }
  TJSONParser& JSONParser() override { return FJSON; }
  THostSettings& Settings() override { return FSettings; }
  THostCipher& Cipher() override { return FCipher; }
  THostLog& Log() override { return FLog; }
  THostIdentity& Identity() override { return FIdentity; }
  THostSystem& System() override { return FSystem; }
  TADOConnection* ADOMainCommonConnection() override { return &FCommon; }
  TADOConnection* ADOMainConnection() override { return &FPayroll; }

 private:
  MyHTTP FHTTP;
  TJSONRapidJson FJSON;
  MySettings FSettings;
  TOpenSSLCipher FCipher{TCipherKey::Random()};  // keep yours in a file: what it enciphered is lost without it
  MyLog FLog;
  MyIdentity FIdentity;
  THostSystem FSystem;
  TSQLiteConnection FCommon = TSQLiteConnection::InMemory();
  TSQLiteConnection FPayroll = TSQLiteConnection::InMemory();
};

}  // namespace

int main() {
  MyHost Application;
  RegisterHost(&Application);

  TBeamSuperCredentials& Credentials = TBeamSuperGlobal::BeamSuperCredentials();
  Credentials.ClientID = "client";  // as ActivateCustomer would obtain them
  Credentials.ClientSecret = "secret";
  Credentials.DateLastIssued = Now();
  Credentials.Save();

  std::string Message, Error, Status;
  const bool Reached = GetHealthCheck("example 03", Message, Error, Status);
  std::cout << "reached: " << Reached << ", status " << Status << ", customer "
            << TTBeamSuperStatusString[TBeamSuperGlobal::BeamSuperGlobal().GetBeamSuperStatus()] << '\n';

  TBeamSuperGlobal::Finalize();
  RegisterHost(nullptr);
  return Reached ? 0 : 1;
}
