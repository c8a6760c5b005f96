#include "oxSuperAPI/testing/uFakeSQL.h"

#include <algorithm>
#include <charconv>

#include "oxSuperAPI/testing/uFakeNames.h"

namespace oxSuperAPI {

namespace {

bool IsLetter(char Byte) {
  return (Byte >= 'a' && Byte <= 'z') || (Byte >= 'A' && Byte <= 'Z') || Byte == '_';
}
bool IsDigit(char Byte) {
  return Byte >= '0' && Byte <= '9';
}

enum class TTokenKind { Word, Parameter, Number, Text, Sign, End };

struct TToken {
  TTokenKind Kind;
  std::string Text;  ///< of a parameter the name, of a text its content
  std::size_t Position;
};

class TTokenizer {
 public:
  explicit TTokenizer(std::string_view SQL) : FText(SQL) {}

  std::vector<TToken> Run() {
    std::vector<TToken> Tokens;
    do Tokens.push_back(Next());
    while (Tokens.back().Kind != TTokenKind::End);
    return Tokens;
  }

 private:
  TToken Next() {
    while (FPosition < FText.size() && static_cast<unsigned char>(FText[FPosition]) <= 0x20) ++FPosition;
    const std::size_t Start = FPosition;
    if (Start == FText.size()) return {TTokenKind::End, "", Start};
    const char First = FText[FPosition++];
    if (IsLetter(First)) return {TTokenKind::Word, First + Name(), Start};
    if (First == ':') return {TTokenKind::Parameter, Name(), Start};
    if (IsDigit(First)) {
      while (FPosition < FText.size() && IsDigit(FText[FPosition])) ++FPosition;
      return {TTokenKind::Number, std::string(FText.substr(Start, FPosition - Start)), Start};
    }
    if (First == '\'') return {TTokenKind::Text, Quoted(), Start};
    return {TTokenKind::Sign, std::string(1, First), Start};
  }

  std::string Name() {
    const std::size_t Start = FPosition;
    while (FPosition < FText.size() && (IsLetter(FText[FPosition]) || IsDigit(FText[FPosition]))) ++FPosition;
    return std::string(FText.substr(Start, FPosition - Start));
  }

  // Behind the opening quote; a doubled quote stands for one.
  std::string Quoted() {
    std::string Result;
    while (FPosition < FText.size()) {
      const char Byte = FText[FPosition++];
      if (Byte == '\'') {
        if (FPosition == FText.size() || FText[FPosition] != '\'') return Result;
        ++FPosition;
      }
      Result += Byte;
    }
    throw TBeamError("SQL: unclosed quotation mark");
  }

  std::string_view FText;
  std::size_t FPosition = 0;
};

class TParser {
 public:
  explicit TParser(std::string_view SQL) : FTokens(TTokenizer(SQL).Run()) {}

  TParsedSQL Run() {
    TSQLStatement Statement = Any();
    TakeSign(";");
    if (Peek().Kind != TTokenKind::End) Fail("the end of the statement");
    return {std::move(Statement), std::move(FParameters)};
  }

 private:
  TSQLStatement Any() {
    if (TakeWord("if")) return IfExists();
    if (TakeWord("select")) return Select();
    if (TakeWord("update")) return Update();
    if (TakeWord("insert")) return Insert();
    Fail("select, update, insert or if");
  }

  TSQLIfExists IfExists() {
    TSQLIfExists Result;
    NeedWord("exists");
    NeedSign("(");
    NeedWord("select");
    Result.Probe = Select();
    NeedSign(")");
    Result.Then = Change();
    TakeSign(";");
    if (TakeWord("else")) Result.Else = Change();
    return Result;
  }

  TSQLChange Change() {
    if (TakeWord("update")) return Update();
    NeedWord("insert");
    return Insert();
  }

  TSQLSelect Select() {
    TSQLSelect Result;
    if (!TakeSign("*")) Result.Columns = Names();
    NeedWord("from");
    Result.Table = Table();
    Result.Where = Where();
    return Result;
  }

  TSQLUpdate Update() {
    TSQLUpdate Result;
    Result.Table = Table();
    NeedWord("set");
    do {
      std::string Column = Name();
      NeedSign("=");
      Result.Assignments.emplace_back(std::move(Column), Operand());
    } while (TakeSign(","));
    Result.Where = Where();
    return Result;
  }

  TSQLInsert Insert() {
    TSQLInsert Result;
    NeedWord("into");
    Result.Table = Table();
    NeedSign("(");
    Result.Columns = Names();
    NeedSign(")");
    NeedWord("values");
    NeedSign("(");
    do Result.Values.push_back(Operand());
    while (TakeSign(","));
    NeedSign(")");
    if (Result.Columns.size() != Result.Values.size())
      throw TBeamError("SQL: the insert has " + std::to_string(Result.Columns.size()) + " columns, but " +
                       std::to_string(Result.Values.size()) + " values");
    return Result;
  }

  TSQLWhere Where() {
    TSQLWhere Result;
    if (!TakeWord("where")) return Result;
    do {
      TSQLOperand Left = Operand();
      NeedSign("=");
      Result.push_back({std::move(Left), Operand()});
    } while (TakeWord("and"));
    return Result;
  }

  std::string Table() {
    std::string Result = Name();
    if (!SameName(Result, "dbo") || !TakeSign(".")) return Result;
    return Name();
  }

  std::vector<std::string> Names() {
    std::vector<std::string> Result;
    do Result.push_back(Name());
    while (TakeSign(","));
    return Result;
  }

  std::string Name() {
    if (Peek().Kind != TTokenKind::Word) Fail("a name");
    return Take().Text;
  }

  TSQLOperand Operand() {
    switch (Peek().Kind) {
      case TTokenKind::Word:
        if (TakeWord("null")) return TSQLOperand(std::in_place_type<TDBValue>);
        return TSQLColumn{Take().Text};
      case TTokenKind::Parameter: {
        const std::string Parameter = Take().Text;
        if (std::find(FParameters.begin(), FParameters.end(), Parameter) == FParameters.end())
          FParameters.push_back(Parameter);
        return TSQLParameter{Parameter};
      }
      case TTokenKind::Text:
        return TDBValue(Take().Text);
      case TTokenKind::Number:
        return Integer();
      default:
        Fail("a value");
    }
  }

  TDBValue Integer() {
    const std::string& Digits = Peek().Text;
    std::int32_t Result = 0;
    if (std::from_chars(Digits.data(), Digits.data() + Digits.size(), Result).ec != std::errc())
      Fail("a 32-bit integer");
    Take();
    return Result;
  }

  const TToken& Peek() const { return FTokens[FNext]; }
  // Never moves behind the end token, which no caller takes.
  const TToken& Take() { return FTokens[FNext++]; }

  bool TakeIf(TTokenKind Kind, std::string_view Text) {
    if (Peek().Kind != Kind || !SameName(Peek().Text, Text)) return false;
    Take();
    return true;
  }
  bool TakeWord(std::string_view Word) { return TakeIf(TTokenKind::Word, Word); }
  bool TakeSign(std::string_view Sign) { return TakeIf(TTokenKind::Sign, Sign); }
  void NeedWord(std::string_view Word) {
    if (!TakeWord(Word)) Fail(Word);
  }
  void NeedSign(std::string_view Sign) {
    if (!TakeSign(Sign)) Fail(Sign);
  }

  [[noreturn]] void Fail(std::string_view Expected) const {
    throw TBeamError("SQL: incorrect syntax at character " + std::to_string(Peek().Position + 1) + ": expected " +
                     std::string(Expected));
  }

  std::vector<TToken> FTokens;
  std::size_t FNext = 0;
  std::vector<std::string> FParameters;
};

}  // namespace

TParsedSQL ParseSQL(std::string_view SQL) {
  return TParser(SQL).Run();
}

}  // namespace oxSuperAPI
