#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace oxSuperAPI {

/// What a column may hold.
enum class TForm : std::uint8_t {
  Text,           ///< free text
  Identifier,     ///< digits, letters, "_", ".", "-"
  ABN,            ///< 11 digits with checksum, or a withholding payer number padded to 11
  FundABN,        ///< 11 digits with checksum
  USI,            ///< unique superannuation identifier
  Number,         ///< digits only
  BSB,            ///< 6 digits, a dash allowed
  Account,        ///< 1 to 9 digits
  TFN,            ///< tax file number: 9 digits with checksum; no reason ever shows it
  Phone,          ///< 4 to 16 digits, blanks allowed
  Mobile,         ///< 04 and 8 digits
  Sex,            ///< 0 to 3
  AddressUsage,   ///< RES, POS
  Postcode,       ///< 4 digits in Australia
  State,          ///< ACT, NSW, ...
  Country,        ///< two letters
  PaymentMethod,  ///< DirectDebit, DirectCredit, BPAY
  Date,           ///< YYYY-MM-DD, and the year-first and day-first forms of exporters
  Amount,         ///< dollars with at most two decimals
  Decimal,        ///< hours
  Fraction,       ///< 0 to 1
  Flag            ///< true, false, 1, 0
};

/// What the reading of a cell depends on outside it.
struct TCellContext {
  bool Negatives = false;     ///< amounts may carry a sign
  bool Australian = true;     ///< the address is in Australia
  std::size_t MaxLength = 0;  ///< longest text in characters; 0 is any
};

/// A cell as it was understood.
struct TCellValue {
  std::string Text{};      ///< in the form in which it is sent
  double Number = 0;       ///< of Amount, Decimal and Fraction
  std::int64_t Cents = 0;  ///< of Amount
  std::string Error{};     ///< the reason why it cannot be used; `Text` and the numbers are then empty
  std::string Warning{};   ///< what was repaired, or looks wrong
  std::string NotSent{};   ///< what of it is lost on the way
};

/// Reads a cell that is not empty. Never guesses: what is not certain is an error.
TCellValue ReadCell(TForm Form, const std::string& Cell, const TCellContext& Context = {});

bool IsABN(std::string_view Digits);
bool IsTFN(std::string_view Digits);
/// Whether an ABN-shaped number is a withholding payer number: 9 digits, padded with two zeros.
bool IsPaddedWPN(std::string_view Digits);
/// "1234.50" of 123450.
std::string FormatCents(std::int64_t Cents);

}  // namespace oxSuperAPI
