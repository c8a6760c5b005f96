#include "oxSuperAPI/foundation/uBeamNumbers.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <system_error>

namespace oxSuperAPI {

namespace {

// The whole of Text, after an optional "+" that std::from_chars does not take.
template <class Number>
std::optional<Number> ParseWhole(std::string_view Text) {
  if (Text.starts_with('+')) {
    Text.remove_prefix(1);
    if (Text.starts_with('-')) return std::nullopt;
  }
  Number Result{};
  const char* const End = Text.data() + Text.size();
  const auto [Stop, Error] = std::from_chars(Text.data(), End, Result);
  if (Error != std::errc() || Stop != End) return std::nullopt;
  return Result;
}

// "00" to "99".
constexpr auto TwoDigits = [] {
  std::array<char, 200> Result{};
  for (std::size_t Index = 0; Index < Result.size(); ++Index)
    Result[Index] = static_cast<char>('0' + (Index % 2 == 0 ? Index / 20 : Index / 2 % 10));
  return Result;
}();

// Writes an amount in exact integer arithmetic to the end of `Out`; "" when it lies outside the range for which that is
// proven, which is 2^-11 <= |Value| < 2^52 (4.5e15 dollars).
//
// Such a double is Mantissa / 2^Shift with Mantissa < 2^53 and 1 <= Shift <= 63. Mantissa * 100 < 2^60 fits into 64
// bits, so its quotient and remainder by 2^Shift are the cents and the exact rest: nothing was rounded on the way.
// A rest above one half rounds up; a rest of exactly one half rounds to the even cent, as "%.2f" does.
std::string_view WriteCents(TBeamFloatText& Out, double Value) {
  constexpr int MantissaBits = 52;
  constexpr std::uint64_t HiddenBit = std::uint64_t{1} << MantissaBits;
  const auto Bits = std::bit_cast<std::uint64_t>(Value);
  const int Exponent = static_cast<int>(Bits >> MantissaBits) & 0x7FF;
  const int Shift = 1023 + MantissaBits - Exponent;
  if (Shift < 1 || Shift > 63) return {};

  const std::uint64_t Product = ((Bits & (HiddenBit - 1)) | HiddenBit) * 100;
  const std::uint64_t Half = std::uint64_t{1} << (Shift - 1), Rest = Product & (2 * Half - 1);
  std::uint64_t Cents = Product >> Shift;
  if (Rest > Half || (Rest == Half && Cents % 2 != 0)) ++Cents;
  const bool Negative = std::signbit(Value) && Cents != 0;

  char* const End = Out.data() + Out.size();
  char* Start = End;
  const auto WriteTwo = [&Start](std::uint64_t Two) {
    Start -= 2;
    std::memcpy(Start, &TwoDigits[2 * Two], 2);
  };
  WriteTwo(Cents % 100);
  *--Start = '.';
  std::uint64_t Dollars = Cents / 100;
  for (; Dollars >= 100; Dollars /= 100) WriteTwo(Dollars % 100);
  WriteTwo(Dollars);
  if (Dollars < 10) ++Start;
  if (Negative) *--Start = '-';
  return {Start, End};
}

}  // namespace

std::string_view WriteFloat(TBeamFloatText& Out, double Value) {
  if (const std::string_view Cents = WriteCents(Out, Value); !Cents.empty()) return Cents;
  if (!std::isfinite(Value)) throw TBeamConversionError("An amount is not a finite number and cannot be sent");
  const auto [End, Error] = std::to_chars(Out.begin(), Out.end(), Value, std::chars_format::fixed, 2);
  if (Error != std::errc()) throw TBeamConversionError("An amount is too long to be sent");
  const std::string_view Text(Out.begin(), End);
  return Text == "-0.00" ? Text.substr(1) : Text;
}

void AppendFloat(std::string& Out, double Value) {
  TBeamFloatText Text;
  Out += WriteFloat(Text, Value);
}

std::string FormatFloat(double Value) {
  std::string Result;
  AppendFloat(Result, Value);
  return Result;
}

std::optional<double> TryParseFloat(std::string_view Text) {
  const std::optional<double> Result = ParseWhole<double>(Text);
  return Result && std::isfinite(*Result) ? Result : std::nullopt;
}

std::optional<std::int32_t> TryParseInteger(std::string_view Text) {
  return ParseWhole<std::int32_t>(Text);
}

std::int32_t IntegerOrZero(std::string_view Text) {
  return TryParseInteger(Text).value_or(0);
}

}  // namespace oxSuperAPI
