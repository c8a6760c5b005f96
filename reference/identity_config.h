#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/reference/config_toml.h"

namespace oxSuperAPI {

/// Who and where the host is, from the configuration and its protected files. These are read each time they are asked
/// for, so that no PIN and no secret stays in memory and a changed file counts at once.
class OXSUPERAPI_EXPORT TConfigIdentity final : public THostIdentity {
 public:
  /// `SecretsFile` holds the scrambled client secrets.
  TConfigIdentity(TIdentityConfig Config, std::string SecretsFile);

  std::uint8_t CountryCode() override { return FConfig.country_code; }
  std::string GetDomainName() override;
  std::string ComputerName() override;
  std::string ForceBeamSuperEnvironment() override { return FConfig.force_environment; }
  std::optional<std::int32_t> CurrentAgent() override { return FConfig.agent; }
  bool DisplayHTTPRequestEditor() override { return FConfig.display_request_editor; }
  bool DisplayHTTPResponseEditor() override { return FConfig.display_response_editor; }
  std::string LoginDatabaseName() override { return FConfig.login_database_name; }
  std::string CommonDatabaseName() override { return FConfig.common_database_name; }
  std::string CustomerKey() override { return FConfig.customer_key; }
  /// Raises TBeamError when the PIN's file is not private or holds anything but digits.
  std::string CustomerPIN() override;
  std::string RegisteredCompanyName() override { return FConfig.company_name; }
  std::string ScrambledClientSecret(std::string_view Channel, std::string_view Environment) override;

 private:
  TIdentityConfig FConfig;
  std::string FSecretsFile;
};

}  // namespace oxSuperAPI
