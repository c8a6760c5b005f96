#pragma once

#include <cstdint>
#include <ctime>
#include <string>

namespace oxSuperAPI {

/// Whole days from now to a moment (seconds since 1970-01-01 UTC); negative when it is past.
inline std::int64_t DaysLeft(std::int64_t Moment) {
  const std::int64_t Seconds = Moment - static_cast<std::int64_t>(std::time(nullptr));
  return Seconds >= 0 ? Seconds / 86'400 : -1 - (-Seconds - 1) / 86'400;
}

/// "2026-11-21" of a moment, UTC.
inline std::string DayText(std::int64_t Moment) {
  const std::time_t Time = Moment;
  std::tm Parts{};
  char Text[16] = "";
  gmtime_r(&Time, &Parts);
  std::strftime(Text, sizeof Text, "%Y-%m-%d", &Parts);
  return Text;
}

}  // namespace oxSuperAPI
