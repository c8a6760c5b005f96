#include "oxSuperAPI/foundation/uBeamDates.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <limits>

namespace oxSuperAPI {

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::int64_t MillisecondsPerDay = 86'400'000;
constexpr sys_days DayZero = std::chrono::year{1899} / std::chrono::December / 30;

// A date-time taken apart at millisecond resolution. The time of day counts away from day 0, so that -1.25 is six
// o'clock of the day -1.
struct TMoment {
  std::int64_t Day;
  std::int64_t Milliseconds;
};

double ToMilliseconds(TDateTime Value) {
  return std::round(Value * static_cast<double>(MillisecondsPerDay));
}

TMoment Split(TDateTime Value) {
  const double Milliseconds = ToMilliseconds(Value);
  // Far wider than the calendar, and well inside 64 bits; NaN fails the comparison.
  if (!(std::abs(Milliseconds) < 1e15)) throw TBeamConversionError("A date-time lies outside the calendar");
  const auto Whole = static_cast<std::int64_t>(Milliseconds);
  return {Whole / MillisecondsPerDay, std::abs(Whole % MillisecondsPerDay)};
}

TDateTime Join(TMoment Moment) {
  const double Time = static_cast<double>(Moment.Milliseconds) / static_cast<double>(MillisecondsPerDay);
  const auto Day = static_cast<double>(Moment.Day);
  return Moment.Day < 0 ? Day - Time : Day + Time;
}

bool IsInCalendar(const year_month_day& Date) {
  return Date.ok() && static_cast<int>(Date.year()) >= 1 && static_cast<int>(Date.year()) <= 9999;
}

year_month_day DateOfDay(std::int64_t Day) {
  const year_month_day Date{DayZero + days{Day}};
  if (!IsInCalendar(Date)) throw TBeamConversionError("A date-time lies outside the calendar");
  return Date;
}

void AppendPadded(std::string& Out, std::int64_t Number, std::size_t Width) {
  const std::string Digits = std::to_string(Number);
  if (Digits.size() < Width) Out.append(Width - Digits.size(), '0');
  Out += Digits;
}

void AppendDate(std::string& Out, std::int64_t Day) {
  const year_month_day Date = DateOfDay(Day);
  AppendPadded(Out, static_cast<int>(Date.year()), 4);
  Out += '-';
  AppendPadded(Out, static_cast<unsigned>(Date.month()), 2);
  Out += '-';
  AppendPadded(Out, static_cast<unsigned>(Date.day()), 2);
}

void AppendHoursMinutes(std::string& Out, std::int64_t Milliseconds) {
  AppendPadded(Out, Milliseconds / 3'600'000, 2);
  Out += ':';
  AppendPadded(Out, Milliseconds / 60'000 % 60, 2);
}

void AppendDateSeconds(std::string& Out, const TMoment& Moment) {
  AppendDate(Out, Moment.Day);
  Out += 'T';
  AppendHoursMinutes(Out, Moment.Milliseconds);
  Out += ':';
  AppendPadded(Out, Moment.Milliseconds / 1000 % 60, 2);
}

}  // namespace

TDateTime EncodeDate(int Year, int Month, int Day) {
  const bool InRange = Year >= 1 && Year <= 9999 && Month >= 1 && Month <= 12 && Day >= 1 && Day <= 31;
  const year_month_day Date = std::chrono::year{Year} / Month / Day;  // some day or other when out of range
  if (!InRange || !Date.ok())
    throw TBeamConversionError("There is no day " + std::to_string(Day) + " of month " + std::to_string(Month) +
                               " in the year " + std::to_string(Year));
  return static_cast<double>((sys_days{Date} - DayZero).count());
}

TCalendarDate DecodeDate(TDateTime Value) {
  const year_month_day Date = DateOfDay(Split(Value).Day);
  return {static_cast<int>(Date.year()), static_cast<unsigned>(Date.month()), static_cast<unsigned>(Date.day())};
}

TDateTime DateOf(TDateTime Value) {
  return static_cast<double>(Split(Value).Day);
}

TDateTime IncMonth(TDateTime Value, int Months) {
  // Chrono keeps a year in 16 bits: what leaves the calendar by far must not come back into it.
  constexpr int MonthsOfTheCalendar = 12 * 9999;
  if (Months < -MonthsOfTheCalendar || Months > MonthsOfTheCalendar)
    throw TBeamConversionError("A date-time lies outside the calendar");
  const TMoment Moment = Split(Value);
  const year_month_day Date = DateOfDay(Moment.Day);
  year_month_day Moved = Date + std::chrono::months{Months};
  if (!Moved.ok()) Moved = Moved.year() / Moved.month() / std::chrono::last;
  if (!IsInCalendar(Moved)) throw TBeamConversionError("A date-time lies outside the calendar");
  return Join({(sys_days{Moved} - DayZero).count(), Moment.Milliseconds});
}

TDateTime IncYear(TDateTime Value, int Years) {
  return IncMonth(Value, std::clamp(Years, -10'000, 10'000) * 12);
}

TDateTime IncSeconds(TDateTime Value, double Seconds) {
  return Value + Seconds / 86'400.0;
}

std::strong_ordering CompareDateTime(TDateTime Left, TDateTime Right) {
  const auto Rank = [](TDateTime Value) {
    return std::isnan(Value) ? -std::numeric_limits<double>::infinity() : ToMilliseconds(Value);
  };
  const double LeftRank = Rank(Left);
  const double RightRank = Rank(Right);
  if (LeftRank < RightRank) return std::strong_ordering::less;
  return LeftRank > RightRank ? std::strong_ordering::greater : std::strong_ordering::equal;
}

std::string FormatDate(TDateTime Value) {
  std::string Result;
  AppendDate(Result, Split(Value).Day);
  return Result;
}

std::string FormatDateMinutes(TDateTime Value) {
  const TMoment Moment = Split(Value);
  std::string Result;
  AppendDate(Result, Moment.Day);
  Result += ' ';
  AppendHoursMinutes(Result, Moment.Milliseconds);
  return Result;
}

std::string FormatUTCSeconds(TDateTime Value) {
  std::string Result;
  AppendDateSeconds(Result, Split(Value));
  return Result += 'Z';
}

std::string FormatUTCMilliseconds(TDateTime Value) {
  const TMoment Moment = Split(Value);
  std::string Result;
  AppendDateSeconds(Result, Moment);
  Result += '.';
  AppendPadded(Result, Moment.Milliseconds % 1000, 3);
  return Result += 'Z';
}

}  // namespace oxSuperAPI
