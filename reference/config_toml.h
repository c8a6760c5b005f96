#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

// The configuration of the reference host: one TOML file, one table a struct, one key a field, under the same names.
// The meaning of each key stands once, in config_toml.cpp, from where it also gets into a written file.

/// Who this host is, and for which company it works.
struct TIdentityConfig {
  /// Keys of the table [identity]; a written file explains each. @{
  std::uint8_t country_code = 5;
  std::string domain;
  std::string computer;
  std::string force_environment;
  std::optional<std::int32_t> agent;
  std::string login_database_name;
  std::string common_database_name;
  std::string customer_key;
  std::string customer_pin;
  std::filesystem::path customer_pin_file;
  std::string company_name;
  bool display_request_editor = false;
  bool display_response_editor = false;
  bool operator==(const TIdentityConfig&) const = default;
  /// @}
};

/// Where things are kept.
struct TFilesConfig {
  /// Keys of the table [files]; a written file explains each. @{
  std::string common_database = "common.db";
  std::string payroll_database = "payroll.db";
  std::filesystem::path key = "cipher.key";
  std::filesystem::path secrets = "secrets.toml";
  std::filesystem::path log = "host.log";
  std::uint32_t log_megabytes = 5;
  std::uint32_t log_kept_files = 5;
  bool operator==(const TFilesConfig&) const = default;
  /// @}
};

/// How long a database behind ODBC may take.
struct TDatabaseConfig {
  /// Keys of the table [database]; a written file explains each. @{
  std::chrono::seconds login_timeout_seconds{15};
  std::chrono::seconds query_timeout_seconds{60};
  bool operator==(const TDatabaseConfig&) const = default;
  /// @}
};

/// What the call log may hold.
struct TLogConfig {
  /// Keys of the table [log]; a written file explains each. @{
  std::string masking = "tokens";
  bool operator==(const TLogConfig&) const = default;
  /// @}
};

/// How the service is reached.
struct THttpConfig {
  /// Keys of the table [http]; a written file explains each. @{
  std::filesystem::path ca_file;
  std::filesystem::path client_certificate;
  std::filesystem::path client_key;
  std::string proxy;
  std::string proxy_user;
  std::filesystem::path proxy_ca_file;
  std::vector<std::string> no_proxy;
  std::map<std::string, std::string> connect_to;
  std::chrono::seconds connect_timeout_seconds{15};
  std::chrono::seconds stall_timeout_seconds{90};
  std::chrono::seconds total_timeout_seconds{300};
  std::uint32_t max_response_megabytes = 64;
  bool operator==(const THttpConfig&) const = default;
  /// @}
};

/// What a pay-run file has no column for.
struct TBatchConfig {
  /// Keys of the table [batch]; a written file explains each. @{
  std::string client_participant_number;
  std::string version;
  std::string abn_type = "ABN";
  std::string landline_type;
  std::string mobile_type;
  std::map<std::string, std::string> gender;
  std::vector<std::string> default_funds;
  bool location_id_as_context = false;
  bool country_upper_case = false;
  bool operator==(const TBatchConfig&) const = default;
  /// @}
};

/// A whole configuration.
struct TReferenceConfig {
  /// The tables of the file. @{
  TIdentityConfig identity;
  TFilesConfig files;
  TDatabaseConfig database;
  TLogConfig log;
  THttpConfig http;
  TBatchConfig batch;
  bool operator==(const TReferenceConfig&) const = default;
  /// @}
};

/// Reads a configuration. Keys that are left out keep their defaults; relative paths, the defaults included, are taken
/// from the file's own directory and come out absolute. Raises TBeamError for a file that is not the owner's alone (it
/// may hold the PIN) and, with file and line, for text that is not TOML, unknown keys and values of a wrong type.
OXSUPERAPI_EXPORT TReferenceConfig ReadConfig(const std::filesystem::path& FileName);

/// The configuration as commented TOML text that reads back equal.
OXSUPERAPI_EXPORT std::string ConfigText(const TReferenceConfig& Config);

/// Writes `ConfigText` to a new private file. Raises when the file exists.
OXSUPERAPI_EXPORT void CreateConfigFile(const std::filesystem::path& FileName, const TReferenceConfig& Config);

}  // namespace oxSuperAPI
