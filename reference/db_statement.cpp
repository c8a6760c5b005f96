#include "oxSuperAPI/reference/db_statement.h"

#include <algorithm>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/sql_tokens.h"

namespace oxSuperAPI {

namespace {

char Lower(char Character) {
  return Character >= 'A' && Character <= 'Z' ? static_cast<char>(Character - 'A' + 'a') : Character;
}

// The text from the first to the last of some neighbouring tokens, blanks and comments between them included.
std::string TextOf(TSQLSpan Tokens) {
  if (Tokens.empty()) return {};
  const char* const Begin = Tokens.front().Text.data();
  const char* const End = Tokens.back().Text.data() + Tokens.back().Text.size();
  return std::string(Begin, End);
}

std::string_view BareName(const TSQLToken& Token) {
  return Token.Kind == TSQLKind::QuotedName ? Token.Text.substr(1, Token.Text.size() - 2) : Token.Text;
}

// The table when the tokens are one table's name and nothing else ("T", "dbo.T", "[dbo].[T]"), else "".
std::string OneTable(TSQLSpan Tokens) {
  for (std::size_t At = 0; At < Tokens.size(); ++At)
    if (At % 2 == 0 ? !Tokens[At].IsName() : !Tokens[At].Is(".")) return {};
  return Tokens.size() % 2 == 1 ? TextOf(Tokens) : std::string();
}

// The condition that an update without one has to be given; "" when it has one.
std::string Condition(TSQLSpan Probe, TSQLSpan Update) {
  if (FindOutside(Update, "where") < Update.size()) return {};
  const std::size_t From = FindOutside(Probe, "from");
  const std::size_t Where = FindOutside(Probe, "where");
  const std::size_t Set = FindOutside(Update, "set");
  if (From < Where && Where + 1 < Probe.size() && Set < Update.size()) {
    const std::string Asked = BareTableName(OneTable(Probe.subspan(From + 1, Where - From - 1)));
    if (!Asked.empty() && SameName(Asked, BareTableName(OneTable(Update.subspan(1, Set - 1)))))
      return " where " + TextOf(Probe.subspan(Where + 1));
  }
  throw TDatabaseError("An update without a where clause would change every row of its table: it was not run");
}

}  // namespace

TPositionalSQL ToPositional(std::string_view SQL) {
  TPositionalSQL Result;
  std::size_t Copied = 0;
  for (const TSQLToken& Token : ScanSQL(SQL)) {
    if (Token.Is("?")) throw TDatabaseError("A statement's parameters have to be named (\":Name\")");
    if (Token.Kind != TSQLKind::Parameter) continue;
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
  const TSQLTokens Tokens = ScanSQL(SQL);
  const TSQLSpan All(Tokens);
  if (All.size() < 3 || !All[0].Is("if") || !All[1].Is("exists") || !All[2].Is("(")) return std::nullopt;
  // From the opening parenthesis on, the first ")" outside of inner ones closes the probe.
  const std::size_t Close = FindOutside(All.subspan(2), ")") + 2;
  if (Close >= All.size()) throw TDatabaseError("The parenthesis behind \"if exists\" is never closed");
  const TSQLSpan Probe = All.subspan(3, Close - 3);
  const TSQLSpan Rest = All.subspan(Close + 1);
  const std::size_t Else = FindOutside(Rest, "else");
  TSQLSpan Then = Rest.first(Else);
  while (!Then.empty() && Then.back().Is(";")) Then = Then.first(Then.size() - 1);
  if (Then.empty()) throw TDatabaseError("An \"if exists\" holds no statement to run");

  TIfExists Parts;
  Parts.Probe = TextOf(Probe);
  Parts.Then = TextOf(Then);
  if (Else < Rest.size()) Parts.Else = TextOf(Rest.subspan(Else + 1));
  Parts.Whole = SQL;
  if (Then[0].Is("update")) {
    const std::string Missing = Condition(Probe, Then);
    const std::string_view Last = Then.back().Text;
    Parts.Then += Missing;
    Parts.Whole.insert(static_cast<std::size_t>(Last.data() - SQL.data()) + Last.size(), Missing);
  }
  return Parts;
}

std::string SelectedTable(std::string_view SQL) {
  const TSQLTokens Tokens = ScanSQL(SQL);
  const TSQLSpan All(Tokens);
  if (All.empty() || !All[0].Is("select")) return {};
  const std::size_t From = FindOutside(All, "from");
  if (From == All.size()) return {};
  const TSQLSpan Rest = All.subspan(From + 1);
  for (const char* Combined : {"group", "having", "union", "intersect", "except"})
    if (FindOutside(Rest, Combined) < Rest.size()) return {};
  return OneTable(Rest.first(std::min(
      {FindOutside(Rest, "where"), FindOutside(Rest, "order"), FindOutside(Rest, ";"), FindOutside(Rest, "limit")})));
}

std::string DescribeSQL(std::string_view SQL) noexcept try {
  const TSQLTokens Tokens = ScanSQL(SQL);
  if (Tokens.empty() || Tokens[0].Kind != TSQLKind::Word) return "statement";
  if (const auto Parts = SplitIfExists(SQL)) return DescribeSQL(Parts->Then);
  const TSQLToken& Kind = Tokens[0];
  const TSQLSpan All(Tokens);
  const bool Named = Kind.Is("update");
  const std::size_t Before = Named ? 0 : FindOutside(All, Kind.Is("insert") ? "into" : "from");
  if (!Named && !Kind.Is("insert") && !Kind.Is("select") && !Kind.Is("delete")) return std::string(Kind.Text);
  TSQLSpan Table = All.subspan(std::min(Before + 1, All.size()));
  std::size_t Length = 0;
  while (Length < Table.size() && (Length % 2 == 0 ? Table[Length].IsName() : Table[Length].Is("."))) ++Length;
  if (Length == 0) return std::string(Kind.Text);
  return std::string(Kind.Text) + " of " + BareTableName(TextOf(Table.first(Length)));
} catch (...) {
  return "statement";
}

bool IsSelect(std::string_view SQL) {
  const TSQLTokens Tokens = ScanSQL(SQL);
  if (Tokens.empty() || !(Tokens[0].Is("select") || Tokens[0].Is("with"))) return false;
  for (const char* Writing : {"insert", "update", "delete", "merge", "into"})
    if (FindOutside(Tokens, Writing) < Tokens.size()) return false;
  return true;
}

bool IsOneStatement(std::string_view SQL) {
  TSQLTokens Tokens = ScanSQL(SQL);
  while (!Tokens.empty() && Tokens.back().Is(";")) Tokens.pop_back();
  return !Tokens.empty() && FindOutside(Tokens, ";") == Tokens.size();
}

std::string WhereClause(std::string_view SQL) {
  const TSQLTokens Tokens = ScanSQL(SQL);
  const TSQLSpan All(Tokens);
  const std::size_t Where = FindOutside(All, "where");
  if (Where == All.size()) return {};
  const TSQLSpan Rest = All.subspan(Where + 1);
  return TextOf(Rest.first(std::min({FindOutside(Rest, "order"), FindOutside(Rest, ";"), FindOutside(Rest, "limit")})));
}

std::string WithoutSchema(std::string_view SQL) {
  const TSQLTokens Tokens = ScanSQL(SQL);
  std::string Result;
  std::size_t Copied = 0;
  for (std::size_t At = 0; At + 2 < Tokens.size(); ++At) {
    const bool Qualified = At > 0 && Tokens[At - 1].Is(".");
    if (Qualified || !SameName(BareName(Tokens[At]), "dbo") || !Tokens[At + 1].Is(".") || !Tokens[At + 2].IsName())
      continue;
    const auto Place = [&](const TSQLToken& Token) { return static_cast<std::size_t>(Token.Text.data() - SQL.data()); };
    Result.append(SQL.substr(Copied, Place(Tokens[At]) - Copied));
    Copied = Place(Tokens[At + 2]);
  }
  return Result.append(SQL.substr(Copied));
}

bool IsBlankSQL(std::string_view SQL) {
  return std::ranges::all_of(ScanSQL(SQL), [](const TSQLToken& Token) { return Token.Is(";"); });
}

bool SameName(std::string_view Left, std::string_view Right) {
  return std::ranges::equal(Left, Right, [](char A, char B) { return Lower(A) == Lower(B); });
}

std::string BareTableName(std::string_view Table) {
  const TSQLTokens Tokens = ScanSQL(Table);
  std::string Bare;
  for (const TSQLToken& Token : Tokens) Bare += BareName(Token);
  return SameName(std::string_view(Bare).substr(0, 4), "dbo.") ? Bare.substr(4) : Bare;
}

}  // namespace oxSuperAPI
