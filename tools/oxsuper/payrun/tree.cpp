#include "payrun/tree.h"

#include <algorithm>

namespace oxSuperAPI {
namespace {

using enum TFindingSeverity;

/// The text by which a column of the sender or payer is compared.
std::string SharedText(const TColumn& Column, TPayRunRow& Row) {
  if (const auto* Phone = std::get_if<TPhoneTarget>(&Column.Target)) return (*Phone)(Row).number;
  if (const auto* Text = std::get_if<TCompactTextTarget>(&Column.Target)) return (*Text)(Row);
  return std::get<TTextTarget>(Column.Target)(Row);
}

void TakeShared(const TColumn& Column, TPayRunRow& From, TPayRunRow& To) {
  if (const auto* Phone = std::get_if<TPhoneTarget>(&Column.Target))
    (*Phone)(To) = (*Phone)(From);
  else if (const auto* Text = std::get_if<TCompactTextTarget>(&Column.Target))
    (*Text)(To) = (*Text)(From);
  else
    std::get<TTextTarget>(Column.Target)(To) = std::get<TTextTarget>(Column.Target)(From);
}

bool IsSensitive(const TColumn& Column) {
  return Column.Form == TForm::BSB || Column.Form == TForm::Account;
}

std::string EmployerKey(const TPayRunRow& Row, const TPayRunOptions& Options) {
  const bool ByLocation = Options.Location == TLocationUse::Split;
  return Row.Employer.businessIdentifierValue + (ByLocation ? "\n" + Row.Location : "");
}

/// The identity of a fund. Of a self-managed one it holds account and address, which are empty in the others.
std::string FundKey(const TPayRunRow& Row) {
  return Row.FundABN + "\n" + Row.FundUSI + "\n" + Row.FundAccount.BSB + "\n" + Row.FundAccount.accountNumber + "\n" +
         Row.FundServiceAddress + "\n" + Row.FundEmployerNumber;
}

const std::string& BusinessNumberType(const std::string& Number, const TPayRunOptions& Options) {
  static const std::string None;
  return Number.empty() ? None : IsPaddedWPN(Number) ? Options.PayerNumberType : Options.BusinessNumberType;
}

std::shared_ptr<TBeamContributionEmployer> MakeEmployer(const TPayRunRow& Row, const TBeamParticipantDetail& Sender,
                                                        const TPayRunOptions& Options) {
  auto Employer = std::make_shared<TBeamContributionEmployer>();
  Employer->employerDetail = Row.Employer;
  Employer->employerDetail.businessIdentifierType = BusinessNumberType(Row.Employer.businessIdentifierValue, Options);
  Employer->employerDetail.name = Sender.name;  // the file has one contact, the sender's
  Employer->employerDetail.email = Sender.email;
  Employer->employerDetail.phoneNumbers = Sender.phoneNumbers;
  Employer->employerTransactionContextId = Row.Location;
  return Employer;
}

std::shared_ptr<TBeamContributionFund> MakeFund(const TPayRunRow& Row, const TPayRunOptions& Options) {
  auto Fund = std::make_shared<TBeamContributionFund>();
  Fund->ABN = Row.FundABN;
  Fund->USI = Row.FundUSI;
  Fund->organisationName = Row.FundName;
  Fund->fundEmployerNumber = Row.FundEmployerNumber;
  const std::string& Identity = Row.FundUSI.empty() ? Row.FundABN : Row.FundUSI;
  const auto& Defaults = Options.DefaultFunds;
  Fund->isDefaultFund = std::find(Defaults.begin(), Defaults.end(), Identity) != Defaults.end();
  if (IsSelfManaged(Row)) {
    Fund->smsfDetail.bankAccount = Row.FundAccount;
    Fund->smsfDetail.electronicServiceAddressAlias = Row.FundServiceAddress;
    Fund->smsfDetail.fundName = Row.FundName;
  }
  return Fund;
}

}  // namespace

void TBatchBuilder::Add(TPayRunRow Row) {
  FRows.push_back(std::move(Row));
}

/// Empty cells agree with everything.
bool TBatchBuilder::Agrees(TPayRunRow& Row, TGroup& Group) const {
  return std::all_of(Columns.begin(), Columns.end(), [&](const TColumn& Column) {
    if (Column.Owner != TColumnOwner::Payer) return true;
    const std::string Own = SharedText(Column, Row);
    const std::string Others = SharedText(Column, Group.Shared);
    return Own.empty() || Others.empty() || Own == Others;
  });
}

void TBatchBuilder::Merge(TPayRunRow& Row, TGroup& Group) {
  for (const TColumn& Column : Columns) {
    if (Column.Owner != TColumnOwner::Sender && Column.Owner != TColumnOwner::Payer) continue;
    const std::string Own = SharedText(Column, Row);
    const std::string Others = SharedText(Column, Group.Shared);
    std::string& Origin = Group.Origins[Column.Number - 1];
    if (Own.empty() || Own == Others) continue;
    if (Others.empty()) {
      TakeShared(Column, Row, Group.Shared);
      Origin = RowName(Row.Line, Row.LineId);
      continue;
    }
    const std::string Values = IsSensitive(Column) ? "" : " (\"" + Own + "\", there \"" + Others + "\")";
    const bool Splittable = Column.Owner == TColumnOwner::Payer;
    FNotes.Add(Error, Row, Column.Number,
               "disagrees with " + Origin + Values + "; a batch has one " +
                   (Splittable ? "payer and payment method (--split makes one batch for each)" : "sender"));
  }
}

std::vector<TPayRunBatch> TBatchBuilder::Finish() {
  std::vector<TGroup> Groups;
  const auto GroupFor = [&](TPayRunRow& Row) -> TGroup& {
    const auto Found = std::find_if(Groups.begin(), Groups.end(), [&](TGroup& Each) { return Agrees(Row, Each); });
    if (Found != Groups.end() && FOptions.SplitByPayment) return *Found;
    if (!Groups.empty() && !FOptions.SplitByPayment) return Groups.front();
    return Groups.emplace_back();
  };
  // Rows that name payer and method make the batches; the others then join the first one that they agree with.
  for (TPayRunRow& Row : FRows)
    if (!Row.Payment.businessIdentifierValue.empty() && !Row.Payment.paymentType.empty()) Merge(Row, GroupFor(Row));
  for (TPayRunRow& Row : FRows) {
    TGroup& Group = GroupFor(Row);
    const bool Merged = !Row.Payment.businessIdentifierValue.empty() && !Row.Payment.paymentType.empty();
    if (!Merged) Merge(Row, Group);
    Group.Rows.push_back(std::move(Row));
  }
  FRows.clear();

  std::vector<TPayRunBatch> Batches;
  for (TGroup& Group : Groups) {
    Batches.push_back(Build(Group));
    CheckShared(Group);
    CheckPayments(Group, Batches.back());
  }
  return Batches;
}

TPayRunBatch TBatchBuilder::Build(TGroup& Group) {
  TPayRunBatch Batch;
  Batch.Detail = std::make_unique<TBeamContributionDetail>();
  TBeamContributionDetail& Detail = *Batch.Detail;
  Detail.participant = Group.Shared.Participant;
  Detail.participant.clientParticipantNumber = FOptions.ClientParticipantNumber;
  Detail.participant.businessIdentifierType = BusinessNumberType(Detail.participant.businessIdentifierValue, FOptions);
  Detail.payment = Group.Shared.Payment;
  Detail.payment.businessIdentifierType = BusinessNumberType(Detail.payment.businessIdentifierValue, FOptions);
  if (Detail.payment.paymentType == "DIRECT_DEBIT") Detail.payment.directDebitAccount = Detail.payment.refundAccount;
  Detail.version = FOptions.Version;

  std::map<std::string, std::shared_ptr<TBeamContributionEmployer>> Employers;
  std::map<std::string, std::shared_ptr<TBeamContributionFund>> Funds;
  for (const TPayRunRow& Row : Group.Rows) {
    const std::string EmployerName = EmployerKey(Row, FOptions);
    auto& Employer = Employers[EmployerName];
    if (!Employer) Detail.AddContributionEmployer(Employer = MakeEmployer(Row, Detail.participant, FOptions));
    if (!Row.Employer.organisationName.empty() && Employer->employerDetail.organisationName.empty())
      Employer->employerDetail.organisationName = Row.Employer.organisationName;
    else if (!Row.Employer.organisationName.empty() &&
             Row.Employer.organisationName != Employer->employerDetail.organisationName)
      FNotes.Add(Warning, Row, colEmployerABN + 2,
                 "the employer is called \"" + Employer->employerDetail.organisationName + "\" above; that is sent");

    auto& Fund = Funds[EmployerName + "\n\n" + FundKey(Row)];
    if (!Fund) Employer->AddContributionFund(Fund = MakeFund(Row, FOptions));
    if (!Row.FundName.empty() && Fund->organisationName.empty())
      Fund->organisationName = Row.FundName;
    else if (!Row.FundName.empty() && Row.FundName != Fund->organisationName)
      FNotes.Add(Warning, Row, colFundUSI + 1,
                 "the fund is called \"" + Fund->organisationName + "\" above; that is sent");
    Fund->AddMemberContribution(Row.Member);
    Batch.Lines.push_back(Row.Line);
    Batch.Cents += Row.ContributionCents;
  }
  return Batch;
}

void TBatchBuilder::CheckShared(TGroup& Group) {
  const bool Pays =
      std::any_of(Group.Rows.begin(), Group.Rows.end(), [](const TPayRunRow& Row) { return Row.HasContributions; });
  for (const TColumn& Column : Columns) {
    const bool Needed = Column.Required == TRequired::OncePerBatch || (Column.Required == TRequired::ToPay && Pays);
    if (Needed && SharedText(Column, Group.Shared).empty())
      FNotes.Add(Error, Group.Rows.front(), Column.Number, "no row of the batch says it");
  }
}

/// Exporters state the amount of a payment for the row, for the fund, for one reference of the fund or for the batch.
void TBatchBuilder::CheckPayments(const TGroup& Group, const TPayRunBatch& Batch) {
  std::map<std::string, std::int64_t> Sums;
  const auto FundOf = [](const TPayRunRow& Row) { return Row.FundABN + "\n" + Row.FundUSI; };
  const auto EmployersFundOf = [&](const TPayRunRow& Row) {
    return FundOf(Row) + "\n" + Row.Employer.businessIdentifierValue;
  };
  for (const TPayRunRow& Row : Group.Rows) {
    Sums[FundOf(Row)] += Row.ContributionCents;
    Sums[EmployersFundOf(Row)] += Row.ContributionCents;
  }
  for (const TPayRunRow& Row : Group.Rows) {
    if (!Row.PaymentCents) continue;
    const std::int64_t Payment = *Row.PaymentCents;
    if (Payment == Row.ContributionCents || Payment == Sums[FundOf(Row)] || Payment == Sums[EmployersFundOf(Row)] ||
        Payment == Batch.Cents)
      continue;
    FNotes.Add(Error, Row, colPaymentAmount,
               FormatCents(Payment) + " is not the sum of the contributions of the row (" +
                   FormatCents(Row.ContributionCents) + "), the fund (" + FormatCents(Sums[FundOf(Row)]) +
                   ") or the batch (" + FormatCents(Batch.Cents) + ")");
  }
}

}  // namespace oxSuperAPI
