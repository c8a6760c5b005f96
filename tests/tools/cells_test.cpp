#include "payrun/cells.h"

#include <gtest/gtest.h>

#include "oxSuperAPI/host/uBeamError.h"
#include "payrun/csv.h"

namespace oxSuperAPI {
namespace {

struct TCase {
  TForm Form;
  const char* Cell;
  const char* Text;       ///< null: an error
  const char* Note = "";  ///< a piece of the warning or of what is not sent
};

TEST(PayRunCells, AreReadRepairedOrRefused) {
  static constexpr TCase Cases[] = {
      {TForm::ABN, "51824753556", "51824753556"},
      {TForm::ABN, "51 824 753 556", "51824753556"},
      {TForm::ABN, "51824753557", nullptr},
      {TForm::ABN, "5182475355", nullptr},
      {TForm::ABN, "5.18248E+10", nullptr},
      {TForm::ABN, "00123456789", "00123456789"},
      {TForm::FundABN, "00123456789", nullptr},
      {TForm::TFN, "123456782", "123456782"},
      {TForm::TFN, "123 456 782", "123456782"},
      {TForm::TFN, "123456783", nullptr},
      {TForm::TFN, "000000000", nullptr},
      {TForm::TFN, "23456782", nullptr},
      {TForm::USI, "hbr0001au", "HBR0001AU"},
      {TForm::USI, "51824753556001", "51824753556001"},
      {TForm::USI, "HBR1AU", "HBR1AU", "no usual USI"},
      {TForm::BSB, "062-000", "062000"},
      {TForm::BSB, "66121", "066121", "leading 0"},
      {TForm::BSB, "6612", nullptr},
      {TForm::Account, "123456789", "123456789"},
      {TForm::Account, "9000000145", nullptr},
      {TForm::Account, "9.00E+08", nullptr},
      {TForm::Mobile, "0491 570 006", "0491570006"},
      {TForm::Mobile, "491570006", "0491570006", "leading 0"},
      {TForm::Mobile, "+64211234567", "+64211234567", "as it stands"},
      {TForm::Phone, "02 62478965", "0262478965"},
      {TForm::Phone, "ext 12", nullptr},
      {TForm::Postcode, "870", "0870", "leading 0"},
      {TForm::Postcode, "08700", nullptr},
      {TForm::PaymentMethod, "directcredit", "DIRECT_CREDIT"},
      {TForm::PaymentMethod, "PayID", nullptr},
      {TForm::Flag, "1", "true"},
      {TForm::Flag, "FALSE", "false"},
      {TForm::Flag, "yes", nullptr},
      {TForm::Identifier, "A_1.b-2", "A_1.b-2"},
      {TForm::Identifier, "A/1", nullptr},
      {TForm::Text, "1.23E+10", nullptr},
      {TForm::Text, "1E5", "1E5"},
      {TForm::State, "nsw", "nsw", "no Australian state"},
      {TForm::Country, "AUS", "AUS", "two-letter"},
      {TForm::Date, "2026-07-01", "2026-07-01"},
      {TForm::Date, "2026/7/1", "2026-07-01"},
      {TForm::Date, "2026.07.01", "2026-07-01"},
      {TForm::Date, "13/07/2026", "2026-07-13"},
      {TForm::Date, "1.2.2026", "2026-02-01"},
      {TForm::Date, "29-02-2024", "2024-02-29"},
      {TForm::Date, "29-02-2023", nullptr},
      {TForm::Date, "07/13/2026", nullptr},
      {TForm::Date, "01/07/26", nullptr},
      {TForm::Date, "20260701", nullptr},
      {TForm::Date, "2026-07/01", nullptr},
      {TForm::Date, "2026-07-01 00:00", nullptr},
      {TForm::Amount, "510", "510.00"},
      {TForm::Amount, "0.1", "0.10"},
      {TForm::Amount, "9999999999.99", "9999999999.99"},
      {TForm::Amount, "99999999999", nullptr},
      {TForm::Amount, "1,234.50", nullptr},
      {TForm::Amount, "$12", nullptr},
      {TForm::Amount, "1.005", nullptr},
      {TForm::Amount, "-1", nullptr},
      {TForm::Amount, "1e3", nullptr},
      {TForm::Amount, ".", nullptr},
      {TForm::Decimal, "37.50", "37.50"},
      {TForm::Decimal, "37.625", "37.625", "two decimals"},
      {TForm::Fraction, "0.125", "0.125", "two decimals"},
      {TForm::Fraction, "0.005", "0.005", "below 0.01"},
      {TForm::Fraction, "1.5", nullptr},
  };
  for (const TCase& Case : Cases) {
    const TCellValue Value = ReadCell(Case.Form, Case.Cell);
    SCOPED_TRACE(std::string(Case.Cell) + ": " + Value.Error + Value.Warning + Value.NotSent);
    EXPECT_EQ(Case.Text == nullptr, !Value.Error.empty());
    EXPECT_EQ(Case.Text ? Case.Text : "", Value.Text);
    const std::string Note = Value.Warning + Value.NotSent;
    EXPECT_TRUE(*Case.Note ? Note.find(Case.Note) != std::string::npos : Note.empty());
  }
}

TEST(PayRunCells, KeepAmountsInWholeCentsAndTaxFileNumbersToThemselves) {
  for (const char* Wrong : {"987654321", "12345678", "1.23E+08"})
    EXPECT_EQ(std::string::npos, ReadCell(TForm::TFN, Wrong).Error.find(Wrong)) << "a tax file number is never shown";
  const TCellValue Value = ReadCell(TForm::Amount, "-0.07", {.Negatives = true});
  EXPECT_EQ(-7, Value.Cents);
  EXPECT_EQ("-0.07", Value.Text);
  EXPECT_EQ("12345678.90", FormatCents(1234567890));
  EXPECT_FALSE(ReadCell(TForm::Postcode, "SW1A 1AA").Error.empty());
  EXPECT_EQ("SW1A 1AA", ReadCell(TForm::Postcode, "SW1A 1AA", {.Australian = false}).Text);
  EXPECT_FALSE(ReadCell(TForm::Text, "Åsa", {.MaxLength = 2}).Warning.empty());
  EXPECT_TRUE(ReadCell(TForm::Text, "Åsa", {.MaxLength = 3}).Warning.empty());
}

std::string Cells(std::string Text) {
  TCSVReader Reader(std::move(Text));
  TCSVRow Row;
  std::string Result;
  while (Reader.Next(Row)) {
    Result += std::to_string(Row.Line) + ":";
    for (const std::string& Cell : Row.Cells) Result += "[" + Cell + "]";
  }
  return Result;
}

TEST(PayRunCSV, ReadsWhatExportersWriteAndTellsUTF8FromOtherEncodings) {
  const std::pair<std::string, std::string> Cases[] = {
      {"a,b\nc,d", "1:[a][b]2:[c][d]"},
      {"\xEF\xBB\xBF"
       "a, b \r\n\r\nc\r\n",
       "1:[a][b]2:[]3:[c]"},
      {"a;b,c;d\n1;2;3\n", "1:[a][b,c][d]2:[1][2][3]"},
      {"\"a,\"\"b\"\"\",c\nd", "1:[a,\"b\"][c]2:[d]"},
      {"\"two\nlines\",x\ny", "1:[two\nlines][x]3:[y]"},
      {"a,,\n", "1:[a][][]"},
      {"Caf\xE9,\x80,\x92\n", "1:[Café][€][’]"},
      {"Café,\xC2\xA0x\xC2\xA0\n", "1:[Café][x]"},
      {"", ""},
  };
  for (const auto& [Text, Expected] : Cases) EXPECT_EQ(Expected, Cells(Text)) << Text;
  for (const std::string& Broken : {std::string("a,\"b\nc"), std::string("\x81"), std::string("a\0b", 3)})
    EXPECT_THROW(Cells(Broken), TBeamError);
  for (const char* Good : {"", "abc", "é", "€", "😀", "\xED\x9F\xBF"}) EXPECT_TRUE(IsUTF8(Good));
  for (const char* Bad : {"\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF", "\x80"})
    EXPECT_FALSE(IsUTF8(Bad));
}

}  // namespace
}  // namespace oxSuperAPI
