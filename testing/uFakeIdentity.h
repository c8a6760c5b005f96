#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/testing/uFault.h"

namespace oxSuperAPI {

/// Who and where the host is, in plain fields. As it stands it leads to the "Dev" environment, with a signed-in user
/// and no editors.
class TFakeIdentity : public THostIdentity {
 public:
  /// Armed by a test; an armed operation raises instead of working.
  TFaults Faults{"CountryCode",
                 "GetDomainName",
                 "ComputerName",
                 "ForceBeamSuperEnvironment",
                 "CurrentAgent",
                 "DisplayHTTPRequestEditor",
                 "DisplayHTTPResponseEditor",
                 "LoginDatabaseName",
                 "CommonDatabaseName",
                 "CustomerKey",
                 "CustomerPIN",
                 "RegisteredCompanyName",
                 "ScrambledClientSecret"};
  /// What the operations below give; read at each call. @{
  std::uint8_t Country = 5;
  std::string Domain = "UKTEST";
  std::string Computer = "PAYROLL01";
  std::string ForcedEnvironment;
  std::optional<std::int32_t> Agent = 7;
  bool ShowRequestEditor = false;
  bool ShowResponseEditor = false;
  std::string LoginDatabase = "L15001";
  std::string CommonDatabase = "15001Common";
  std::string Key = "KEY";
  std::string PIN = "2468";
  std::string Company = "Example Pty Ltd";
  /// @}

  /// By {channel, environment}. The six that exist are filled in; the plain text of {"application", "Dev"} is
  /// "secret-application-Dev", and so on.
  std::map<std::pair<std::string, std::string>, std::string> ScrambledSecrets;

  /// With the six scrambled secrets in place.
  TFakeIdentity();

  std::uint8_t CountryCode() override;
  std::string GetDomainName() override;
  std::string ComputerName() override;
  std::string ForceBeamSuperEnvironment() override;
  std::optional<std::int32_t> CurrentAgent() override;
  bool DisplayHTTPRequestEditor() override;
  bool DisplayHTTPResponseEditor() override;
  std::string LoginDatabaseName() override;
  std::string CommonDatabaseName() override;
  std::string CustomerKey() override;
  std::string CustomerPIN() override;
  std::string RegisteredCompanyName() override;
  std::string ScrambledClientSecret(std::string_view Channel, std::string_view Environment) override;
};

}  // namespace oxSuperAPI
