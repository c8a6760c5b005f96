#include "http_time.h"

#include <cstdio>

namespace sandbox {

std::string HttpTime(TimePoint time) {
  constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  char text[64];
  std::snprintf(text, sizeof text, "%s, %02u %s %04d %s GMT", kDays[std::chrono::weekday(day).c_encoding()],
                unsigned(date.day()), kMonths[unsigned(date.month()) - 1], int(date.year()),
                IsoTime(time).substr(11, 8).c_str());
  return text;
}

}  // namespace sandbox
