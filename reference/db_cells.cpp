#include "oxSuperAPI/reference/db_cells.h"

#include <fmt/format.h>

#include <charconv>
#include <chrono>
#include <cmath>
#include <utility>

#include "oxSuperAPI/reference/db_error.h"

namespace oxSuperAPI {

namespace {

using namespace std::chrono;

constexpr sys_days DayZero = year{1899} / December / 30;
constexpr double MillisecondsPerDay = 86'400'000.0;

template <class... Cases>
struct TVisitor : Cases... {
  using Cases::operator()...;
};

TDateTime FromMilliseconds(double Milliseconds) {
  return Milliseconds / MillisecondsPerDay;
}

// Takes exactly `Digits` digits from the front.
bool TakeNumber(std::string_view& Text, std::size_t Digits, int& Number) {
  if (Text.size() < Digits) return false;
  Number = 0;
  for (std::size_t At = 0; At < Digits; ++At) {
    if (Text[At] < '0' || Text[At] > '9') return false;
    Number = Number * 10 + (Text[At] - '0');
  }
  Text.remove_prefix(Digits);
  return true;
}
bool TakeCharacter(std::string_view& Text, char Character) {
  if (!Text.starts_with(Character)) return false;
  Text.remove_prefix(1);
  return true;
}

[[noreturn]] void FailColumn(std::string_view Column, std::string_view Expected) {
  throw TDatabaseError(fmt::format("The content of column {} is not {}", Column, Expected));
}

}  // namespace

TDBCell ToCell(TDBValue Value) {
  return std::visit(TVisitor{
                        [](std::monostate) -> TDBCell { return {}; },
                        [](std::int32_t Number) -> TDBCell { return std::int64_t{Number}; },
                        [](TDateTime Moment) -> TDBCell { return FormatDateTime(Moment); },
                        [](std::string&& Text) -> TDBCell { return std::move(Text); },
                    },
                    std::move(Value));
}

TDBValue ToValue(const TDBCell& Cell) {
  if (std::holds_alternative<std::monostate>(Cell)) return {};
  const auto* const Number = std::get_if<std::int64_t>(&Cell);
  if (Number && std::in_range<std::int32_t>(*Number)) return static_cast<std::int32_t>(*Number);
  return CellAsString(Cell);
}

std::string CellAsString(const TDBCell& Cell) {
  return std::visit(TVisitor{
                        [](std::monostate) { return std::string(); },
                        [](const std::string& Text) { return Text; },
                        [](auto Number) { return fmt::format("{}", Number); },
                    },
                    Cell);
}

std::int32_t CellAsInteger(const TDBCell& Cell, std::string_view Column) {
  if (std::holds_alternative<std::monostate>(Cell)) return 0;
  const std::string Text = CellAsString(Cell);
  std::int32_t Number = 0;
  const auto [Stop, Error] = std::from_chars(Text.data(), Text.data() + Text.size(), Number);
  if (Error != std::errc{} || Stop != Text.data() + Text.size()) FailColumn(Column, "an integer of 32 bits");
  return Number;
}

TDateTime CellAsDateTime(const TDBCell& Cell, std::string_view Column) {
  if (const auto* Text = std::get_if<std::string>(&Cell)) {
    if (Text->empty()) return 0;
    const std::optional<TDateTime> Moment = ParseDateTime(*Text);
    if (!Moment) FailColumn(Column, "a date-time (\"2024-03-05 12:00:00.000\")");
    return *Moment;
  }
  if (const auto* Days = std::get_if<std::int64_t>(&Cell)) return static_cast<double>(*Days);
  if (const auto* Days = std::get_if<double>(&Cell)) return FromMilliseconds(std::round(*Days * MillisecondsPerDay));
  return 0;
}

std::string FormatDateTime(TDateTime Value) {
  const double Milliseconds = std::round(Value * MillisecondsPerDay);
  if (!(std::abs(Milliseconds) < 1e15)) throw TDatabaseError("A date-time lies outside the years 1 to 9999");
  const sys_time<milliseconds> Moment = DayZero + milliseconds{static_cast<std::int64_t>(Milliseconds)};
  const auto Day = floor<days>(Moment);
  const year_month_day Date{Day};
  const hh_mm_ss Time{Moment - Day};
  if (Date.year() < year{1} || Date.year() > year{9999})
    throw TDatabaseError("A date-time lies outside the years 1 to 9999");
  return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}.{:03}", static_cast<int>(Date.year()),
                     static_cast<unsigned>(Date.month()), static_cast<unsigned>(Date.day()), Time.hours().count(),
                     Time.minutes().count(), Time.seconds().count(), Time.subseconds().count());
}

std::optional<TDateTime> ParseDateTime(std::string_view Text) {
  int Year = 0, Month = 0, Day = 0, Hour = 0, Minute = 0, Second = 0;
  double Fraction = 0;
  if (!TakeNumber(Text, 4, Year) || !TakeCharacter(Text, '-') || !TakeNumber(Text, 2, Month) ||
      !TakeCharacter(Text, '-') || !TakeNumber(Text, 2, Day))
    return std::nullopt;
  const year_month_day Date = year{Year} / month{static_cast<unsigned>(Month)} / day{static_cast<unsigned>(Day)};
  if (!Date.ok() || Year == 0) return std::nullopt;
  if (TakeCharacter(Text, ' ') || TakeCharacter(Text, 'T')) {
    if (!TakeNumber(Text, 2, Hour) || !TakeCharacter(Text, ':') || !TakeNumber(Text, 2, Minute)) return std::nullopt;
    if (TakeCharacter(Text, ':') && !TakeNumber(Text, 2, Second)) return std::nullopt;
    if (TakeCharacter(Text, '.')) {
      double Unit = 0.1;
      int Digit = 0;
      if (Text.empty()) return std::nullopt;
      for (; TakeNumber(Text, 1, Digit); Unit /= 10) Fraction += Digit * Unit;
    }
  }
  if (!Text.empty() || Hour > 23 || Minute > 59 || Second > 59) return std::nullopt;
  const double Days = static_cast<double>((sys_days{Date} - DayZero).count());
  const double Milliseconds = std::round((((Hour * 60 + Minute) * 60 + Second) + Fraction) * 1000.0);
  return Days + FromMilliseconds(Milliseconds);
}

}  // namespace oxSuperAPI
