#include "oxSuperAPI/testing/uFakeIdentity.h"

#include "oxSuperAPI/testing/uFakeCipher.h"

namespace oxSuperAPI {

TFakeIdentity::TFakeIdentity() {
  for (const std::string Channel : {"application", "administrator"})
    for (const std::string Environment : {"Dev", "QA", "Prod"})
      ScrambledSecrets[{Channel, Environment}] = TFakeCipher::Scramble("secret-" + Channel + "-" + Environment);
}

std::uint8_t TFakeIdentity::CountryCode() {
  Faults.Check("CountryCode");
  return Country;
}
std::string TFakeIdentity::GetDomainName() {
  Faults.Check("GetDomainName");
  return Domain;
}
std::string TFakeIdentity::ComputerName() {
  Faults.Check("ComputerName");
  return Computer;
}
std::string TFakeIdentity::ForceBeamSuperEnvironment() {
  Faults.Check("ForceBeamSuperEnvironment");
  return ForcedEnvironment;
}
std::optional<std::int32_t> TFakeIdentity::CurrentAgent() {
  Faults.Check("CurrentAgent");
  return Agent;
}
bool TFakeIdentity::DisplayHTTPRequestEditor() {
  Faults.Check("DisplayHTTPRequestEditor");
  return ShowRequestEditor;
}
bool TFakeIdentity::DisplayHTTPResponseEditor() {
  Faults.Check("DisplayHTTPResponseEditor");
  return ShowResponseEditor;
}
std::string TFakeIdentity::LoginDatabaseName() {
  Faults.Check("LoginDatabaseName");
  return LoginDatabase;
}
std::string TFakeIdentity::CommonDatabaseName() {
  Faults.Check("CommonDatabaseName");
  return CommonDatabase;
}
std::string TFakeIdentity::CustomerKey() {
  Faults.Check("CustomerKey");
  return Key;
}
std::string TFakeIdentity::CustomerPIN() {
  Faults.Check("CustomerPIN");
  return PIN;
}
std::string TFakeIdentity::RegisteredCompanyName() {
  Faults.Check("RegisteredCompanyName");
  return Company;
}
std::string TFakeIdentity::ScrambledClientSecret(std::string_view Channel, std::string_view Environment) {
  Faults.Check("ScrambledClientSecret");
  const auto Found = ScrambledSecrets.find({std::string(Channel), std::string(Environment)});
  return Found == ScrambledSecrets.end() ? "" : Found->second;
}

}  // namespace oxSuperAPI
