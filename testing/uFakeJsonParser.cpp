#include "oxSuperAPI/testing/uFakeJsonParser.h"

#include <cstdint>
#include <optional>
#include <string>

#include "oxSuperAPI/host/uHostJsonBuilder.h"

namespace oxSuperAPI {

namespace {

/// True when all of `Text` is well-formed UTF-8: no overlong form, no surrogate, nothing above U+10FFFF.
bool IsUTF8(std::string_view Text) {
  std::size_t Index = 0;
  while (Index < Text.size()) {
    const auto Lead = static_cast<unsigned char>(Text[Index++]);
    if (Lead < 0x80) continue;
    const std::size_t Rest = Lead >= 0xF0 ? 3 : Lead >= 0xE0 ? 2 : 1;
    if (Lead < 0xC2 || Lead > 0xF4 || Text.size() - Index < Rest) return false;
    for (std::size_t Number = 0; Number < Rest; ++Number) {
      const auto Byte = static_cast<unsigned char>(Text[Index++]);
      const unsigned Lowest = Number > 0 ? 0x80 : Lead == 0xE0 ? 0xA0 : Lead == 0xF0 ? 0x90 : 0x80;
      const unsigned Highest = Number > 0 ? 0xBF : Lead == 0xED ? 0x9F : Lead == 0xF4 ? 0x8F : 0xBF;
      if (Byte < Lowest || Byte > Highest) return false;
    }
  }
  return true;
}

void AppendUTF8(std::string& Out, std::uint32_t Code) {
  const auto Add = [&](std::uint32_t Byte) { Out += static_cast<char>(Byte); };
  if (Code < 0x80) return Add(Code);
  if (Code < 0x800) {
    Add(0xC0 | (Code >> 6));
  } else {
    if (Code < 0x10000) {
      Add(0xE0 | (Code >> 12));
    } else {
      Add(0xF0 | (Code >> 18));
      Add(0x80 | ((Code >> 12) & 0x3F));
    }
    Add(0x80 | ((Code >> 6) & 0x3F));
  }
  Add(0x80 | (Code & 0x3F));
}

/// Recursive descent. Every operation is false, or gives none, as soon as the text is not JSON.
class TReader {
 public:
  explicit TReader(std::string_view Text) : FText(Text) {}

  std::unique_ptr<TJSONValue> Document() {
    if (!Value()) return nullptr;
    SkipBlanks();
    return FPosition == FText.size() ? FTree.Take() : nullptr;
  }

 private:
  bool Value() {
    SkipBlanks();
    switch (Peek()) {
      case '{':
        return Object();
      case '[':
        return Array();
      case '"': {
        const std::optional<std::string> Text = String();
        return Text && FTree.String(*Text);
      }
      case 't':
        return Literal("true") && FTree.Boolean(true);
      case 'f':
        return Literal("false") && FTree.Boolean(false);
      case 'n':
        return Literal("null") && FTree.Null();
      default:
        return Number();
    }
  }

  bool Object() {
    return FTree.BeginObject() &&
           List('{', '}',
                [&] {
                  SkipBlanks();
                  const std::optional<std::string> Name = String();
                  return Name && FTree.Name(*Name) && TakeToken(':') && Value();
                }) &&
           FTree.EndObject();
  }

  bool Array() {
    return FTree.BeginArray() && List('[', ']', [&] { return Value(); }) && FTree.EndArray();
  }

  template <class ReadItem>
  bool List(char Open, char Close, ReadItem Item) {
    if (!TakeToken(Open)) return false;
    if (TakeToken(Close)) return true;
    do {
      if (!Item()) return false;
    } while (TakeToken(','));
    return TakeToken(Close);
  }

  bool Literal(std::string_view Word) {
    if (!FText.substr(FPosition).starts_with(Word)) return false;
    FPosition += Word.size();
    return true;
  }

  bool Number() {
    const std::size_t Start = FPosition;
    Take('-');
    if (!Take('0') && !Digits()) return false;
    if (Take('.') && !Digits()) return false;
    if (Take('e') || Take('E')) {
      if (!Take('+')) Take('-');
      if (!Digits()) return false;
    }
    return FTree.Number(FText.substr(Start, FPosition - Start));
  }

  bool Digits() {
    const std::size_t Start = FPosition;
    while (Peek() >= '0' && Peek() <= '9') ++FPosition;
    return FPosition > Start;
  }

  std::optional<std::string> String() {
    if (!Take('"')) return {};
    std::string Result;
    while (!Take('"')) {
      if (FPosition == FText.size() || static_cast<unsigned char>(Peek()) < 0x20) return {};
      if (!Take('\\')) {
        Result += FText[FPosition++];
      } else if (!Escape(Result)) {
        return {};
      }
    }
    return Result;
  }

  bool Escape(std::string& Out) {
    static constexpr std::string_view Names = "\"\\/bfnrt";
    static constexpr std::string_view Meanings = "\"\\/\b\f\n\r\t";
    if (Take('u')) return UnicodeEscape(Out);
    if (FPosition == FText.size()) return false;
    const std::size_t Which = Names.find(FText[FPosition++]);
    if (Which == std::string_view::npos) return false;
    Out += Meanings[Which];
    return true;
  }

  // Behind "\u". A surrogate without its other half is read as U+FFFD.
  bool UnicodeEscape(std::string& Out) {
    constexpr std::uint32_t Replacement = 0xFFFD;
    const std::optional<std::uint32_t> Unit = FourHexDigits();
    if (!Unit) return false;
    const bool High = *Unit >= 0xD800 && *Unit < 0xDC00;
    const bool Low = *Unit >= 0xDC00 && *Unit < 0xE000;
    if (High && FText.substr(FPosition).starts_with("\\u")) {
      const std::size_t Before = FPosition;
      FPosition += 2;
      const std::optional<std::uint32_t> Second = FourHexDigits();
      if (!Second) return false;
      if (*Second >= 0xDC00 && *Second < 0xE000) {
        AppendUTF8(Out, 0x10000 + ((*Unit - 0xD800) << 10) + (*Second - 0xDC00));
        return true;
      }
      FPosition = Before;  // an escape of its own
    }
    AppendUTF8(Out, High || Low ? Replacement : *Unit);
    return true;
  }

  std::optional<std::uint32_t> FourHexDigits() {
    if (FText.size() - FPosition < 4) return {};
    std::uint32_t Result = 0;
    for (const char Digit : FText.substr(FPosition, 4)) {
      Result <<= 4;
      if (Digit >= '0' && Digit <= '9') {
        Result += static_cast<std::uint32_t>(Digit - '0');
      } else if ((Digit >= 'a' && Digit <= 'f') || (Digit >= 'A' && Digit <= 'F')) {
        Result += static_cast<std::uint32_t>((Digit | 0x20) - 'a' + 10);
      } else {
        return {};
      }
    }
    FPosition += 4;
    return Result;
  }

  // NUL at the end of the text, where it matches nothing that is looked for.
  char Peek() const { return FPosition < FText.size() ? FText[FPosition] : '\0'; }

  bool Take(char Wanted) {
    if (Peek() != Wanted) return false;
    ++FPosition;
    return true;
  }

  bool TakeToken(char Wanted) {
    SkipBlanks();
    return Take(Wanted);
  }

  void SkipBlanks() {
    while (Peek() == ' ' || Peek() == '\t' || Peek() == '\r' || Peek() == '\n') ++FPosition;
  }

  std::string_view FText;
  std::size_t FPosition = 0;
  TJSONTreeBuilder FTree;
};

}  // namespace

std::unique_ptr<TJSONValue> TFakeJSONParser::Parse(std::string_view Text) {
  Faults.Check("Parse");
  static constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
  if (Text.starts_with(ByteOrderMark)) Text.remove_prefix(ByteOrderMark.size());
  if (!IsUTF8(Text)) return nullptr;
  return TReader(Text).Document();
}

}  // namespace oxSuperAPI
