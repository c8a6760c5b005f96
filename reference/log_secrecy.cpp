#include "oxSuperAPI/reference/log_secrecy.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "oxSuperAPI/reference/log_mask_unicode.h"

namespace oxSuperAPI {

namespace {

/// How some words begin, by their first three characters: it tells most names from all of the words at once.
class TBeginnings {
 public:
  constexpr void Add(std::string_view Word) { FSeen[Slot(Word.data()) / 64] |= Bit(Word.data()); }
  constexpr TBeginnings operator|(const TBeginnings& Others) const {
    TBeginnings Result = *this;
    for (std::size_t At = 0; At < FSeen.size(); ++At) Result.FSeen[At] |= Others.FSeen[At];
    return Result;
  }
  /// One of the words may be at the beginning of `Name`, or anywhere in it. @{
  bool MayBegin(std::string_view Name) const { return Name.size() > 2 && Has(Name.data()); }
  bool MayStandIn(std::string_view Name) const {
    for (std::size_t At = 0; At + 2 < Name.size(); ++At)
      if (Has(Name.data() + At)) return true;
    return false;
  }
  /// @}

 private:
  static constexpr unsigned Slot(const char* Three) {
    const auto Code = [Three](int At) { return static_cast<unsigned>(static_cast<unsigned char>(Three[At])); };
    return (Code(0) + 37 * Code(1) + 331 * Code(2)) % 1024;
  }
  static constexpr std::uint64_t Bit(const char* Three) { return std::uint64_t{1} << (Slot(Three) % 64); }
  bool Has(const char* Three) const { return (FSeen[Slot(Three) / 64] & Bit(Three)) != 0; }

  std::array<std::uint64_t, 16> FSeen{};
};

/// Words of three characters or more, to compare a name with that Normal gave.
template <std::size_t Count>
class TWords {
 public:
  template <class... Texts>
  constexpr explicit TWords(const Texts&... Words) : FWords{Words...} {
    for (const std::string_view Word : FWords) FBeginnings.Add(Word);
  }
  bool Hold(std::string_view Name) const { return std::ranges::find(FWords, Name) != FWords.end(); }
  /// One of the words stands somewhere in `Name`.
  bool StandIn(std::string_view Name) const {
    const auto IsHere = [&](std::string_view Word) { return Name.starts_with(Word); };
    for (; !Name.empty(); Name.remove_prefix(1))
      if (FBeginnings.MayBegin(Name) && std::ranges::any_of(FWords, IsHere)) return true;
    return false;
  }
  constexpr const TBeginnings& Beginnings() const { return FBeginnings; }

 private:
  std::array<std::string_view, Count> FWords;
  TBeginnings FBeginnings;
};
template <class... Texts>
TWords(const Texts&...) -> TWords<sizeof...(Texts)>;

// As Normal gives them. A plain "token" is the one to sign up with, which a person may ask to see: it is not among the
// credentials that are hidden wherever they come.
constexpr TWords Credentials{"accesstoken", "refreshtoken", "idtoken", "clientsecret", "bearer", "password",
                             "passwd",      "pwd",          "pin",     "customerpin",  "apikey", "jwt"};
constexpr TWords Secrets{"clientid", "uuid", "userpin", "newpin", "oldpin"};
constexpr TWords SecretParts{"token",         "secret", "password", "passwd",    "passphrase", "authorization",
                             "authorisation", "apikey", "cookie",   "assertion", "credential"};
constexpr TWords NoSecrets{"tokentype"};
constexpr TWords Personals{"tfn",
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
constexpr TWords PersonalParts{"taxfilenumber", "birth", "bsb", "account", "phone", "email"};
constexpr std::string_view NamesOfPairs[] = {
    "name",  "key",      "field",     "id",   "elementname",           "element",
    "label", "property", "parameter", "type", "businessidentifiertype"};
constexpr std::string_view ValuesOfPairs[] = {"value", "elementvalue", "val", "content", "text", "data"};

constexpr TBeginnings OfNames =
    Credentials.Beginnings() | Secrets.Beginnings() | NoSecrets.Beginnings() | Personals.Beginnings();
constexpr TBeginnings OfParts = SecretParts.Beginnings() | PersonalParts.Beginnings();

/// What each character is in a normal name: itself, a letter in lower case, or nothing.
constexpr std::array<char, 256> NormalCharacters = [] {
  std::array<char, 256> Result{};
  for (char Each = '0'; Each <= '9'; ++Each) Result[static_cast<std::size_t>(Each)] = Each;
  for (char Each = 'a'; Each <= 'z'; ++Each)
    Result[static_cast<std::size_t>(Each)] = Result[static_cast<std::size_t>(Each - 'a' + 'A')] = Each;
  return Result;
}();

/// Letters, in lower case, and digits; nothing else.
std::string Normal(std::string_view Name) {
  std::string Result(Name.size(), '\0');
  std::size_t Size = 0;
  for (const char Each : Name) {
    const char Kept = NormalCharacters[static_cast<unsigned char>(Each)];
    Result[Size] = Kept;
    Size += Kept != '\0';
  }
  Result.resize(Size);
  return Result;
}

TSecrecy SecrecyOfNormal(std::string_view Name) {
  const bool IsName = OfNames.MayBegin(Name);
  const bool HasPart = OfParts.MayStandIn(Name);
  if (IsName && NoSecrets.Hold(Name)) return TSecrecy::Open;
  if (IsName && Credentials.Hold(Name)) return TSecrecy::Credential;
  if ((IsName && Secrets.Hold(Name)) || (HasPart && SecretParts.StandIn(Name))) return TSecrecy::Secret;
  if ((IsName && Personals.Hold(Name)) || (HasPart && PersonalParts.StandIn(Name))) return TSecrecy::Personal;
  return TSecrecy::Open;
}

TSecrecy Secrecy(std::string_view Name, std::string_view Plain) {
  const TSecrecy Whole = SecrecyOfNormal(Plain);
  const std::size_t Dot = Name.rfind('.');
  return Dot == Name.npos ? Whole : std::max(Whole, SecrecyOfNormal(Normal(Name.substr(Dot))));
}

bool IsOneOf(std::string_view Name, std::span<const std::string_view> List) {
  return std::ranges::find(List, Name) != List.end();
}

bool IsHex(char Each) {
  return (Each >= '0' && Each <= '9') || (Each >= 'a' && Each <= 'f') || (Each >= 'A' && Each <= 'F');
}

}  // namespace

TSecrecy SecrecyOf(std::string_view Name) {
  return Secrecy(Name, Normal(Name));
}

TKeyMeaning MeaningOf(std::string_view Name) {
  const std::string Plain = Normal(Name);
  const TSecrecy Own = Secrecy(Name, Plain);
  return {Own, Plain == "name" ? TSecrecy::Personal : Own, IsOneOf(Plain, NamesOfPairs), IsOneOf(Plain, ValuesOfPairs)};
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

bool IsGUID(std::string_view Word) {
  if (Word.size() != 36) return false;
  for (std::size_t At = 0; At < Word.size(); ++At)
    if (At == 8 || At == 13 || At == 18 || At == 23 ? Word[At] != '-' : !IsHex(Word[At])) return false;
  return true;
}

bool LooksLikeToken(std::string_view Word, std::size_t AtLeast) {
  if (Word.size() >= 20 && Word.starts_with("eyJ")) return true;
  if (Word.size() < AtLeast || IsGUID(Word)) return false;
  const auto IsDigit = [](char Each) { return Each >= '0' && Each <= '9'; };
  const auto IsLetter = [](char Each) { return (Each >= 'a' && Each <= 'z') || (Each >= 'A' && Each <= 'Z'); };
  return std::ranges::any_of(Word, IsDigit) && std::ranges::any_of(Word, IsLetter);
}

}  // namespace oxSuperAPI
