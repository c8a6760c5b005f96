#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "oxSuperAPI/host/uBeamError.h"

struct x509_st;  // of OpenSSL
struct x509_store_ctx_st;

namespace oxSuperAPI {

/// A certificate that a server showed.
struct TServerCertificate {
  std::string Subject;         ///< printable, as are all names here: "CN=api.example"
  std::string Issuer;          ///< the subject of whoever signed it
  std::int64_t ValidFrom = 0;  ///< seconds since 1970-01-01 UTC
  std::int64_t ValidTo = 0;    ///< likewise
};

/// What a person wants to know of a certificate.
TServerCertificate SummaryOf(x509_st* Certificate);

/// What may be wrong with a server's certificates.
enum class TCertificateFault : std::uint8_t {
  Trust,     ///< no trusted authority vouches for it, or one that may not do so
  Name,      ///< it is for another host
  Date,      ///< it, or an authority's, is over or has not begun
  Strength,  ///< a key is too short or a signature can be forged
  Purpose    ///< it is not made for a server
};

/// What a check found. Everything of one kind is reported by its first case.
struct TCertificateVerdict {
  /// One kind of fault, in words: "it is for another name (...)".
  struct TProblem {
    TCertificateFault Fault;  ///< no two problems of a verdict share it
    std::string Text;         ///< printable
  };
  std::vector<TServerCertificate> Chain;  ///< the server's own first
  std::vector<TProblem> Problems;         ///< empty: the certificates are in order

  /// All problems in one sentence, with advice; "" when there is none. `Owner` is "server" or "proxy".
  std::string Sentence(const std::string& Owner) const;
};

/// Verifies what a server showed as a current browser does (docs/https.md), not only as OpenSSL does by itself. `Host`
/// is the name or IP address that was asked for. Goes on behind the first fault, so that the verdict has them all.
TCertificateVerdict CheckCertificates(x509_store_ctx_st* Chain, const std::string& Host);

}  // namespace oxSuperAPI
