#pragma once

#include <compare>
#include <cstdint>
#include <string>

#include "oxSuperAPI/host/uBeamError.h"
#include "oxSuperAPI/host/uHostDates.h"

namespace oxSuperAPI {

/// A day of the proleptic Gregorian calendar.
struct TCalendarDate {
  /// Month and day count from 1. @{
  int Year;
  unsigned Month;
  unsigned Day;
  /// @}
};

/// Midnight of that day. Raises TBeamConversionError when the calendar has no such day (years 1 to 9999).
OXSUPERAPI_EXPORT TDateTime EncodeDate(int Year, int Month, int Day);
/// The day of a date-time; the time of day is dropped toward zero, so -1.25 is the day -1. Raises TBeamConversionError
/// for NaN and for moments outside the years 1 to 9999.
OXSUPERAPI_EXPORT TCalendarDate DecodeDate(TDateTime Value);
/// Midnight of the day of `Value`.
OXSUPERAPI_EXPORT TDateTime DateOf(TDateTime Value);

/// The same day of the month and time of day, so many months or years later or earlier; a day that the month lacks
/// becomes its last.
/// @{
OXSUPERAPI_EXPORT TDateTime IncMonth(TDateTime Value, int Months);
OXSUPERAPI_EXPORT TDateTime IncYear(TDateTime Value, int Years);
/// @}

/// Days have 86,400 seconds: no leap seconds, no clock changes.
OXSUPERAPI_EXPORT TDateTime IncSeconds(TDateTime Value, double Seconds);

/// Compares to the millisecond, so that "exactly a year ago" can be told from a moment later. NaN compares as less.
OXSUPERAPI_EXPORT std::strong_ordering CompareDateTime(TDateTime Left, TDateTime Right);

/// "yyyy-mm-dd", "yyyy-mm-dd hh:nn" (24 hours), "yyyy-mm-ddThh:nn:ssZ" (of a UTC moment; milliseconds dropped) and
/// "yyyy-mm-ddThh:nn:ss.zzzZ". @{
OXSUPERAPI_EXPORT std::string FormatDate(TDateTime Value);
OXSUPERAPI_EXPORT std::string FormatDateMinutes(TDateTime Value);
OXSUPERAPI_EXPORT std::string FormatUTCSeconds(TDateTime Value);
OXSUPERAPI_EXPORT std::string FormatUTCMilliseconds(TDateTime Value);
/// @}

}  // namespace oxSuperAPI
