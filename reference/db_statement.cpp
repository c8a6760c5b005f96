#include "oxSuperAPI/reference/db_statement.h"

#include <algorithm>
#include <cstdint>
#include <span>

#include "oxSuperAPI/reference/db_error.h"

namespace oxSuperAPI {

namespace {

enum class TKind : std::uint8_t { Word, Parameter, Literal, QuotedName, Symbol };

struct TToken {
  TKind Kind;
  std::string_view Text;  ///< a piece of the scanned statement

  bool Is(std::string_view Word) const {
    return (Kind == TKind::Word || Kind == TKind::Symbol) && SameName(Text, Word);
  }
  bool IsName() const { return Kind == TKind::Word || Kind == TKind::QuotedName; }
};
using TTokens = std::vector<TToken>;
using TTokenSpan = std::span<const TToken>;

char Lower(char Character) {
  return Character >= 'A' && Character <= 'Z' ? static_cast<char>(Character - 'A' + 'a') : Character;
}

bool StartsName(char Character) {
  const char Small = Lower(Character);
  return (Small >= 'a' && Small <= 'z') || Small == '_' || static_cast<unsigned char>(Small) >= 0x80;
}
bool ContinuesName(char Character) {
  return StartsName(Character) || (Character >= '0' && Character <= '9') || Character == '$' || Character == '#' ||
         Character == '@';
}

// The end of a quoted piece that starts at `Start`; a doubled closing quote stands for itself.
std::size_t EndOfQuoted(std::string_view SQL, std::size_t Start, char Close) {
  for (std::size_t At = Start + 1; At < SQL.size(); ++At) {
    if (SQL[At] != Close) continue;
    if (At + 1 < SQL.size() && SQL[At + 1] == Close)
      ++At;
    else
      return At + 1;
  }
  throw TDatabaseError("A statement holds a quote that is never closed");
}

std::size_t EndOfComment(std::string_view SQL, std::size_t Start) {
  const bool Line = SQL[Start] == '-';
  const std::size_t Found = SQL.find(Line ? "\n" : "*/", Start + 2);
  if (Found == std::string_view::npos && !Line)
    throw TDatabaseError("A statement holds a comment that is never closed");
  return Found == std::string_view::npos ? SQL.size() : Found + (Line ? 1 : 2);
}

TTokens Scan(std::string_view SQL) {
  TTokens Tokens;
  for (std::size_t At = 0; At < SQL.size();) {
    const std::string_view Rest = SQL.substr(At);
    const char First = Rest[0];
    TKind Kind = TKind::Symbol;
    std::size_t End = At + 1;
    if (static_cast<unsigned char>(First) <= ' ') {
      At = End;
      continue;
    }
    if (Rest.starts_with("--") || Rest.starts_with("/*")) {
      At = EndOfComment(SQL, At);
      continue;
    }
    if (First == '\'') {
      Kind = TKind::Literal;
      End = EndOfQuoted(SQL, At, '\'');
    } else if (First == '"' || First == '[' || First == '`') {
      Kind = TKind::QuotedName;
      End = EndOfQuoted(SQL, At, First == '[' ? ']' : First);
    } else if (Rest.starts_with("::")) {
      End = At + 2;
    } else if (First == ':' && Rest.size() > 1 && StartsName(Rest[1])) {
      Kind = TKind::Parameter;
      while (End < SQL.size() && ContinuesName(SQL[End])) ++End;
    } else if (ContinuesName(First)) {
      Kind = TKind::Word;
      while (End < SQL.size() && ContinuesName(SQL[End])) ++End;
    }
    Tokens.push_back({Kind, SQL.substr(At, End - At)});
    At = End;
  }
  return Tokens;
}

// The text from the first to the last of some neighbouring tokens, blanks and comments between them included.
std::string TextOf(TTokenSpan Tokens) {
  if (Tokens.empty()) return {};
  const char* const Begin = Tokens.front().Text.data();
  const char* const End = Tokens.back().Text.data() + Tokens.back().Text.size();
  return std::string(Begin, End);
}

// The place of a word outside parentheses and "case ... end"; the number of tokens when it does not occur there.
std::size_t FindOutside(TTokenSpan Tokens, std::string_view Word) {
  int Depth = 0;
  for (std::size_t At = 0; At < Tokens.size(); ++At) {
    if (Tokens[At].Is(")") || Tokens[At].Is("end")) --Depth;
    if (Depth == 0 && Tokens[At].Is(Word)) return At;
    if (Tokens[At].Is("(") || Tokens[At].Is("case")) ++Depth;
  }
  return Tokens.size();
}

// The table when the tokens are one table's name and nothing else ("T", "dbo.T", "[dbo].[T]"), else "".
std::string OneTable(TTokenSpan Tokens) {
  for (std::size_t At = 0; At < Tokens.size(); ++At)
    if (At % 2 == 0 ? !Tokens[At].IsName() : !Tokens[At].Is(".")) return {};
  return Tokens.size() % 2 == 1 ? TextOf(Tokens) : std::string();
}

void Narrow(TIfExists& Parts, TTokenSpan Probe, TTokenSpan Update) {
  if (FindOutside(Update, "where") < Update.size()) return;
  const std::size_t From = FindOutside(Probe, "from");
  const std::size_t Where = FindOutside(Probe, "where");
  const std::size_t Set = FindOutside(Update, "set");
  if (From < Where && Where + 1 < Probe.size() && Set < Update.size()) {
    const std::string Asked = BareTableName(OneTable(Probe.subspan(From + 1, Where - From - 1)));
    if (!Asked.empty() && SameName(Asked, BareTableName(OneTable(Update.subspan(1, Set - 1))))) {
      Parts.Then += " where " + TextOf(Probe.subspan(Where + 1));
      return;
    }
  }
  throw TDatabaseError("An update without a where clause would change every row of its table: it was not run");
}

}  // namespace

TPositionalSQL ToPositional(std::string_view SQL) {
  TPositionalSQL Result;
  std::size_t Copied = 0;
  for (const TToken& Token : Scan(SQL)) {
    if (Token.Is("?")) throw TDatabaseError("A statement's parameters have to be named (\":Name\")");
    if (Token.Kind != TKind::Parameter) continue;
    const auto At = static_cast<std::size_t>(Token.Text.data() - SQL.data());
    Result.SQL.append(SQL.substr(Copied, At - Copied)).append("?");
    Result.Names.emplace_back(Token.Text.substr(1));
    Copied = At + Token.Text.size();
  }
  Result.SQL.append(SQL.substr(Copied));
  return Result;
}

const TDBValue& ParameterValue(const std::vector<TDBParameter>& Parameters, std::string_view Name) {
  for (const TDBParameter& Parameter : Parameters)
    if (SameName(Parameter.Name, Name)) return Parameter.Value;
  throw TDatabaseError("A statement's parameter \"" + std::string(Name) + "\" was given no value");
}

std::optional<TIfExists> SplitIfExists(std::string_view SQL) {
  const TTokens Tokens = Scan(SQL);
  const TTokenSpan All(Tokens);
  if (All.size() < 3 || !All[0].Is("if") || !All[1].Is("exists") || !All[2].Is("(")) return std::nullopt;
  // From the opening parenthesis on, the first ")" outside of inner ones closes the probe.
  const std::size_t Close = FindOutside(All.subspan(2), ")") + 2;
  if (Close >= All.size()) throw TDatabaseError("The parenthesis behind \"if exists\" is never closed");
  const TTokenSpan Probe = All.subspan(3, Close - 3);
  const TTokenSpan Rest = All.subspan(Close + 1);
  const std::size_t Else = FindOutside(Rest, "else");
  TTokenSpan Then = Rest.first(Else);
  while (!Then.empty() && Then.back().Is(";")) Then = Then.first(Then.size() - 1);
  if (Then.empty()) throw TDatabaseError("An \"if exists\" holds no statement to run");

  TIfExists Parts;
  Parts.Probe = TextOf(Probe);
  Parts.Then = TextOf(Then);
  if (Else < Rest.size()) Parts.Else = TextOf(Rest.subspan(Else + 1));
  if (Then[0].Is("update")) Narrow(Parts, Probe, Then);
  return Parts;
}

std::string SelectedTable(std::string_view SQL) {
  const TTokens Tokens = Scan(SQL);
  const TTokenSpan All(Tokens);
  if (All.empty() || !All[0].Is("select")) return {};
  const std::size_t From = FindOutside(All, "from");
  if (From == All.size()) return {};
  const TTokenSpan Rest = All.subspan(From + 1);
  for (const char* Combined : {"group", "having", "union", "intersect", "except"})
    if (FindOutside(Rest, Combined) < Rest.size()) return {};
  return OneTable(Rest.first(std::min(
      {FindOutside(Rest, "where"), FindOutside(Rest, "order"), FindOutside(Rest, ";"), FindOutside(Rest, "limit")})));
}

std::string DescribeSQL(std::string_view SQL) noexcept try {
  const TTokens Tokens = Scan(SQL);
  if (Tokens.empty() || Tokens[0].Kind != TKind::Word) return "statement";
  const TToken& Kind = Tokens[0];
  const TTokenSpan All(Tokens);
  const bool Named = Kind.Is("update");
  const std::size_t Before = Named ? 0 : FindOutside(All, Kind.Is("insert") ? "into" : "from");
  if (!Named && !Kind.Is("insert") && !Kind.Is("select") && !Kind.Is("delete")) return std::string(Kind.Text);
  TTokenSpan Table = All.subspan(std::min(Before + 1, All.size()));
  std::size_t Length = 0;
  while (Length < Table.size() && (Length % 2 == 0 ? Table[Length].IsName() : Table[Length].Is("."))) ++Length;
  return std::string(Kind.Text) + " of " + BareTableName(TextOf(Table.first(Length)));
} catch (...) {
  return "statement";
}

bool IsBlankSQL(std::string_view SQL) {
  return std::ranges::all_of(Scan(SQL), [](const TToken& Token) { return Token.Is(";"); });
}

bool SameName(std::string_view Left, std::string_view Right) {
  return std::ranges::equal(Left, Right, [](char A, char B) { return Lower(A) == Lower(B); });
}

std::string BareTableName(std::string_view Table) {
  const TTokens Tokens = Scan(Table);
  std::string Bare;
  for (const TToken& Token : Tokens) {
    const bool Quoted = Token.Kind == TKind::QuotedName;
    Bare += Quoted ? Token.Text.substr(1, Token.Text.size() - 2) : Token.Text;
  }
  return SameName(std::string_view(Bare).substr(0, 4), "dbo.") ? Bare.substr(4) : Bare;
}

}  // namespace oxSuperAPI
