#include "oxSuperAPI/reference/http_tls_watch.h"

#include <openssl/x509_vfy.h>

#include <utility>

namespace oxSuperAPI {

void TTLSWatch::StartCall(std::string Server, std::string Proxy) {
  if (Server != FServer.Host) FServer.Verdict.Chain.clear();
  FServer.Host = std::move(Server);
  FServer.Verdict.Problems.clear();
  FProxy = {.Host = std::move(Proxy)};
  FProxyIsNext = !FProxy.Host.empty();
  FReachedServer = false;
  FRefusedClient.clear();
  FFarewell = false;
}

void TTLSWatch::Attach(SSL_CTX* Context) {
  TPeer& Peer = FProxyIsNext ? FProxy : FServer;
  FReachedServer |= !FProxyIsNext;
  FProxyIsNext = !FProxy.Host.empty() && !FProxyIsNext;
  SSL_CTX_set_security_level(Context, 2);
  SSL_CTX_set_cert_verify_callback(Context, &OnCertificate, &Peer);
  SSL_CTX_set_app_data(Context, this);
  SSL_CTX_set_info_callback(Context, &OnEvent);
  SSL_CTX_set_keylog_callback(Context, nullptr);
}

std::string TTLSWatch::CertificateProblem() const {
  const std::string Problem = FProxy.Verdict.Sentence("proxy");
  return Problem.empty() ? FServer.Verdict.Sentence("server") : Problem;
}

int TTLSWatch::OnCertificate(X509_STORE_CTX* Chain, void* Context) noexcept try {
  auto& Peer = *static_cast<TPeer*>(Context);
  Peer.Verdict = CheckCertificates(Chain, Peer.Host);
  if (Peer.Verdict.Problems.empty()) {
    X509_STORE_CTX_set_error(Chain, X509_V_OK);
    return 1;
  }
  if (X509_STORE_CTX_get_error(Chain) == X509_V_OK) X509_STORE_CTX_set_error(Chain, X509_V_ERR_CERT_REJECTED);
  return 0;
} catch (...) {
  X509_STORE_CTX_set_error(Chain, X509_V_ERR_OUT_OF_MEM);
  return 0;
}

void TTLSWatch::OnEvent(const SSL* Connection, int Event, int Alert) noexcept try {
  auto& Watch = *static_cast<TTLSWatch*>(SSL_CTX_get_app_data(SSL_get_SSL_CTX(Connection)));
  if (Event == SSL_CB_HANDSHAKE_START) Watch.FNewest = Connection;
  // An older connection that is being closed may still deliver its own farewell.
  if (Event != SSL_CB_READ_ALERT || Connection != Watch.FNewest) return;
  switch (Alert & 0xFF) {
    case SSL_AD_CLOSE_NOTIFY:
      Watch.FFarewell = true;
      break;
    case SSL_AD_BAD_CERTIFICATE:
    case SSL_AD_UNSUPPORTED_CERTIFICATE:
    case SSL_AD_CERTIFICATE_REVOKED:
    case SSL_AD_CERTIFICATE_EXPIRED:
    case SSL_AD_CERTIFICATE_UNKNOWN:
    case SSL_AD_UNKNOWN_CA:
    case SSL_AD_CERTIFICATE_REQUIRED:
      Watch.FRefusedClient = SSL_alert_desc_string_long(Alert);
      break;
    default:
      break;
  }
} catch (...) {
  // Without memory for the reason there is none.
}

}  // namespace oxSuperAPI
