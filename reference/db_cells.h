#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "oxSuperAPI/host/uHostDatabase.h"

namespace oxSuperAPI {

/// A column's value as a database gives it: NULL, an integer, a real number or a text. Date-times are texts.
using TDBCell = std::variant<std::monostate, std::int64_t, double, std::string>;

/// The rows that a statement gave, all of them in memory.
struct TDBTable {
  /// Column names as the database gives them; each row has a cell for every one of them. @{
  std::vector<std::string> Columns;
  std::vector<std::vector<TDBCell>> Rows;
  /// @}
};

/// How a parameter is stored: a date-time as FormatDateTime gives it.
OXSUPERAPI_EXPORT TDBCell ToCell(TDBValue Value);

/// A cell as a parameter's value. A number that no parameter can hold becomes its text.
OXSUPERAPI_EXPORT TDBValue ToValue(const TDBCell& Cell);

/// Reading a cell as the host interface lays it down: NULL gives "", 0 and 0.0. Content that is not what is asked for
/// raises TDatabaseError, which names the column only. @{
OXSUPERAPI_EXPORT std::string CellAsString(const TDBCell& Cell);
OXSUPERAPI_EXPORT std::int32_t CellAsInteger(const TDBCell& Cell, std::string_view Column);
/// @}

/// Reads both forms in which a date-time may be stored: ISO text and a number of days. Exact to the millisecond.
OXSUPERAPI_EXPORT TDateTime CellAsDateTime(const TDBCell& Cell, std::string_view Column);

/// "2024-03-05 12:00:00.000", rounded to the millisecond: as text these sort like the moments. Stored form.
/// Raises TDatabaseError outside the years 1 to 9999 and for NaN.
OXSUPERAPI_EXPORT std::string FormatDateTime(TDateTime Value);
/// The reverse. The time may be missing or end with the minutes, a "T" may stand for the blank. None for other text.
OXSUPERAPI_EXPORT std::optional<TDateTime> ParseDateTime(std::string_view Text);

}  // namespace oxSuperAPI
