#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"
#include "oxSuperAPI/host/uHostDatabase.h"
#include "oxSuperAPI/host/uHostEditor.h"
#include "oxSuperAPI/host/uHostHttp.h"
#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/host/uHostSystem.h"

namespace oxSuperAPI {

/// Importance of a line in the host log. The ordinals are part of the interface.
enum class TLogSeverity : std::uint8_t { Information = 0, Warning = 1, Error = 2 };

/// The log kind under which the library writes to the host log.
inline constexpr int BeamLogKind = 75;

/// Per-company text values of the host.
class OXSUPERAPI_EXPORT THostSettings {
 public:
  virtual ~THostSettings() = default;
  /// The stored value, or `Default` when there is none. The library always passes false for `Flag`.
  virtual std::string GetCurrentSystemValue(const std::string& Name, const std::string& Default, bool Flag) = 0;
  /// Stores the value durably, in place of an earlier one.
  virtual void SetCurrentSystemValue(const std::string& Name, const std::string& Value, bool Flag) = 0;
};

/// The host's text cipher. Texts that cannot be deciphered raise; the error names no content.
class OXSUPERAPI_EXPORT THostCipher {
 public:
  virtual ~THostCipher() = default;
  /// Deterministic: enciphered values are compared in where clauses. "" stays "".
  virtual std::string DefEncrypt(const std::string& Text) = 0;
  /// The text that `DefEncrypt` was given.
  virtual std::string DefDecrypt(const std::string& Text) = 0;
  /// The plain client secret of a scrambled one. Called at the moment of use; the library keeps the result in a local.
  virtual std::string DecodeDecrypt(const std::string& Scrambled) = 0;
};

/// The host's log.
class OXSUPERAPI_EXPORT THostLog {
 public:
  virtual ~THostLog() = default;
  /// `Kind` is BeamLogKind for every line of the library. `Text` holds no secret.
  virtual void AddToLog(const std::string& Text, int Kind, TLogSeverity Severity) = 0;
};

/// Who and where the host is, and its protected configuration.
class OXSUPERAPI_EXPORT THostIdentity {
 public:
  virtual ~THostIdentity() = default;
  /// 5 is the country whose clearing house this is.
  virtual std::uint8_t CountryCode() = 0;
  /// They decide, with the forced setting, which environment of the service this host talks to. @{
  virtual std::string GetDomainName() = 0;
  virtual std::string ComputerName() = 0;
  /// @}

  /// The setting `sForceBeamSuperEnvironment`: "", "DEV", "QA" or "PROD".
  virtual std::string ForceBeamSuperEnvironment() = 0;
  /// The id of the signed-in user, or none when nobody is.
  virtual std::optional<std::int32_t> CurrentAgent() = 0;
  /// The settings `bDisplayHTTPRequestEditor` and `bDisplayHTTPResponseEditor`; read at the time of each call. @{
  virtual bool DisplayHTTPRequestEditor() { return false; }
  virtual bool DisplayHTTPResponseEditor() { return false; }
  /// @}

  /// Names as the host's login knows them: the customer number may stand in their first characters. @{
  virtual std::string LoginDatabaseName() = 0;
  virtual std::string CommonDatabaseName() = 0;
  /// @}

  /// What activation sends about the customer: key, PIN (decimal text) and registered company name ("" if none). @{
  virtual std::string CustomerKey() = 0;
  virtual std::string CustomerPIN() = 0;
  virtual std::string RegisteredCompanyName() = 0;
  /// @}

  /// The scrambled client secret of a channel ("application" or "administrator") in an environment ("Dev", "QA" or
  /// "Prod"), from protected configuration, as `THostCipher::DecodeDecrypt` reads it, which is
  /// asked in any case. Without a secret the token call refuses by itself.
  virtual std::string ScrambledClientSecret(std::string_view Channel, std::string_view Environment) = 0;
};

/// Everything the library needs of the application that loads it: one object, registered once, never owned.
/// References must stay valid while the host is registered. Any operation may raise; what the library does then stands
/// at the call that needs it.
class OXSUPERAPI_EXPORT THost {
 public:
  virtual ~THost() = default;
  /// The facilities. Asked for at each use, so the host may make them late. @{
  virtual THTTPHelper& HTTPHelper() = 0;
  virtual TJSONParser& JSONParser() = 0;
  virtual THostSettings& Settings() = 0;
  virtual THostCipher& Cipher() = 0;
  virtual THostLog& Log() = 0;
  virtual THostIdentity& Identity() = 0;
  virtual THostSystem& System() = 0;
  /// @}

  /// The database shared by the companies, and the payroll database of this one. Null when the host has none. @{
  virtual TADOConnection* ADOMainCommonConnection() = 0;
  virtual TADOConnection* ADOMainConnection() = 0;
  /// @}

  /// A form for one use, or null when this host shows no editors.
  virtual std::unique_ptr<TfrmResponseEditor> CreateResponseEditor(TEditorKind) { return nullptr; }
};

/// Makes `pHost` the host of this process; null takes it away. Call `TBeamSuperGlobal::Finalize` first when another
/// host was in use. The host stays the caller's.
OXSUPERAPI_EXPORT void RegisterHost(THost* pHost);
/// The registered host; raises TBeamError when there is none.
OXSUPERAPI_EXPORT THost& Host();

/// The registered host's facilities under the names by which the library calls them. Each raises TBeamError without a
/// host. @{
OXSUPERAPI_EXPORT std::string GetCurrentSystemValue(const std::string& Name, const std::string& Default, bool Flag);
OXSUPERAPI_EXPORT void SetCurrentSystemValue(const std::string& Name, const std::string& Value, bool Flag);
OXSUPERAPI_EXPORT std::string DefEncrypt(const std::string& Text);
OXSUPERAPI_EXPORT std::string DefDecrypt(const std::string& Text);
OXSUPERAPI_EXPORT std::string DecodeDecrypt(const std::string& Scrambled);
OXSUPERAPI_EXPORT void AddToLog(const std::string& Text, TLogSeverity Severity);
OXSUPERAPI_EXPORT TDateTime Now();
OXSUPERAPI_EXPORT std::unique_ptr<TJSONValue> ParseJSON(std::string_view Text);
/// @}

}  // namespace oxSuperAPI
