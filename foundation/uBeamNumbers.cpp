#include "oxSuperAPI/foundation/uBeamNumbers.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
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

template <class Word>
std::uint64_t WordAt(std::string_view Text, std::size_t At) {
  Word Result;
  std::memcpy(&Result, Text.data() + At, sizeof Result);
  return Result;
}

constexpr std::uint64_t EightZeros = 0x3030303030303030;  // '0' each

// The last eight characters of at least four, with zeros in front; the first of them in the lowest byte.
std::uint64_t LastEight(std::string_view Text) {
  const std::size_t Size = Text.size();
  if constexpr (std::endian::native != std::endian::little) {
    std::uint64_t Word = EightZeros;
    for (const char Byte : Text) Word = Word >> 8 | std::uint64_t{static_cast<unsigned char>(Byte)} << 56;
    return Word;
  }
  if (Size >= 8) return WordAt<std::uint64_t>(Text, Size - 8);
  const std::uint64_t Word = WordAt<std::uint32_t>(Text, 0) | WordAt<std::uint32_t>(Text, Size - 4) << (8 * (Size - 4));
  return Word << (8 * (8 - Size)) | EightZeros >> (8 * Size);
}

// Eight digits in one go: pairs, fours, all.
bool ParseEight(std::uint64_t Characters, std::int64_t& Result) {
  std::uint64_t Digits = Characters ^ EightZeros;
  if ((((Digits + 0x7676767676767676) | Digits) & 0x8080808080808080) != 0) return false;
  constexpr std::uint64_t Low = 0x000000FF000000FF;
  Digits = Digits * 10 + (Digits >> 8);
  Digits = (Digits & Low) * (100 + (1'000'000ull << 32)) + (Digits >> 16 & Low) * (1 + (10'000ull << 32));
  Result = static_cast<std::int64_t>(Digits >> 32);
  return true;
}

// Digits, ".", two digits: as most amounts are written. They are counted in cents, which up to 15 digits are a double
// exactly, and the division by 100, another one, is rounded once: so it is the double that std::from_chars gives.
bool ParseCents(std::string_view Text, double& Result) {
  constexpr std::size_t Fraction = 3, MaxDigits = 15, Behind = 8;
  if (Text.size() <= Fraction || Text.size() > MaxDigits + 1 || Text[Text.size() - Fraction] != '.') return false;
  // Of the last eight characters, five digits move onto the point, which makes seven; most amounts have no more.
  constexpr std::uint64_t BeforePoint = 0xFF'FFFF'FFFF, BehindPoint = 0xFFFF'0000'0000'0000;
  const std::uint64_t Last = LastEight(Text);
  std::int64_t Seven = 0, Front = 0;
  if (!ParseEight((Last & BeforePoint) << 8 | (Last & BehindPoint) | '0', Seven)) return false;
  for (const char Byte : Text.substr(0, std::max(Text.size(), Behind) - Behind)) {
    if (Byte < '0' || Byte > '9') return false;
    Front = 10 * Front + (Byte - '0');
  }
  Result = static_cast<double>(Front * 10'000'000 + Seven) / 100;
  return true;
}

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

// The cents of an amount that is nearly whole cents and below ManyCents, as amounts are. The product is off by less
// than a hundred-thousandth there, so that what is not near the middle between two cents is rounded as it should be,
// whatever rounding the host has set.
inline std::optional<TCents> NearCents(double Value) {
  const double Exact = std::abs(Value) * 100;
  if (!(Exact < ManyCents - 1)) return std::nullopt;
  const auto Cents = static_cast<std::int64_t>(Exact + 0.5);
  if (!(std::abs(Exact - static_cast<double>(Cents)) < 0.49)) return std::nullopt;
  return TCents{static_cast<std::uint64_t>(Cents), std::signbit(Value) && Cents != 0};
}

// The eight decimal digits of a number below 10^8, one a byte, the first of them lowest. Halves, quarters and eighths
// are divided side by side: n / 100 is n * 10486 >> 20 below 10^4, n / 10 is n * 103 >> 10 below 100.
constexpr std::uint64_t EightDigits(std::uint32_t Number) {
  std::uint64_t Digits = Number / 10'000 | std::uint64_t{Number % 10'000} << 32;
  const std::uint64_t Hundreds = (Digits * 10486 >> 20) & 0x0000'007F'0000'007F;
  Digits = Hundreds | (Digits - 100 * Hundreds) << 16;
  const std::uint64_t Tens = (Digits * 103 >> 10) & 0x000F'000F'000F'000F;
  return Tens | (Digits - 10 * Tens) << 8;
}

// ".00" to ".99".
constexpr auto Fractions = [] {
  std::array<std::array<char, 4>, 100> Result{};
  for (std::size_t Cents = 0; Cents < Result.size(); ++Cents)
    Result[Cents] = {'.', static_cast<char>('0' + Cents / 10), static_cast<char>('0' + Cents % 10)};
  return Result;
}();

// Out has room for more than the amount. @{
char* WriteCents(char* Out, std::uint64_t Cents) {
  Out = std::to_chars(Out, Out + std::numeric_limits<std::uint64_t>::digits10, Cents / 100).ptr;
  return std::copy_n(Fractions[Cents % 100].data(), 3, Out);
}
inline char* WriteFewCents(char* Out, std::uint64_t Cents) {
  if constexpr (std::endian::native != std::endian::little) return WriteCents(Out, Cents);
  constexpr std::uint64_t Zeros = 0x3030'3030'3030'3030, LastDigit = std::uint64_t{1} << 56;
  const std::uint64_t Dollars = EightDigits(static_cast<std::uint32_t>(Cents / 100));
  const int Leading = std::countr_zero(Dollars | LastDigit) / 8;
  const std::uint64_t Text = (Dollars | Zeros) >> 8 * Leading;
  std::memcpy(Out, &Text, 8);
  Out += 8 - Leading;
  std::memcpy(Out, Fractions[Cents % 100].data(), 4);
  return Out + 3;
}
// @}

// As WriteFloat, for every amount.
[[gnu::noinline]] char* WriteAnyFloat(char* Out, double Value) {
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

// The same for its size.
[[gnu::noinline]] std::size_t AnyFloatSize(double Value) {
  TBeamFloatText Text;
  return static_cast<std::size_t>(WriteAnyFloat(Text.data(), Value) - Text.data());
}

// By the exponent of an amount from 2^-7, which is more than half a cent, up to 2^32 dollars: the next power of ten
// from there, and the size below it.
struct TMagnitude {
  double Power;
  std::size_t Size;
};
constexpr std::uint64_t LeastExponent = 1023 - 7;
constexpr auto Magnitudes = [] {
  std::array<TMagnitude, 7 + 32> Result{};
  TMagnitude Next{10, 4};
  double From = 1.0 / 128;
  for (TMagnitude& Each : Result) {
    if (Next.Power < From) Next = {10 * Next.Power, Next.Size + 1};
    Each = Next;
    From *= 2;
  }
  return Result;
}();

}  // namespace

char* WriteFloat(char* Out, double Value) {
  const std::optional<TCents> Amount = NearCents(Value);
  if (!Amount) [[unlikely]]
    return WriteAnyFloat(Out, Value);
  *Out = '-';
  return WriteFewCents(Out + Amount->IsNegative, Amount->Cents);
}

std::size_t FloatSize(double Value) {
  const double Amount = std::abs(Value);
  const std::uint64_t Exponent = (std::bit_cast<std::uint64_t>(Amount) >> 52) - LeastExponent;
  if (Exponent >= Magnitudes.size()) return AnyFloatSize(Value);
  const TMagnitude& Magnitude = Magnitudes[Exponent];
  if (std::abs(Amount - Magnitude.Power) < 0.01) [[unlikely]]
    return AnyFloatSize(Value);  // rounding decides
  return Magnitude.Size + (Amount >= Magnitude.Power ? 1 : 0) + (std::signbit(Value) ? 1 : 0);
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

bool ParseFloat(std::string_view Text, double& Out) {
  if (ParseCents(Text, Out)) return true;
  const std::optional<double> Result = ParseWhole<double>(Text);
  if (!Result || !std::isfinite(*Result)) return false;
  Out = *Result;
  return true;
}

std::optional<double> TryParseFloat(std::string_view Text) {
  double Result = 0;
  return ParseFloat(Text, Result) ? std::optional(Result) : std::nullopt;
}

std::optional<std::int32_t> TryParseInteger(std::string_view Text) {
  return ParseWhole<std::int32_t>(Text);
}

std::int32_t IntegerOrZero(std::string_view Text) {
  return TryParseInteger(Text).value_or(0);
}

}  // namespace oxSuperAPI
