#include "oxSuperAPI/foundation/uBeamNumbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
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

// A value of one of several kinds that random bits choose.
double Sample(int Kind, std::uint64_t Bits) {
  const auto Integer = static_cast<double>(static_cast<std::int32_t>(Bits));
  const auto Nearby = [Bits](double Value) {  // up to two steps away
    for (std::uint64_t Steps = Bits >> 62; Steps > 0; --Steps)
      Value = std::nextafter(Value, Bits >> 61 & 1 ? 1e300 : -1e300);
    return Value;
  };
  switch (Kind) {
    case 0:
      return std::bit_cast<double>(Bits);  // any magnitude
    case 1:
      return Integer / 8;  // exact ties
    case 2:
      return Nearby(Integer / 1000);
    case 3:
      return Nearby(static_cast<double>(static_cast<std::int64_t>(Bits) >> 16) / 100);
    case 4:
      return Nearby((Integer + 0.5) / 100);
    case 5:
      return Nearby(std::ldexp(Bits & 1 ? -1 : 1, static_cast<int>(Bits >> 8 & 127) - 64));  // powers of two
    default:  // every exponent for which cents are exact integers, and some beyond
      return std::bit_cast<double>((Bits & 0x800FFFFFFFFFFFFF) | (1000 + (Bits >> 52) % 88) << 52);
  }
}

// OXSUPERAPI_AMOUNTS asks for another number of them: tens of millions take a minute.
TEST(Numbers, AmountsAreRoundedAsPrintfRoundsThem) {
  const char* const Wanted = std::getenv("OXSUPERAPI_AMOUNTS");
  const long long Count = Wanted ? std::atoll(Wanted) : 1'000'000;
  std::mt19937_64 Random(20240305);  // a fixed seed: the same values in every run
  TBeamFloatText Buffer;
  for (long long Round = 0; Round < Count; ++Round) {
    const double Value = Sample(static_cast<int>(Round % 7), Random());
    if (!std::isfinite(Value)) continue;
    char Expected[400];
    const auto Length = static_cast<std::size_t>(std::snprintf(Expected, sizeof Expected, "%.2f", Value));
    const std::string_view Text(Buffer.data(), WriteFloat(Buffer.data(), Value));
    ASSERT_EQ(FloatSize(Value), Text.size()) << Value;
    const bool IsSignedZero = Expected == std::string_view("-0.00");
    ASSERT_EQ(Text, IsSignedZero ? "0.00" : std::string_view(Expected, Length)) << Value;
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

// Around the eight characters that are read in one go, and the 15 digits that are counted in cents.
TEST(Numbers, AmountsOfAnyLengthAreReadAsTheStandardLibraryReadsThem) {
  std::mt19937_64 Random(1);
  for (std::size_t Digits = 1; Digits <= 17; ++Digits)
    for (const char* Kind : {"9", "0", "", "", "", ""}) {
      std::string Amount;
      for (std::size_t At = 0; At < Digits; ++At) Amount += *Kind ? *Kind : static_cast<char>('0' + Random() % 10);
      Amount.insert(Digits > 2 ? Digits - 2 : Digits, ".");
      for (std::size_t At = 0; At <= Amount.size(); ++At)
        for (const char Odd : {'0', '/', ':', '.', '-', 'e', ' ', '\0', '\xB0'}) {
          std::string Text = Amount;
          if (At < Text.size()) Text[At] = Odd;
          double Expected = 0;
          const auto [Stop, Error] = std::from_chars(Text.data(), Text.data() + Text.size(), Expected);
          const bool IsWhole = Error == std::errc() && Stop == Text.data() + Text.size();
          ASSERT_EQ(TryParseFloat(Text), IsWhole ? std::optional(Expected) : std::nullopt) << Text;
        }
    }
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
