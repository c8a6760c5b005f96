#include "oxSuperAPI/testing/uFakeSettings.h"

namespace oxSuperAPI {

std::string TFakeSettings::GetCurrentSystemValue(const std::string& Name, const std::string& Default, bool Flag) {
  Reads.push_back({Name, Default, Flag});
  Faults.Check("GetCurrentSystemValue");
  const auto Found = Values.find(Name);
  return Found == Values.end() ? Default : Found->second;
}

void TFakeSettings::SetCurrentSystemValue(const std::string& Name, const std::string& Value, bool Flag) {
  Faults.Check("SetCurrentSystemValue");
  Writes.push_back({Name, Value, Flag});
  Values[Name] = Value;
}

}  // namespace oxSuperAPI
