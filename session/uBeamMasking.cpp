#include "oxSuperAPI/session/uBeamMasking.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "oxSuperAPI/foundation/uBeamText.h"

namespace oxSuperAPI {

namespace {

/// What a character means in a value that is being masked.
enum class TMeaning : std::uint8_t { Hidden, Kept, Delimiter, BeyondAscii };

constexpr std::array<TMeaning, 256> Meanings = [] {
  std::array<TMeaning, 256> Result{};
  for (const unsigned char Byte : {' ', '"', ':'}) Result[Byte] = TMeaning::Kept;
  for (const unsigned char Byte : {'&', ';', ',', '{', '}'}) Result[Byte] = TMeaning::Delimiter;
  for (std::size_t Byte = 0x80; Byte < 256; ++Byte) Result[Byte] = TMeaning::BeyondAscii;
  return Result;
}();

TMeaning MeaningOf(char Byte) {
  return Meanings[static_cast<unsigned char>(Byte)];
}

char Lower(char Byte) {
  return Byte >= 'A' && Byte <= 'Z' ? static_cast<char>(Byte + 32) : Byte;
}
bool StartsWith(std::string_view Text, std::string_view LowerKey) {
  return Text.size() >= LowerKey.size() && std::ranges::equal(Text.substr(0, LowerKey.size()), LowerKey, {}, Lower);
}

/// Where the part of `Text` ends that a key found before `From` may mask.
std::size_t ValueEnd(std::string_view Text, std::size_t From) {
  while (From < Text.size() && MeaningOf(Text[From]) != TMeaning::Delimiter) ++From;
  return From;
}

/// Masks a text in place, from its front to its end. A mask has at most as many bytes as what it hides, so the result
/// never overtakes what is still to be read.
class TMask {
 public:
  explicit TMask(std::string& Text) : FText(Text) {}

  void KeepUpTo(std::size_t End) {
    if (FWritten != FRead) std::copy(At(FRead), At(End), At(FWritten));
    FWritten += End - FRead;
    FRead = End;
  }

  void HideUpTo(std::size_t End) {
    char* Out = FText.data() + FWritten;
    const char* const Stop = FText.data() + End;
    for (const char* In = FText.data() + FRead; In < Stop;) {
      const TMeaning Meaning = MeaningOf(*In);
      if (Meaning != TMeaning::BeyondAscii) {
        *Out++ = Meaning == TMeaning::Kept ? *In : '*';
        ++In;
        continue;
      }
      const char* const First = In;
      while (In < Stop && MeaningOf(*In) == TMeaning::BeyondAscii) ++In;
      Out = std::fill_n(Out, CharacterCount({First, In}), '*');
    }
    FWritten = static_cast<std::size_t>(Out - FText.data());
    FRead = End;
  }

  void Finish() {
    KeepUpTo(FText.size());
    FText.resize(FWritten);
  }

 private:
  std::string::iterator At(std::size_t Index) { return FText.begin() + static_cast<std::ptrdiff_t>(Index); }

  std::string& FText;
  std::size_t FRead = 0;
  std::size_t FWritten = 0;
};

/// In the order in which they are hidden. None is part of another one, and no two of them can overlap in a text.
constexpr std::string_view CredentialKeys[] = {"clientid", "client_id", "clientsecret", "client_secret", "uuid"};
constexpr std::size_t KeyCount = std::size(CredentialKeys);

/// An occurrence of one of them. `End` is behind it.
struct TFoundKey {
  std::size_t Key = KeyCount;
  std::size_t End = std::string_view::npos;
  explicit operator bool() const { return Key < KeyCount; }
};

/// Every key begins like this: with "cl" or "uu". No short-circuit, so that a loop of it needs no branches.
bool MayBeKey(char First, char Second) {
  return (((First | 0x20) == 'c') & ((Second | 0x20) == 'l')) | (((First | 0x20) == 'u') & ((Second | 0x20) == 'u'));
}

/// The first of the credential keys in `Text` from `From` on.
TFoundKey FindKey(std::string_view Text, std::size_t From) {
  constexpr std::size_t Block = 32;
  while (From + 1 < Text.size()) {
    const bool IsWhole = Text.size() - From > Block;
    if (IsWhole) {  // looked through at once: a loop of fixed length becomes vector instructions
      unsigned char Any = 0;
      for (std::size_t Index = 0; Index < Block; ++Index) Any |= MayBeKey(Text[From + Index], Text[From + Index + 1]);
      if (!Any) {
        From += Block;
        continue;
      }
    }
    for (const std::size_t End = IsWhole ? From + Block : Text.size() - 1; From < End; ++From) {
      if (!MayBeKey(Text[From], Text[From + 1])) continue;
      for (std::size_t Key = 0; Key < KeyCount; ++Key)
        if (StartsWith(Text.substr(From), CredentialKeys[Key])) return {Key, From + CredentialKeys[Key].size()};
    }
  }
  return {};
}

}  // namespace

std::string HideString(std::string Text, std::string_view Key) {
  TMask Mask(Text);
  const auto Find = [&](std::size_t From) {
    const auto Begin = Text.begin() + static_cast<std::ptrdiff_t>(From);
    const auto Found = std::search(Begin, Text.end(), Key.begin(), Key.end(),
                                   [](char Byte, char KeyByte) { return Lower(Byte) == KeyByte; });
    return static_cast<std::size_t>(Found - Text.begin());
  };
  for (std::size_t From = 0; !Key.empty() && (From = Find(From)) < Text.size();) {
    const std::size_t Value = From + Key.size();
    From = ValueEnd(Text, Value);
    if (From == Value) break;
    Mask.KeepUpTo(Value);
    Mask.HideUpTo(From);
  }
  Mask.Finish();
  return Text;
}

// One scan instead of one for each key. That gives the same because neither a key nor a mask goes beyond a delimiter:
// between two delimiters each key can only hide what stands behind its first occurrence, what is hidden holds no key,
// and so the first occurrence of all decides. Only an occurrence with nothing behind it, which ends the search for its
// key, depends on the order: it counts unless a key before it in that order has hidden it.
std::string HideCredentials(std::string Text) {
  TMask Mask(Text);
  std::array<bool, KeyCount> Ended{};
  for (TFoundKey Found = FindKey(Text, 0); Found;) {
    const std::size_t End = ValueEnd(Text, Found.End);
    std::array<std::size_t, KeyCount> FirstEnd;
    FirstEnd.fill(std::string_view::npos);
    for (; Found && Found.End <= End; Found = FindKey(Text, Found.End))
      FirstEnd[Found.Key] = std::min(FirstEnd[Found.Key], Found.End);

    std::size_t Visible = End;
    for (std::size_t Key = 0; Key < KeyCount; ++Key) {
      if (Ended[Key] || FirstEnd[Key] > Visible) continue;
      if (FirstEnd[Key] == End)
        Ended[Key] = true;
      else
        Visible = FirstEnd[Key];
    }
    Mask.KeepUpTo(Visible);
    Mask.HideUpTo(End);
  }
  Mask.Finish();
  return Text;
}

}  // namespace oxSuperAPI
