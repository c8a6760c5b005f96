#include "oxSuperAPI/reference/odbc_fetch.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <optional>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/odbc_error.h"
#include "oxSuperAPI/reference/utf16.h"

namespace oxSuperAPI {

namespace {

struct TColumn {
  std::string Name;
  SQLSMALLINT Type = SQL_WVARCHAR;
};

// An error may hide behind "success with a remark".
void Check(SQLHSTMT Statement, SQLRETURN Code) {
  if (Code == SQL_SUCCESS || Code == SQL_NO_DATA) return;
  if (Code != SQL_SUCCESS_WITH_INFO) throw TODBCFailure();
  const std::vector<TODBCDiagnostic> Records = ODBCDiagnostics(SQL_HANDLE_STMT, Statement);
  if (!std::ranges::all_of(Records, &TODBCDiagnostic::IsRemark)) throw TODBCFailure();
}

std::vector<TColumn> ReadColumns(SQLHSTMT Statement) {
  SQLSMALLINT Count = 0;
  Check(Statement, SQLNumResultCols(Statement, &Count));
  std::vector<TColumn> Columns(static_cast<std::size_t>(std::max<SQLSMALLINT>(Count, 0)));
  for (std::size_t At = 0; At < Columns.size(); ++At) {
    char16_t Name[256] = {};
    SQLSMALLINT Length = 0, Digits = 0, Nullable = 0;
    SQLULEN Size = 0;
    Check(Statement, SQLDescribeColW(Statement, static_cast<SQLUSMALLINT>(At + 1), ODBCText(Name), std::size(Name) - 1,
                                     &Length, &Columns[At].Type, &Size, &Digits, &Nullable));
    Columns[At].Name = ToUTF8(Name);
  }
  return Columns;
}

// A fixed-length value; none for NULL.
template <class Value>
std::optional<Value> ReadValue(SQLHSTMT Statement, SQLUSMALLINT Column, SQLSMALLINT CType) {
  Value Result{};
  SQLLEN Indicator = 0;
  Check(Statement, SQLGetData(Statement, Column, CType, &Result, sizeof(Result), &Indicator));
  if (Indicator == SQL_NULL_DATA) return std::nullopt;
  return Result;
}

// As the same moment of any other database would be stored; beyond milliseconds it is rounded.
TDBCell ReadMoment(SQLHSTMT Statement, SQLUSMALLINT Column) {
  using namespace std::chrono;
  const auto Read = ReadValue<SQL_TIMESTAMP_STRUCT>(Statement, Column, SQL_C_TYPE_TIMESTAMP);
  if (!Read) return {};
  const year_month_day Date = year{Read->year} / month{Read->month} / day{Read->day};
  if (!Date.ok() || Read->year < 1 || Read->year > 9999 || Read->hour > 23 || Read->minute > 59 || Read->second > 59 ||
      Read->fraction > 999'999'999)
    throw TDatabaseError("The driver gave a date-time that does not exist");
  const auto Moment = sys_days{Date} + hours{Read->hour} + minutes{Read->minute} + seconds{Read->second} +
                      milliseconds{(Read->fraction + 500'000) / 1'000'000};
  // The last moment of all stands for "never" in some tables, and must not be rounded out of the calendar.
  constexpr sys_time<milliseconds> Last = sys_days{9999y / December / 31} + 24h - 1ms;
  const sys_time<milliseconds> Rounded = std::min<sys_time<milliseconds>>(Moment, Last);
  return FormatDateTime(static_cast<double>((Rounded - sys_days{1899y / December / 30}).count()) / 86'400'000.0);
}

constexpr char16_t Untouched = 0xFFFF;

// How many units of a filled buffer are text. The driver puts a zero behind a piece; its word on the length is taken
// only when that zero stands where it says. `Buffer` was full of `Untouched` before the call.
std::size_t PieceLength(const std::u16string& Buffer, SQLLEN Indicator) {
  const auto Said = static_cast<std::size_t>(Indicator) / sizeof(char16_t);
  if (Indicator >= 0 && Indicator % 2 == 0 && Said < Buffer.size() && Buffer[Said] == 0) return Said;
  std::size_t End = Buffer.size();
  while (End > 0 && Buffer[End - 1] == Untouched) --End;
  return End > 0 && Buffer[End - 1] == 0 ? End - 1 : End;
}

bool WasCut(SQLHSTMT Statement) {
  const std::vector<TODBCDiagnostic> Records = ODBCDiagnostics(SQL_HANDLE_STMT, Statement);
  return std::ranges::any_of(Records, [](const TODBCDiagnostic& Record) { return Record.State == "01004"; });
}

// A text of any length, in pieces of growing size.
TDBCell ReadText(SQLHSTMT Statement, SQLUSMALLINT Column) {
  constexpr std::size_t FirstPiece = 2048, LargestPiece = 1 << 20, LongestText = std::size_t{1} << 30;
  TUTF8Builder Text;
  std::size_t Read = 0;
  std::u16string Buffer;
  for (std::size_t Size = FirstPiece;; Size = std::min(Size * 4, LargestPiece)) {
    Buffer.assign(Size, Untouched);
    SQLLEN Indicator = 0;
    const SQLRETURN Code = SQLGetData(Statement, Column, SQL_C_WCHAR, ODBCText(Buffer),
                                      static_cast<SQLLEN>(Buffer.size() * sizeof(char16_t)), &Indicator);
    Check(Statement, Code);
    if (Code == SQL_NO_DATA) break;
    if (Indicator == SQL_NULL_DATA) return {};
    const std::size_t Length = PieceLength(Buffer, Indicator);
    Text.Add({Buffer.data(), Length});
    Read += Length;
    const bool Cut = Code == SQL_SUCCESS_WITH_INFO && WasCut(Statement);
    const bool SaysMore = Indicator >= 0 && static_cast<std::size_t>(Indicator) / sizeof(char16_t) >= Size;
    // FreeTDS calls a short variant cut and gives it again and again.
    const bool SaysAll = Indicator >= 0 && Length + 2 < Size && static_cast<std::size_t>(Indicator) == 2 * Length;
    if ((!Cut || SaysAll) && !SaysMore) break;
    if (Length == 0 || Read > LongestText) throw TDatabaseError("The driver never came to the end of a text");
  }
  return Text.Finish();
}

TDBCell ReadCell(SQLHSTMT Statement, SQLUSMALLINT Column, SQLSMALLINT Type) {
  switch (Type) {
    case SQL_BIT:
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT: {
      const auto Number = ReadValue<SQLBIGINT>(Statement, Column, SQL_C_SBIGINT);
      return Number ? TDBCell(std::int64_t{*Number}) : TDBCell();
    }
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE: {
      const auto Number = ReadValue<double>(Statement, Column, SQL_C_DOUBLE);
      return Number ? TDBCell(*Number) : TDBCell();
    }
    case SQL_TYPE_TIMESTAMP:
    case SQL_TIMESTAMP:
      return ReadMoment(Statement, Column);
    default:
      return ReadText(Statement, Column);
  }
}

TDBTable ReadRows(SQLHSTMT Statement, const std::vector<TColumn>& Columns) {
  TDBTable Table;
  for (const TColumn& Column : Columns) Table.Columns.push_back(Column.Name);
  for (;;) {
    const SQLRETURN Code = SQLFetch(Statement);
    Check(Statement, Code);
    if (Code == SQL_NO_DATA) return Table;
    std::vector<TDBCell>& Row = Table.Rows.emplace_back();
    for (std::size_t At = 0; At < Columns.size(); ++At)
      Row.push_back(ReadCell(Statement, static_cast<SQLUSMALLINT>(At + 1), Columns[At].Type));
  }
}

}  // namespace

TDBTable ReadODBCResults(SQLHSTMT Statement, SQLRETURN Executed) {
  Check(Statement, Executed);  // "no data" is an update that found no row
  TDBTable First;
  for (;;) {
    const std::vector<TColumn> Columns = ReadColumns(Statement);
    if (!Columns.empty()) {
      TDBTable Table = ReadRows(Statement, Columns);
      if (First.Columns.empty()) First = std::move(Table);
    }
    const SQLRETURN Code = SQLMoreResults(Statement);
    Check(Statement, Code);
    if (Code == SQL_NO_DATA) return First;
  }
}

}  // namespace oxSuperAPI
