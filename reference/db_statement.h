#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "oxSuperAPI/host/uHostDatabase.h"

namespace oxSuperAPI {

// What a database adapter has to know about the text of a statement. Nothing here looks into string literals, quoted
// names or comments. Malformed text raises TDatabaseError.

/// A statement whose named parameters became "?", with the names in the order of the question marks.
struct TPositionalSQL {
  /// A name that the text has twice is listed twice. @{
  std::string SQL;
  std::vector<std::string> Names;
  /// @}
};
/// Literals and comments are copied as they are. A "?" among the rest is refused.
OXSUPERAPI_EXPORT TPositionalSQL ToPositional(std::string_view SQL);

/// The value given for a name, letter case aside. Raises TDatabaseError when there is none.
OXSUPERAPI_EXPORT const TDBValue& ParameterValue(const std::vector<TDBParameter>& Parameters, std::string_view Name);

/// The three statements in "if exists (Probe) Then else Else"; `Else` may be empty.
///
/// An update in `Then` that has no where clause would change every row of its table, whomever they belong to. It is
/// given the condition of the probe, so that it changes the rows whose existence was asked for. When that is not
/// possible (another table, no condition, a join), TDatabaseError is raised and nothing may be run.
struct TIfExists {
  /// Text of the caller's statement. @{
  std::string Probe;
  std::string Then;
  std::string Else;
  /// @}

  /// The caller's statement as a whole, with the update narrowed: for a database that knows "if exists" itself.
  std::string Whole;
};
/// None when `SQL` is not of that form.
OXSUPERAPI_EXPORT std::optional<TIfExists> SplitIfExists(std::string_view SQL);

/// The table, as written, of a select from one table alone, whose rows can therefore be changed through the result;
/// "" otherwise.
OXSUPERAPI_EXPORT std::string SelectedTable(std::string_view SQL);

/// The condition of such a select, its parameters included; "" when it has none.
OXSUPERAPI_EXPORT std::string WhereClause(std::string_view SQL);

/// A statement that reads and does not write, as far as its text tells.
OXSUPERAPI_EXPORT bool IsSelect(std::string_view SQL);

/// Neither empty nor several statements with semicolons between them.
OXSUPERAPI_EXPORT bool IsOneStatement(std::string_view SQL);

/// The text with `dbo.X` written `X`, for a database that has no such schema.
OXSUPERAPI_EXPORT std::string WithoutSchema(std::string_view SQL);

/// The statement's kind and table for an error text: "update of _iptblBeamSuperLog". Never raises.
OXSUPERAPI_EXPORT std::string DescribeSQL(std::string_view SQL) noexcept;

/// True when the text holds nothing but blanks, comments and semicolons.
OXSUPERAPI_EXPORT bool IsBlankSQL(std::string_view SQL);

/// Comparison of column, table and parameter names: ASCII letter case does not count.
OXSUPERAPI_EXPORT bool SameName(std::string_view Left, std::string_view Right);
/// A table's name without the schema "dbo." and without quotes.
OXSUPERAPI_EXPORT std::string BareTableName(std::string_view Table);

}  // namespace oxSuperAPI
