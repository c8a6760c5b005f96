#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace oxSuperAPI {

// The scanner behind db_statement and db_script; not for hosts.

/// What a piece of a statement is. Blanks and comments lie between the pieces.
enum class TSQLKind : std::uint8_t { Word, Parameter, Literal, QuotedName, Symbol };

/// One piece, a view into the scanned text.
struct TSQLToken {
  /// A parameter's text includes its colon, a quoted name's its quotes. @{
  TSQLKind Kind;
  std::string_view Text;
  /// @}

  /// A word or symbol, letter case aside.
  bool Is(std::string_view Word) const;
  /// A table's, column's or schema's name, quoted or not.
  bool IsName() const { return Kind == TSQLKind::Word || Kind == TSQLKind::QuotedName; }
};
/// A statement, and a part of one. @{
using TSQLTokens = std::vector<TSQLToken>;
using TSQLSpan = std::span<const TSQLToken>;
/// @}

/// Raises TDatabaseError for a quote or comment that is never closed.
TSQLTokens ScanSQL(std::string_view SQL);

/// The place of a word outside parentheses, "case ... end" and "begin ... end"; the number of tokens when it does not
/// occur there.
std::size_t FindOutside(TSQLSpan Tokens, std::string_view Word);

}  // namespace oxSuperAPI
