#include "oxSuperAPI/host/uHost.h"

namespace oxSuperAPI {

namespace {
THost* RegisteredHost = nullptr;
}

void RegisterHost(THost* pHost) {
  RegisteredHost = pHost;
}

THost& Host() {
  if (!RegisteredHost) throw TBeamError("No host is registered: call oxSuperAPI::RegisterHost before anything else");
  return *RegisteredHost;
}

std::string GetCurrentSystemValue(const std::string& Name, const std::string& Default, bool Flag) {
  return Host().Settings().GetCurrentSystemValue(Name, Default, Flag);
}
void SetCurrentSystemValue(const std::string& Name, const std::string& Value, bool Flag) {
  Host().Settings().SetCurrentSystemValue(Name, Value, Flag);
}
std::string DefEncrypt(const std::string& Text) {
  return Host().Cipher().DefEncrypt(Text);
}
std::string DefDecrypt(const std::string& Text) {
  return Host().Cipher().DefDecrypt(Text);
}
std::string DecodeDecrypt(const std::string& Scrambled) {
  return Host().Cipher().DecodeDecrypt(Scrambled);
}
void AddToLog(const std::string& Text, TLogSeverity Severity) {
  Host().Log().AddToLog(Text, BeamLogKind, Severity);
}
TDateTime Now() {
  return Host().System().Now();
}
std::unique_ptr<TJSONValue> ParseJSON(std::string_view Text) {
  return Host().JSONParser().Parse(Text);
}

}  // namespace oxSuperAPI
