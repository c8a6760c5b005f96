#include "oxSuperAPI/foundation/uBeamDates.h"

#include <gtest/gtest.h>

#include <cmath>

#include "oxSuperAPI/foundation/uBeamISODates.h"

namespace oxSuperAPI {
namespace {

constexpr double Millisecond = 1 / 86'400'000.0;

TEST(Dates, DayZeroIsTheThirtiethOfDecember1899) {
  const std::tuple<int, int, int, double> Cases[] = {
      {1899, 12, 30, 0}, {1900, 1, 4, 5}, {2024, 3, 5, 45356}, {1, 1, 1, -693593}, {9999, 12, 31, 2958465}};
  for (const auto& [Year, Month, Day, Number] : Cases) EXPECT_EQ(EncodeDate(Year, Month, Day), Number) << Year;
  EXPECT_EQ(FormatDate(2958465), "9999-12-31");
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

TEST(ISODates, AreReadAsUTCMoments) {
  // clang-format off
  const std::pair<std::string, const char*> Cases[] = {
      {"2024-03-05", "2024-03-05T00:00:00.000Z"}, {"20240305", "2024-03-05T00:00:00.000Z"},
      {"2024-03-05T01:02", "2024-03-05T01:02:00.000Z"}, {"2024-03-05T01:02:03", "2024-03-05T01:02:03.000Z"},
      {"2024-03-05T01:02:03Z", "2024-03-05T01:02:03.000Z"}, {"2024-03-05t01:02:03z", "2024-03-05T01:02:03.000Z"},
      {"20240305T010203.5Z", "2024-03-05T01:02:03.500Z"}, {"2024-03-05T01:02:03.004+00:00", "2024-03-05T01:02:03.004Z"},
      {"2024-03-05T01:02:03,0049999Z", "2024-03-05T01:02:03.005Z"},
      {"2024-03-05T01:02:03.123456789+10:00", "2024-03-04T15:02:03.123Z"},
      {"2024-03-05T01:02:03." + std::string(400, '0') + "1Z", "2024-03-05T01:02:03.000Z"},
      {"2024-02-28T22:00:00-02:30", "2024-02-29T00:30:00.000Z"}, {"2024-12-31T23:59:60Z", "2025-01-01T00:00:00.000Z"},
      {"2024-12-31T24:00", "2025-01-01T00:00:00.000Z"}, {"2024-12-31T20:00+1000", "2024-12-31T10:00:00.000Z"},
      {"2024-12-31T20:00+10", "2024-12-31T10:00:00.000Z"}};
  // clang-format on
  for (const auto& [Text, Expected] : Cases) {
    ASSERT_TRUE(ParseISODateTime(Text)) << Text;
    EXPECT_EQ(FormatUTCMilliseconds(*ParseISODateTime(Text)), Expected) << Text;
  }
}

TEST(ISODates, WhatIsNoneIsRefused) {
  // clang-format off
  for (const char* Text :
      {"", " ", "2024", "2024-03", "2024-3-5", "24-03-05", "2024-0305", "202403-05", "2024/03/05", "2024-02-30",
       "2023-02-29", "0000-01-01", "2024-13-01", "2024-00-01", "+2024-03-05", "-024-03-05", "2024-W10-2", "2024-065",
       "2024-03-05T", "2024-03-05 01:02", "2024-03-05T01", "2024-03-05T1:02", "2024-03-05T0102", "2024-03-05T24:01",
       "2024-03-05T24:00:00.1", "2024-03-05T01:60", "2024-03-05T01:02:61", "2024-03-05T01:02:", "2024-03-05T01:02:03.",
       "2024-03-05T01:02:03.+10:00", "2024-03-05T01:02:03.1e3", "2024-03-05T01:02:+3", "2024-03-05T01:02+",
       "2024-03-05T01:02+1", "2024-03-05T01:02+24:00", "2024-03-05T01:02+10:60", "2024-03-05T01:02+10:",
       "2024-03-05T01:02ZZ", "2024-03-05T01:02Z ", " 2024-03-05", "2024-03-05Z", "now"})
    EXPECT_FALSE(ParseISODateTime(Text)) << Text;
  // clang-format on
}

}  // namespace
}  // namespace oxSuperAPI
