#include "certificates.h"

#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <memory>
#include <stdexcept>

namespace sandbox {
namespace {

template <auto Function>
struct Free {
  template <class T>
  void operator()(T* object) const {
    Function(object);
  }
};
using Key = std::unique_ptr<EVP_PKEY, Free<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Free<X509_free>>;
using Memory = std::unique_ptr<BIO, Free<BIO_free_all>>;

void Check(bool done, const char* what) {
  if (done) return;
  char reason[256];
  ERR_error_string_n(ERR_get_error(), reason, sizeof reason);
  throw std::runtime_error(std::string("Cannot make the certificates: ") + what + ": " + reason);
}

void AddExtension(X509* certificate, X509* issuer, int kind, const std::string& value) {
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  const std::unique_ptr<X509_EXTENSION, Free<X509_EXTENSION_free>> extension(
      X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str()));
  Check(extension != nullptr && X509_add_ext(certificate, extension.get(), -1) == 1, OBJ_nid2sn(kind));
}

/// A certificate of thirty days with a random serial number; no issuer, no extensions, no signature yet.
Certificate NewCertificate(EVP_PKEY* key, const char* commonName) {
  constexpr long kHour = 60 * 60;
  Certificate certificate(X509_new());
  Check(certificate != nullptr && X509_set_version(certificate.get(), X509_VERSION_3) == 1, "version");

  unsigned char serial[16];
  Check(RAND_bytes(serial, sizeof serial) == 1, "serial number");
  serial[0] &= 0x7F;  // positive
  const std::unique_ptr<BIGNUM, Free<BN_free>> number(BN_bin2bn(serial, sizeof serial, nullptr));
  Check(BN_to_ASN1_INTEGER(number.get(), X509_get_serialNumber(certificate.get())) != nullptr, "serial number");

  X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -kHour);
  X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 30 * 24 * kHour);
  X509_NAME* name = X509_get_subject_name(certificate.get());
  Check(X509_NAME_add_entry_by_txt(name, "O", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("beam-sandbox"), -1,
                                   -1, 0) == 1 &&
            X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>(commonName), -1,
                                       -1, 0) == 1,
        "name");
  Check(X509_set_pubkey(certificate.get(), key) == 1, "public key");
  return certificate;
}

void Sign(X509* certificate, X509* issuer, EVP_PKEY* issuerKey) {
  Check(X509_set_issuer_name(certificate, X509_get_subject_name(issuer)) == 1, "issuer");
  AddExtension(certificate, issuer, NID_authority_key_identifier, "keyid:always");
  Check(X509_sign(certificate, issuerKey, EVP_sha256()) > 0, "signature");
}

std::string Contents(BIO* memory) {
  char* data = nullptr;
  const long size = BIO_get_mem_data(memory, &data);
  return std::string(data, static_cast<std::size_t>(size));
}

std::string Pem(X509* certificate) {
  const Memory memory(BIO_new(BIO_s_mem()));
  Check(PEM_write_bio_X509(memory.get(), certificate) == 1, "PEM");
  return Contents(memory.get());
}

std::string Pem(EVP_PKEY* key) {
  const Memory memory(BIO_new(BIO_s_mem()));
  Check(PEM_write_bio_PrivateKey(memory.get(), key, nullptr, nullptr, 0, nullptr, nullptr) == 1, "PEM");
  return Contents(memory.get());
}

}  // namespace

Certificates MakeCertificates(const std::vector<std::string>& hosts) {
  const Key authorityKey(EVP_EC_gen("P-256"));
  const Key serverKey(EVP_EC_gen("P-256"));
  Check(authorityKey != nullptr && serverKey != nullptr, "key");

  const Certificate authority = NewCertificate(authorityKey.get(), "beam-sandbox test authority");
  AddExtension(authority.get(), authority.get(), NID_basic_constraints, "critical,CA:TRUE,pathlen:0");
  AddExtension(authority.get(), authority.get(), NID_key_usage, "critical,keyCertSign,cRLSign");
  AddExtension(authority.get(), authority.get(), NID_subject_key_identifier, "hash");
  Sign(authority.get(), authority.get(), authorityKey.get());

  std::string names = "IP:127.0.0.1,DNS:localhost";
  for (const std::string& host : hosts) names += ",DNS:" + host;
  const Certificate server = NewCertificate(serverKey.get(), "localhost");
  AddExtension(server.get(), authority.get(), NID_basic_constraints, "critical,CA:FALSE");
  AddExtension(server.get(), authority.get(), NID_key_usage, "critical,digitalSignature");
  AddExtension(server.get(), authority.get(), NID_ext_key_usage, "serverAuth");
  AddExtension(server.get(), authority.get(), NID_subject_alt_name, names);
  AddExtension(server.get(), authority.get(), NID_subject_key_identifier, "hash");
  Sign(server.get(), authority.get(), authorityKey.get());

  return {Pem(authority.get()), Pem(server.get()), Pem(serverKey.get())};
}

}  // namespace sandbox
