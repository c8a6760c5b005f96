#include "payrun/payrun.h"

#include <gtest/gtest.h>

#include "payrun/csv.h"
#include "payrun_builder.h"

namespace oxSuperAPI {
namespace {

const TBeamContributionFund& Fund(const TPayRun& Run, int Employer = 0, int Index = 0, std::size_t Batch = 0) {
  return *Run.Batches.at(Batch).Detail->GetContributionEmployer(Employer)->GetContributionFund(Index);
}
const TBeamMemberContribution& Member(const TPayRun& Run, int Index = 0) {
  return *Fund(Run).GetMemberContribution(Index);
}

TEST(PayRunColumns, CarryTheNamesOfTheTemplate) {
  std::istringstream Template(tests::ReadFile(SHARED_DIR "/saff/template.csv"));
  std::string Line;
  for (int Row = 0; Row < 3; ++Row) std::getline(Template, Line);
  if (Line.empty()) GTEST_SKIP() << "no template beside the repository";
  TCSVReader Reader(Line);
  TCSVRow Names;
  ASSERT_TRUE(Reader.Next(Names));
  ASSERT_EQ(ColumnCount, Names.Cells.size());
  for (const TColumn& Column : Columns) {
    EXPECT_EQ(Names.Cells[Column.Number - 1], Column.Header);
    EXPECT_EQ(&Column, &Columns[Column.Number - 1]);
  }
  EXPECT_EQ("A Z AA EC",
            ColumnLetters(1) + " " + ColumnLetters(26) + " " + ColumnLetters(27) + " " + ColumnLetters(133));
}

TEST(PayRun, FillsEveryColumnThatIsSentWithItsOwnValue) {
  // Each column gets a value of its own; each value has to come out once more often than it has other targets.
  TCells Row = With(GoodRow(), {{"S", ""}, {"U", "SMSFGATE"}, {"AA", "083004"}, {"AB", "7654321"}, {"AC", "Trustee"}});
  std::vector<std::pair<std::string, std::string>> Sent;
  int Cents = 10000;
  for (const TColumn& Column : Columns) {
    const std::string Letters = ColumnLetters(Column.Number);
    if (Column.NotSent || Row.contains(Letters)) continue;
    std::string Value = "t" + Letters;
    if (Column.Form == TForm::Amount || Column.Form == TForm::Decimal) Value = FormatCents(++Cents);
    if (Column.Form == TForm::Date)
      Value = "20" + std::to_string(Column.Number / 10 + 10) + "-01-0" +
              std::to_string(Column.Number % 10 + 1).substr(0, 1);
    if (Column.Form == TForm::Phone || Column.Form == TForm::Mobile) Value = "04915700" + std::to_string(Column.Number);
    if (Column.Form == TForm::Fraction) Value = "0." + std::to_string(Column.Number % 90 + 10);
    if (Column.Form == TForm::Flag || Column.Form == TForm::USI || Column.Number == 31) continue;
    Row[Letters] = Value;
    const bool Replaced = Letters == "CP" || Letters == "CU" || Column.Number >= 121;
    if (!Replaced) Sent.emplace_back(Letters, Value);
  }
  TPayRun Run = ReadPayRun(PayRunText({Row}));
  ASSERT_EQ(1u, Run.Batches.size());
  const std::string JSON = Run.Batches[0].Detail->GetAsJsonString();
  for (const auto& [Letters, Value] : Sent)
    EXPECT_NE(std::string::npos, JSON.find("\"" + Value + "\"")) << Letters << " " << Value << "\n" << JSON;
}

TEST(PayRun, PutsRowsTogetherToOneBatch) {
  const TCells Other = {{"A", ""}, {"AD", "21412330117"}, {"AF", "Café Zoë"}};
  const TPayRun Run = ReadPayRun(PayRunText(
      {GoodRow(),
       With(GoodRow(), {{"A", "2"}, {"AK", "O’Dea"}, {"BH", "1.50"}, {"Z", "1001.50"}}),
       With(GoodRow(), Other),
       With(GoodRow(), {{"A", "4"}, {"AG", "FEN-1"}}),
       {{"A", "5"}, {"R", "21412330117"}, {"S", "HBR0001AU"}, {"AD", "51824753556"}, {"AK", "New"}, {"BQ", "1"}}}));
  EXPECT_EQ("", Places(Run));
  ASSERT_EQ(1u, Run.Batches.size());
  const TBeamContributionDetail& Detail = *Run.Batches[0].Detail;
  EXPECT_EQ("F-1", Run.FileId);
  EXPECT_EQ(150150, Run.Batches[0].Cents);
  ASSERT_EQ(2u, Detail.GetContributionEmployerCount());
  EXPECT_EQ(2u, Detail.GetContributionEmployer(0)->GetContributionFundCount());  // an employer number is an identity
  ASSERT_EQ(3u, Fund(Run).GetMemberContributionCount());
  const auto& [Payment, Employer] = std::pair(Detail.payment, Detail.GetContributionEmployer(1)->employerDetail);
  EXPECT_EQ("O’Dea true", Member(Run, 1).name.familyName + " " + Member(Run, 2).atWork);
  EXPECT_EQ("DIRECT_CREDIT 10203040 ", Payment.paymentType + " " + Payment.refundAccount.accountNumber + " " +
                                           Payment.directDebitAccount.accountNumber);
  EXPECT_EQ("02 55501234", Detail.participant.phoneNumbers[0].areaCode + " " + Employer.phoneNumbers[0].number);
  EXPECT_EQ("Café Zoë", Employer.organisationName);
}

TEST(PayRun, KnowsSelfManagedFundsByTheirMissingUSI) {
  const TCells Account = {{"U", "SMSFGATE"}, {"AA", "083-004"}, {"AB", "445566778"}, {"AC", "Trustee"}};
  const TPayRun Self = ReadPayRun(PayRunText({With(With(GoodRow(), Account), {{"S", ""}})}));
  EXPECT_EQ("", Places(Self));
  const auto& Detail = Fund(Self).smsfDetail;
  EXPECT_EQ("083004 SMSFGATE Harbour Fund",
            Detail.bankAccount.BSB + " " + Detail.electronicServiceAddressAlias + " " + Detail.fundName);
  const TPayRun Retail = ReadPayRun(PayRunText({With(GoodRow(), Account)}));
  EXPECT_EQ("", Fund(Retail).smsfDetail.bankAccount.BSB + Fund(Retail).smsfDetail.fundName);
  EXPECT_EQ(4u, Retail.NotSent.size());
  EXPECT_EQ("error 4/U, error 4/AA, error 4/AB, error 4/AC",
            Places(ReadPayRun(PayRunText({With(GoodRow(), {{"S", ""}})}))));
}

TEST(PayRun, NamesRowAndColumnOfEachFinding) {
  const std::pair<TCells, const char*> Cases[] = {
      {{{"AH", "123456789"}}, "error 4/AH"},
      {{{"AD", ""}}, "error 4/AD"},
      {{{"AK", ""}}, "error 4/AK"},
      {{{"R", ""}, {"S", ""}}, "error 4/R"},
      {{{"F", ""}}, "error 4/F"},
      {{{"V", ""}}, "error 4/V"},
      {{{"V", ""}, {"BH", ""}, {"BQ", "0"}}, ""},
      {{{"Z", "499.99"}}, "error 4/Z"},
      {{{"Z", "500"}}, ""},
      {{{"BF", "2026-07-15"}}, "error 4/BG"},
      {{{"BF", ""}}, "warning 4/BF"},
      {{{"W", "2026-07-13"}}, "warning 4/W"},
      {{{"BP", "2026-01-01"}, {"BD", "1900-01-01"}, {"BE", "Death"}}, ""},
      {{{"BD", "2026-07-10"}}, "warning 4/BE"},
      {{{"S", "99999999999001"}}, "warning 4/S"},
      {{{"AV", "870"}}, "warning 4/AV"},
      {{{"AV", "SW1A"}, {"AX", "gb"}}, ""},
      {{{"BH", ""}}, "remark 4/"},
      {{{"CP", "1"}}, "error 4/CQ"},
      {{{"CP", "0.5"}, {"CQ", "2026-07-01"}, {"CV", "0.6"}}, "warning 4/CP"},
      {{{"B", "99"}}, "remark 4/B"},
      {{{"AB", "9000000145"}}, "warning 4/AB"},
  };
  for (const auto& [Changes, Expected] : Cases) {
    const TPayRun Run = ReadPayRun(PayRunText({With(GoodRow(), Changes)}));
    EXPECT_EQ(Expected, Places(Run)) << Changes.begin()->first << " " << Changes.begin()->second;
  }
  EXPECT_EQ("error 5/A", Places(ReadPayRun(PayRunText({GoodRow(), GoodRow()}))));
}

TEST(PayRun, RefusesOrSplitsRowsThatDisagreeAboutThePayment) {
  const std::string Text = PayRunText({GoodRow(), With(GoodRow(), {{"A", "2"}, {"V", "BPAY"}, {"BH", "7"}}),
                                       With(GoodRow(), {{"A", "3"}, {"M", ""}, {"V", ""}, {"BH", "9"}}),
                                       With(GoodRow(), {{"A", "4"}, {"P", "99"}})});
  const TPayRun Refused = ReadPayRun(Text);
  EXPECT_EQ("error 5/V, error 7/P", Places(Refused));
  EXPECT_NE(std::string::npos, Refused.Findings[0].Reason.find("row 4 (LINE ID 1)"));
  EXPECT_EQ(std::string::npos, Refused.Findings[1].Reason.find("10203040"));
  TPayRunOptions Split;
  Split.SplitByPayment = true;
  const TPayRun Run = ReadPayRun(Text, Split);
  EXPECT_EQ("", Places(Run));
  ASSERT_EQ(3u, Run.Batches.size());
  EXPECT_EQ((std::vector<std::size_t>{4, 6}), Run.Batches[0].Lines);
  EXPECT_EQ("BPAY", Run.Batches[1].Detail->payment.paymentType);
  EXPECT_EQ("error 5/G",
            Places(ReadPayRun(PayRunText({GoodRow(), With(GoodRow(), {{"A", "2"}, {"G", "Other"}})}), Split)));
}

TEST(PayRun, AcceptsTheAmountOfAPaymentForRowFundOrBatch) {
  for (const auto& [Amount, Expected] : std::map<std::string, std::string>{
           {"500", ""}, {"800", ""}, {"1000", ""}, {"300", "error 4/Z"}, {"700", "error 4/Z"}})
    EXPECT_EQ(
        Expected,
        Places(ReadPayRun(PayRunText({With(GoodRow(), {{"Z", Amount}}), With(GoodRow(), {{"A", "2"}, {"BH", "300"}}),
                                      With(GoodRow(), {{"A", "3"}, {"BH", "200"}, {"S", "OTH0001AU"}})}))))
        << Amount;
}

TEST(PayRun, ListsWhatIsNotSent) {
  TCells Row = With(GoodRow(), {{"W", "2026-07-15"}, {"X", "123"}, {"CI", "5"}, {"CV", "0.125"}, {"DB", "0.005"}});
  for (int Salary = 0; Salary < 5; ++Salary) {
    Row[ColumnLetters(109 + 3 * static_cast<std::size_t>(Salary))] = std::to_string(Salary + 1);
    if (Salary != 1) Row[ColumnLetters(111 + 3 * static_cast<std::size_t>(Salary))] = "2026-06-30";
  }
  const TPayRun Run = ReadPayRun(PayRunText({Row, With(Row, {{"A", "2"}})}));
  std::string NotSent;
  for (const TNotSent& Entry : Run.NotSent)
    NotSent += ColumnLetters(Entry.Column) + std::to_string(Entry.Lines.size()) + " ";
  EXPECT_EQ("W2 X2 CI2 CV2 DB2 DH2 ", NotSent);
  const auto& Salaries = Member(Run).definedBenefits->definedBenefitsAnnualSalary;
  for (const auto& [Index, Value] : {std::pair{0u, 0}, {1u, 1}, {2u, 3}, {4u, 5}})
    EXPECT_EQ(Value, Salaries[Index].value) << Index;
}

TEST(PayRun, TakesFromOptionsWhatTheFileHasNoColumnFor) {
  TPayRunOptions Options;
  Options.ClientParticipantNumber = "CPN1";
  Options.PaymentMethod = "PAYID";
  Options.DefaultFunds = {"HBR0001AU"};
  Options.Genders = {{"2", "FEMALE"}};
  Options.MobileType = "MOBILE";
  Options.Location = TLocationUse::Split;
  Options.UpperCaseCountry = true;
  const TCells Row =
      With(GoodRow(), {{"AN", "2"}, {"BA", "491570006"}, {"AE", "DEPOT"}, {"AX", "au"}, {"F", "00123456789"}});
  const TPayRun Run = ReadPayRun(PayRunText({Row, With(Row, {{"A", "2"}, {"AE", "SHOP"}})}), Options);
  EXPECT_EQ("warning 4/BA, warning 5/BA", Places(Run));
  const TBeamContributionDetail& Detail = *Run.Batches[0].Detail;
  EXPECT_EQ("CPN1 PAYID WPN", Detail.participant.clientParticipantNumber + " " + Detail.payment.paymentType + " " +
                                  Detail.participant.businessIdentifierType);
  EXPECT_TRUE(Fund(Run).isDefaultFund);
  const TBeamMemberContribution& First = Member(Run);
  EXPECT_EQ("FEMALE AU MOBILE 0491570006", First.gender + " " + First.address.countryCode + " " +
                                               First.phoneNumbers[0].phoneNumberType + " " +
                                               First.phoneNumbers[0].number);
  ASSERT_EQ(2u, Detail.GetContributionEmployerCount());
  EXPECT_EQ("SHOP", Detail.GetContributionEmployer(1)->employerTransactionContextId);
}

TEST(PayRun, ToleratesTheFirstRowsOfTheWild) {
  const std::pair<const char*, const char*> Cases[] = {{"version,1,negatives supported,TRUE,file id,", ""},
                                                       {",1.0,NEGATIVES SUPPORTED,0,FILE ID,a.B-1", ""},
                                                       {"VERSION,1.0", ""},
                                                       {"VERSION,2.0", "error 1/B"},
                                                       {"Name,Amount", "error 1/"},
                                                       {"VERSION,1.0,N,maybe", "error 1/D"},
                                                       {"VERSION,1.0,N,false,F,a b", "error 1/F"},
                                                       {"VERSION,1.0,N,0,F,123456789012345678901", "error 1/F"}};
  for (const auto& [FirstRow, Expected] : Cases)
    EXPECT_EQ(Expected, Places(ReadPayRun(PayRunText({GoodRow()}, FirstRow)))) << FirstRow;
  const TCells Negative = With(GoodRow(), {{"BH", "-2.50"}});
  EXPECT_EQ(-250, ReadPayRun(PayRunText({Negative}, ",1,,TRUE")).Batches[0].Cents);
}

TEST(PayRun, RefusesMovedColumnsAndToleratesOtherSpellings) {
  const std::string LastColumn = "Employee Location Identifier End Date";
  const std::tuple<std::string, std::string, const char*> Cases[] = {
      {"Family Name,Given Name", "Given Name,Family Name", "error 3/H, error 3/I"},
      {"Account Name Text", "Acct. name", "warning 3/Q"},
      {"Account Name Text", "ACCOUNT-NAME  text", ""},
      {LastColumn, LastColumn + ",Extra", "remark 3/"}};
  for (const auto& [From, To, Expected] : Cases) {
    std::string Text = PayRunText({GoodRow()});
    EXPECT_EQ(Expected, Places(ReadPayRun(Text.replace(Text.find(From), From.size(), To)))) << To;
  }
  for (const std::string& Nothing : {PayRunText({}), std::string()})
    EXPECT_EQ("error 0/", Places(ReadPayRun(Nothing))) << Nothing;
}

TEST(PayRun, ReadsTheExampleWithoutErrors) {
  EXPECT_EQ("", Places(ReadPayRun(tests::ReadFile(SOURCE_DIR "/examples/payrun.csv"))));
}

}  // namespace
}  // namespace oxSuperAPI
