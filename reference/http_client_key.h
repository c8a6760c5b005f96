#pragma once

#include <functional>
#include <string>

#include "oxSuperAPI/reference/http_certificate.h"

namespace oxSuperAPI {

/// The certificate by which a client shows who it is, with its key. The key is overwritten at the end.
struct TClientKey {
  /// Movable, not copyable. @{
  TClientKey() = default;
  TClientKey(TClientKey&&) = default;
  TClientKey& operator=(TClientKey&&) = delete;
  ~TClientKey();
  /// @}

  std::string Certificates;  ///< PEM
  std::string Key;           ///< PEM, deciphered
  TServerCertificate Own;    ///< the first of `Certificates`
};

/// Reads both from PEM files; `KeyFile` "" is `CertificateFile`. The file with the key has to be the owner's alone.
/// `Passphrase` is asked only when the key is enciphered. Raises TBeamError, saying what to do, when a file is missing,
/// open to others or no PEM, when the passphrase is wrong, and when key and certificate do not belong together.
OXSUPERAPI_EXPORT TClientKey ReadClientKey(const std::string& CertificateFile, const std::string& KeyFile,
                                           const std::function<std::string()>& Passphrase);

}  // namespace oxSuperAPI
