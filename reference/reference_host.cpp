#include "oxSuperAPI/reference/reference_host.h"

#include <fmt/format.h>

#include <utility>

#include "oxSuperAPI/reference/db_open.h"
#include "oxSuperAPI/reference/private_file.h"
#include "oxSuperAPI/reference/secrets_toml.h"

namespace oxSuperAPI {

namespace {

THTTPCurlOptions CurlOptions(const THttpConfig& Config) {
  THTTPCurlOptions Options;
  Options.CAFile = Config.ca_file.string();
  Options.ClientCertificate = Config.client_certificate.string();
  Options.ClientKey = Config.client_key.string();
  Options.Proxy = Config.proxy;
  Options.ProxyUser = Config.proxy_user;
  Options.ProxyCAFile = Config.proxy_ca_file.string();
  Options.NoProxy = Config.no_proxy;
  for (const auto& [From, To] : Config.connect_to) Options.ConnectTo.push_back({From, To});
  Options.ConnectTimeout = Config.connect_timeout_seconds;
  Options.StallTimeout = Config.stall_timeout_seconds;
  Options.TotalTimeout = Config.total_timeout_seconds;
  Options.MaxResponseBytes = std::size_t{Config.max_response_megabytes} << 20;
  return Options;
}

void NeedFile(const std::filesystem::path& File, std::string_view What) {
  if (!PathExists(File.string()))
    throw TBeamError(fmt::format("The {} {} does not exist: run \"oxsuper init\"", What, File.string()));
}

void CreateDatabase(const std::string& Address, TDatabaseRole Role) {
  if (!SQLiteFile(Address)) return;
  CreateDatabaseFile(Address);
  const std::unique_ptr<TDBConnection> Connection = OpenDatabase(Address);
  CreateSchema(*Connection, Role);
  CheckSchema(*Connection, Role);
}

}  // namespace

TReferenceHost::TReferenceHost(TReferenceConfig Config)
    : FConfig(std::move(Config)),
      FIdentity(FConfig.identity, FConfig.files.secrets.string()),
      FMasking(LogMaskingOf(FConfig.log.masking)) {}

THTTPCurl& TReferenceHost::HTTPHelper() {
  if (!FHTTPHelper) {
    const auto Secret = [this](std::string_view Name) {
      return THTTPSecret([this, Name] {
        const std::string Scrambled = ReadScrambledSecret(FConfig.files.secrets.string(), "http", Name);
        return Scrambled.empty() ? "" : Cipher().DecodeDecrypt(Scrambled);
      });
    };
    THTTPCurlOptions Options = CurlOptions(FConfig.http);
    Options.ClientKeyPassphrase = Secret("client_key_passphrase");
    Options.ProxyPassword = Secret("proxy_password");
    FHTTPHelper.emplace(std::move(Options), FSecrets);
  }
  return *FHTTPHelper;
}

TDatabaseSettings& TReferenceHost::Settings() {
  if (!FSettings) FSettings.emplace(*ADOMainConnection());
  return *FSettings;
}

TOpenSSLCipher& TReferenceHost::Cipher() {
  if (!FCipher) {
    NeedFile(FConfig.files.key, "key file");
    FCipher.emplace(ReadKeyFile(FConfig.files.key.string()));
  }
  return *FCipher;
}

TSpdlogLog& TReferenceHost::Log() {
  if (!FLog)
    FLog.emplace(TSpdlogOptions{
        .FileName = FConfig.files.log.string(),
        .MaxBytes = std::size_t{FConfig.files.log_megabytes} << 20,
        .KeptFiles = FConfig.files.log_kept_files,
        .Mask = [this](std::string_view Text) { return TLogMasker(FMasking, FSecrets).Mask(std::string(Text)); }});
  return *FLog;
}

TDBConnection* TReferenceHost::ADOMainCommonConnection() {
  if (!FCommon) FCommon = OpenChecked(TDatabaseRole::Common);
  return FCommon.get();
}

TDBConnection& TReferenceHost::PayrollDatabase() {
  if (!FPayroll) FPayroll = OpenChecked(TDatabaseRole::Payroll);
  return *FPayroll;
}

TGuardedLogConnection* TReferenceHost::ADOMainConnection() {
  if (!FGuardedPayroll) FGuardedPayroll.emplace(PayrollDatabase(), FMasking, FSecrets);
  return &*FGuardedPayroll;
}

std::unique_ptr<TDBConnection> TReferenceHost::OpenDatabase(TDatabaseRole Role) {
  const bool Common = Role == TDatabaseRole::Common;
  const std::string& Address = Common ? FConfig.files.common_database : FConfig.files.payroll_database;
  if (const auto File = SQLiteFile(Address)) NeedFile(*File, Common ? "common database" : "payroll database");
  std::string Password;
  if (ODBCString(Address)) {
    Password = ReadScrambledSecret(FConfig.files.secrets.string(), "database", Common ? "common" : "payroll");
    if (!Password.empty()) Password = Cipher().DecodeDecrypt(Password);
  }
  return oxSuperAPI::OpenDatabase(
      Address,
      {.LoginTimeout = FConfig.database.login_timeout_seconds, .QueryTimeout = FConfig.database.query_timeout_seconds},
      Password);
}

std::unique_ptr<TDBConnection> TReferenceHost::OpenChecked(TDatabaseRole Role) {
  auto Connection = OpenDatabase(Role);
  // A server's tables are an administrator's business ("oxsuper db check"); a question each time would cost a while.
  if (Connection->Dialect() == TSQLDialect::SQLite) CheckSchema(*Connection, Role);
  return Connection;
}

std::unique_ptr<TfrmResponseEditor> TReferenceHost::CreateResponseEditor(TEditorKind Kind) {
  return EditorFactory ? EditorFactory(Kind) : nullptr;
}

void CreateHostFiles(const TFilesConfig& Files) {
  if (!PathExists(Files.key.string())) CreateKeyFile(Files.key.string());
  ReadKeyFile(Files.key.string());
  CreateDatabase(Files.common_database, TDatabaseRole::Common);
  CreateDatabase(Files.payroll_database, TDatabaseRole::Payroll);
}

}  // namespace oxSuperAPI
