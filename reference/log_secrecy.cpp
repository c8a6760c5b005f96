#include "oxSuperAPI/reference/log_secrecy.h"

#include <algorithm>
#include <array>
#include <optional>

#include "oxSuperAPI/reference/log_mask_unicode.h"

namespace oxSuperAPI {

namespace {

using TWords = std::string_view;

// As Normal gives them. A plain "token" is the one to sign up with, which a person may ask to see: it is not among the
// credentials that are hidden wherever they come.
constexpr TWords Credentials[] = {"accesstoken", "refreshtoken", "idtoken", "clientsecret", "bearer", "password",
                                  "passwd",      "pwd",          "pin",     "customerpin",  "apikey", "jwt"};
constexpr TWords Secrets[] = {"clientid", "uuid", "userpin", "newpin", "oldpin"};
constexpr TWords SecretParts[] = {"token",         "secret", "password", "passwd",    "passphrase", "authorization",
                                  "authorisation", "apikey", "cookie",   "assertion", "credential"};
constexpr TWords NoSecrets[] = {"tokentype"};
constexpr TWords Personals[] = {"tfn",
                                "dob",
                                "elementvalue",
                                "bankdetail",
                                "familyname",
                                "givenname",
                                "othergivenname",
                                "firstname",
                                "lastname",
                                "surname",
                                "middlename",
                                "mobile",
                                "areacode",
                                "number",
                                "address",
                                "line1",
                                "line2",
                                "line3",
                                "line4",
                                "street",
                                "suburb",
                                "postcode",
                                "contactname",
                                "fullname",
                                "useracceptingtermsandconditions"};
constexpr TWords PersonalParts[] = {"taxfilenumber", "birth", "bsb", "account", "phone", "email"};
constexpr TWords NamesOfPairs[] = {"name",  "key",      "field",     "id",   "elementname",           "element",
                                   "label", "property", "parameter", "type", "businessidentifiertype"};
constexpr TWords ValuesOfPairs[] = {"value", "elementvalue", "val", "content", "text", "data"};

template <std::size_t Count>
bool IsOneOf(std::string_view Name, const TWords (&List)[Count]) {
  return std::ranges::find(List, Name) != std::end(List);
}
template <std::size_t Count>
bool HoldsOneOf(std::string_view Name, const TWords (&List)[Count]) {
  return std::ranges::any_of(List, [&](TWords Part) { return Name.find(Part) != Name.npos; });
}

/// Letters, in lower case, and digits; nothing else.
std::string Normal(std::string_view Name) {
  std::string Result;
  for (const char Each : Name)
    if ((Each >= 'a' && Each <= 'z') || (Each >= '0' && Each <= '9'))
      Result += Each;
    else if (Each >= 'A' && Each <= 'Z')
      Result += static_cast<char>(Each + ('a' - 'A'));
  return Result;
}

TSecrecy SecrecyOfNormal(std::string_view Name) {
  if (IsOneOf(Name, NoSecrets)) return TSecrecy::Open;
  if (IsOneOf(Name, Credentials)) return TSecrecy::Credential;
  if (IsOneOf(Name, Secrets) || HoldsOneOf(Name, SecretParts)) return TSecrecy::Secret;
  if (IsOneOf(Name, Personals) || HoldsOneOf(Name, PersonalParts)) return TSecrecy::Personal;
  return TSecrecy::Open;
}

bool IsHex(char Each) {
  return (Each >= '0' && Each <= '9') || (Each >= 'a' && Each <= 'f') || (Each >= 'A' && Each <= 'F');
}

bool IsGUID(std::string_view Word) {
  if (Word.size() != 36) return false;
  for (std::size_t At = 0; At < Word.size(); ++At)
    if (At == 8 || At == 13 || At == 18 || At == 23 ? Word[At] != '-' : !IsHex(Word[At])) return false;
  return true;
}

}  // namespace

TSecrecy SecrecyOf(std::string_view Name) {
  const TSecrecy Whole = SecrecyOfNormal(Normal(Name));
  const std::size_t Dot = Name.rfind('.');
  return Dot == Name.npos ? Whole : std::max(Whole, SecrecyOfNormal(Normal(Name.substr(Dot))));
}

TSecrecy SecrecyOfNested(std::string_view Name) {
  return Normal(Name) == "name" ? TSecrecy::Personal : SecrecyOf(Name);
}

bool IsNameOfPair(std::string_view Name) {
  return IsOneOf(Normal(Name), NamesOfPairs);
}
bool IsValueOfPair(std::string_view Name) {
  return IsOneOf(Normal(Name), ValuesOfPairs);
}

std::string DecodeName(std::string_view Name) {
  std::string Result;
  for (std::size_t At = 0; At < Name.size(); ++At) {
    const std::string_view Rest = Name.substr(At);
    if (const std::optional<unsigned> Byte = Rest[0] == '%' ? HexValue(Rest.substr(1, 2), 2) : std::nullopt) {
      Result += static_cast<char>(*Byte);
      At += 2;
    } else if (const auto Unit = Rest.starts_with("\\u") ? HexValue(Rest.substr(2, 4), 4) : std::nullopt) {
      AppendUTF8(Result, *Unit);
      At += 5;
    } else {
      Result += Rest[0];
    }
  }
  return Result;
}

bool LooksLikeToken(std::string_view Word, std::size_t AtLeast) {
  if (Word.size() >= 20 && Word.starts_with("eyJ")) return true;
  if (Word.size() < AtLeast || IsGUID(Word)) return false;
  const auto IsDigit = [](char Each) { return Each >= '0' && Each <= '9'; };
  const auto IsLetter = [](char Each) { return (Each >= 'a' && Each <= 'z') || (Each >= 'A' && Each <= 'Z'); };
  return std::ranges::any_of(Word, IsDigit) && std::ranges::any_of(Word, IsLetter);
}

}  // namespace oxSuperAPI
