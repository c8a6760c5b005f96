#include "oxSuperAPI/reference/http_certificate.h"

#include "fault_server.h"
#include "oxSuperAPI/reference/http_client_key.h"
#include "oxSuperAPI/reference/http_curl.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {
namespace {

/// How a kind of fault stands in an error text.
constexpr std::pair<char, const char*> Faults[] = {
    {'T', "not trusted"}, {'N', "for another name"}, {'D', "date is wrong"}, {'S', "too weak"}, {'P', "purpose is"}};

struct TCase {
  const char* What;
  void (*Change)(TChainPlan&);
  std::string Refused;  ///< letters of Faults; "" is a good certificate
  std::string Host = "api.example";
};

void Middle(TChainPlan& Plan) {
  Plan.HasMiddle = true;
}

/// A subjectAltName with one DNS name that may hold any byte.
std::string RawName(const std::string& Name) {
  std::string Hex;
  const std::string Bytes = std::string{'\x30', char(Name.size() + 2), '\x82', char(Name.size())} + Name;
  for (const unsigned char Byte : Bytes) Hex += "0123456789abcdef"[Byte >> 4], Hex += "0123456789abcdef"[Byte & 15];
  return "DER:" + Hex;
}

// clang-format off
const TCase Cases[] = {
    // good
    {"P-256", [](TChainPlan&) {}, ""},
    {"P-384 and SHA-384", [](TChainPlan& P) { P.Leaf.Key = P.Root.Key = "P-384"; P.Leaf.Digest = "SHA384"; }, ""},
    {"RSA 2048", [](TChainPlan& P) { P.Leaf.Key = P.Root.Key = "RSA-2048"; }, ""},
    {"Ed25519", [](TChainPlan& P) { P.Leaf.Key = P.Root.Key = "ED25519"; }, ""},
    {"intermediate", Middle, ""},
    {"intermediate with path length 0", [](TChainPlan& P) { Middle(P); P.Middle.Constraints += ",pathlen:0"; }, ""},
    {"intermediate for servers", [](TChainPlan& P) { Middle(P); P.Middle.ExtendedUsage = "serverAuth,clientAuth"; }, ""},
    {"wildcard", [](TChainPlan& P) { P.Leaf.Names = "DNS:*.api.example"; }, "", "pay.api.example"},
    {"several names", [](TChainPlan& P) { P.Leaf.Names = "DNS:other.example,DNS:API.Example"; }, ""},
    {"any common name", [](TChainPlan& P) { P.Leaf.CommonName = "other.example"; }, ""},
    {"IP address", [](TChainPlan& P) { P.Leaf.Names = "IP:192.0.2.7"; }, "", "192.0.2.7"},
    {"IPv6 address", [](TChainPlan& P) { P.Leaf.Names = "IP:2001:db8::7"; }, "", "[2001:db8::7]"},
    {"ten years", [](TChainPlan& P) { P.Leaf.ValidToDay = 3650; }, ""},
    {"no extended key usage", [](TChainPlan& P) { P.Leaf.ExtendedUsage = ""; }, ""},
    {"no usages, no constraints", [](TChainPlan& P) { P.Leaf.ExtendedUsage = P.Leaf.Usage = P.Leaf.Constraints = ""; }, ""},
    {"SHA-1 of the root itself", [](TChainPlan& P) { P.Root.Digest = "SHA1"; }, ""},
    {"name constraints that fit", [](TChainPlan& P) { P.Root.NameConstraints = "critical,permitted;DNS:example"; }, ""},
    {"unknown extension, not critical", [](TChainPlan& P) { P.Leaf.Extra = {{"1.2.3.4", "DER:0500"}}; }, ""},
    {"pinned", [](TChainPlan& P) { P.Trust = P.TrustsLeaf; }, ""},
    {"pinned, self-signed, as tools make it", [](TChainPlan& P) { P.IsSelfSigned = true; P.Trust = P.TrustsLeaf;
        P.Leaf.Constraints = "critical,CA:TRUE"; P.Leaf.ExtendedUsage = P.Leaf.Usage = ""; }, ""},
    // trust
    {"another authority of the same name", [](TChainPlan& P) { P.Trust = P.TrustsStranger; }, "T"},
    {"forged signature", [](TChainPlan& P) { P.IsForged = true; }, "T"},
    {"self-signed", [](TChainPlan& P) { P.IsSelfSigned = true; }, "T"},
    {"intermediate not shown", [](TChainPlan& P) { Middle(P); P.ShowsMiddle = false; }, "T"},
    {"issued by a server", [](TChainPlan& P) { Middle(P); P.Middle.Constraints = "critical,CA:FALSE"; P.Middle.Usage = "critical,digitalSignature"; }, "T"},
    {"intermediate without basicConstraints", [](TChainPlan& P) { Middle(P); P.Middle.Constraints = ""; }, "T"},
    {"intermediate without basicConstraints and usage", [](TChainPlan& P) { Middle(P); P.Middle.Constraints = P.Middle.Usage = ""; }, "T"},
    {"intermediate without keyCertSign", [](TChainPlan& P) { Middle(P); P.Middle.Usage = "critical,cRLSign"; }, "T"},
    {"root without basicConstraints", [](TChainPlan& P) { P.Root.Constraints = ""; }, "T"},
    {"root of version 1", [](TChainPlan& P) { P.Root.Version = 1; P.Root.Constraints = P.Root.Usage = ""; }, "T"},
    {"intermediate of version 1", [](TChainPlan& P) { Middle(P); P.Middle.Version = 1; P.Middle.Constraints = P.Middle.Usage = ""; }, "T"},
    {"path length exceeded", [](TChainPlan& P) { Middle(P); P.Root.Constraints += ",pathlen:0"; }, "T"},
    {"name constraints, not permitted", [](TChainPlan& P) { P.Root.NameConstraints = "critical,permitted;DNS:other"; }, "T"},
    {"name constraints, excluded", [](TChainPlan& P) { Middle(P); P.Middle.NameConstraints = "critical,excluded;DNS:api.example"; }, "T"},
    {"name constraints, IP", [](TChainPlan& P) { P.Root.NameConstraints = "critical,permitted;IP:10.0.0.0/255.0.0.0"; P.Leaf.Names = "IP:192.0.2.7"; }, "T", "192.0.2.7"},
    {"unknown critical extension", [](TChainPlan& P) { P.Leaf.Extra = {{"1.2.3.4", "critical,DER:0500"}}; }, "T"},
    {"unknown critical extension of the intermediate", [](TChainPlan& P) { Middle(P); P.Middle.Extra = {{"1.2.3.4", "critical,DER:0500"}}; }, "T"},
    {"policy required and missing", [](TChainPlan& P) { Middle(P); P.Middle.Extra = {{"policyConstraints", "critical,requireExplicitPolicy:0"}, {"certificatePolicies", "DER:3007300506032A0304"}}; }, "T"},
    {"extension twice", [](TChainPlan& P) { P.Leaf.Extra = {{"basicConstraints", "CA:FALSE"}}; }, "T"},
    // name
    {"another name", [](TChainPlan& P) { P.Leaf.Names = "DNS:other.example"; }, "N"},
    {"common name only", [](TChainPlan& P) { P.Leaf.Names = ""; }, "N"},
    {"common name beside an e-mail address", [](TChainPlan& P) { P.Leaf.Names = "email:a@api.example"; }, "N"},
    {"common name beside a URI", [](TChainPlan& P) { P.Leaf.Names = "URI:https://api.example/"; }, "N"},
    {"common name beside an IP address", [](TChainPlan& P) { P.Leaf.Names = "IP:192.0.2.7"; }, "N"},
    {"name below", [](TChainPlan& P) { P.Leaf.Names = "DNS:www.api.example"; }, "N"},
    {"name above", [](TChainPlan& P) { P.Leaf.Names = "DNS:example"; }, "N"},
    {"zero byte", [](TChainPlan& P) { P.Leaf.Names = RawName(std::string("api.example\0.evil.example", 24)); }, "N"},
    {"wildcard for everything", [](TChainPlan& P) { P.Leaf.Names = "DNS:*"; }, "N"},
    {"wildcard below the root", [](TChainPlan& P) { P.Leaf.Names = "DNS:*.example"; }, "N"},
    {"wildcard below a registry", [](TChainPlan& P) { P.Leaf.Names = "DNS:*.com.au"; }, "N", "api.com.au"},
    {"wildcard over two labels", [](TChainPlan& P) { P.Leaf.Names = "DNS:*.pay.example"; }, "N", "a.b.pay.example"},
    {"wildcard over no label", [](TChainPlan& P) { P.Leaf.Names = "DNS:*.api.example"; }, "N"},
    {"wildcard in the middle", [](TChainPlan& P) { P.Leaf.Names = "DNS:a.*.pay.example"; }, "N", "a.b.pay.example"},
    {"wildcard in a label", [](TChainPlan& P) { P.Leaf.Names = "DNS:a*.pay.example"; }, "N", "api.pay.example"},
    {"two wildcards", [](TChainPlan& P) { P.Leaf.Names = "DNS:*.*.pay.example"; }, "N", "a.b.pay.example"},
    {"IP address as DNS name", [](TChainPlan& P) { P.Leaf.Names = "DNS:192.0.2.7"; }, "N", "192.0.2.7"},
    {"IP address as common name", [](TChainPlan& P) { P.Leaf.CommonName = "192.0.2.7"; P.Leaf.Names = ""; }, "N", "192.0.2.7"},
    {"IP address by wildcard", [](TChainPlan& P) { P.Leaf.Names = "DNS:*.0.2.7"; }, "N", "192.0.2.7"},
    {"another IP address", [](TChainPlan& P) { P.Leaf.Names = "IP:192.0.2.8"; }, "N", "192.0.2.7"},
    // date
    {"expired", [](TChainPlan& P) { P.Leaf.ValidToDay = -1; }, "D"},
    {"not yet valid", [](TChainPlan& P) { P.Leaf.ValidFromDay = 1; }, "D"},
    {"end before beginning", [](TChainPlan& P) { P.Leaf.ValidFromDay = 2; P.Leaf.ValidToDay = 1; }, "D"},
    {"intermediate expired", [](TChainPlan& P) { Middle(P); P.Middle.ValidToDay = -1; }, "D"},
    {"intermediate not yet valid", [](TChainPlan& P) { Middle(P); P.Middle.ValidFromDay = 1; }, "D"},
    {"root expired", [](TChainPlan& P) { P.Root.ValidToDay = -1; }, "D"},
    {"root not yet valid", [](TChainPlan& P) { P.Root.ValidFromDay = 1; }, "D"},
    // strength
    {"RSA 1024", [](TChainPlan& P) { P.Leaf.Key = "RSA-1024"; }, "S"},
    {"RSA 2040", [](TChainPlan& P) { P.Leaf.Key = "RSA-2040"; }, "S"},
    {"RSA 1024 of the intermediate", [](TChainPlan& P) { Middle(P); P.Middle.Key = "RSA-1024"; }, "S"},
    {"RSA 1024 of the root", [](TChainPlan& P) { P.Root.Key = "RSA-1024"; }, "S"},
    {"P-224 of the intermediate", [](TChainPlan& P) { Middle(P); P.Middle.Key = "P-224"; }, "S"},
    {"secp256k1 of the root", [](TChainPlan& P) { P.Root.Key = "secp256k1"; }, "S"},
    {"SHA-1", [](TChainPlan& P) { P.Leaf.Digest = "SHA1"; }, "S"},
    {"SHA-1 by RSA", [](TChainPlan& P) { P.Root.Key = "RSA-2048"; P.Leaf.Digest = "SHA1"; }, "S"},
    {"SHA-1 of the intermediate", [](TChainPlan& P) { Middle(P); P.Middle.Digest = "SHA1"; }, "S"},
    {"MD5 of the intermediate", [](TChainPlan& P) { Middle(P); P.Root.Key = "RSA-2048"; P.Middle.Digest = "MD5"; }, "S"},
    {"MD5", [](TChainPlan& P) { P.Root.Key = "RSA-2048"; P.Leaf.Digest = "MD5"; }, "S"},
    {"SHA-224", [](TChainPlan& P) { P.Leaf.Digest = "SHA224"; }, "S"},
    // purpose
    {"for clients", [](TChainPlan& P) { P.Leaf.ExtendedUsage = "clientAuth"; }, "P"},
    {"for e-mail and code", [](TChainPlan& P) { P.Leaf.ExtendedUsage = "emailProtection,codeSigning"; }, "P"},
    {"for anything", [](TChainPlan& P) { P.Leaf.ExtendedUsage = "anyExtendedKeyUsage"; }, "P"},
    {"for a gated cryptography of old", [](TChainPlan& P) { P.Leaf.ExtendedUsage = "msSGC"; }, "P"},
    {"intermediate for clients", [](TChainPlan& P) { Middle(P); P.Middle.ExtendedUsage = "clientAuth"; }, "P"},
    {"an authority", [](TChainPlan& P) { P.Leaf.Constraints = "critical,CA:TRUE"; P.Leaf.Usage += ",keyCertSign"; }, "P"},
    {"key for signing lists only", [](TChainPlan& P) { P.Leaf.Usage = "critical,cRLSign"; }, "P"},
    {"key for exchange only", [](TChainPlan& P) { P.Leaf.Usage = "critical,keyAgreement"; }, "P"},
    // several at once
    {"everything", [](TChainPlan& P) { P.Trust = P.TrustsStranger; P.Leaf.Names = ""; P.Leaf.ValidToDay = -1;
        P.Leaf.Digest = "SHA1"; P.Leaf.ExtendedUsage = "clientAuth"; }, "TNDSP"},
};
// clang-format on

TEST(HTTPCertificate, IsJudgedAsABrowserJudgesIt) {
  for (const TCase& Case : Cases) {
    SCOPED_TRACE(Case.What);
    TServerOptions Options;
    Case.Change(Options.Plan);
    const TFaultServer Server({}, Options);
    THTTPCurl Client(
        {.CAFile = Server.CAFile, .ConnectTo = {{Case.Host + ":443", "127.0.0.1:" + std::to_string(Server.Port())}}});
    TStringList Log, Response;
    std::string Error;
    try {
      EXPECT_EQ(Client.httpNetPost("https://" + Case.Host + "/", {}, TStringList({"{}"}), Log, Response), 200);
    } catch (const THTTPError& Raised) {
      Error = Raised.what();
      EXPECT_EQ(Raised.Fate(), TRequestFate::NotSent);
    }
    std::string Named;
    for (const auto& [Letter, Text] : Faults)
      if (Holds(Error, Text)) Named += Letter;
    EXPECT_EQ(Named, Case.Refused) << Error;
    EXPECT_EQ(Error.empty(), Case.Refused.empty()) << Error;
    EXPECT_EQ(Server.Requests, Case.Refused.empty() ? 1 : 0);
    EXPECT_FALSE(Client.ServerCertificates().empty());
  }
}

}  // namespace
}  // namespace oxSuperAPI::tests
