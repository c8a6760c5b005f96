#include "oxSuperAPI/reference/sql_tokens.h"

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/db_statement.h"

namespace oxSuperAPI {

namespace {

bool StartsName(char Character) {
  const int Small = Character | 0x20;
  return (Small >= 'a' && Small <= 'z') || Character == '_' || static_cast<unsigned char>(Character) >= 0x80;
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

}  // namespace

bool TSQLToken::Is(std::string_view Word) const {
  return (Kind == TSQLKind::Word || Kind == TSQLKind::Symbol) && SameName(Text, Word);
}

TSQLTokens ScanSQL(std::string_view SQL) {
  TSQLTokens Tokens;
  for (std::size_t At = 0; At < SQL.size();) {
    const std::string_view Rest = SQL.substr(At);
    const char First = Rest[0];
    TSQLKind Kind = TSQLKind::Symbol;
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
      Kind = TSQLKind::Literal;
      End = EndOfQuoted(SQL, At, '\'');
    } else if (First == '"' || First == '[' || First == '`') {
      Kind = TSQLKind::QuotedName;
      End = EndOfQuoted(SQL, At, First == '[' ? ']' : First);
    } else if (Rest.starts_with("::")) {
      End = At + 2;
    } else if (First == ':' && Rest.size() > 1 && StartsName(Rest[1])) {
      Kind = TSQLKind::Parameter;
      while (End < SQL.size() && ContinuesName(SQL[End])) ++End;
    } else if (ContinuesName(First)) {
      Kind = TSQLKind::Word;
      while (End < SQL.size() && ContinuesName(SQL[End])) ++End;
    }
    Tokens.push_back({Kind, SQL.substr(At, End - At)});
    At = End;
  }
  return Tokens;
}

std::size_t FindOutside(TSQLSpan Tokens, std::string_view Word) {
  int Depth = 0;
  for (std::size_t At = 0; At < Tokens.size(); ++At) {
    if (Tokens[At].Is(")") || Tokens[At].Is("end")) --Depth;
    if (Depth == 0 && Tokens[At].Is(Word)) return At;
    if (Tokens[At].Is("(") || Tokens[At].Is("case") || Tokens[At].Is("begin")) ++Depth;
  }
  return Tokens.size();
}

}  // namespace oxSuperAPI
