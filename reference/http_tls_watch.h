#pragma once

#include <openssl/ssl.h>

#include <string>

namespace oxSuperAPI {

/// What OpenSSL knows of a client's connections and libcurl does not pass on. Must outlive every context that it is
/// attached to.
class TTLSWatch {
 public:
  /// Watches the connections of `Context`, and keeps SSLKEYLOGFILE from writing their keys to a file.
  void Attach(SSL_CTX* Context);
  /// Forgets what the call before left, not which connection is the newest.
  void StartCall();

  /// Why the certificates of the server were refused; "" when their chain was in order.
  std::string CertificateProblem() const;
  /// The server said, on the newest connection, that it has sent everything.
  bool SaidFarewell() const { return FFarewell; }

 private:
  static int OnCertificate(X509_STORE_CTX* Chain, void* Watch) noexcept;
  static void OnEvent(const SSL* Connection, int Event, int Alert) noexcept;

  int FCertificateError = 0;
  bool FFarewell = false;
  const SSL* FNewest = nullptr;  // compared only, never followed
};

}  // namespace oxSuperAPI
