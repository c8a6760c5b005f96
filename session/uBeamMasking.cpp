#include "oxSuperAPI/session/uBeamMasking.h"

#include <algorithm>

#include "oxSuperAPI/foundation/uBeamText.h"

namespace oxSuperAPI {

namespace {

constexpr std::string_view Delimiters = "&;,{}";
constexpr std::string_view Exempt = " \":";

/// A text and its lower-case twin, masked together and in place: a mask has at most as many bytes as what it hides, so
/// the result never overtakes what is still to be read.
class TMaskedText {
 public:
  explicit TMaskedText(std::string_view Text) : FText(Text), FLower(LowerCase(Text)) {}

  void Hide(std::string_view Key) {
    FRead = FWritten = 0;
    while (!Key.empty()) {
      const std::size_t Found = FLower.find(Key, FRead);
      if (Found == std::string::npos) break;
      KeepUpTo(Found + Key.size());
      const std::size_t ValueEnd = std::min(FText.find_first_of(Delimiters, FRead), FText.size());
      if (ValueEnd == FRead) break;
      while (FRead < ValueEnd) {
        KeepUpTo(std::min(FText.find_first_not_of(Exempt, FRead), ValueEnd));
        StarUpTo(std::min(FText.find_first_of(Exempt, FRead), ValueEnd));
      }
    }
    KeepUpTo(FText.size());
    FText.resize(FWritten);
    FLower.resize(FWritten);
  }

  std::string Take() { return std::move(FText); }

 private:
  void KeepUpTo(std::size_t End) {
    const std::size_t Count = End - FRead;
    if (FWritten != FRead) {
      std::copy_n(FText.data() + FRead, Count, FText.data() + FWritten);
      std::copy_n(FLower.data() + FRead, Count, FLower.data() + FWritten);
    }
    FWritten += Count;
    FRead = End;
  }

  void StarUpTo(std::size_t End) {
    const std::size_t Stars = CharacterCount(std::string_view(FText).substr(FRead, End - FRead));
    std::fill_n(FText.begin() + static_cast<std::ptrdiff_t>(FWritten), Stars, '*');
    std::fill_n(FLower.begin() + static_cast<std::ptrdiff_t>(FWritten), Stars, '*');
    FWritten += Stars;
    FRead = End;
  }

  std::string FText;
  std::string FLower;
  std::size_t FRead = 0;
  std::size_t FWritten = 0;
};

}  // namespace

std::string HideString(std::string_view Text, std::string_view Key) {
  TMaskedText Masked(Text);
  Masked.Hide(Key);
  return Masked.Take();
}

std::string HideCredentials(std::string_view Text) {
  TMaskedText Masked(Text);
  for (const std::string_view Key : {"clientid", "client_id", "clientsecret", "client_secret", "uuid"})
    Masked.Hide(Key);
  return Masked.Take();
}

}  // namespace oxSuperAPI
