#include "oxSuperAPI/reference/http_tls_watch.h"

#include <openssl/x509_vfy.h>

namespace oxSuperAPI {

void TTLSWatch::Attach(SSL_CTX* Context) {
  SSL_CTX_set_cert_verify_callback(Context, &OnCertificate, this);
  SSL_CTX_set_app_data(Context, this);
  SSL_CTX_set_info_callback(Context, &OnEvent);
  SSL_CTX_set_keylog_callback(Context, nullptr);
}

void TTLSWatch::StartCall() {
  FCertificateError = X509_V_OK;
  FFarewell = false;
}

std::string TTLSWatch::CertificateProblem() const {
  const std::string Cause = std::string(" (") + X509_verify_cert_error_string(FCertificateError) + "). ";
  switch (FCertificateError) {
    case X509_V_OK:
      return "";
    case X509_V_ERR_CERT_HAS_EXPIRED:
    case X509_V_ERR_CERT_NOT_YET_VALID:
      return "the date of the server's certificate is wrong" + Cause + "Check the clock of this machine as well";
    default:
      return "the certificate of the server is not trusted" + Cause + "Check which authorities are configured";
  }
}

/// Verifies as OpenSSL does without a callback.
int TTLSWatch::OnCertificate(X509_STORE_CTX* Chain, void* Watch) noexcept {
  const int Result = X509_verify_cert(Chain);
  static_cast<TTLSWatch*>(Watch)->FCertificateError = Result > 0 ? X509_V_OK : X509_STORE_CTX_get_error(Chain);
  return Result;
}

void TTLSWatch::OnEvent(const SSL* Connection, int Event, int Alert) noexcept {
  auto& Watch = *static_cast<TTLSWatch*>(SSL_CTX_get_app_data(SSL_get_SSL_CTX(Connection)));
  if (Event == SSL_CB_HANDSHAKE_START) Watch.FNewest = Connection;
  // An older connection that is being closed may still deliver its own farewell.
  if (Event == SSL_CB_READ_ALERT && (Alert & 0xFF) == SSL_AD_CLOSE_NOTIFY && Connection == Watch.FNewest)
    Watch.FFarewell = true;
}

}  // namespace oxSuperAPI
