#include "oxSuperAPI/reference/identity_config.h"

#include <utility>

#include "oxSuperAPI/reference/private_file.h"
#include "oxSuperAPI/reference/secrets_toml.h"
#include "oxSuperAPI/reference/system_linux.h"

namespace oxSuperAPI {

TConfigIdentity::TConfigIdentity(TIdentityConfig Config, std::string SecretsFile)
    : FConfig(std::move(Config)), FSecretsFile(std::move(SecretsFile)) {}

std::string TConfigIdentity::GetDomainName() {
  return FConfig.domain.empty() ? MachineDomain() : FConfig.domain;
}

std::string TConfigIdentity::ComputerName() {
  return FConfig.computer.empty() ? MachineName() : FConfig.computer;
}

std::string TConfigIdentity::CustomerPIN() {
  const bool InFile = !FConfig.customer_pin_file.empty();
  std::string PIN =
      InFile ? ReadPrivateFile(FConfig.customer_pin_file.string(), "PIN file", 100) : FConfig.customer_pin;
  while (InFile && (PIN.ends_with('\n') || PIN.ends_with('\r'))) PIN.pop_back();
  if (PIN.find_first_not_of("0123456789") != std::string::npos)
    throw TBeamError("The customer's PIN has to consist of digits alone: correct it in " +
                     (InFile ? FConfig.customer_pin_file.string() : "the configuration (identity.customer_pin)"));
  return PIN;
}

std::string TConfigIdentity::ScrambledClientSecret(std::string_view Channel, std::string_view Environment) {
  return ReadScrambledSecret(FSecretsFile, Channel, Environment);
}

}  // namespace oxSuperAPI
