#pragma once

#include <openssl/ssl.h>

#include <string>

#include "oxSuperAPI/reference/http_certificate.h"

namespace oxSuperAPI {

/// What OpenSSL knows of a client's connections and libcurl does not pass on, and the check of the certificates. Must
/// outlive every context that it is attached to.
class TTLSWatch {
 public:
  /// Forgets what the call before left, not which connection is the newest. The certificates have to be for `Server`
  /// (no port), and for `Proxy` when that is not "": then each connection to the server leads through one to the proxy,
  /// with TLS of its own.
  void StartCall(std::string Server, std::string Proxy);
  /// Watches the connections of `Context`, and keeps SSLKEYLOGFILE from writing their keys to a file.
  void Attach(SSL_CTX* Context);

  /// Why the certificates of the server or the proxy were refused; "" when they were in order.
  std::string CertificateProblem() const;
  /// What the server showed at its newest handshake that was not a resumed one.
  const std::vector<TServerCertificate>& ServerCertificates() const { return FServer.Verdict.Chain; }
  /// A handshake with the server itself was begun, so that what may stand before it let the call through.
  bool ReachedServer() const { return FReachedServer; }
  /// The alert by which the server or the proxy refused this side's certificate, or the lack of one; "" without.
  const std::string& RefusedClient() const { return FRefusedClient; }
  /// The server said, on the newest connection, that it has sent everything.
  bool SaidFarewell() const { return FFarewell; }

 private:
  struct TPeer {
    std::string Host = {};
    TCertificateVerdict Verdict = {};
  };
  static int OnCertificate(X509_STORE_CTX* Chain, void* Peer) noexcept;
  static void OnEvent(const SSL* Connection, int Event, int Alert) noexcept;

  TPeer FServer, FProxy;
  bool FProxyIsNext = false;
  bool FReachedServer = false;
  std::string FRefusedClient;
  bool FFarewell = false;
  const SSL* FNewest = nullptr;  // compared only, never followed
};

}  // namespace oxSuperAPI
