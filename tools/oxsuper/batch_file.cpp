#include "batch_file.h"

#include "journal.h"
#include "output.h"
#include "payrun/columns.h"
#include "payrun/json_batch.h"
#include "text_file.h"

namespace oxSuperAPI {
namespace {

constexpr const char* SeverityNames[] = {"error", "warning", "remark"};

TPayRunOptions OptionsFor(const TBatchOptions& Options, const TBatchConfig& Config) {
  TPayRunOptions Result;
  Result.SplitByPayment = Options.Split;
  Result.PaymentMethod = Options.PaymentMethod;
  Result.Location = Options.SplitLocation           ? TLocationUse::Split
                    : Config.location_id_as_context ? TLocationUse::Context
                                                    : TLocationUse::NotSent;
  Result.ClientParticipantNumber = Config.client_participant_number;
  Result.Version = Config.version;
  Result.BusinessNumberType = Config.abn_type;
  Result.LandlineType = Config.landline_type;
  Result.MobileType = Config.mobile_type;
  Result.DefaultFunds = Config.default_funds;
  Result.Genders = Config.gender;
  Result.UpperCaseCountry = Config.country_upper_case;
  return Result;
}

std::string ColumnName(std::size_t Column) {
  return Column == 0 ? "" : ColumnLetters(Column) + " " + (Column <= ColumnCount ? Columns[Column - 1].Header : "");
}

/// "rows 4, 6, 9 and 12 more"
std::string LineList(const std::vector<std::size_t>& Lines) {
  constexpr std::size_t Shown = 5;
  std::string Result = Lines.size() == 1 ? "row " : "rows ";
  for (std::size_t Index = 0; Index < Lines.size() && Index < Shown; ++Index)
    Result += (Index ? ", " : "") + std::to_string(Lines[Index]);
  if (Lines.size() > Shown) Result += " and " + std::to_string(Lines.size() - Shown) + " more";
  return Result;
}

template <class Function>
void ForEachFund(const TBeamContributionDetail& Detail, Function Visit) {
  for (std::size_t E = 0; E < Detail.GetContributionEmployerCount(); ++E) {
    const auto Employer = Detail.GetContributionEmployer(static_cast<std::ptrdiff_t>(E));
    for (std::size_t F = 0; F < Employer->GetContributionFundCount(); ++F)
      Visit(*Employer, *Employer->GetContributionFund(static_cast<std::ptrdiff_t>(F)));
  }
}

}  // namespace

void AddBatchOptions(CLI::App& Command, TBatchOptions& Options) {
  Command.add_option("FILE", Options.File, "Pay-run file (SAFF 1.0), or a batch in the service's JSON")->required();
  Command.add_flag("--split", Options.Split, "One batch for each payer and payment method of the file");
  Command.add_flag("--split-location", Options.SplitLocation, "Each location id is an employer of its own");
  Command.add_option("--payment-method", Options.PaymentMethod, "Instead of the file's")
      ->check(CLI::IsMember({"DIRECT_CREDIT", "DIRECT_DEBIT", "BPAY", "PAYID", "PASS_THROUGH"}));
}

TBatchFile ReadBatchFile(const TBatchOptions& Options, TSession& Session) {
  TBatchFile File;
  File.Name = Options.File;
  std::string Text = ReadWholeFile(Options.File);
  File.Digest = Digest(Text);
  const std::size_t First = Text.find_first_not_of("\xEF\xBB\xBF \t\r\n");
  const bool IsJson = First != std::string::npos && Text[First] == '{';
  File.Run = IsJson ? ReadJSONBatch(Text, Session.Host().JSONParser())
                    : ReadPayRun(std::move(Text), OptionsFor(Options, Session.Config().batch));
  return File;
}

void NoteFindings(const TPayRun& Run) {
  constexpr std::size_t Shown = 200;
  for (std::size_t Index = 0; Index < Run.Findings.size() && Index < Shown; ++Index) {
    const TFinding& Finding = Run.Findings[Index];
    std::string Line = std::string(SeverityNames[static_cast<std::size_t>(Finding.Severity)]) + ": ";
    if (Finding.Line > 0) Line += "row " + std::to_string(Finding.Line);
    if (!Finding.LineId.empty()) Line += " (LINE ID " + Finding.LineId + ")";
    if (Finding.Column > 0) Line += ", column " + ColumnName(Finding.Column);
    Note(Printable(Line + (Finding.Line > 0 ? ": " : "") + Finding.Reason));
  }
  if (Run.Findings.size() > Shown) Note("... and " + std::to_string(Run.Findings.size() - Shown) + " more findings");
  if (Run.NotSent.empty()) return;
  Note("Not sent:");
  for (const TNotSent& Entry : Run.NotSent)
    Note(Printable("  " + ColumnName(Entry.Column) + (Entry.Column ? ": " : "") + Entry.Reason +
                   (Entry.Lines.empty() ? "" : " (" + LineList(Entry.Lines) + ")")));
}

void NeedCleanFile(const TBatchFile& File, const TToolOptions& Options) {
  const bool Refused = HasErrors(File.Run.Findings);
  if (Refused || !Options.Json) NoteFindings(File.Run);
  if (Refused) throw TToolError(exitRefusedHere, File.Name + " has errors; nothing was sent");
}

void AddFindings(TJSONObject& Document, const TPayRun& Run) {
  TJSONArray Findings;
  for (const TFinding& Finding : Run.Findings) {
    TJSONObject Entry;
    AddText(Entry, "severity", SeverityNames[static_cast<std::size_t>(Finding.Severity)]);
    AddNumber(Entry, "row", static_cast<std::int64_t>(Finding.Line));
    AddText(Entry, "lineId", Finding.LineId);
    AddText(Entry, "column", Finding.Column ? ColumnLetters(Finding.Column) : "");
    AddText(Entry, "reason", Finding.Reason);
    Findings.Append(TJSONValue(std::move(Entry)));
  }
  TJSONArray NotSent;
  for (const TNotSent& Each : Run.NotSent) {
    TJSONObject Entry;
    AddText(Entry, "column", Each.Column ? ColumnLetters(Each.Column) : "");
    AddText(Entry, "reason", Each.Reason);
    AddNumber(Entry, "rows", static_cast<std::int64_t>(Each.Lines.size()));
    NotSent.Append(TJSONValue(std::move(Entry)));
  }
  Document.Append("findings", TJSONValue(std::move(Findings)));
  Document.Append("notSent", TJSONValue(std::move(NotSent)));
}

void PrintBatch(const TBeamContributionDetail& Detail, std::int64_t Cents) {
  TTable Table({"Employer", "Fund", "USI or ABN", ">Members", ">Amount"});
  std::string Last;
  ForEachFund(Detail, [&](const TBeamContributionEmployer& Employer, const TBeamContributionFund& Fund) {
    const std::string& Name = Employer.employerDetail.organisationName.empty()
                                  ? Employer.employerDetail.businessIdentifierValue
                                  : Employer.employerDetail.organisationName;
    Table.Add({Name == Last ? "" : Name, Fund.organisationName, Fund.USI.empty() ? Fund.ABN + " (SMSF)" : Fund.USI,
               std::to_string(Fund.GetMemberContributionCount()), FormatDollars(TotalCents(Fund))});
    Last = Name;
  });
  Table.Print();
  PrintLine("Total " + FormatDollars(Cents) +
            (Detail.payment.paymentType.empty() ? "" : ", paid by " + Printable(Detail.payment.paymentType)));
}

TJSONObject BatchDocument(const TBeamContributionDetail& Detail, std::int64_t Cents) {
  TJSONArray Funds;
  ForEachFund(Detail, [&](const TBeamContributionEmployer& Employer, const TBeamContributionFund& Fund) {
    TJSONObject Entry;
    AddText(Entry, "employer", Employer.employerDetail.businessIdentifierValue);
    AddText(Entry, "employerName", Employer.employerDetail.organisationName);
    AddText(Entry, "abn", Fund.ABN);
    AddText(Entry, "usi", Fund.USI);
    AddText(Entry, "fundName", Fund.organisationName);
    AddNumber(Entry, "members", static_cast<std::int64_t>(Fund.GetMemberContributionCount()));
    AddDollars(Entry, "amount", TotalCents(Fund));
    Funds.Append(TJSONValue(std::move(Entry)));
  });
  TJSONObject Document;
  AddText(Document, "paymentType", Detail.payment.paymentType);
  AddDollars(Document, "total", Cents);
  Document.Append("funds", TJSONValue(std::move(Funds)));
  return Document;
}

}  // namespace oxSuperAPI
