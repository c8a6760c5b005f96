#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

/// Numbers to and from text. The decimal separator is "." whatever the host's locale says.
namespace oxSuperAPI {

/// Appends `Value` with two decimals, rounded as C's "%.2f" does (0.125 gives 0.12). A result of zero has no sign.
/// Raises TBeamConversionError for NaN and infinity, which have no wire form. @{
OXSUPERAPI_EXPORT void AppendFloat(std::string& Out, double Value);
OXSUPERAPI_EXPORT std::string FormatFloat(double Value);
/// @}

/// The whole of `Text` as a number: digits with an optional sign, fraction and exponent. No blanks, no "inf" or "nan",
/// no hexadecimal; none when out of range.
OXSUPERAPI_EXPORT std::optional<double> TryParseFloat(std::string_view Text);
/// The whole of `Text` as a decimal integer with an optional sign; none when it does not fit into 32 bits.
OXSUPERAPI_EXPORT std::optional<std::int32_t> TryParseInteger(std::string_view Text);
/// The same, 0 when it is not an integer.
OXSUPERAPI_EXPORT std::int32_t IntegerOrZero(std::string_view Text);

}  // namespace oxSuperAPI
