#include "oxSuperAPI/reference/odbc_bind.h"

#include <charconv>

#include "oxSuperAPI/reference/db_cells.h"
#include "oxSuperAPI/reference/utf16.h"

namespace oxSuperAPI {

namespace {

// The longest text of the ordinary type, in UTF-16 units. A longer one would be cut without a word.
constexpr std::size_t LongestOrdinary = 4000;

// The digits of "2024-03-05 12:00:00.000" at a place.
template <class Number>
Number Digits(const std::string& Text, std::size_t At, std::size_t Count) {
  Number Result = 0;
  std::from_chars(Text.data() + At, Text.data() + At + Count, Result);
  return Result;
}

}  // namespace

TODBCParameters::TODBCParameters(const std::vector<TDBValue>& Values) {
  for (const TDBValue& Value : Values) {
    TParameter& Parameter = FParameters.emplace_back();
    Parameter.ColumnSize = LongestOrdinary;  // one type for all ordinary texts: the server plans a statement once
    if (const auto* Number = std::get_if<std::int32_t>(&Value))
      SetNumber(Parameter, *Number);
    else if (const auto* Moment = std::get_if<TDateTime>(&Value))
      SetMoment(Parameter, *Moment);
    else if (const auto* Text = std::get_if<std::string>(&Value))
      SetText(Parameter, *Text);
  }
}

void TODBCParameters::SetNumber(TParameter& Parameter, std::int32_t Number) {
  Parameter.CType = SQL_C_SLONG;
  Parameter.SQLType = SQL_INTEGER;
  Parameter.ColumnSize = 10;
  Parameter.Number = Number;
  Parameter.Indicator = sizeof(SQLINTEGER);
}

void TODBCParameters::SetMoment(TParameter& Parameter, TDateTime Moment) {
  const std::string Text = FormatDateTime(Moment);  // rounds to the millisecond and checks the range
  // FreeTDS counts the days before 1600-03-01 wrongly. As a text, the server converts them.
  if (Text < "1753") return SetText(Parameter, Text);
  Parameter.CType = SQL_C_TYPE_TIMESTAMP;
  Parameter.SQLType = SQL_TYPE_TIMESTAMP;
  Parameter.ColumnSize = 23;
  Parameter.Digits = 3;
  Parameter.Moment.year = Digits<SQLSMALLINT>(Text, 0, 4);
  Parameter.Moment.month = Digits<SQLUSMALLINT>(Text, 5, 2);
  Parameter.Moment.day = Digits<SQLUSMALLINT>(Text, 8, 2);
  Parameter.Moment.hour = Digits<SQLUSMALLINT>(Text, 11, 2);
  Parameter.Moment.minute = Digits<SQLUSMALLINT>(Text, 14, 2);
  Parameter.Moment.second = Digits<SQLUSMALLINT>(Text, 17, 2);
  Parameter.Moment.fraction = Digits<SQLUINTEGER>(Text, 20, 3) * 1'000'000;  // nanoseconds
  Parameter.Indicator = sizeof(SQL_TIMESTAMP_STRUCT);
}

void TODBCParameters::SetText(TParameter& Parameter, const std::string& Text) {
  Parameter.Text = ToUTF16(Text);
  if (Parameter.Text.size() > LongestOrdinary) {
    Parameter.SQLType = SQL_WLONGVARCHAR;
    Parameter.ColumnSize = Parameter.Text.size();
  }
  Parameter.Indicator = static_cast<SQLLEN>(Parameter.Text.size() * sizeof(char16_t));
}

bool TODBCParameters::BindTo(SQLHSTMT Statement) {
  SQLUSMALLINT Place = 0;
  for (TParameter& Parameter : FParameters) {
    SQLPOINTER Data = ODBCText(Parameter.Text);
    if (Parameter.CType == SQL_C_SLONG) Data = &Parameter.Number;
    if (Parameter.CType == SQL_C_TYPE_TIMESTAMP) Data = &Parameter.Moment;
    const SQLRETURN Code =
        SQLBindParameter(Statement, ++Place, SQL_PARAM_INPUT, Parameter.CType, Parameter.SQLType, Parameter.ColumnSize,
                         Parameter.Digits, Data, std::max<SQLLEN>(Parameter.Indicator, 0), &Parameter.Indicator);
    if (!SQL_SUCCEEDED(Code)) return false;
  }
  return true;
}

}  // namespace oxSuperAPI
