#include <algorithm>
#include <utility>
#include <vector>

#include "oxSuperAPI/reference/log_mask_context.h"
#include "oxSuperAPI/reference/log_mask_cuts.h"
#include "oxSuperAPI/reference/log_mask_unicode.h"

namespace oxSuperAPI {

namespace {

constexpr std::size_t ShortWord = 20;  // fewer characters than a token has
constexpr std::size_t MostOpen = 512;  // the depth that the library reads

/// Reads JSON once, from the front, and keeps no tree. What is not JSON any more is hidden from there to the end.
///
/// The library's own masking comes before this one, and its stars may take the place of an unquoted value, of a
/// bracket or of a line end. So stars outside a string count as a value where one is due and as a blank elsewhere,
/// and once there were some, brackets need not match.
class TJSONScanner {
 public:
  TJSONScanner(std::string_view Text, TMaskContext& Context, int Depth)
      : FText(Text), FContext(Context), FDepth(Depth), FMeanings(std::clamp<std::size_t>(Text.size() / 16, 8, 4096)) {}

  std::optional<std::string> Run() {
    if (FText.starts_with("\xEF\xBB\xBF")) FAt = 3;
    while (FAt < FText.size()) {
      const char Next = FText[FAt];
      if (Next == ' ' || Next == '\t' || Next == '\r' || Next == '\n')
        ++FAt;
      else if (Next == '*' ? !Stars() : !Token(Next))
        return GiveUp();
    }
    if (FHiddenDepth > 0) FCuts.Replace(FHiddenFrom, FText.size(), QuotedMark());
    return Result();
  }

 private:
  enum class TExpect : std::uint8_t { Value, ValueOrEnd, Key, KeyOrEnd, Colon, CommaOrEnd, Nothing };
  struct TOpen {
    bool IsObject;
    TKeyMeaning Member = {};          ///< of an object: the key whose value comes
    TSecrecy Named = TSecrecy::Open;  ///< of an object: what the name of a pair said about its value
    std::size_t ValueBegin = 0;       ///< where the member's value begins
    std::size_t PairValues = 0;       ///< in FPairValues: where those of this object begin
  };
  struct TPiece {
    std::size_t Begin;
    std::size_t End;
  };

  static std::string QuotedMark() { return '"' + std::string(HiddenMark) + '"'; }
  std::optional<std::string> Result() {
    // In an object that is cut, the name that says what its value is may be what is missing.
    for (const auto& [Begin, End] : FPairValues) FCuts.Replace(Begin, End, QuotedMark());
    if (FCuts.IsEmpty()) return {};
    return FCuts.Apply(FText);
  }
  std::optional<std::string> GiveUp() {
    // The mistake may be in the quotes of the string before, so that is hidden, too.
    if (FHiddenDepth > 0)
      FCuts.Replace(FHiddenFrom, FText.size(), QuotedMark());
    else
      FCuts.Hide(FLastString > 0 ? FLastString : FAt, FText.size());
    return Result();
  }

  bool Token(char Next) {
    switch (FExpect) {
      case TExpect::KeyOrEnd:
      case TExpect::Key:
        if (Next == '"') return Key();
        return IsEnd(Next) && (FExpect == TExpect::KeyOrEnd || IsStarred()) && Close(Next);
      case TExpect::Colon:
        if (Next != ':') return IsStarred() && (IsEnd(Next) || Next == ',') && Separator(Next);
        FExpect = TExpect::Value;
        return ++FAt;
      case TExpect::ValueOrEnd:
      case TExpect::Value:
        if (IsEnd(Next)) return (FExpect == TExpect::ValueOrEnd || IsStarred()) && Close(Next);
        return Value(Next);
      case TExpect::CommaOrEnd:
        // What stars left of a list of secrets.
        if (Next == '"' && FAfterStars) return StraySecret();
        return Separator(Next);
      default:
        return false;
    }
  }
  bool IsStarred() const { return FStarred || (FHiddenDepth > 0 && FHiddenStarred); }
  static bool IsEnd(char Next) { return Next == ']' || Next == '}'; }

  bool Separator(char Next) {
    if (IsEnd(Next)) return Close(Next);
    if (Next != ',' || FOpen.empty()) return false;
    FExpect = FOpen.back().IsObject ? TExpect::Key : TExpect::Value;
    FAfterStars = false;
    return ++FAt;
  }

  bool Stars() {
    const std::size_t Begin = FAt;
    FAt = std::min(FText.find_first_not_of('*', FAt), FText.size());
    (FHiddenDepth > 0 ? FHiddenStarred : FStarred) = FAfterStars = true;
    if (FExpect == TExpect::Value || FExpect == TExpect::ValueOrEnd) EndOfValue(Begin);
    return true;
  }
  bool StraySecret() {
    const TPiece Inner = String();
    if (FHiddenDepth == 0) FCuts.Hide(Inner.Begin, Inner.End);
    return true;
  }

  /// The inside of the string at FAt, which moves behind it. A string that is cut goes to the end of the text.
  TPiece String() {
    const std::size_t Begin = FLastString = FAt + 1;
    std::size_t End = Begin;
    while (End < FText.size() && FText[End] != '"') End += FText[End] == '\\' ? 2 : 1;
    End = std::min(End, FText.size());
    FAt = std::min(End + 1, FText.size());
    return {Begin, End};
  }
  std::string_view Inside(TPiece Piece) const { return FText.substr(Piece.Begin, Piece.End - Piece.Begin); }
  static std::string Unescaped(std::string_view Raw) {
    return Raw.find('\\') == Raw.npos ? std::string(Raw) : UnescapeJSON(Raw);
  }

  bool Key() {
    const TPiece Inner = String();
    FOpen.back().Member = MeaningOfKey(Inside(Inner));
    FExpect = TExpect::Colon;
    if (FHiddenDepth > 0) return true;
    if (FStarred && !ColonFollows())
      FCuts.Hide(Inner.Begin, Inner.End);  // no key but an element of what was a list
    else
      HideWithin(Inner);
    return true;
  }
  bool ColonFollows() const {
    const std::size_t Next = FText.find_first_not_of(" \t\r\n*", FAt);
    return Next != FText.npos && FText[Next] == ':';
  }

  /// What the key says, worked out once for most of its occurrences.
  const TKeyMeaning& MeaningOfKey(std::string_view Raw) {
    std::size_t Slot = Raw.size();
    for (const char Each : Raw.substr(0, 64)) Slot = Slot * 31 + static_cast<unsigned char>(Each);
    auto& [Key, Meaning] = FMeanings[Slot % FMeanings.size()];
    if (Key != Raw || !Key.data()) {
      Key = Raw;
      Meaning = MeaningOf(Unescaped(Raw));
    }
    return Meaning;
  }

  bool Value(char Next) {
    const bool InObject = !FOpen.empty() && FOpen.back().IsObject;
    const TKeyMeaning Member = InObject ? FOpen.back().Member : TKeyMeaning();
    const std::size_t Begin = FAt;
    if (InObject) FOpen.back().ValueBegin = Begin;
    FAfterStars = false;
    if (Next == '{' || Next == '[') return Open(Next, Member.Nested);
    if (Next == '"') {
      const TPiece Inner = String();
      Text(Inner, Member);
    } else if (!Bare(Member)) {
      return false;
    }
    EndOfValue(Begin);
    return true;
  }

  void Text(TPiece Inner, const TKeyMeaning& Member) {
    const std::string_view Raw = Inside(Inner);
    if (FHiddenDepth > 0) {
      FContext.Remember(FHiddenSecrecy, Unescaped(Raw));
    } else if (FContext.Hides(Member.Secrecy)) {
      // What the library starred stays as it is.
      if (Raw.find_first_not_of('*') == Raw.npos) return;
      FContext.Remember(Member.Secrecy, Unescaped(Raw));
      FCuts.Hide(Inner.Begin, Inner.End);
    } else {
      if (Member.NameOfPair) NamePair(SecrecyOf(Unescaped(Raw)));
      HideWithin(Inner);
    }
  }

  /// A number or a literal; what is none ends the reading.
  bool Bare(const TKeyMeaning& Member) {
    const std::size_t Begin = FAt;
    const std::size_t End = EndOfWord(FText, FAt);
    const std::string_view Word = FText.substr(Begin, End - Begin);
    if (Word != "true" && Word != "false" && Word != "null" && !IsNumber(Word)) return false;
    FAt = End;
    if (FHiddenDepth > 0)
      FContext.Remember(FHiddenSecrecy, Word);
    else if (FContext.Hides(Member.Secrecy) || FContext.IsKnown(Word) || !FContext.Known().Find(Word).empty()) {
      FContext.Remember(Member.Secrecy, Word);
      FCuts.Replace(Begin, End, QuotedMark());
    }
    return true;
  }
  static bool IsNumber(std::string_view Word) {
    const auto Digits = [&] {
      const std::size_t Count = std::min(Word.find_first_not_of("0123456789"), Word.size());
      Word.remove_prefix(Count);
      return Count > 0;
    };
    const auto Take = [&](std::string_view Any) {
      const bool Found = !Word.empty() && Any.find(Word.front()) != Any.npos;
      if (Found) Word.remove_prefix(1);
      return Found;
    };
    Take("-");
    if (!Digits() || (Take(".") && !Digits())) return false;
    if (Take("eE")) {
      Take("+-");
      if (!Digits()) return false;
    }
    return Word.empty();
  }

  bool Open(char Bracket, TSecrecy Secrecy) {
    if (FOpen.size() == MostOpen) return false;
    const bool IsObject = Bracket == '{';
    FOpen.push_back({.IsObject = IsObject, .PairValues = FPairValues.size()});
    if (FHiddenDepth == 0 && FContext.Hides(Secrecy)) {
      FHiddenDepth = FOpen.size();
      FHiddenFrom = FAt;
      FHiddenSecrecy = Secrecy;
      FHiddenStarred = false;
    }
    FExpect = IsObject ? TExpect::KeyOrEnd : TExpect::ValueOrEnd;
    return ++FAt;
  }

  bool Close(char Bracket) {
    if (IsStarred()) {
      while (!FOpen.empty() && Bracket == '}' && !FOpen.back().IsObject) Pop();
      if (!FOpen.empty() && Bracket == ']' && FOpen.back().IsObject) {
        FExpect = TExpect::CommaOrEnd;
        return ++FAt;
      }
    }
    if (FOpen.empty() || FOpen.back().IsObject != (Bracket == '}')) return false;
    ++FAt;
    Pop();
    EndOfValue(FOpen.empty() ? 0 : FOpen.back().ValueBegin);
    return true;
  }
  void Pop() {
    if (FHiddenDepth == FOpen.size()) {
      FCuts.Replace(FHiddenFrom, FAt, QuotedMark());
      FHiddenDepth = 0;
      FAfterStars = false;
    }
    FPairValues.resize(FOpen.back().PairValues);
    FOpen.pop_back();
  }

  /// A value that began at `Begin` is over.
  void EndOfValue(std::size_t Begin) {
    FExpect = FOpen.empty() ? TExpect::Nothing : TExpect::CommaOrEnd;
    if (FOpen.empty() || !FOpen.back().IsObject || FHiddenDepth > 0) return;
    if (!FOpen.back().Member.ValueOfPair || FText[Begin] == '*') return;
    FPairValues.push_back({Begin, FAt});
    if (FContext.Hides(FOpen.back().Named)) HidePairValues();
  }
  /// The name of a pair says this about the values of its object, whether they came before it or are still to come.
  void NamePair(TSecrecy Secrecy) {
    FOpen.back().Named = std::max(FOpen.back().Named, Secrecy);
    if (FContext.Hides(FOpen.back().Named)) HidePairValues();
  }
  void HidePairValues() {
    TOpen& Object = FOpen.back();
    for (std::size_t Index = Object.PairValues; Index < FPairValues.size(); ++Index) {
      const auto& [Begin, End] = FPairValues[Index];
      const std::string_view Raw = FText.substr(Begin, End - Begin);
      const bool IsText = Raw.size() > 1 && Raw.front() == '"';
      FContext.Remember(Object.Named, IsText ? Unescaped(Raw.substr(1, Raw.size() - 2)) : std::string(Raw));
      FCuts.Replace(Begin, End, QuotedMark());
    }
    FPairValues.resize(Object.PairValues);
  }

  /// What has to be hidden within a string: it may be JSON again, a URL, a sentence.
  void HideWithin(TPiece Inner) {
    const std::string_view Raw = Inside(Inner);
    if (EndOfWord(Raw, 0) == Raw.size() && Raw.find('%') == Raw.npos) {
      const bool IsSecret = FContext.IsKnown(Raw) || !FContext.Known().Find(Raw).empty();
      if (Raw.size() < ShortWord) {
        if (IsSecret) FCuts.Hide(Inner.Begin, Inner.End);
        return;
      }
      // As most keys and many values are: what MaskAnyText would come to.
      if (!IsSecret && !LooksLikeToken(Raw, TokenAlone) && !Raw.ends_with('.')) return;
    }
    std::optional<std::string> Masked = Raw.find('\\') == Raw.npos
                                            ? MaskAnyText(Raw, FContext, FDepth + 1)
                                            : MaskAnyText(UnescapeJSON(Raw), FContext, FDepth + 1);
    if (Masked) FCuts.Replace(Inner.Begin, Inner.End, EscapeJSON(*Masked));
  }

  std::string_view FText;
  TMaskContext& FContext;
  int FDepth;
  std::size_t FAt = 0;
  std::size_t FLastString = 0;  ///< where the inside of the last string begins
  TExpect FExpect = TExpect::Value;
  bool FStarred = false;        ///< there were stars outside a string
  bool FHiddenStarred = false;  ///< there were in the object or array that is hidden; they will not be seen again
  bool FAfterStars = false;     ///< and since them no comma
  std::vector<TOpen> FOpen;
  std::vector<TPiece> FPairValues;
  std::size_t FHiddenDepth = 0;  ///< of the object or array that is hidden as a whole, 0 when there is none
  std::size_t FHiddenFrom = 0;
  TSecrecy FHiddenSecrecy = TSecrecy::Open;
  TMaskCuts FCuts;
  std::vector<std::pair<std::string_view, TKeyMeaning>> FMeanings;  ///< of keys met, the newest of each slot
};

}  // namespace

std::optional<std::string> MaskJSONText(std::string_view Text, TMaskContext& Context, int Depth) {
  return TJSONScanner(Text, Context, Depth).Run();
}

}  // namespace oxSuperAPI
