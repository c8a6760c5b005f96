#include "oxSuperAPI/reference/http_certificate.h"

#include <arpa/inet.h>
#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <memory>
#include <string_view>

namespace oxSuperAPI {

namespace {

template <auto Function>
struct TFreeBy {
  void operator()(auto* Object) const { Function(Object); }
};

// What a certificate says comes from a stranger: it is made printable and cut before anybody reads it.

constexpr std::size_t MaxNameBytes = 120, MaxNames = 6;

std::string Printable(std::string_view Text) {
  std::string Result(Text.substr(0, MaxNameBytes));
  std::replace_if(
      Result.begin(), Result.end(), [](char Byte) { return Byte < 0x20 || Byte > 0x7E; }, '?');
  return Text.size() > MaxNameBytes ? Result + "..." : Result;
}

std::string NameText(const X509_NAME* Name) {
  const std::unique_ptr<BIO, TFreeBy<BIO_free>> Memory(BIO_new(BIO_s_mem()));
  if (!Memory || X509_NAME_print_ex(Memory.get(), Name, 0, XN_FLAG_RFC2253) < 0) return "?";
  char* Data = nullptr;
  const long Size = BIO_get_mem_data(Memory.get(), &Data);
  return Size > 0 ? Printable({Data, static_cast<std::size_t>(Size)}) : "(no name)";
}

std::int64_t Seconds(const ASN1_TIME* Time) {
  std::tm Parts{};
  return ASN1_TIME_to_tm(Time, &Parts) == 1 ? timegm(&Parts) : 0;
}

std::string DateText(const ASN1_TIME* Time) {
  std::tm Parts{};
  std::array<char, 32> Text{};
  if (ASN1_TIME_to_tm(Time, &Parts) != 1) return "an unreadable date";
  std::strftime(Text.data(), Text.size(), "%Y-%m-%d %H:%M UTC", &Parts);
  return Text.data();
}

std::string AddressText(const ASN1_OCTET_STRING* Address) {
  std::array<char, INET6_ADDRSTRLEN> Text{};
  const int Size = ASN1_STRING_length(Address);
  const bool Known = Size == 4 || Size == 16;
  return Known && inet_ntop(Size == 4 ? AF_INET : AF_INET6, ASN1_STRING_get0_data(Address), Text.data(), Text.size())
             ? Text.data()
             : "?";
}

/// The hosts that a certificate names, for a person: "a.example, *.b.example".
std::string HostsOf(X509* Certificate) {
  const std::unique_ptr<GENERAL_NAMES, TFreeBy<GENERAL_NAMES_free>> Names(
      static_cast<GENERAL_NAMES*>(X509_get_ext_d2i(Certificate, NID_subject_alt_name, nullptr, nullptr)));
  std::string Result;
  std::size_t Count = 0;
  for (int Index = 0; Names && Index < sk_GENERAL_NAME_num(Names.get()); ++Index) {
    const GENERAL_NAME* const Name = sk_GENERAL_NAME_value(Names.get(), Index);
    if (Name->type != GEN_DNS && Name->type != GEN_IPADD) continue;
    if (Count++ == MaxNames) return Result + ", ...";
    if (!Result.empty()) Result += ", ";
    const ASN1_STRING* const Text = Name->d.ia5;
    Result += Name->type == GEN_IPADD ? AddressText(Name->d.iPAddress)
                                      : Printable({reinterpret_cast<const char*>(ASN1_STRING_get0_data(Text)),
                                                   static_cast<std::size_t>(ASN1_STRING_length(Text))});
  }
  return Result;
}

std::string KeyText(X509* Certificate) {
  EVP_PKEY* const Key = X509_get0_pubkey(Certificate);
  const char* const Type = Key ? EVP_PKEY_get0_type_name(Key) : nullptr;
  return Type ? std::string(Type) + ", " + std::to_string(EVP_PKEY_get_bits(Key)) + " bits" : "of an unknown kind";
}

bool IsStrongKey(X509* Certificate) {
  EVP_PKEY* const Key = X509_get0_pubkey(Certificate);
  switch (Key ? EVP_PKEY_get_base_id(Key) : EVP_PKEY_NONE) {
    case EVP_PKEY_RSA:
    case EVP_PKEY_RSA_PSS:
      return EVP_PKEY_get_bits(Key) >= 2048;
    case EVP_PKEY_ED25519:
    case EVP_PKEY_ED448:
      return true;
    case EVP_PKEY_EC: {
      std::array<char, 80> Group{};
      std::size_t Length = 0;
      if (EVP_PKEY_get_group_name(Key, Group.data(), Group.size(), &Length) != 1) return false;
      const int Curve = OBJ_txt2nid(Group.data());
      return Curve == NID_X9_62_prime256v1 || Curve == NID_secp384r1 || Curve == NID_secp521r1;
    }
    default:
      return false;
  }
}

bool IsStrongSignature(X509* Certificate) {
  int Digest = NID_undef, Key = NID_undef;
  if (X509_get_signature_info(Certificate, &Digest, &Key, nullptr, nullptr) != 1) return false;
  return Digest == NID_sha256 || Digest == NID_sha384 || Digest == NID_sha512 || Key == EVP_PKEY_ED25519 ||
         Key == EVP_PKEY_ED448;
}

/// Whether everything below `Suffix` belongs to a registry and not to one owner ("com.au"), as far as a rule can tell.
bool IsRegistrySuffix(std::string_view Suffix) {
  static constexpr std::array<std::string_view, 12> Registries = {"ac",   "asn", "co",  "com", "edu", "gov",
                                                                  "govt", "id",  "mil", "net", "or",  "org"};
  const std::size_t Dot = Suffix.find('.');
  if (Dot == std::string_view::npos) return true;
  return Suffix.size() - Dot == 3 && std::ranges::find(Registries, Suffix.substr(0, Dot)) != Registries.end();
}

/// One run of OpenSSL's verification, and what it does not look at.
class TCheck {
 public:
  TCheck(X509_STORE_CTX* Context, const std::string& Host) : FContext(Context), FHost(Host) {}

  TCertificateVerdict Run() {
    X509_VERIFY_PARAM* const Rules = X509_STORE_CTX_get0_param(FContext);
    X509_VERIFY_PARAM_set_auth_level(Rules, 2);  // no short keys, no MD5, no SHA-1
    X509_VERIFY_PARAM_set_flags(Rules, X509_V_FLAG_POLICY_CHECK);
    X509_VERIFY_PARAM_set_hostflags(Rules, X509_CHECK_FLAG_NEVER_CHECK_SUBJECT | X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
    if (X509_VERIFY_PARAM_set1_ip_asc(Rules, FHost.c_str()) != 1)
      X509_VERIFY_PARAM_set1_host(Rules, FHost.data(), FHost.size());
    X509_STORE_CTX_set_app_data(FContext, this);
    X509_STORE_CTX_set_verify_cb(FContext, &OnStep);
    X509* const Server = X509_STORE_CTX_get0_cert(FContext);
    const bool IsReadable = (X509_get_extension_flags(Server) & EXFLAG_INVALID) == 0;
    if (!IsReadable)
      Add(TCertificateFault::Trust, "it is not trusted (its extensions cannot be read" + Of(Server) + ")");
    const bool Passed = X509_verify_cert(FContext) == 1;
    if (!Passed && FVerdict.Problems.empty()) Add(TCertificateFault::Trust, "it is not trusted (" + Cause() + ")");

    const STACK_OF(X509)* const Chain = X509_STORE_CTX_get0_chain(FContext);
    const int Count = sk_X509_num(Chain);
    for (int Depth = 0; Depth < Count; ++Depth) {
      X509* const Certificate = sk_X509_value(Chain, Depth);
      FVerdict.Chain.push_back(SummaryOf(Certificate));
      CheckOne(Certificate, Depth, Depth == Count - 1);
    }
    if (IsReadable) CheckServer(Server, Count == 1);
    std::ranges::sort(FVerdict.Problems, {}, &TCertificateVerdict::TProblem::Fault);
    return std::move(FVerdict);
  }

 private:
  /// OpenSSL found something; it goes on as if it had not.
  static int OnStep(int Good, X509_STORE_CTX* Context) noexcept try {
    if (!Good) static_cast<TCheck*>(X509_STORE_CTX_get_app_data(Context))->OnFault();
    return 1;
  } catch (...) {
    return 0;
  }

  void OnFault() {
    X509* const Certificate = X509_STORE_CTX_get_current_cert(FContext);
    const int Depth = X509_STORE_CTX_get_error_depth(FContext);
    const std::string Whose = Certificate ? Possessive(Certificate, Depth) : "its";
    switch (X509_STORE_CTX_get_error(FContext)) {
      case X509_V_ERR_CERT_HAS_EXPIRED:
        return Add(TCertificateFault::Date,
                   Whose + " date is wrong (it expired on " + DateText(X509_get0_notAfter(Certificate)) + ")");
      case X509_V_ERR_CERT_NOT_YET_VALID:
        return Add(TCertificateFault::Date, Whose + " date is wrong (it is not valid before " +
                                                DateText(X509_get0_notBefore(Certificate)) + ")");
      case X509_V_ERR_ERROR_IN_CERT_NOT_BEFORE_FIELD:
      case X509_V_ERR_ERROR_IN_CERT_NOT_AFTER_FIELD:
        return Add(TCertificateFault::Date, Whose + " date is wrong (it cannot be read)");
      case X509_V_ERR_HOSTNAME_MISMATCH:
      case X509_V_ERR_IP_ADDRESS_MISMATCH:
        return Add(TCertificateFault::Name, Mismatch());
      case X509_V_ERR_EE_KEY_TOO_SMALL:
      case X509_V_ERR_CA_KEY_TOO_SMALL:
        return AddWeakKey(Certificate, Depth);
      case X509_V_ERR_CA_MD_TOO_WEAK:
        return AddWeakSignature(Certificate, Depth);
      case X509_V_ERR_INVALID_PURPOSE:
        if (Depth > 0 && X509_check_ca(Certificate) == 0) return;  // reported as no authority
        return Add(TCertificateFault::Purpose, Whose + " purpose is another one (its usage is not that of a server)");
      case X509_V_ERR_PERMITTED_VIOLATION:
      case X509_V_ERR_EXCLUDED_VIOLATION:
      case X509_V_ERR_SUBTREE_MINMAX:
      case X509_V_ERR_UNSUPPORTED_NAME_SYNTAX:
      case X509_V_ERR_UNSUPPORTED_CONSTRAINT_TYPE:
      case X509_V_ERR_UNSUPPORTED_CONSTRAINT_SYNTAX:
        return Add(TCertificateFault::Trust,
                   "it is not trusted (its authority may not vouch for this name: " + Cause() + ")");
      default:
        return Add(TCertificateFault::Trust, "it is not trusted (" + Cause() + Of(Certificate) + ")");
    }
  }

  /// One of the chain; the last one is the anchor of the trust.
  void CheckOne(X509* Certificate, int Depth, bool IsAnchor) {
    if (!IsAnchor && X509_get_version(Certificate) != X509_VERSION_3)
      Add(TCertificateFault::Trust, "it is not trusted (version 3 of X.509 is needed" + Of(Certificate) + ")");
    if (Depth > 0 && (X509_get_extension_flags(Certificate) & EXFLAG_CA) == 0)
      Add(TCertificateFault::Trust,
          "it is not trusted (an issuer is not marked as an authority, basicConstraints" + Of(Certificate) + ")");
    if (!IsStrongKey(Certificate)) AddWeakKey(Certificate, Depth);
    // Nobody relies on how a trusted certificate is signed.
    if (!IsAnchor && !IsStrongSignature(Certificate)) AddWeakSignature(Certificate, Depth);
  }

  void CheckServer(X509* Certificate, bool IsPinned) {
    // Who configures exactly this certificate as trusted means it, whatever else it could sign.
    if (!IsPinned && (X509_get_extension_flags(Certificate) & EXFLAG_CA) != 0)
      Add(TCertificateFault::Purpose,
          "its purpose is another one (it is the certificate of an authority, not of a server)");
    // UINT32_MAX: it has no such extension.
    if ((X509_get_extended_key_usage(Certificate) & XKU_SSL_SERVER) == 0)
      Add(TCertificateFault::Purpose, "its purpose is another one (its extended key usage lacks serverAuth)");
    if ((X509_get_key_usage(Certificate) & KU_DIGITAL_SIGNATURE) == 0)
      Add(TCertificateFault::Purpose, "its purpose is another one (its key usage lacks digitalSignature)");
    const char* const Matched = X509_VERIFY_PARAM_get0_peername(X509_STORE_CTX_get0_param(FContext));
    const std::string_view Pattern = Matched ? Matched : "";
    if (Pattern.starts_with("*.") && IsRegistrySuffix(Pattern.substr(2))) Add(TCertificateFault::Name, Mismatch());
  }

  void AddWeakKey(X509* Certificate, int Depth) {
    Add(TCertificateFault::Strength, "it is too weak (" + Possessive(Certificate, Depth) +
                                         " key: " + KeyText(Certificate) +
                                         "; RSA from 2048 bits, P-256, P-384, P-521 and Ed25519 are accepted)");
  }
  void AddWeakSignature(X509* Certificate, int Depth) {
    const char* const Algorithm = OBJ_nid2ln(X509_get_signature_nid(Certificate));
    Add(TCertificateFault::Strength, "it is too weak (" + Possessive(Certificate, Depth) + " signature: " +
                                         (Algorithm ? Algorithm : "unknown") + "; SHA-256 or better is needed)");
  }

  std::string Mismatch() const {
    X509* const Certificate = X509_STORE_CTX_get0_cert(FContext);
    const std::string Hosts = HostsOf(Certificate);
    return "it is for another name (asked for was " + FHost + ", it names " +
           (Hosts.empty() ? "no host: it has no subjectAltName for one, and its subject " +
                                NameText(X509_get_subject_name(Certificate)) + " does not count"
                          : Hosts) +
           ")";
  }

  static std::string Possessive(X509* Certificate, int Depth) {
    return Depth == 0 ? "its" : "the authority's (" + NameText(X509_get_subject_name(Certificate)) + ")";
  }
  static std::string Of(X509* Certificate) {
    return Certificate ? ": " + NameText(X509_get_subject_name(Certificate)) + ", issued by " +
                             NameText(X509_get_issuer_name(Certificate))
                       : "";
  }
  std::string Cause() const { return X509_verify_cert_error_string(X509_STORE_CTX_get_error(FContext)); }

  void Add(TCertificateFault Fault, std::string Text) {
    if (std::ranges::find(FVerdict.Problems, Fault, &TCertificateVerdict::TProblem::Fault) == FVerdict.Problems.end())
      FVerdict.Problems.push_back({Fault, std::move(Text)});
  }

  X509_STORE_CTX* FContext;
  const std::string& FHost;
  TCertificateVerdict FVerdict;
};

}  // namespace

std::string TCertificateVerdict::Sentence(const std::string& Owner) const {
  if (Problems.empty()) return "";
  std::string Result = "the certificate of the " + Owner + " is refused: ", Advice;
  for (const auto& [Fault, Text] : Problems) {
    if (&Text != &Problems.front().Text) Result += "; ";
    Result += Text;
    if (Fault == TCertificateFault::Trust) Advice += ". Check which authorities are configured";
    if (Fault == TCertificateFault::Date) Advice += ". Check the clock of this machine as well";
  }
  return Result + Advice;
}

TServerCertificate SummaryOf(X509* Certificate) {
  return {NameText(X509_get_subject_name(Certificate)), NameText(X509_get_issuer_name(Certificate)),
          Seconds(X509_get0_notBefore(Certificate)), Seconds(X509_get0_notAfter(Certificate))};
}

TCertificateVerdict CheckCertificates(X509_STORE_CTX* Chain, const std::string& Host) {
  return TCheck(Chain, Host).Run();
}

}  // namespace oxSuperAPI
