#include "oxSuperAPI/foundation/uBeamNumbers.h"

#include <algorithm>
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

// Digits, ".", two digits: as most amounts are written. They are counted in cents, which up to 15 digits are a double
// exactly, and the division by 100, another one, is rounded once: so it is the double that std::from_chars gives.
std::optional<double> ParseCents(std::string_view Text) {
  constexpr std::size_t Fraction = 3, MaxDigits = 15;
  if (Text.size() <= Fraction || Text.size() > MaxDigits + 1 || Text[Text.size() - Fraction] != '.')
    return std::nullopt;
  std::uint64_t Cents = 0;
  unsigned Largest = 0;
  const auto Take = [&](char Byte) {
    const unsigned Digit = static_cast<unsigned char>(Byte) - unsigned{'0'};
    Largest = std::max(Largest, Digit);
    Cents = 10 * Cents + Digit;
  };
  for (const char Byte : Text.substr(0, Text.size() - Fraction)) Take(Byte);
  Take(Text[Text.size() - 2]);
  Take(Text[Text.size() - 1]);
  return Largest < 10 ? std::optional(static_cast<double>(Cents) / 100) : std::nullopt;
}

// "00" to "99".
constexpr auto TwoDigits = [] {
  std::array<char, 200> Result{};
  for (std::size_t Index = 0; Index < Result.size(); ++Index)
    Result[Index] = static_cast<char>('0' + (Index % 2 == 0 ? Index / 20 : Index / 2 % 10));
  return Result;
}();

// An amount in cents; negative only when it is not 0 cents.
struct TCents {
  std::uint64_t Cents;
  bool IsNegative;
};

// The cents of an amount in exact integer arithmetic; none when it lies outside the range for which that is proven,
// which is 2^-11 <= |Value| < 2^52 (4.5e15 dollars).
//
// Such a double is Mantissa / 2^Shift with Mantissa < 2^53 and 1 <= Shift <= 63. Mantissa * 100 < 2^60 fits into 64
// bits, so its quotient and remainder by 2^Shift are the cents and the exact rest: nothing was rounded on the way.
// A rest above one half rounds up; a rest of exactly one half rounds to the even cent, as "%.2f" does.
inline std::optional<TCents> ToCents(double Value) {
  constexpr int MantissaBits = 52;
  constexpr std::uint64_t HiddenBit = std::uint64_t{1} << MantissaBits;
  const auto Bits = std::bit_cast<std::uint64_t>(Value);
  const int Exponent = static_cast<int>(Bits >> MantissaBits) & 0x7FF;
  const int Shift = 1023 + MantissaBits - Exponent;
  if (Shift < 1 || Shift > 63) return std::nullopt;

  const std::uint64_t Product = ((Bits & (HiddenBit - 1)) | HiddenBit) * 100;
  const std::uint64_t Half = std::uint64_t{1} << (Shift - 1), Rest = Product & (2 * Half - 1);
  const std::uint64_t Down = Product >> Shift, Odd = Down & 1;
  const std::uint64_t Cents = Down + (Rest + Odd > Half ? 1 : 0);
  return TCents{Cents, std::signbit(Value) && Cents != 0};
}

// Nearly every amount is below: its digits are counted and written without a jump, as their number varies at random.
constexpr std::uint64_t ManyCents = 10'000'000'000;

// Of Cents; at least the three of "0.00".
inline std::size_t DigitsOf(std::uint64_t Cents) {
  std::size_t Digits = 3;
  for (const std::uint64_t Power : {1'000u, 10'000u, 100'000u, 1'000'000u, 10'000'000u, 100'000'000u, 1'000'000'000u})
    Digits += Cents >= Power ? 1 : 0;
  for (std::uint64_t Power = ManyCents; Cents >= Power; Power *= 10) [[unlikely]]++ Digits;
  return Digits;
}

inline void WriteTwo(char* Out, std::uint64_t Two) {
  std::memcpy(Out, &TwoDigits[2 * Two], 2);
}

// Out has room for more than the amount.
char* WriteCents(char* Out, std::uint64_t Cents) {
  const std::size_t Digits = DigitsOf(Cents);
  char* const End = Out + Digits + 1;
  if (Cents >= ManyCents) [[unlikely]] {
    *std::to_chars(Out, End, Cents / 100).ptr = '.';
    WriteTwo(End - 2, Cents % 100);
    return End;
  }
  char Text[27] = {};  // "dddddddd.cc", then what the copy takes with it
  const std::uint64_t Dollars = Cents / 100;
  WriteTwo(Text, Dollars / 1'000'000);
  WriteTwo(Text + 2, Dollars / 10'000 % 100);
  WriteTwo(Text + 4, Dollars / 100 % 100);
  WriteTwo(Text + 6, Dollars % 100);
  Text[8] = '.';
  WriteTwo(Text + 9, Cents % 100);
  std::memcpy(Out, Text + 10 - Digits, 16);
  return End;
}

}  // namespace

char* WriteFloat(char* Out, double Value) {
  if (const std::optional<TCents> Amount = ToCents(Value)) {
    *Out = '-';
    return WriteCents(Out + Amount->IsNegative, Amount->Cents);
  }
  if (!std::isfinite(Value)) throw TBeamConversionError("An amount is not a finite number and cannot be sent");
  char* const Room = Out + std::tuple_size_v<TBeamFloatText>;
  const auto [End, Error] = std::to_chars(Out, Room, Value, std::chars_format::fixed, 2);
  if (Error != std::errc()) throw TBeamConversionError("An amount is too long to be sent");
  return std::string_view(Out, End) == "-0.00" ? std::copy(Out + 1, End, Out) : End;
}

std::size_t FloatSize(double Value) {
  if (const std::optional<TCents> Amount = ToCents(Value)) return Amount->IsNegative + DigitsOf(Amount->Cents) + 1;
  TBeamFloatText Text;
  return static_cast<std::size_t>(WriteFloat(Text.data(), Value) - Text.data());
}

void AppendFloat(std::string& Out, double Value) {
  TBeamFloatText Text;
  Out.append(Text.data(), WriteFloat(Text.data(), Value));
}

std::string FormatFloat(double Value) {
  std::string Result;
  AppendFloat(Result, Value);
  return Result;
}

std::optional<double> TryParseFloat(std::string_view Text) {
  if (const std::optional<double> Amount = ParseCents(Text)) return Amount;
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
