#include "payrun/rows.h"

#include <algorithm>
#include <utility>

#include "oxSuperAPI/foundation/uBeamText.h"

namespace oxSuperAPI {
namespace {

using enum TFindingSeverity;

/// 1900-01-01 stands for a date that is not known.
constexpr std::string_view UnknownDate = "1900-01-01";

/// Ten digits with a geographic area code are split; other numbers stay whole.
TBeamPhoneNumber SplitPhone(const std::string& Digits) {
  const bool HasAreaCode = Digits.size() == 10 && (Digits.starts_with("02") || Digits.starts_with("03") ||
                                                   Digits.starts_with("07") || Digits.starts_with("08"));
  TBeamPhoneNumber Result;
  if (HasAreaCode) Result.areaCode = Digits.substr(0, 2);
  Result.number = HasAreaCode ? Digits.substr(2) : Digits;
  return Result;
}

void Store(const TColumn& Column, const TCellValue& Value, TPayRunRow& Row) {
  if (const auto* Text = std::get_if<TTextTarget>(&Column.Target)) (*Text)(Row) = Value.Text;
  if (const auto* Text = std::get_if<TCompactTextTarget>(&Column.Target)) (*Text)(Row) = Value.Text;
  if (const auto* Number = std::get_if<TNumberTarget>(&Column.Target)) (*Number)(Row) = Value.Number;
  if (const auto* Phone = std::get_if<TPhoneTarget>(&Column.Target)) (*Phone)(Row) = SplitPhone(Value.Text);
  if (Column.Form == TForm::Date) Row.Dates[Column.Number] = Value.Text;
  if (Column.Number == colLineId) Row.LineId = Value.Text;
  if (Column.Number == colPaymentAmount) Row.PaymentCents = Value.Cents;
  if (Column.Owner == TColumnOwner::Contribution) {
    Row.ContributionCents += Value.Cents;
    Row.HasContributions = Row.HasContributions || Value.Cents != 0;
  }
  if (Column.Owner == TColumnOwner::Registration) Row.HasRegistration = true;
}

void CheckDates(const TPayRunRow& Row, TPayRunNotes& Notes) {
  const auto IsKnown = [&](auto Date) { return Date != Row.Dates.end() && Date->second != UnknownDate; };
  const auto InOrder = [&](std::size_t Start, std::size_t End) {
    const auto From = Row.Dates.find(Start), To = Row.Dates.find(End);
    return !IsKnown(From) || !IsKnown(To) || From->second <= To->second;
  };
  for (const TDatePair& Pair : DatePairs)
    if (!InOrder(Pair.Start, Pair.End))
      Notes.Add(Error, Row, Pair.End, "the end lies before the start in column " + ColumnLetters(Pair.Start));
  if (!InOrder(colPayPeriodEnd, colTransactionDate))
    Notes.Add(Warning, Row, colTransactionDate, "the payment is dated before the end of the pay period");
}

void CheckRequired(const TCSVRow& Cells, const TPayRunRow& Row, TPayRunNotes& Notes) {
  for (const TColumn& Column : Columns) {
    if (!Cells.Cell(Column.Number - 1).empty()) continue;
    if (Column.Required == TRequired::EveryRow) Notes.Add(Error, Row, Column.Number, "must not be empty");
    if (Column.Required == TRequired::SelfManagedFund && IsSelfManaged(Row))
      Notes.Add(Error, Row, Column.Number, "a self-managed fund (ABN without USI) needs it");
    if (Column.Required == TRequired::PayPeriod && Row.HasContributions)
      Notes.Add(Warning, Row, Column.Number, "contributions without a pay period: a fund may refuse them");
  }
  const bool NoFund = Cells.Cell(colFundABN - 1).empty() && Cells.Cell(colFundUSI - 1).empty();
  if (NoFund) Notes.Add(Error, Row, colFundABN, "the row names no fund: give its ABN, its USI or both");
}

/// Findings that need two cells of the row.
void CheckTogether(const TCSVRow& Cells, TPayRunRow& Row, TPayRunNotes& Notes) {
  const TBeamMemberContribution& Member = *Row.Member;
  const bool Numbered = Row.FundUSI.size() == 14;
  if (Numbered && !Row.FundABN.empty() && !Row.FundUSI.starts_with(Row.FundABN))
    Notes.Add(Warning, Row, colFundUSI, "the USI does not begin with the fund's ABN in column R");
  if (Member.employmentEndDate.empty() != Member.employmentEndReason.empty())
    Notes.Add(Warning, Row, Member.employmentEndDate.empty() ? colEmploymentEndDate : colEmploymentEndReason,
              "the end of an employment needs its date and its reason");
  if (Row.ServiceFraction != 0 && Member.definedBenefits->serviceFractionEffectiveDate.empty())
    Notes.Add(Error, Row, colServiceFractionDate, "a service fraction needs its effective date");
  if (!Row.HasContributions && !Row.HasRegistration)
    Notes.Add(Remark, Row, 0, "neither contributions nor registration data: only the member's particulars are sent");
  const std::string& Source = Cells.Cell(colSourceEntity - 1);
  if (!Source.empty() && Source != Row.Participant.businessIdentifierValue)
    Notes.Add(Remark, Row, colSourceEntity, "differs from the sender's ABN in column F; it is not sent");
}

/// Two columns for one field: the registration part wins.
void ResolveTwins(TPayRunRow& Row, TPayRunNotes& Notes) {
  TBeamMemberContribution& Member = *Row.Member;
  const TBeamDefinedBenefits& Registered = *std::as_const(Member).definedBenefits;
  if (Row.ServiceFraction != 0 && Registered.serviceFraction.value == 0)
    Member.definedBenefits->serviceFraction.value = Row.ServiceFraction;
  else if (Row.ServiceFraction != 0 && Row.ServiceFraction != Registered.serviceFraction.value)
    Notes.Add(Warning, Row, colServiceFraction, "differs from column CV, which is sent");
  if (!Row.EmployeeLocation.empty() && Registered.employeeLocationIdentifier.value.empty())
    Member.definedBenefits->employeeLocationIdentifier.value = Row.EmployeeLocation;
  else if (!Row.EmployeeLocation.empty() && Row.EmployeeLocation != Registered.employeeLocationIdentifier.value)
    Notes.Add(Warning, Row, colEmployeeLocation, "differs from column EA, which is sent");
}

/// The wire has room for four salaries, the entries 2 to 5 of the table, and takes none without an end date.
void PlaceAnnualSalaries(const TPayRunRow& Row, TPayRunNotes& Notes) {
  std::size_t Entry = 1;
  for (std::size_t Index = 0; Index < Row.AnnualSalaries.size(); ++Index) {
    const TBeamDatedValue& Salary = Row.AnnualSalaries[Index];
    const std::size_t Column = colAnnualSalary1 + 3 * Index;
    if (Salary.value == 0 && Salary.startDate.empty() && Salary.endDate.empty()) continue;
    if (Salary.endDate.empty())
      Notes.AddNotSent(Row, Column, "an annual salary is only sent with its end date");
    else if (Entry == MaxTableEntries)
      Notes.AddNotSent(Row, Column, "at most four annual salaries are sent");
    else
      Row.Member->definedBenefits->definedBenefitsAnnualSalary[Entry++] = Salary;
  }
}

/// What is left out because of the rest of the row, or because of the options.
void ApplyOptions(const TCSVRow& Cells, const TPayRunOptions& Options, TPayRunRow& Row, TPayRunNotes& Notes) {
  TBeamMemberContribution& Member = *Row.Member;
  if (!IsSelfManaged(Row)) {
    for (std::size_t Column : {+colFundServiceAddress, +colFundBSB, colFundBSB + 1, +colFundAccountName})
      if (!Cells.Cell(Column - 1).empty()) Notes.AddNotSent(Row, Column, "sent for self-managed funds only");
    Row.FundServiceAddress.clear();
    Row.FundAccount = {};
  }
  if (!Row.Location.empty() && Options.Location == TLocationUse::NotSent)
    Notes.AddNotSent(Row, colLocation, "the data standard has no place for it (option location)");
  if (Options.Location == TLocationUse::NotSent) Row.Location.clear();
  if (!Options.PaymentMethod.empty()) Row.Payment.paymentType = Options.PaymentMethod;

  const auto SetPhoneType = [](TBeamPhoneNumbers& Phones, std::size_t Index, const std::string& Type) {
    if (!std::as_const(Phones)[Index].number.empty()) Phones[Index].phoneNumberType = Type;
  };
  SetPhoneType(Row.Participant.phoneNumbers, 0, Options.LandlineType);
  SetPhoneType(Member.phoneNumbers, 0, Options.LandlineType);
  SetPhoneType(Member.phoneNumbers, 1, Options.MobileType);
  const TBeamPhoneNumbers& Phones = Member.phoneNumbers;
  if (Phones[0].number.empty() && !Phones[1].number.empty()) std::swap(Member.phoneNumbers[0], Member.phoneNumbers[1]);
  if (const auto Gender = Options.Genders.find(Member.gender); Gender != Options.Genders.end())
    Member.gender = Gender->second;
  if (Options.UpperCaseCountry) Member.address.countryCode = UpperCase(Member.address.countryCode);
}

}  // namespace

std::string RowName(std::size_t Line, const std::string& LineId) {
  return "row " + std::to_string(Line) + (LineId.empty() ? "" : " (LINE ID " + LineId + ")");
}

void TPayRunNotes::Add(TFindingSeverity Severity, const TPayRunRow& Row, std::size_t Column, std::string Reason) {
  FRun.Findings.push_back({Severity, Row.Line, Row.LineId, Column, std::move(Reason)});
}

void TPayRunNotes::AddForFile(TFindingSeverity Severity, std::size_t Line, std::size_t Column, std::string Reason) {
  FRun.Findings.push_back({Severity, Line, "", Column, std::move(Reason)});
}

void TPayRunNotes::AddNotSent(const TPayRunRow& Row, std::size_t Column, const std::string& Reason) {
  const auto Found = std::find_if(FRun.NotSent.begin(), FRun.NotSent.end(),
                                  [&](const TNotSent& Each) { return Each.Column == Column && Each.Reason == Reason; });
  TNotSent& Entry = Found != FRun.NotSent.end() ? *Found : FRun.NotSent.emplace_back(TNotSent{Column, Reason, {}});
  Entry.Lines.push_back(Row.Line);
}

TPayRunRow ReadRow(const TCSVRow& Cells, bool Negatives, const TPayRunOptions& Options, TPayRunNotes& Notes) {
  TPayRunRow Row;
  Row.Line = Cells.Line;
  const std::string Country = UpperCase(Cells.Cell(colCountry - 1));
  const bool Australian = Country.empty() || Country == "AU";
  const bool SelfManaged = Cells.Cell(colFundUSI - 1).empty() && !Cells.Cell(colFundABN - 1).empty();
  for (const TColumn& Column : Columns) {
    const std::string& Cell = Cells.Cell(Column.Number - 1);
    if (Cell.empty()) continue;
    const bool Optioned = Column.Number == colPaymentMethod && !Options.PaymentMethod.empty();
    if (Optioned) continue;
    const TCellValue Value = ReadCell(Column.Form, Cell, {Negatives, Australian, Column.MaxLength});
    if (!Value.Error.empty()) {
      const bool Ignored = Column.Required == TRequired::SelfManagedFund && !SelfManaged;
      Notes.Add(Ignored ? Warning : Error, Row, Column.Number, Value.Error + (Ignored ? "; it is not sent" : ""));
      continue;
    }
    if (!Value.Warning.empty()) Notes.Add(Warning, Row, Column.Number, Value.Warning);
    if (!Value.NotSent.empty()) Notes.AddNotSent(Row, Column.Number, Value.NotSent);
    if (Column.NotSent) Notes.AddNotSent(Row, Column.Number, Column.NotSent);
    Store(Column, Value, Row);
  }
  CheckRequired(Cells, Row, Notes);
  CheckTogether(Cells, Row, Notes);
  CheckDates(Row, Notes);
  ResolveTwins(Row, Notes);
  PlaceAnnualSalaries(Row, Notes);
  ApplyOptions(Cells, Options, Row, Notes);
  return Row;
}

}  // namespace oxSuperAPI
