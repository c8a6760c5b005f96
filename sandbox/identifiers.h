#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace sandbox {

/// Eleven digits whose check is right.
bool IsAbn(std::string_view text);

/// Nine digits whose check is right; all zeros are none.
bool IsTaxFileNumber(std::string_view text);

/// Three letters, four digits and "AU", or the fund's ABN and three digits.
bool IsUsi(std::string_view text, std::string_view abn);

/// Six digits, a dash between the third and fourth allowed.
bool IsBsb(std::string_view text);

/// One to ten digits.
bool IsAccountNumber(std::string_view text);

/// "2024-02-29": a day that exists.
bool IsDate(std::string_view text);

/// "2024-03-05T10:20:30Z"
bool IsUtcTime(std::string_view text);

/// Whole cents of a text with exactly two decimals, such as "-12.50"; at most thirteen digits before the point.
std::optional<std::int64_t> Cents(std::string_view text);

/// The text with two decimals.
std::string CentsText(std::int64_t cents);

}  // namespace sandbox
