#pragma once

#include <map>
#include <string>
#include <vector>

#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/testing/uFault.h"

namespace oxSuperAPI {

/// Settings in a map, with a record of how they were asked for and written.
class TFakeSettings : public THostSettings {
 public:
  /// One read or write.
  struct TAccess {
    /// The arguments. @{
    std::string Name;
    std::string Value;  ///< the value written, or the default of a read
    bool Flag = false;
    /// @}
  };

  /// Armed by a test; an armed operation raises instead of working.
  TFaults Faults{"GetCurrentSystemValue", "SetCurrentSystemValue"};
  /// What is stored, by exact name; a test may fill it directly.
  std::map<std::string, std::string> Values;
  /// Every access in order. @{
  std::vector<TAccess> Reads;
  std::vector<TAccess> Writes;
  /// @}

  std::string GetCurrentSystemValue(const std::string& Name, const std::string& Default, bool Flag) override;
  void SetCurrentSystemValue(const std::string& Name, const std::string& Value, bool Flag) override;
};

}  // namespace oxSuperAPI
