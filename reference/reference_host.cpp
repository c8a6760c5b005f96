#include "oxSuperAPI/reference/reference_host.h"

#include <fmt/format.h>

#include <utility>

#include "oxSuperAPI/reference/private_file.h"

namespace oxSuperAPI {

namespace {

THTTPCurlOptions CurlOptions(const THttpConfig& Config) {
  THTTPCurlOptions Options;
  Options.CAFile = Config.ca_file.string();
  Options.Proxy = Config.proxy;
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

std::unique_ptr<TDBConnection> OpenDatabase(const std::filesystem::path& File, TDatabaseRole Role) {
  NeedFile(File, Role == TDatabaseRole::Common ? "common database" : "payroll database");
  auto Connection = std::make_unique<TSQLiteConnection>(File.string());
  CheckSchema(*Connection, Role);
  return Connection;
}

void CreateDatabase(const std::filesystem::path& File, TDatabaseRole Role) {
  if (!PathExists(File.string())) TSQLiteConnection::CreateFile(File.string());
  TSQLiteConnection Connection(File.string());
  CreateSchema(Connection, Role);
  CheckSchema(Connection, Role);
}

}  // namespace

TReferenceHost::TReferenceHost(TReferenceConfig Config)
    : FConfig(std::move(Config)), FIdentity(FConfig.identity, FConfig.files.secrets.string()) {}

THTTPCurl& TReferenceHost::HTTPHelper() {
  if (!FHTTPHelper) FHTTPHelper.emplace(CurlOptions(FConfig.http));
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
    FLog.emplace(TSpdlogOptions{.FileName = FConfig.files.log.string(),
                                .MaxBytes = std::size_t{FConfig.files.log_megabytes} << 20,
                                .KeptFiles = FConfig.files.log_kept_files});
  return *FLog;
}

TDBConnection* TReferenceHost::ADOMainCommonConnection() {
  if (!FCommon) FCommon = OpenDatabase(FConfig.files.common_database, TDatabaseRole::Common);
  return FCommon.get();
}

TDBConnection* TReferenceHost::ADOMainConnection() {
  if (!FPayroll) FPayroll = OpenDatabase(FConfig.files.payroll_database, TDatabaseRole::Payroll);
  return FPayroll.get();
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
