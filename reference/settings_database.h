#pragma once

#include <string>

#include "oxSuperAPI/host/uHost.h"

namespace oxSuperAPI {

/// The per-company settings in the table HostSettings of the payroll database.
class OXSUPERAPI_EXPORT TDatabaseSettings final : public THostSettings {
 public:
  /// The connection is borrowed.
  explicit TDatabaseSettings(TADOConnection& Connection) : FConnection(Connection) {}

  std::string GetCurrentSystemValue(const std::string& Name, const std::string& Default, bool Flag) override;
  void SetCurrentSystemValue(const std::string& Name, const std::string& Value, bool Flag) override;

 private:
  TADOConnection& FConnection;
};

}  // namespace oxSuperAPI
