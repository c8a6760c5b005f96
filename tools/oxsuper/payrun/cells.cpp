#include "payrun/cells.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>

#include "oxSuperAPI/foundation/uBeamText.h"

namespace oxSuperAPI {
namespace {

bool IsDigit(char Each) {
  return Each >= '0' && Each <= '9';
}
bool IsLetter(char Each) {
  return (Each >= 'A' && Each <= 'Z') || (Each >= 'a' && Each <= 'z');
}
bool AllDigits(std::string_view Text) {
  return !Text.empty() && std::all_of(Text.begin(), Text.end(), IsDigit);
}

std::string Without(std::string_view Text, std::string_view Dropped) {
  std::string Result;
  std::copy_if(Text.begin(), Text.end(), std::back_inserter(Result),
               [&](char Each) { return Dropped.find(Each) == std::string_view::npos; });
  return Result;
}

template <std::size_t Count>
bool IsOneOf(std::string_view Text, const std::array<std::string_view, Count>& List) {
  return std::find(List.begin(), List.end(), Text) != List.end();
}

template <std::size_t Count>
int WeightedSum(std::string_view Digits, const std::array<int, Count>& Weights) {
  int Sum = 0;
  for (std::size_t Index = 0; Index < Count; ++Index) Sum += (Digits[Index] - '0') * Weights[Index];
  return Sum;
}

/// A spreadsheet writes long numbers as 9.00E+09 and has then lost their digits. In a text column "1E5" may be a name;
/// only with its plus sign is it certainly a number.
bool IsScientific(std::string_view Text, bool PlusNeeded) {
  const std::size_t Exponent = Text.find_first_of("eE");
  if (Exponent == std::string_view::npos || Exponent == 0) return false;
  std::string_view Power = Text.substr(Exponent + 1);
  if (PlusNeeded && !Power.starts_with('+')) return false;
  if (Power.starts_with('+') || Power.starts_with('-')) Power.remove_prefix(1);
  return AllDigits(Power) && AllDigits(Without(Text.substr(0, Exponent), ".,+-"));
}

TCellValue Good(std::string Text) {
  return {.Text = std::move(Text)};
}
TCellValue Bad(std::string Reason) {
  return {.Error = std::move(Reason)};
}
TCellValue Doubtful(std::string Text, std::string Warning) {
  return {.Text = std::move(Text), .Warning = std::move(Warning)};
}

TCellValue ReadABN(const std::string& Cell, bool PayerNumberAllowed) {
  const std::string Digits = Without(Cell, " ");
  if (!AllDigits(Digits) || Digits.size() != 11) return Bad("an ABN has 11 digits");
  if (PayerNumberAllowed && IsPaddedWPN(Digits)) return Good(Digits);
  if (!IsABN(Digits)) return Bad("the ABN " + Digits + " fails its checksum: check for a mistyped digit");
  return Good(Digits);
}

TCellValue ReadUSI(const std::string& Cell) {
  const std::string USI = UpperCase(Cell);
  const bool Product = USI.size() == 9 && std::all_of(USI.begin(), USI.begin() + 3, IsLetter) &&
                       AllDigits(USI.substr(3, 4)) && USI.ends_with("AU");
  const bool Numbered = USI.size() == 14 && AllDigits(USI);
  if (Product || Numbered) return Good(USI);
  return Doubtful(Cell, "\"" + Cell + "\" is no usual USI (AAA9999AU, or the fund's ABN and 3 digits)");
}

TCellValue ReadBSB(const std::string& Cell) {
  const std::string Digits = Without(Cell, " -");
  if (AllDigits(Digits) && Digits.size() == 6) return Good(Digits);
  if (AllDigits(Digits) && Digits.size() == 5)
    return Doubtful("0" + Digits, "the BSB had 5 digits: the leading 0 that a spreadsheet drops was put back");
  return Bad("a BSB has 6 digits");
}

TCellValue ReadMobile(const std::string& Cell) {
  const std::string Digits = Without(Cell, " ");
  if (AllDigits(Digits) && Digits.size() == 10 && Digits.starts_with("04")) return Good(Digits);
  if (AllDigits(Digits) && Digits.size() == 9 && Digits.starts_with('4'))
    return Doubtful("0" + Digits,
                    "the mobile number had 9 digits: the leading 0 that a spreadsheet drops was put back");
  if (!AllDigits(Without(Digits, "+")) || Digits.size() < 4 || Digits.size() > 16)
    return Bad("a mobile number is 04 and 8 more digits");
  return Doubtful(Digits, "a mobile number is 04 and 8 more digits; it is sent as it stands");
}

TCellValue ReadPostcode(const std::string& Cell, bool Australian) {
  if (!Australian || (AllDigits(Cell) && Cell.size() == 4)) return Good(Cell);
  if (AllDigits(Cell) && Cell.size() == 3)
    return Doubtful("0" + Cell, "the postcode had 3 digits: the leading 0 that a spreadsheet drops was put back");
  return Bad("an Australian postcode has 4 digits (0000 when it is not known)");
}

TCellValue ReadPaymentMethod(const std::string& Cell) {
  const std::string Method = UpperCase(Without(Cell, " _-"));
  if (Method == "DIRECTCREDIT") return Good("DIRECT_CREDIT");
  if (Method == "DIRECTDEBIT") return Good("DIRECT_DEBIT");
  if (Method == "BPAY") return Good("BPAY");
  return Bad("\"" + Cell + "\" is no payment method of a pay-run file (DirectCredit, DirectDebit, BPAY)");
}

TCellValue ReadFlag(const std::string& Cell) {
  const std::string Flag = UpperCase(Cell);
  if (Flag == "TRUE" || Flag == "1") return Good("true");
  if (Flag == "FALSE" || Flag == "0") return Good("false");
  return Bad("\"" + Cell + "\" is neither true nor false");
}

TCellValue ReadDate(const std::string& Cell) {
  const TCellValue Refused = Bad("\"" + Cell + "\" is no date (YYYY-MM-DD, or day first DD/MM/YYYY)");
  const std::size_t First = Cell.find_first_of("-/.");
  if (First == std::string::npos) return Refused;
  const std::size_t Second = Cell.find(Cell[First], First + 1);
  if (Second == std::string::npos) return Refused;
  const std::string Pieces[] = {Cell.substr(0, First), Cell.substr(First + 1, Second - First - 1),
                                Cell.substr(Second + 1)};
  if (!std::all_of(std::begin(Pieces), std::end(Pieces), AllDigits)) return Refused;
  const bool YearFirst = Pieces[0].size() == 4;
  const std::string& YearText = Pieces[YearFirst ? 0 : 2];
  const std::string& DayText = Pieces[YearFirst ? 2 : 0];
  if (YearText.size() != 4 || Pieces[1].size() > 2 || DayText.size() > 2) return Refused;

  const std::chrono::year_month_day Date{std::chrono::year(std::stoi(YearText)),
                                         std::chrono::month(static_cast<unsigned>(std::stoi(Pieces[1]))),
                                         std::chrono::day(static_cast<unsigned>(std::stoi(DayText)))};
  if (!Date.ok() || YearText == "0000") return Bad("\"" + Cell + "\" is no day of the calendar");
  const auto TwoDigits = [](const std::string& Text) { return Text.size() == 2 ? Text : "0" + Text; };
  return Good(YearText + "-" + TwoDigits(Pieces[1]) + "-" + TwoDigits(DayText));
}

/// The common grammar of amounts, hours and fractions: an optional sign, digits, at most one point.
struct TDecimalText {
  bool Negative = false;
  std::string Whole;
  std::string Decimals;
};

TCellValue SplitDecimal(const std::string& Cell, bool Negatives, TDecimalText& Out) {
  constexpr std::size_t MaxWholeDigits = 10;  // sums of a million rows then stay inside 64 bits
  std::string_view Text = Cell;
  if (Text.find('$') != std::string_view::npos) return Bad("leave the currency sign out");
  if (Text.find(',') != std::string_view::npos) return Bad("leave thousands separators out; decimals follow a point");
  if (Text.starts_with('-') || Text.starts_with('+')) {
    if (!Negatives) return Bad("a sign is only allowed when the first row says NEGATIVES SUPPORTED,true");
    Out.Negative = Text.front() == '-';
    Text.remove_prefix(1);
  }
  const std::size_t Point = Text.find('.');
  Out.Whole = Text.substr(0, Point);
  Out.Decimals = Point == std::string_view::npos ? "" : Text.substr(Point + 1);
  if (!AllDigits(Out.Whole + Out.Decimals)) return Bad("\"" + Cell + "\" is no number");
  if (Out.Whole.size() > MaxWholeDigits) return Bad("\"" + Cell + "\" is too large a number");
  return {};
}

TCellValue ReadAmount(const std::string& Cell, bool Negatives) {
  TDecimalText Parts;
  TCellValue Result = SplitDecimal(Cell, Negatives, Parts);
  if (!Result.Error.empty()) return Result;
  if (Parts.Decimals.size() > 2) return Bad("\"" + Cell + "\" has more than two decimals");
  Parts.Decimals.resize(2, '0');
  const std::string Digits = Parts.Whole + Parts.Decimals;
  std::from_chars(Digits.data(), Digits.data() + Digits.size(), Result.Cents);
  if (Parts.Negative) Result.Cents = -Result.Cents;
  Result.Text = FormatCents(Result.Cents);
  Result.Number = static_cast<double>(Result.Cents) / 100;
  return Result;
}

TCellValue ReadDecimal(const std::string& Cell, bool AtMostOne) {
  TDecimalText Parts;
  TCellValue Result = SplitDecimal(Cell, false, Parts);
  if (!Result.Error.empty()) return Result;
  const std::string Text = (Parts.Whole.empty() ? "0" : Parts.Whole) + "." + Parts.Decimals + "0";
  std::from_chars(Text.data(), Text.data() + Text.size(), Result.Number);
  if (AtMostOne && Result.Number > 1) return Bad("\"" + Cell + "\" is more than 1: a share is given as 0 to 1");
  Result.Text = Cell;
  if (Result.Number > 0 && Result.Number < 0.01)
    Result.NotSent = "values below 0.01 are left out";
  else if (Parts.Decimals.find_first_not_of('0', 2) != std::string::npos)
    Result.NotSent = "only two decimals are sent";
  return Result;
}

TCellValue ReadListed(TForm Form, const std::string& Cell) {
  static constexpr std::array<std::string_view, 9> States{"ACT", "NSW", "NT", "QLD", "SA", "TAS", "VIC", "WA", "AAT"};
  static constexpr std::array<std::string_view, 2> Usages{"RES", "POS"};
  static constexpr std::array<std::string_view, 4> Sexes{"0", "1", "2", "3"};
  if (Form == TForm::State)
    return IsOneOf(Cell, States) ? Good(Cell) : Doubtful(Cell, "\"" + Cell + "\" is no Australian state or territory");
  if (Form == TForm::AddressUsage)
    return IsOneOf(Cell, Usages) ? Good(Cell) : Doubtful(Cell, "\"" + Cell + "\" is neither RES nor POS");
  if (Form == TForm::Sex)
    return IsOneOf(Cell, Sexes) ? Good(Cell) : Doubtful(Cell, "\"" + Cell + "\" is no sex code (0, 1, 2, 3)");
  const bool Country = Cell.size() == 2 && std::all_of(Cell.begin(), Cell.end(), IsLetter);
  return Country ? Good(Cell) : Doubtful(Cell, "\"" + Cell + "\" is no two-letter country code");
}

TCellValue ReadIdentifier(const std::string& Cell) {
  const bool Valid = std::all_of(Cell.begin(), Cell.end(), [](char Each) {
    return IsDigit(Each) || IsLetter(Each) || Each == '_' || Each == '.' || Each == '-';
  });
  return Valid ? Good(Cell) : Bad("only digits, letters, \"_\", \".\" and \"-\" are allowed here");
}

TCellValue ReadForm(TForm Form, const std::string& Cell, const TCellContext& Context) {
  switch (Form) {
    case TForm::Text:
      return Good(Cell);
    case TForm::Identifier:
      return ReadIdentifier(Cell);
    case TForm::ABN:
      return ReadABN(Cell, true);
    case TForm::FundABN:
      return ReadABN(Cell, false);
    case TForm::USI:
      return ReadUSI(Cell);
    case TForm::Number:
      return AllDigits(Cell) ? Good(Cell) : Bad("only digits are allowed here");
    case TForm::BSB:
      return ReadBSB(Cell);
    case TForm::Account:
      return AllDigits(Cell) && Cell.size() <= 9 ? Good(Cell) : Bad("an account number has 1 to 9 digits");
    case TForm::TFN: {
      const std::string Digits = Without(Cell, " ");
      return IsTFN(Digits) ? Good(Digits) : Bad("this is no valid tax file number (9 digits with a checksum)");
    }
    case TForm::Phone: {
      const std::string Digits = Without(Cell, " -()");
      const bool Valid = AllDigits(Without(Digits, "+")) && Digits.size() >= 4 && Digits.size() <= 16;
      return Valid ? Good(Digits) : Bad("a telephone number has 4 to 16 digits");
    }
    case TForm::Mobile:
      return ReadMobile(Cell);
    case TForm::Postcode:
      return ReadPostcode(Cell, Context.Australian);
    case TForm::PaymentMethod:
      return ReadPaymentMethod(Cell);
    case TForm::Date:
      return ReadDate(Cell);
    case TForm::Amount:
      return ReadAmount(Cell, Context.Negatives);
    case TForm::Decimal:
      return ReadDecimal(Cell, false);
    case TForm::Fraction:
      return ReadDecimal(Cell, true);
    case TForm::Flag:
      return ReadFlag(Cell);
    case TForm::Sex:
    case TForm::AddressUsage:
    case TForm::State:
    case TForm::Country:
      return ReadListed(Form, Cell);
  }
  return Bad("this column cannot be read");
}

}  // namespace

bool IsABN(std::string_view Digits) {
  static constexpr std::array<int, 11> Weights{10, 1, 3, 5, 7, 9, 11, 13, 15, 17, 19};
  if (Digits.size() != 11 || !AllDigits(Digits)) return false;
  return (WeightedSum(Digits, Weights) - Weights[0]) % 89 == 0;  // one is taken from the first digit
}

bool IsTFN(std::string_view Digits) {
  static constexpr std::array<int, 9> Weights{1, 4, 3, 7, 5, 8, 6, 9, 10};
  if (Digits.size() != 9 || !AllDigits(Digits) || Digits == "000000000") return false;
  return WeightedSum(Digits, Weights) % 11 == 0;
}

bool IsPaddedWPN(std::string_view Digits) {
  return Digits.size() == 11 && AllDigits(Digits) && Digits.starts_with("00") && Digits != "00000000000";
}

std::string FormatCents(std::int64_t Cents) {
  const std::string Digits = std::to_string(std::abs(Cents));
  const std::string Padded = Digits.size() < 3 ? std::string(3 - Digits.size(), '0') + Digits : Digits;
  return (Cents < 0 ? "-" : "") + Padded.substr(0, Padded.size() - 2) + "." + Padded.substr(Padded.size() - 2);
}

TCellValue ReadCell(TForm Form, const std::string& Cell, const TCellContext& Context) {
  const bool IsText = Form == TForm::Text || Form == TForm::Identifier || Form == TForm::USI;
  if (IsScientific(Cell, IsText))
    return Bad("a spreadsheet has turned this number into scientific notation: enter its digits again");
  TCellValue Result = ReadForm(Form, Cell, Context);
  const bool TooLong =
      Context.MaxLength > 0 && FirstCharacters(Result.Text, Context.MaxLength).size() < Result.Text.size();
  if (TooLong && Result.Warning.empty())
    Result.Warning = "longer than " + std::to_string(Context.MaxLength) + " characters: a fund may refuse it";
  return Result;
}

}  // namespace oxSuperAPI
