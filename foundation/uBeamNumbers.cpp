#include "oxSuperAPI/foundation/uBeamNumbers.h"

#include <array>
#include <charconv>
#include <cmath>
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

}  // namespace

void AppendFloat(std::string& Out, double Value) {
  if (!std::isfinite(Value)) throw TBeamConversionError("An amount is not a finite number and cannot be sent");
  // Sign, digits of the largest double, "." and two decimals.
  std::array<char, std::numeric_limits<double>::max_exponent10 + 8> Buffer;
  const auto [End, Error] =
      std::to_chars(Buffer.data(), Buffer.data() + Buffer.size(), Value, std::chars_format::fixed, 2);
  if (Error != std::errc()) throw TBeamConversionError("An amount is too long to be sent");
  const std::string_view Text(Buffer.data(), static_cast<std::size_t>(End - Buffer.data()));
  Out += Text == "-0.00" ? "0.00" : Text;
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
