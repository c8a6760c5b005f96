#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

/// Numbers to and from text. The decimal separator is "." whatever the host's locale says.
namespace oxSuperAPI {

/// Room for the longest amount: sign, the digits of the largest double, "." and two decimals.
using TBeamFloatText = std::array<char, std::numeric_limits<double>::max_exponent10 + 5>;

/// Appends `Value` with two decimals, rounded as C's "%.2f" does (0.125 gives 0.12). A result of zero has no sign.
/// Raises TBeamConversionError for NaN and infinity, which have no wire form. @{
OXSUPERAPI_EXPORT void AppendFloat(std::string& Out, double Value);
OXSUPERAPI_EXPORT std::string FormatFloat(double Value);
/// To `Out`, which has the room of a TBeamFloatText; gives the end of what was written.
OXSUPERAPI_EXPORT char* WriteFloat(char* Out, double Value);
/// The bytes it takes.
OXSUPERAPI_EXPORT std::size_t FloatSize(double Value);
/// @}

/// The whole of `Text` as a number: digits with an optional sign, fraction and exponent. No blanks, no "inf" or "nan",
/// no hexadecimal; none when out of range.
OXSUPERAPI_EXPORT std::optional<double> TryParseFloat(std::string_view Text);
/// The same, into `Out`, which is left alone when there is none; for where many are read.
OXSUPERAPI_EXPORT bool ParseFloat(std::string_view Text, double& Out);
/// The whole of `Text` as a decimal integer with an optional sign; none when it does not fit into 32 bits.
OXSUPERAPI_EXPORT std::optional<std::int32_t> TryParseInteger(std::string_view Text);
/// The same, 0 when it is not an integer.
OXSUPERAPI_EXPORT std::int32_t IntegerOrZero(std::string_view Text);

}  // namespace oxSuperAPI
