#include <algorithm>
#include <array>

#include "oxSuperAPI/reference/log_mask_context.h"
#include "oxSuperAPI/reference/log_mask_cuts.h"

namespace oxSuperAPI {

namespace {

bool IsBlank(char Each) {
  return Each == ' ' || Each == '\t';
}
bool IsDigit(char Each) {
  return Each >= '0' && Each <= '9';
}
bool IsOneOf(char Each, std::string_view List) {
  return std::ranges::find(List, Each) != List.end();
}
/// What may stand between a key and its separator.
constexpr std::array<bool, 256> BeforeSeparator = [] {
  std::array<bool, 256> Result{};
  for (const char Each : std::string_view(" \t\\\"'[](){}*,")) Result[static_cast<unsigned char>(Each)] = true;
  return Result;
}();
bool SameName(std::string_view Word, std::string_view Lower) {
  return std::ranges::equal(Word, Lower, [](char Left, char Right) {
    return (Left >= 'A' && Left <= 'Z' ? static_cast<char>(Left + 32) : Left) == Right;
  });
}

/// Text that is no JSON: header lines, forms, URLs, markup, messages; also what remains of JSON that is none any more.
/// It goes from word to word. A word that is a key, with what can stand between a key and its value behind it, hides
/// that value; other words are hidden for what they are.
class TPlainScanner {
 public:
  TPlainScanner(std::string_view Text, TMaskContext& Context, int Depth)
      : FText(Text), FContext(Context), FDepth(Depth), FOneWord(WordEnd(0) == Text.size()) {}

  std::optional<std::string> Run() {
    for (std::size_t At = 0; At < FText.size();) {
      const std::size_t End = WordEnd(At);
      if (End > At) {
        At = Word(At, End);
      } else if (FText[At] == ':' && FText.substr(At).starts_with("://")) {
        At = Authority(At + 3);
      } else {
        if (FText[At] == '\n') FNamed = TSecrecy::Open;
        ++At;
      }
    }
    for (const auto& [Begin, End] : FContext.Known().Find(FText)) FCuts.Hide(Begin, End);
    if (FCuts.IsEmpty()) return {};
    return FCuts.Apply(FText);
  }

 private:
  char At(std::size_t Index) const { return Index < FText.size() ? FText[Index] : '\0'; }

  /// As EndOfWord, but a character may also be written \u0041.
  std::size_t WordEnd(std::size_t Begin) const {
    std::size_t End = EndOfWord(FText, Begin);
    while (At(End) == '\\' && At(End + 1) == 'u' && EndOfWord(FText, End + 2) >= End + 6)
      End = EndOfWord(FText, End + 6);
    return End;
  }

  /// Looks at one word and returns where to go on.
  std::size_t Word(std::size_t Begin, std::size_t End) {
    const std::string_view Word = FText.substr(Begin, End - Begin);
    if (SameName(Word, "bearer") && IsOneOf(At(End), " \t\r\n")) return Bearer(End);
    if (const std::size_t Value = AfterSeparator(Begin, End); Value > End) {
      const std::string Name = DecodeName(Word);
      TSecrecy Secrecy = SecrecyOf(Name);
      // In what is left of JSON, the name that says what a value is may come after it, or be lost.
      if (IsValueOfPair(Name)) Secrecy = std::max(Secrecy, At(End) == '"' ? TSecrecy::Secret : FNamed);
      if (FContext.Hides(Secrecy)) return HideValue(Value, Secrecy, At(Value - 1));
    } else if (const TSecrecy Secrecy = SecrecyOf(Word); FContext.Hides(Secrecy)) {
      FNamed = Secrecy;  // <input name="PIN" value="...">
    }
    if (FContext.HidesPersonal() && !FOneWord)
      if (const std::size_t Numbers = EndOfNumbers(Begin); Numbers > Begin) return Hide(Begin, std::max(Numbers, End));
    return IsTelling(Word) ? Hide(Begin, End) : End;
  }

  /// Where the value begins when the word from `Begin` to `End` is a key; `End` when it is none. The character before
  /// it is the separator.
  std::size_t AfterSeparator(std::size_t Begin, std::size_t End) const {
    std::size_t Next = End;
    std::size_t Quotes = 0;
    for (; BeforeSeparator[static_cast<unsigned char>(At(Next))] || (Quotes > 0 && IsOneOf(At(Next), "\r\n")); ++Next)
      if (At(Next) == '"' && ++Quotes == 2) return Next;  // the separator is lost
    const bool Element = Begin > 0 && IsOneOf(FText[Begin - 1], "<:") && At(Next) == '>';
    return At(Next) == ':' || At(Next) == '=' || Element ? Next + 1 : End;
  }

  std::size_t HideValue(std::size_t Begin, TSecrecy Secrecy, char Separator) {
    // A value that is not on the line of its key may be on the next one.
    const std::size_t Value = std::min(FText.find_first_not_of(" \t\r\n", Begin), FText.size());
    std::size_t Quote = Value;
    while (At(Quote) == '\\') ++Quote;
    if (IsOneOf(At(Quote), "\"'") && Quote < FText.size()) {
      const std::size_t End = EndOfQuoted(Quote, Quote - Value);
      return Hide(Quote + 1, Separator == '=' || GoesOnAsJSON(End) ? End : FText.size(), Secrecy);
    }
    if (IsOneOf(At(Value), "{[") && Value < FText.size()) return Hide(Value, FText.size(), Secrecy);
    if (Separator == '>') return Hide(Value, std::min(FText.find('<', Value), FText.size()), Secrecy);
    if (Separator == '=' && Value == Begin)
      return Hide(Value, std::min(FText.find_first_of("& \t\r\n\"'<>", Value), FText.size()), Secrecy);
    // A line of a header, or a message: to its end. The scheme of an authorization is no secret.
    if (SameName(FText.substr(Value, 6), "bearer") && IsOneOf(At(Value + 6), " \t\r\n")) {
      const std::size_t End = Bearer(Value + 6);
      return Hide(End, EndOfLine(End));
    }
    return Hide(Value, EndOfLine(Value), Secrecy);
  }

  /// The token that follows "Bearer", on this line or on one that continues it.
  std::size_t Bearer(std::size_t AfterScheme) {
    const std::size_t Begin = SkipBlanks(AfterScheme);
    return Hide(Begin, std::min(FText.find_first_of(" \t\r\n\"'<>,;&\\", Begin), FText.size()), TSecrecy::Credential);
  }

  /// User and password of a URL.
  std::size_t Authority(std::size_t Begin) {
    const std::size_t End = std::min(FText.find_first_of("/?# \t\r\n\"'<>", Begin), FText.size());
    const std::size_t Sign = FText.substr(Begin, End - Begin).rfind('@');
    return Sign == FText.npos ? Begin : Hide(Begin, Begin + Sign);
  }

  /// Blanks, and line ends after which the line goes on with a blank.
  std::size_t SkipBlanks(std::size_t Begin) const {
    for (;; ++Begin) {
      if (IsBlank(At(Begin))) continue;
      const std::size_t Feed = Begin + (At(Begin) == '\r' ? 1u : 0u);
      if (At(Feed) != '\n' || !IsBlank(At(Feed + 1))) return Begin;
      Begin = Feed;
    }
  }
  std::size_t EndOfLine(std::size_t Begin) const {
    std::size_t End = std::min(FText.find('\n', Begin), FText.size());
    while (IsBlank(At(End + 1))) End = std::min(FText.find('\n', End + 1), FText.size());
    return End > Begin && At(End) == '\n' && FText[End - 1] == '\r' ? End - 1 : End;
  }
  /// Of the literal that `Quote` opens; in a text in which the quote has to be escaped, so has the one that ends it.
  std::size_t EndOfQuoted(std::size_t Quote, std::size_t Backslashes) const {
    std::size_t Before = 0;
    for (std::size_t Next = Quote + 1; Next < FText.size(); ++Next) {
      if (FText[Next] == FText[Quote] && (Backslashes > 0 ? Before <= Backslashes : Before % 2 == 0))
        return Next - std::min(Before, Backslashes);
      Before = FText[Next] == '\\' ? Before + 1 : 0;
    }
    return FText.size();
  }

  /// Does what can stand behind a value follow the quote at `End`? Otherwise the quote was part of the value.
  bool GoesOnAsJSON(std::size_t End) const {
    while (At(End) == '\\') ++End;
    const std::size_t Next = FText.find_first_not_of(" \t\r\n", End + 1);
    return Next >= FText.size() || IsOneOf(FText[Next], ",}])");
  }
  /// The end of digits with "-", "/" or "." between them, and how many digits there are.
  std::size_t EndOfDigits(std::size_t Begin, std::size_t& Digits) const {
    std::size_t Next = Begin;
    while (IsDigit(At(Next)) || (Next > Begin && IsOneOf(At(Next), "-/.") && IsDigit(At(Next + 1))))
      Digits += IsDigit(FText[Next++]);
    return Next;
  }
  /// The end of 8 to 10 digits, as tax file numbers, dates and telephone numbers are written, in groups with blanks
  /// between them, too; or of a bank's and branch's number ("012-345"). `Begin` when there is none.
  std::size_t EndOfNumbers(std::size_t Begin) const {
    std::size_t Digits = 0;
    for (std::size_t Next = Begin; IsDigit(At(Next)) && Digits < 8; ++Next) {
      const std::size_t Before = Digits;
      Next = EndOfDigits(Next, Digits);
      const bool Ends = EndOfWord(FText, Next) == Next || (At(Next) == '.' && EndOfWord(FText, Next) == Next + 1);
      if (Digits >= 8 && Digits <= 10 && Ends) return Next;
      if (Before == 0 && Digits == 6 && Ends && At(Begin + 3) == '-' && Next == Begin + 7) return Next;
      if (Digits - Before > 4 || At(Next) != ' ') break;
    }
    return Begin;
  }

  /// Is the word to be hidden for what it is?
  bool IsTelling(std::string_view Word) {
    while (Word.ends_with('.')) Word.remove_suffix(1);
    if (FContext.IsKnown(Word) || LooksLikeToken(Word, FOneWord ? TokenAlone : TokenAmongWords)) return true;
    if (FContext.HidesPersonal() && !FOneWord && (IsEMail(Word) || HoldsTaxFileNumber(Word))) return true;
    if (std::ranges::none_of(Word, [](char Each) { return Each == '%' || Each == '\\'; })) return false;
    const std::string Decoded = DecodeName(Word);
    return Decoded != Word && MaskAnyText(Decoded, FContext, FDepth + 1);
  }
  static bool IsEMail(std::string_view Word) {
    const std::size_t Sign = Word.find('@');
    return Sign != Word.npos && Sign > 0 && Sign + 1 < Word.size();
  }
  static bool HoldsTaxFileNumber(std::string_view Word) {
    if (Word.find('-') != Word.npos) return false;  // the groups of a GUID
    std::size_t Run = 0;
    for (std::size_t Index = 0; Index <= Word.size(); ++Index) {
      if (Index < Word.size() && IsDigit(Word[Index])) {
        ++Run;
        continue;
      }
      if (Run == 8 || Run == 9) return true;
      Run = 0;
    }
    return false;
  }

  std::size_t Hide(std::size_t Begin, std::size_t End, TSecrecy Secrecy = TSecrecy::Open) {
    FContext.Remember(Secrecy, FText.substr(Begin, End - Begin));
    FCuts.Hide(Begin, End);
    return std::max(Begin, End);
  }

  std::string_view FText;
  TMaskContext& FContext;
  int FDepth;
  bool FOneWord;  ///< such as a value of JSON: what only makes sense in a sentence is not looked for
  TMaskCuts FCuts;
  TSecrecy FNamed = TSecrecy::Open;  ///< of a key in this line whose value comes under another name
};

}  // namespace

std::optional<std::string> MaskPlainText(std::string_view Text, TMaskContext& Context, int Depth) {
  return TPlainScanner(Text, Context, Depth).Run();
}

}  // namespace oxSuperAPI
