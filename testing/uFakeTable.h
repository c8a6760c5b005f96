#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "oxSuperAPI/host/uHostDatabase.h"

namespace oxSuperAPI {

/// What a column stores. An identity column counts by itself and cannot be written.
enum class TFakeColumnKind : std::uint8_t { Text, Integer, DateTime, Identity };

/// A column of a table.
struct TFakeColumn {
  /// Compared without regard to letter case; a value of another kind is converted or refused. @{
  std::string Name;
  TFakeColumnKind Kind = TFakeColumnKind::Text;
  /// @}

  /// Widest text in characters (UTF-16 units); 0 is unlimited. A wider text is refused, never cut. Nothing is padded:
  /// to simulate a column of fixed width, store padded text.
  std::size_t Width = 0;
};

/// One value a column, in the order of the table's columns.
using TFakeRow = std::vector<TDBValue>;

/// A table in memory. A test may look at and change `Rows` directly. Names are compared without regard to letter case.
class TFakeTable {
 public:
  /// Without rows. `Key` becomes the unique key.
  TFakeTable(std::string TableName, std::vector<TFakeColumn> TableColumns, std::vector<std::string> Key = {});

  /// As given to the constructor. @{
  std::string Name;
  std::vector<TFakeColumn> Columns;
  /// @}

  /// Columns that together must differ between any two rows; none when empty.
  std::vector<std::string> UniqueKey;
  /// In the order in which they were added.
  std::vector<TFakeRow> Rows;
  /// What an identity column of the next row gets.
  std::int32_t NextIdentity = 1;

  /// Raises TBeamError "Invalid column name ..." as a server would.
  std::size_t ColumnIndex(std::string_view Column) const;
  /// A column of the row at `Index`; raises TBeamRangeError when there is no such row.
  const TDBValue& Value(std::size_t Index, std::string_view Column) const;
  /// The same as text: NULL gives "", an integer its decimal text.
  std::string Text(std::size_t Index, std::string_view Column) const;

  /// Adds a row with these values and NULL elsewhere, as an insert would. Returns its identity, or 0 when the
  /// table has no identity column.
  std::int32_t Add(const std::vector<std::pair<std::string, TDBValue>>& Values);

  /// The position of a column that statements may write; raises TBeamError for an identity column.
  std::size_t WritableColumn(std::string_view Column) const;
  /// `Value` as the column stores it; raises TBeamError when it does not fit.
  TDBValue Convert(std::size_t Column, const TDBValue& Value) const;
  /// Raises TBeamError when two of `Candidates` have the same key.
  void CheckUnique(const std::vector<TFakeRow>& Candidates) const;
};

/// Equality as a server sees it: NULL equals nothing, trailing blanks of texts do not count, values of different kinds
/// differ unless both are numbers.
bool EqualValues(const TDBValue& Left, const TDBValue& Right);

/// A value as text: NULL gives "", a number its shortest decimal text.
std::string ValueAsText(const TDBValue& Value);
/// A value as a 32-bit integer: NULL gives 0; raises TBeamError when it is no integer (a text may be padded).
std::int32_t ValueAsInteger(const TDBValue& Value);
/// A value as a date-time: NULL gives 0; raises TBeamError for a text.
TDateTime ValueAsDateTime(const TDBValue& Value);

}  // namespace oxSuperAPI
