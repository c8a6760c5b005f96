#pragma once

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rsa.h>
#include <openssl/x509v3.h>

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace oxSuperAPI::tests {

template <auto Free>
struct TFree {
  void operator()(auto* Pointer) const { Free(Pointer); }
};
using TKeyPointer = std::shared_ptr<EVP_PKEY>;
using TCertificatePointer = std::shared_ptr<X509>;

inline void Require(bool Condition, const std::string& What) {
  if (!Condition) throw std::runtime_error("Cannot make: " + What);
}

/// "P-256" or another curve, "RSA-2048" or another length, "ED25519". Each kind of key is made once.
inline TKeyPointer KeyOf(const std::string& Kind, int Number = 0) {
  static std::map<std::pair<std::string, int>, TKeyPointer> Keys;
  TKeyPointer& Key = Keys[{Kind, Number}];
  if (Key) return Key;
  EVP_PKEY* const Fresh = Kind.starts_with("RSA-")      ? EVP_RSA_gen(std::stoul(Kind.substr(4)))
                          : Kind.starts_with("ED25519") ? EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519")
                                                        : EVP_EC_gen(Kind.c_str());
  Require(Fresh, Kind);
  return Key = TKeyPointer(Fresh, EVP_PKEY_free);
}

/// A certificate to be made. Texts of extensions are as in OpenSSL's configuration; "" leaves the extension out.
struct TCertificatePlan {
  std::string CommonName;
  std::string Names, Constraints, Usage, ExtendedUsage, NameConstraints;
  std::vector<std::pair<std::string, std::string>> Extra = {};  ///< object identifier or name, value
  std::string Key = "P-256";
  const char* Digest = "SHA256";
  int ValidFromDay = -2, ValidToDay = 30;  ///< relative to now
  int Version = 3;
};

/// What a server shows, and which authorities its clients are told to trust.
struct TChainPlan {
  TCertificatePlan Root{"Root", "", "critical,CA:TRUE", "critical,keyCertSign", "", ""};
  TCertificatePlan Middle{"Middle", "", "critical,CA:TRUE", "critical,keyCertSign", "", ""};
  TCertificatePlan Leaf{
      "api.example", "DNS:api.example", "critical,CA:FALSE", "critical,digitalSignature", "serverAuth", ""};
  bool HasMiddle = false;     ///< between root and leaf
  bool ShowsMiddle = true;    ///< the server sends it
  bool IsForged = false;      ///< the leaf is signed by a stranger's key
  bool IsSelfSigned = false;  ///< the leaf is signed by its own key, and there is nobody else
  enum { TrustsRoot, TrustsLeaf, TrustsStranger } Trust = TrustsRoot;
};

struct TServerIdentity {
  TKeyPointer Key;
  TCertificatePointer Leaf;
  std::vector<TCertificatePointer> Shown;  ///< besides the leaf
  std::string Trusted;                     ///< PEM
};

/// What `Write` puts into memory.
inline std::string WrittenBy(auto Write) {
  const std::unique_ptr<BIO, TFree<BIO_free_all>> Memory(BIO_new(BIO_s_mem()));
  Write(Memory.get());
  char* Data = nullptr;
  const long Size = BIO_get_mem_data(Memory.get(), &Data);
  return {Data, static_cast<std::size_t>(Size)};
}

inline std::string PEMOf(X509* Certificate) {
  return WrittenBy([&](BIO* Out) { PEM_write_bio_X509(Out, Certificate); });
}

/// `Passphrase` "" leaves the key in clear.
inline std::string PEMOf(EVP_PKEY* Key, const std::string& Passphrase = "") {
  return WrittenBy([&](BIO* Out) {
    PEM_write_bio_PKCS8PrivateKey(Out, Key, Passphrase.empty() ? nullptr : EVP_aes_128_cbc(), Passphrase.data(),
                                  static_cast<int>(Passphrase.size()), nullptr, nullptr);
  });
}

/// Issued by `Issuer`, or by itself when that is null.
inline TCertificatePointer MakeCertificate(const TCertificatePlan& Plan, EVP_PKEY* Key, X509* Issuer,
                                           EVP_PKEY* IssuerKey) {
  static long Serial = 1000;
  TCertificatePointer Result(X509_new(), X509_free);
  X509* const Certificate = Result.get();
  X509_set_version(Certificate, Plan.Version - 1);
  ASN1_INTEGER_set(X509_get_serialNumber(Certificate), ++Serial);
  X509_gmtime_adj(X509_getm_notBefore(Certificate), Plan.ValidFromDay * 86'400L);
  X509_gmtime_adj(X509_getm_notAfter(Certificate), Plan.ValidToDay * 86'400L);
  X509_set_pubkey(Certificate, Key);
  X509_NAME_add_entry_by_txt(X509_get_subject_name(Certificate), "CN", MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>(Plan.CommonName.c_str()), -1, -1, 0);
  X509_set_issuer_name(Certificate, X509_get_subject_name(Issuer ? Issuer : Certificate));
  std::vector<std::pair<std::string, std::string>> Extensions{{"subjectAltName", Plan.Names},
                                                              {"basicConstraints", Plan.Constraints},
                                                              {"keyUsage", Plan.Usage},
                                                              {"extendedKeyUsage", Plan.ExtendedUsage},
                                                              {"nameConstraints", Plan.NameConstraints}};
  Extensions.insert(Extensions.end(), Plan.Extra.begin(), Plan.Extra.end());
  X509V3_CTX Context;
  X509V3_set_ctx_nodb(&Context);
  X509V3_set_ctx(&Context, Issuer ? Issuer : Certificate, Certificate, nullptr, nullptr, 0);
  for (const auto& [Name, Value] : Extensions) {
    if (Value.empty()) continue;
    const std::unique_ptr<X509_EXTENSION, TFree<X509_EXTENSION_free>> Extension(
        X509V3_EXT_nconf(nullptr, &Context, Name.c_str(), Value.c_str()));
    Require(Extension && X509_add_ext(Certificate, Extension.get(), -1) == 1, Name + "=" + Value);
  }
  const bool HasDigest = EVP_PKEY_get_base_id(IssuerKey) != EVP_PKEY_ED25519;
  Require(X509_sign(Certificate, IssuerKey, HasDigest ? EVP_get_digestbyname(Plan.Digest) : nullptr) > 0, "signature");
  return Result;
}

inline TServerIdentity MakeIdentity(const TChainPlan& Plan) {
  const TKeyPointer RootKey = KeyOf(Plan.Root.Key, 1), MiddleKey = KeyOf(Plan.Middle.Key, 2),
                    Key = KeyOf(Plan.Leaf.Key, 3), Stranger = KeyOf("P-256", 4);
  const TCertificatePointer Root = MakeCertificate(Plan.Root, RootKey.get(), nullptr, RootKey.get());
  const TCertificatePointer Middle = MakeCertificate(Plan.Middle, MiddleKey.get(), Root.get(), RootKey.get());
  const TCertificatePointer& Issuer = Plan.HasMiddle ? Middle : Root;
  const TKeyPointer& IssuerKey = Plan.IsForged ? Stranger : Plan.HasMiddle ? MiddleKey : RootKey;
  TServerIdentity Result{Key, {}, {}, {}};
  Result.Leaf = Plan.IsSelfSigned ? MakeCertificate(Plan.Leaf, Key.get(), nullptr, Key.get())
                                  : MakeCertificate(Plan.Leaf, Key.get(), Issuer.get(), IssuerKey.get());
  if (Plan.HasMiddle && Plan.ShowsMiddle) Result.Shown.push_back(Middle);
  const TCertificatePointer Other = MakeCertificate(Plan.Root, Stranger.get(), nullptr, Stranger.get());
  Result.Trusted = PEMOf(Plan.Trust == TChainPlan::TrustsLeaf       ? Result.Leaf.get()
                         : Plan.Trust == TChainPlan::TrustsStranger ? Other.get()
                                                                    : Root.get());
  return Result;
}

}  // namespace oxSuperAPI::tests
