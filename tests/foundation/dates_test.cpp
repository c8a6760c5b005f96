#include "oxSuperAPI/foundation/uBeamDates.h"

#include <gtest/gtest.h>

#include <cmath>

namespace oxSuperAPI {
namespace {

constexpr double Millisecond = 1 / 86'400'000.0;

TEST(Dates, DayZeroIsTheThirtiethOfDecember1899) {
  EXPECT_EQ(EncodeDate(1899, 12, 30), 0.0);
  EXPECT_EQ(EncodeDate(1900, 1, 4), 5.0);
  EXPECT_EQ(EncodeDate(2024, 3, 5), 45356.0);
  EXPECT_EQ(EncodeDate(1, 1, 1), -693593.0);
  EXPECT_EQ(FormatDate(EncodeDate(9999, 12, 31)), "9999-12-31");
}

TEST(Dates, DaysThatTheCalendarLacksAreRefused) {
  const int Cases[][3] = {{2024, 2, 30},        {2023, 2, 29},  {2024, 13, 1},  {2024, 0, 1}, {2024, 1, 0},
                          {2024, 4, 31},        {0, 1, 1},      {10000, 1, 1},  {-1, 1, 1},   {2024, 1, 257},
                          {65536 + 2024, 1, 1}, {2024, 257, 1}, {2024, -255, 1}};
  for (const auto& [Year, Month, Day] : Cases)
    EXPECT_THROW(EncodeDate(Year, Month, Day), TBeamConversionError) << Year << Month << Day;
  for (const double Bad : {std::nan(""), HUGE_VAL, -693594.0, 2958466.0, 1e18})
    EXPECT_THROW(FormatDate(Bad), TBeamConversionError) << Bad;
}

TEST(Dates, TheTimeOfDayIsDroppedTowardZero) {
  EXPECT_EQ(DateOf(45356.99), 45356.0);
  EXPECT_EQ(DateOf(-1.25), -1.0);
  EXPECT_EQ(FormatDate(-1.25), "1899-12-29");
  EXPECT_EQ(FormatDateMinutes(-1.25), "1899-12-29 06:00");
  EXPECT_EQ(DecodeDate(0.5).Day, 30u);
  EXPECT_EQ(DateOf(45357.0 - 1e-10), 45357.0) << "nearer to midnight than a millisecond can tell";
}

TEST(Dates, MonthsClampToTheirLastDayAndKeepTheTime) {
  // clang-format off
  const std::tuple<TDateTime, int, TDateTime> Cases[] = {
      {EncodeDate(2024, 8, 31), -6, EncodeDate(2024, 2, 29)}, {EncodeDate(2023, 8, 31), -6, EncodeDate(2023, 2, 28)},
      {EncodeDate(2024, 2, 29), 12, EncodeDate(2025, 2, 28)}, {EncodeDate(2024, 1, 31), 1, EncodeDate(2024, 2, 29)},
      {EncodeDate(2023, 12, 15), 1, EncodeDate(2024, 1, 15)}, {EncodeDate(2024, 1, 15), -13, EncodeDate(2022, 12, 15)},
      {EncodeDate(2024, 5, 31) + 0.75, -3, EncodeDate(2024, 2, 29) + 0.75}, {-1.25, 0, -1.25}, {-1.25, 1, 30.25}};
  // clang-format on
  for (const auto& [From, Months, Expected] : Cases)
    EXPECT_TRUE(CompareDateTime(IncMonth(From, Months), Expected) == 0) << FormatDate(From);
  EXPECT_EQ(IncYear(EncodeDate(2024, 2, 29), -1), EncodeDate(2023, 2, 28));
  EXPECT_THROW(IncYear(0, 9000), TBeamConversionError);
}

TEST(Dates, MomentsCompareByTheMillisecond) {
  const TDateTime Moment = 45356.7;
  EXPECT_TRUE(CompareDateTime(Moment, Moment + Millisecond / 4) == 0);
  EXPECT_TRUE(CompareDateTime(Moment, Moment + Millisecond) < 0);
  EXPECT_TRUE(CompareDateTime(Moment + Millisecond, Moment) > 0);
  EXPECT_TRUE(CompareDateTime(IncSeconds(Moment, 120), Moment + 120 / 86'400.0) == 0);
  EXPECT_TRUE(CompareDateTime(std::nan(""), -700000) < 0);
  EXPECT_TRUE(CompareDateTime(0, std::nan("")) > 0);
}

TEST(Dates, TextsHaveFixedFormsWhateverTheLocale) {
  const TDateTime Moment = EncodeDate(2024, 3, 5) + (7 * 3600 + 4 * 60 + 9.999) / 86'400;
  EXPECT_EQ(FormatDate(Moment), "2024-03-05");
  EXPECT_EQ(FormatDateMinutes(Moment), "2024-03-05 07:04");
  EXPECT_EQ(FormatUTCSeconds(Moment), "2024-03-05T07:04:09Z");
  EXPECT_EQ(FormatUTCSeconds(EncodeDate(476, 9, 4) - 0.5), "0476-09-04T12:00:00Z");
  EXPECT_EQ(FormatDateMinutes(45356 + 23.5 / 24), "2024-03-05 23:30");
}

}  // namespace
}  // namespace oxSuperAPI
