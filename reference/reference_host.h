#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/reference/cipher_openssl.h"
#include "oxSuperAPI/reference/config_toml.h"
#include "oxSuperAPI/reference/db_rows.h"
#include "oxSuperAPI/reference/guarded_log_connection.h"
#include "oxSuperAPI/reference/http_watched.h"
#include "oxSuperAPI/reference/identity_config.h"
#include "oxSuperAPI/reference/json_rapidjson.h"
#include "oxSuperAPI/reference/known_secrets.h"
#include "oxSuperAPI/reference/log_spdlog.h"
#include "oxSuperAPI/reference/schema.h"
#include "oxSuperAPI/reference/settings_database.h"
#include "oxSuperAPI/reference/system_linux.h"

namespace oxSuperAPI {

/// The reference host: the adapters of this folder, put together by a configuration. Owns them all. Each is made when
/// it is first asked for, so a missing file is an error only for what needs it; what failed is tried again the next
/// time. Errors are TBeamError and say what to do.
class OXSUPERAPI_EXPORT TReferenceHost : public THost {
 public:
  /// Relative paths in `Config` are taken from the working directory; ReadConfig gives absolute ones.
  explicit TReferenceHost(TReferenceConfig Config);

  THTTPCurl& HTTPHelper() override;
  TJSONRapidJson& JSONParser() override { return FJSONParser; }
  TDatabaseSettings& Settings() override;
  TOpenSSLCipher& Cipher() override;
  TSpdlogLog& Log() override;
  TConfigIdentity& Identity() override { return FIdentity; }
  TLinuxSystem& System() override { return FSystem; }
  TDBConnection* ADOMainCommonConnection() override;
  /// Masks what is written to the call log, as the configuration says.
  TGuardedLogConnection* ADOMainConnection() override;
  std::unique_ptr<TfrmResponseEditor> CreateResponseEditor(TEditorKind Kind) override;

  /// Opens a database anew, as the configuration says, without a look at its tables.
  std::unique_ptr<TDBConnection> OpenDatabase(TDatabaseRole Role);

  /// Makes the forms for requests and responses; empty, as at first, shows none.
  std::function<std::unique_ptr<TfrmResponseEditor>(TEditorKind)> EditorFactory;

  /// The payroll database behind ADOMainConnection, for those who read the call log or mask it anew.
  TDBConnection& PayrollDatabase();

  /// The credentials that went through this host; it may be kept longer than the host.
  std::shared_ptr<TKnownSecrets> KnownSecrets() const { return FSecrets; }

  /// As it was given.
  const TReferenceConfig& Config() const { return FConfig; }

 private:
  std::unique_ptr<TDBConnection> OpenChecked(TDatabaseRole Role);

  TReferenceConfig FConfig;
  TJSONRapidJson FJSONParser;
  TLinuxSystem FSystem;
  TConfigIdentity FIdentity;
  std::shared_ptr<TKnownSecrets> FSecrets = std::make_shared<TKnownSecrets>();
  TLogMasking FMasking;
  std::optional<TWatchedHTTP> FHTTPHelper;
  std::optional<TOpenSSLCipher> FCipher;
  std::optional<TSpdlogLog> FLog;
  std::unique_ptr<TDBConnection> FCommon;
  std::unique_ptr<TDBConnection> FPayroll;
  std::optional<TGuardedLogConnection> FGuardedPayroll;
  std::optional<TDatabaseSettings> FSettings;
};

/// Makes what the host needs and what is missing yet: the cipher's key, and the databases that are files of its own,
/// with their tables. What exists is kept, but has to be in order: private files and, for the key, the right length. A
/// database behind ODBC is left alone. Can be repeated.
OXSUPERAPI_EXPORT void CreateHostFiles(const TFilesConfig& Files);

}  // namespace oxSuperAPI
