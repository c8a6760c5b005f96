#include "clock.h"

#include <cstdio>

namespace sandbox {

using std::chrono::floor;
using std::chrono::milliseconds;

TimePoint Clock::Now() const {
  return floor<milliseconds>(std::chrono::system_clock::now()) + milliseconds(skipped_.load());
}

std::string IsoTime(TimePoint time) {
  const auto day = floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss<milliseconds> clock(time - day);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", int(date.year()), unsigned(date.month()),
                unsigned(date.day()), int(clock.hours().count()), int(clock.minutes().count()),
                int(clock.seconds().count()), int(clock.subseconds().count()));
  return text;
}

}  // namespace sandbox
