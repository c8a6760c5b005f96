#include "identifiers.h"

#include <algorithm>
#include <charconv>
#include <chrono>

namespace sandbox {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsUpper(char c) {
  return c >= 'A' && c <= 'Z';
}

bool AreDigits(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, IsDigit);
}

/// Compares with a pattern in which 9 stands for any digit.
bool LooksLike(std::string_view text, std::string_view pattern) {
  return std::ranges::equal(text, pattern, [](char c, char p) { return p == '9' ? IsDigit(c) : c == p; });
}

int Number(std::string_view digits) {
  int value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

template <std::size_t Count>
int WeightedSum(std::string_view digits, const int (&weights)[Count]) {
  int sum = 0;
  for (std::size_t i = 0; i < Count; ++i) sum += (digits[i] - '0') * weights[i];
  return sum;
}

}  // namespace

bool IsAbn(std::string_view text) {
  constexpr int kWeights[] = {10, 1, 3, 5, 7, 9, 11, 13, 15, 17, 19};
  // One is subtracted from the first digit, whose weight is 10.
  return text.size() == 11 && AreDigits(text) && (WeightedSum(text, kWeights) - 10) % 89 == 0;
}

bool IsTaxFileNumber(std::string_view text) {
  constexpr int kWeights[] = {1, 4, 3, 7, 5, 8, 6, 9, 10};
  return text.size() == 9 && AreDigits(text) && text != "000000000" && WeightedSum(text, kWeights) % 11 == 0;
}

bool IsUsi(std::string_view text, std::string_view abn) {
  if (text.size() == 14) return AreDigits(text) && text.starts_with(abn);
  return text.size() == 9 && std::ranges::all_of(text.substr(0, 3), IsUpper) && AreDigits(text.substr(3, 4)) &&
         text.ends_with("AU");
}

bool IsBsb(std::string_view text) {
  return LooksLike(text, "999999") || LooksLike(text, "999-999");
}

bool IsAccountNumber(std::string_view text) {
  return text.size() <= 10 && AreDigits(text);
}

bool IsDate(std::string_view text) {
  if (!LooksLike(text, "9999-99-99")) return false;
  const std::chrono::year_month_day date{std::chrono::year(Number(text.substr(0, 4))),
                                         std::chrono::month(static_cast<unsigned>(Number(text.substr(5, 2)))),
                                         std::chrono::day(static_cast<unsigned>(Number(text.substr(8, 2))))};
  return date.ok();
}

bool IsUtcTime(std::string_view text) {
  return LooksLike(text, "9999-99-99T99:99:99Z") && IsDate(text.substr(0, 10)) && Number(text.substr(11, 2)) < 24 &&
         Number(text.substr(14, 2)) < 60 && Number(text.substr(17, 2)) < 61;
}

std::optional<std::int64_t> Cents(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos || point > 13 || text.size() != point + 3) return std::nullopt;
  const std::string_view whole = text.substr(0, point), decimals = text.substr(point + 1);
  if (!AreDigits(whole) || !AreDigits(decimals)) return std::nullopt;
  std::int64_t value = 0;
  std::from_chars(whole.data(), whole.data() + whole.size(), value);
  value = value * 100 + Number(decimals);
  return negative ? -value : value;
}

std::string CentsText(std::int64_t cents) {
  const std::string digits = std::to_string(cents < 0 ? -cents : cents);
  const std::string padded = std::string(digits.size() < 3 ? 3 - digits.size() : 0, '0') + digits;
  return (cents < 0 ? "-" : "") + padded.substr(0, padded.size() - 2) + "." + padded.substr(padded.size() - 2);
}

}  // namespace sandbox
