#include "oxSuperAPI/reference/db_script.h"

#include <algorithm>

#include "oxSuperAPI/reference/db_statement.h"
#include "oxSuperAPI/reference/sql_tokens.h"

namespace oxSuperAPI {

namespace {

void AddPiece(std::vector<std::string>& Pieces, std::string_view Piece) {
  if (!IsBlankSQL(Piece)) Pieces.emplace_back(Piece);
}

bool IsGo(std::string_view Line) {
  const std::size_t First = Line.find_first_not_of(" \t\r");
  if (First == std::string_view::npos) return false;
  return SameName(Line.substr(First, Line.find_last_not_of(" \t\r") - First + 1), "GO");
}

}  // namespace

std::vector<std::string> SplitBatches(std::string_view Script) {
  std::vector<std::string> Batches;
  std::size_t Start = 0;
  for (std::size_t At = 0; At < Script.size();) {
    const std::size_t End = std::min(Script.find('\n', At), Script.size());
    if (IsGo(Script.substr(At, End - At))) {
      AddPiece(Batches, Script.substr(Start, At - Start));
      Start = std::min(End + 1, Script.size());
    }
    At = End + 1;
  }
  AddPiece(Batches, Script.substr(Start));
  return Batches;
}

std::vector<std::string> SplitStatements(std::string_view Script) {
  std::vector<std::string> Statements;
  std::size_t Start = 0;
  for (const TSQLToken& Token : ScanSQL(Script)) {
    if (!Token.Is(";")) continue;
    const auto At = static_cast<std::size_t>(Token.Text.data() - Script.data());
    AddPiece(Statements, Script.substr(Start, At - Start));
    Start = At + 1;
  }
  AddPiece(Statements, Script.substr(Start));
  return Statements;
}

}  // namespace oxSuperAPI
