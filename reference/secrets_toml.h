#pragma once

#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

// The scrambled client secrets: a private TOML file with a table for each channel ("application", "administrator") and
// in it a key for each environment ("Dev", "QA", "Prod"). The texts are what TOpenSSLCipher::Scramble gives, so the
// file is of no use without the cipher's key. A malformed file, an unknown channel or environment raise TBeamError.

/// "" when the file or the entry is missing.
OXSUPERAPI_EXPORT std::string ReadScrambledSecret(const std::string& FileName, std::string_view Channel,
                                                  std::string_view Environment);

/// Sets one entry; the others stay. Makes the file when it is missing.
OXSUPERAPI_EXPORT void WriteScrambledSecret(const std::string& FileName, std::string_view Channel,
                                            std::string_view Environment, std::string_view Scrambled);

}  // namespace oxSuperAPI
