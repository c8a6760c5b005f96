#include "oxSuperAPI/reference/log_masking.h"

#include <algorithm>
#include <array>

#include "oxSuperAPI/reference/log_mask_context.h"
#include "oxSuperAPI/reference/log_mask_cuts.h"

namespace oxSuperAPI {

namespace {

constexpr std::array<std::string_view, 3> Names = {"off", "tokens", "private"};

std::uint64_t Digest(std::string_view Text) {
  std::uint64_t Value = 0xCBF29CE484222325u;
  for (const char Each : Text) Value = (Value ^ static_cast<unsigned char>(Each)) * 0x100000001B3u;
  return Value;
}

/// Words that would make ordinary text unreadable are not looked for.
bool IsTelling(std::string_view Word) {
  return Word.size() >= 5 && Word.find_first_of("0123456789@") != Word.npos;
}

/// JSON, or what was meant to be. A text that begins with a word in brackets, or with a quotation, is none; nor is a
/// GUID in braces, as messages are numbered.
bool LooksLikeJSON(std::string_view Text) {
  constexpr std::string_view Blanks = " \t\r\n";
  if (Text.starts_with("\xEF\xBB\xBF")) Text.remove_prefix(3);
  const std::size_t First = Text.find_first_not_of(Blanks);
  if (First == Text.npos) return false;
  const std::size_t Second = Text.find_first_not_of(" \t\r\n*", First + 1);
  const char Next = Second == Text.npos ? '\0' : Text[Second];
  if (Text[First] == '{') return Text.size() != 38 || Text.back() != '}' || !IsGUID(Text.substr(1, 36));
  if (Text[First] == '[') return std::string_view("{[\"]-0123456789\0", 16).find(Next) != Text.npos;
  // A whole text in quotes is JSON as well; one that only begins with a quotation is not.
  if (Text[First] != '"') return false;
  std::size_t End = First + 1;
  while (End < Text.size() && Text[End] != '"') End += Text[End] == '\\' ? 2 : 1;
  const std::size_t Behind = Text.find_first_not_of(Blanks, std::min(End + 1, Text.size()));
  return End < Text.size() && (Behind == Text.npos || Text[Behind] == ':');
}

}  // namespace

std::string_view LogMaskingName(TLogMasking Masking) {
  return Names.at(static_cast<std::size_t>(Masking));
}

TLogMasking LogMaskingOf(std::string_view Name) {
  const auto Found = std::ranges::find(Names, Name);
  if (Found == Names.end())
    throw TBeamError("The masking of the log is \"off\", \"tokens\" or \"private\", not \"" + std::string(Name) + "\"");
  return static_cast<TLogMasking>(Found - Names.begin());
}

void TMaskContext::Remember(TSecrecy Secrecy, std::string_view Value) {
  if (Value.empty() || Value == HiddenMark || Value.find_first_not_of('*') == Value.npos) return;
  if (Secrecy == TSecrecy::Credential) {
    if (FLearned++ < MostLearned) FKnown->Learn(Value);
  } else if (Secrecy == TSecrecy::Personal) {
    for (std::size_t At = 0; At < Value.size();) {
      const std::size_t End = EndOfWord(Value, At);
      if (const std::string_view Word = Value.substr(At, End - At); IsTelling(Word)) FPersonal.insert(Digest(Word));
      At = std::max(End, At + 1);
    }
  }
}

bool TMaskContext::IsKnown(std::string_view Word) const {
  return FKnown->IsKnown(Word) || (!FPersonal.empty() && IsTelling(Word) && FPersonal.contains(Digest(Word)));
}

std::optional<std::string> MaskAnyText(std::string_view Text, TMaskContext& Context, int Depth) {
  if (Depth > DeepestText) return std::string(HiddenMark);
  return LooksLikeJSON(Text) ? MaskJSONText(Text, Context, Depth) : MaskPlainText(Text, Context, Depth);
}

TLogMasker::TLogMasker(TLogMasking Masking, std::shared_ptr<TKnownSecrets> Known)
    : FContext(std::make_unique<TMaskContext>(Masking, std::move(Known))) {}
TLogMasker::TLogMasker(TLogMasker&&) noexcept = default;
TLogMasker& TLogMasker::operator=(TLogMasker&&) noexcept = default;
TLogMasker::~TLogMasker() = default;

std::string TLogMasker::Mask(std::string Text) {
  if (FContext->Masking() == TLogMasking::Off) return Text;
  std::optional<std::string> Masked = MaskAnyText(Text, *FContext);
  return Masked ? std::move(*Masked) : std::move(Text);
}

}  // namespace oxSuperAPI
