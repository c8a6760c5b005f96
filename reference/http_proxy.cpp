#include "oxSuperAPI/reference/http_proxy.h"

#include <arpa/inet.h>

#include <algorithm>
#include <charconv>

namespace oxSuperAPI {

namespace {

std::string Lower(std::string_view Text) {
  std::string Result(Text);
  for (char& Byte : Result)
    if (Byte >= 'A' && Byte <= 'Z') Byte = static_cast<char>(Byte + ('a' - 'A'));
  return Result;
}

bool IsNumber(std::string_view Text, unsigned Most, unsigned& Number) {
  const auto [End, Error] = std::from_chars(Text.data(), Text.data() + Text.size(), Number);
  return Error == std::errc() && End == Text.data() + Text.size() && Number <= Most;
}

bool IsHostName(std::string_view Text) {
  return !Text.empty() && Text.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-._") == std::string_view::npos;
}

/// The bytes of an IPv4 or IPv6 address; none when `Text` is neither.
std::vector<std::uint8_t> AddressBytes(const std::string& Text) {
  for (const auto& [Family, Size] : {std::pair{AF_INET, 4u}, std::pair{AF_INET6, 16u}}) {
    std::vector<std::uint8_t> Bytes(Size);
    if (inet_pton(Family, Text.c_str(), Bytes.data()) == 1) return Bytes;
  }
  return {};
}

bool Decode(std::string_view Text, std::string& Out) {
  for (std::size_t At = 0; At < Text.size(); ++At) {
    if (Text[At] != '%') {
      Out += Text[At];
      continue;
    }
    unsigned Code = 0;
    const std::string_view Hex = Text.substr(At + 1, 2);
    const auto [End, Error] = std::from_chars(Hex.data(), Hex.data() + Hex.size(), Code, 16);
    if (Hex.size() != 2 || Error != std::errc() || End != Hex.data() + 2) return false;
    Out += static_cast<char>(Code);
    At += 2;
  }
  return Out.find('\0') == std::string::npos;
}

}  // namespace

THostPort SplitHostPort(std::string_view Text) {
  THostPort Result;
  const std::size_t Bracket = Text.starts_with('[') ? Text.find(']') : 0;
  const std::size_t Colon = Bracket == std::string_view::npos ? Bracket : Text.find(':', Bracket);
  if (Colon != std::string_view::npos) Result.Port = Text.substr(Colon + 1);
  std::string_view Host = Text.substr(0, Colon);
  if (Host.starts_with('[') && Host.ends_with(']')) Host = Host.substr(1, Host.size() - 2);
  if (Host.ends_with('.')) Host.remove_suffix(1);
  Result.Host = Lower(Host);
  return Result;
}

TProxy ParseProxy(std::string_view URL) {
  if (URL.empty()) return {};
  const auto Fail = [](const char* Reason) {
    throw TBeamError(std::string("The proxy (http.proxy) ") + Reason +
                     ". It has to look like \"http://host:port\" or \"https://host:port\"");
  };
  TProxy Result;
  std::string_view Rest = URL;
  std::string Scheme = "http";
  if (const std::size_t End = Rest.find("://"); End != std::string_view::npos) {
    Scheme = Lower(Rest.substr(0, End));
    Rest.remove_prefix(End + 3);
  }
  if (Scheme != "http" && Scheme != "https") Fail("has an unknown scheme");
  Result.IsTLS = Scheme == "https";
  if (Rest.ends_with('/')) Rest.remove_suffix(1);
  if (const std::size_t At = Rest.rfind('@'); At != std::string_view::npos) {
    const std::string_view Credentials = Rest.substr(0, At);
    const std::size_t Colon = Credentials.find(':');
    const bool HasPassword = Colon != std::string_view::npos;
    if (!Decode(Credentials.substr(0, Colon), Result.User) || Result.User.empty() ||
        !Decode(HasPassword ? Credentials.substr(Colon + 1) : "", Result.Password))
      Fail("has a user or password that cannot be read: write special characters as %XX");
    Rest.remove_prefix(At + 1);
  }
  const THostPort Place = SplitHostPort(Rest);
  unsigned Port = 0;
  const bool IsIPv6 = Rest.starts_with('[');
  if (IsIPv6 ? AddressBytes(Place.Host).size() != 16 : !IsHostName(Place.Host)) Fail("has no valid host");
  if (!IsNumber(Place.Port, 65'535, Port) || Port == 0) Fail("has no valid port");
  Result.Host = Place.Host;
  Result.Name = (IsIPv6 ? "[" + Place.Host + "]" : Place.Host) + ":" + Place.Port;
  Result.URL = Scheme + "://" + Result.Name;
  return Result;
}

TNoProxy::TNoProxy(const std::vector<std::string>& Entries) {
  std::vector<std::string> All{"localhost", "127.0.0.0/8", "::1"};
  All.insert(All.end(), Entries.begin(), Entries.end());
  for (const std::string& Entry : All) {
    const auto Fail = [&] {
      throw TBeamError("The entry \"" + Entry +
                       "\" of http.no_proxy is neither a host name, an IP address, a network (10.0.0.0/8) nor \"*\"");
    };
    if (Entry == "*") {
      FEverything = true;
      continue;
    }
    const std::size_t Slash = Entry.find('/');
    const bool IsBracketed = Entry.starts_with('[') && Entry.ends_with(']');
    const std::string Place = IsBracketed ? Entry.substr(1, Entry.size() - 2) : Entry.substr(0, Slash);
    if (std::vector<std::uint8_t> Address = AddressBytes(Place); !Address.empty()) {
      const auto Most = static_cast<unsigned>(8 * Address.size());
      unsigned Bits = Most;
      if (!IsBracketed && Slash != std::string::npos &&
          !IsNumber(std::string_view(Entry).substr(Slash + 1), Most, Bits))
        Fail();
      FNetworks.push_back({std::move(Address), Bits});
      continue;
    }
    std::string Name = Lower(Entry);
    Name.erase(0, Name.starts_with("*.") ? 2 : Name.starts_with('.') ? 1 : 0);
    if (Name.ends_with('.')) Name.pop_back();
    if (!IsHostName(Name)) Fail();
    FNames.push_back(std::move(Name));
  }
}

bool TNoProxy::Covers(std::string_view Place) const {
  if (FEverything) return true;
  const std::string Host =
      SplitHostPort(Place.find(':') != Place.rfind(':') && !Place.starts_with('[') ? "[" + std::string(Place) + "]"
                                                                                   : std::string(Place))
          .Host;
  const std::vector<std::uint8_t> Address = AddressBytes(Host);
  if (Address.empty())
    return std::ranges::any_of(FNames,
                               [&](const std::string& Name) { return Host == Name || Host.ends_with("." + Name); });
  return std::ranges::any_of(FNetworks, [&](const TNetwork& Network) {
    if (Network.Address.size() != Address.size()) return false;
    for (std::size_t Bit = 0; Bit < Network.Bits; ++Bit)
      if (((Network.Address[Bit / 8] ^ Address[Bit / 8]) >> (7 - Bit % 8)) & 1) return false;
    return true;
  });
}

}  // namespace oxSuperAPI
