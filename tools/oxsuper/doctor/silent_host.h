#pragma once

#include "oxSuperAPI/reference/reference_host.h"

namespace oxSuperAPI {

/// The reference host for questions to the library that must leave no trace: it logs nothing and sends nothing.
class TSilentHost final : public THost, private THostLog, private THTTPHelper {
 public:
  explicit TSilentHost(TReferenceConfig Config) : FHost(std::move(Config)) {}

  THTTPHelper& HTTPHelper() override { return *this; }
  TJSONParser& JSONParser() override { return FHost.JSONParser(); }
  THostSettings& Settings() override { return FHost.Settings(); }
  THostCipher& Cipher() override { return FHost.Cipher(); }
  THostLog& Log() override { return *this; }
  THostIdentity& Identity() override { return FHost.Identity(); }
  THostSystem& System() override { return FHost.System(); }
  TADOConnection* ADOMainCommonConnection() override { return FHost.ADOMainCommonConnection(); }
  TADOConnection* ADOMainConnection() override { return FHost.ADOMainConnection(); }

 private:
  void AddToLog(const std::string&, int, TLogSeverity) override {}
  std::int32_t httpNetGet(const std::string&, const TStringList&, TStringList&, TStringList&) override { Refuse(); }
  std::int32_t httpNetPost(const std::string&, const TStringList&, const TStringList&, TStringList&,
                           TStringList&) override {
    Refuse();
  }
  std::int32_t httpNetPut(const std::string&, const TStringList&, const TStringList&, TStringList&,
                          TStringList&) override {
    Refuse();
  }
  [[noreturn]] static void Refuse() {
    throw THTTPError("Nothing is sent during an examination", TRequestFate::NotSent);
  }

  TReferenceHost FHost;
};

}  // namespace oxSuperAPI
