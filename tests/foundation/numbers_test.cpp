#include "oxSuperAPI/foundation/uBeamNumbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace oxSuperAPI {
namespace {

TEST(Numbers, TwoDecimalsAndAZeroWithoutSign) {
  const struct {
    double Value;
    const char* Text;
  } Cases[] = {{0, "0.00"},       {-0.0, "0.00"},        {-0.001, "0.00"},
               {-0.005, "-0.01"}, {0.125, "0.12"},       {0.375, "0.38"},
               {2.675, "2.67"},   {-1234.5, "-1234.50"}, {1e15, "1000000000000000.00"}};
  for (const auto& Case : Cases) EXPECT_EQ(FormatFloat(Case.Value), Case.Text);
  EXPECT_EQ(FormatFloat(std::numeric_limits<double>::max()).size(), 312u);
  EXPECT_EQ(FormatFloat(std::numeric_limits<double>::lowest()).size(), 313u);
  for (const double Bad : {std::nan(""), HUGE_VAL, -HUGE_VAL}) EXPECT_THROW(FormatFloat(Bad), TBeamConversionError);
}

TEST(Numbers, AmountsAreRoundedAsPrintfRoundsThem) {
  std::mt19937_64 Random(20240305);  // a fixed seed: the same values in every run
  const auto Amount = [&](int Kind) -> double {
    const auto Bits = Random();
    if (Kind == 0) return std::bit_cast<double>(Bits);                               // any magnitude
    if (Kind == 1) return static_cast<double>(static_cast<std::int32_t>(Bits)) / 8;  // exact ties
    return static_cast<double>(static_cast<std::int32_t>(Bits)) / 1000;              // near ties
  };
  for (int Round = 0; Round < 30'000; ++Round) {
    const double Value = Amount(Round % 3);
    if (!std::isfinite(Value)) continue;
    char Buffer[400];
    std::snprintf(Buffer, sizeof Buffer, "%.2f", Value);
    ASSERT_EQ(FormatFloat(Value), std::string(Buffer) == "-0.00" ? "0.00" : Buffer);
  }
}

TEST(Numbers, FloatsAreReadWholeOrNotAtAll) {
  for (const char* Text :
       {"",     " ",    "+",   "-",    ".",   "+-1",  "-+1",      "--1",   "++1", " 1",    "1 ",      "1,5",
        "1.5x", "0x10", "inf", "-inf", "nan", "+nan", "infinity", "1e400", "1e",  "1 000", "\xD9\xA1"})
    EXPECT_EQ(TryParseFloat(Text), std::nullopt) << Text;
  const struct {
    const char* Text;
    double Value;
  } Cases[] = {{"1.5", 1.5}, {"+1.5", 1.5}, {"-0.25", -0.25}, {".5", 0.5}, {"1.", 1}, {"1E2", 100}, {"007", 7}};
  for (const auto& Case : Cases) EXPECT_EQ(TryParseFloat(Case.Text), Case.Value) << Case.Text;
}

TEST(Numbers, IntegersAreReadWholeAndWithin32Bits) {
  for (const char* Text :
       {"", "+", "+-1", " 1", "1 ", "5.0", "1e3", "0x1", "2147483648", "-2147483649", "99999999999999"})
    EXPECT_EQ(TryParseInteger(Text), std::nullopt) << Text;
  EXPECT_EQ(TryParseInteger("2147483647"), 2147483647);
  EXPECT_EQ(TryParseInteger("-2147483648"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(TryParseInteger("+015"), 15);
  EXPECT_EQ(IntegerOrZero("12.5"), 0);
  EXPECT_EQ(IntegerOrZero("-3"), -3);
}

}  // namespace
}  // namespace oxSuperAPI
