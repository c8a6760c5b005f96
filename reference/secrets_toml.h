#pragma once

#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

// The scrambled secrets: a private TOML file with a table for each group of them and in it a key for each secret. The
// client secrets stand in groups by channel ("application", "administrator") under the environment's name ("Dev", "QA",
// "Prod"); the group "database" has the passwords of the databases ("common", "payroll"), "http" those of the
// way to the service ("proxy_password", "client_key_passphrase"). The texts are what TOpenSSLCipher::Scramble gives, so
// the file is of no use without the cipher's key. A malformed file and an unknown group or name raise TBeamError.

/// "" when the file or the entry is missing.
OXSUPERAPI_EXPORT std::string ReadScrambledSecret(const std::string& FileName, std::string_view Group,
                                                  std::string_view Name);

/// Sets one entry; the others stay. Makes the file when it is missing.
OXSUPERAPI_EXPORT void WriteScrambledSecret(const std::string& FileName, std::string_view Group, std::string_view Name,
                                            std::string_view Scrambled);

}  // namespace oxSuperAPI
