#pragma once

#include <string>
#include <vector>

namespace sandbox {

/// What a TLS server needs, in PEM. The authority's private key is gone once this is made.
struct Certificates {
  std::string authority;
  std::string server;
  std::string serverKey;  ///< stays in memory; never written to a file
};

/// A new certificate authority and a server certificate signed by it, valid for thirty days, for "localhost",
/// 127.0.0.1 and `hosts`. Throws std::runtime_error when OpenSSL refuses.
Certificates MakeCertificates(const std::vector<std::string>& hosts);

}  // namespace sandbox
