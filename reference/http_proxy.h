#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// A proxy that opens connections to servers (CONNECT) and sees nothing of what passes through them.
struct TProxy {
  std::string URL;       ///< "http://host:port" or "https://host:port"; "" is none
  std::string Host;      ///< without brackets
  std::string Name;      ///< "host:port", for error texts
  bool IsTLS = false;    ///< the way to the proxy is enciphered as well
  std::string User;      ///< of the URL, decoded; "" when it has none
  std::string Password;  ///< likewise
};

/// Takes a proxy's URL apart: "http[s]://[user[:password]@]host:port", "http://" may be left out. "" is no proxy.
/// Raises TBeamError, which never shows the URL since it may hold a password.
OXSUPERAPI_EXPORT TProxy ParseProxy(std::string_view URL);

/// The hosts that are reached without the proxy. An entry is
/// - a name ("example.com"; ".example.com" and "*.example.com" mean the same): this host and all below it;
/// - an IP address or a network ("10.0.0.0/8", "fd00::/8"), compared with the URL's address: names are not looked up;
/// - "*": every host.
/// Loopback ("localhost", "*.localhost", 127.0.0.0/8, ::1) never goes through a proxy.
class OXSUPERAPI_EXPORT TNoProxy {
 public:
  /// Raises TBeamError for an entry that is none of these.
  explicit TNoProxy(const std::vector<std::string>& Entries);
  /// `Host` as in a URL, without port, an IPv6 address with or without its brackets.
  bool Covers(std::string_view Host) const;

 private:
  struct TNetwork {
    std::vector<std::uint8_t> Address;
    std::size_t Bits;
  };
  bool FEverything = false;
  std::vector<std::string> FNames;
  std::vector<TNetwork> FNetworks;
};

/// Host and port of "host:port", "[::1]:443" or "host"; the host comes without brackets, a missing port as "".
struct THostPort {
  std::string Host;  ///< in lower case, without a dot at the end
  std::string Port;  ///< digits or ""
};
/// Takes the text apart without judging it.
OXSUPERAPI_EXPORT THostPort SplitHostPort(std::string_view Text);

}  // namespace oxSuperAPI
