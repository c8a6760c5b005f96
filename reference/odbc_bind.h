#pragma once

#include <deque>
#include <string>
#include <vector>

#include "oxSuperAPI/host/uHostDatabase.h"
#include "oxSuperAPI/reference/odbc_handle.h"

namespace oxSuperAPI {

/// The parameters of one statement, in a form that the driver reads when the statement is executed: this object has to
/// live until then. For the ODBC adapter alone.
class TODBCParameters {
 public:
  /// Converts the values. Raises TDatabaseError for a date-time outside the years 1 to 9999.
  explicit TODBCParameters(const std::vector<TDBValue>& Values);

  /// Binds them to the statement's marks, in their order. False: the driver refused one.
  bool BindTo(SQLHSTMT Statement);

 private:
  struct TParameter {
    SQLSMALLINT CType = SQL_C_WCHAR;
    SQLSMALLINT SQLType = SQL_WVARCHAR;
    SQLULEN ColumnSize = 0;
    SQLSMALLINT Digits = 0;
    SQLINTEGER Number = 0;
    SQL_TIMESTAMP_STRUCT Moment{};
    std::u16string Text;
    SQLLEN Indicator = SQL_NULL_DATA;
  };

  static void SetNumber(TParameter& Parameter, std::int32_t Number);
  static void SetMoment(TParameter& Parameter, TDateTime Moment);
  static void SetText(TParameter& Parameter, const std::string& Text);

  std::deque<TParameter> FParameters;  ///< the driver keeps pointers into them
};

}  // namespace oxSuperAPI
