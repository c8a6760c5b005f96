#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "oxSuperAPI/host/uBeamError.h"
#include "oxSuperAPI/host/uHostDates.h"

namespace oxSuperAPI {

/// A column's or parameter's value: NULL, an integer, a date-time (TDateTime) or a text (UTF-8).
using TDBValue = std::variant<std::monostate, std::int32_t, TDateTime, std::string>;

/// A value for a named parameter.
struct TDBParameter {
  /// The name comes without its colon. @{
  std::string Name;
  TDBValue Value;
  /// @}
};

/// A statement with named parameters, written `:Name` in the text. A name may be the beginning of another one
/// (`:Env`, `:Environment`). Parameters are bound, never pasted into the text.
struct TDBStatement {
  /// The text, and a value for each name in it. @{
  std::string SQL;
  std::vector<TDBParameter> Parameters;
  /// @}
};

/// The rows of a select, with a cursor on the first of them. Field names are compared without regard to letter case.
/// Every operation may raise.
class OXSUPERAPI_EXPORT TADOQuery {
 public:
  virtual ~TADOQuery() = default;
  /// No row under the cursor: the select found none.
  virtual bool Eof() const = 0;
  /// The field of the current row, or of the row last posted. NULL reads as "", 0 and 0.0. An unknown name raises. @{
  virtual std::string FieldAsString(std::string_view Name) const = 0;
  virtual std::int32_t FieldAsInteger(std::string_view Name) const = 0;
  virtual TDateTime FieldAsDateTime(std::string_view Name) const = 0;
  /// @}

  /// Starts a new row, or a change of the current one. @{
  virtual void Append() = 0;
  virtual void Edit() = 0;
  /// @}

  /// Sets a field of the row that Append or Edit started. The value is the query's to keep: a log row's text may be as
  /// long as a whole batch, and is not to be copied on its way to the database.
  virtual void SetField(std::string_view Name, TDBValue Value) = 0;
  /// Writes that row to the table; afterwards it is the current one and an identity column has its value.
  virtual void Post() = 0;
};

/// A database connection of the host, on one thread, with one query open at a time or several.
class OXSUPERAPI_EXPORT TADOConnection {
 public:
  virtual ~TADOConnection() = default;
  /// Runs a select. The query must not outlive the connection.
  virtual std::unique_ptr<TADOQuery> Open(const TDBStatement& Statement) = 0;
  /// Runs a statement that gives no rows, in one transaction.
  virtual void Execute(const TDBStatement& Statement) = 0;
};

}  // namespace oxSuperAPI
