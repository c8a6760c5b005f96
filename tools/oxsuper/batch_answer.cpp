#include "batch_answer.h"

#include <map>

#include "oxSuperAPI/foundation/uBeamText.h"

namespace oxSuperAPI {
namespace {

std::string Account(const TBeamBankAccount& Account) {
  if (Account.BSB.empty() && Account.accountNumber.empty()) return "";
  return Account.BSB + " " + Account.accountNumber + " " + Account.accountName;
}

template <class Visitor>
void ForEachPayment(const TBeamContributionResponse& Answer, Visitor Visit) {
  for (std::size_t Index = 0; Index < Answer.GetPaymentsCount(); ++Index)
    Visit(*Answer.GetPayment(static_cast<std::ptrdiff_t>(Index)));
}

template <class Visitor>
void ForEachValidation(const TBeamContributionResponse& Answer, Visitor Visit) {
  for (std::size_t Index = 0; Index < Answer.GetValidationsCount(); ++Index)
    Visit(*Answer.GetValidation(static_cast<std::ptrdiff_t>(Index)));
}

/// The members by their transaction context id, which is the LINE ID of a pay-run file.
std::map<std::string, std::string> MemberNames(const TBeamContributionDetail& Detail) {
  std::map<std::string, std::string> Names;
  for (std::size_t E = 0; E < Detail.GetContributionEmployerCount(); ++E) {
    const auto Employer = Detail.GetContributionEmployer(static_cast<std::ptrdiff_t>(E));
    for (std::size_t F = 0; F < Employer->GetContributionFundCount(); ++F) {
      const auto Fund = Employer->GetContributionFund(static_cast<std::ptrdiff_t>(F));
      for (std::size_t M = 0; M < Fund->GetMemberContributionCount(); ++M) {
        const auto Member = Fund->GetMemberContribution(static_cast<std::ptrdiff_t>(M));
        Names.emplace(Member->memberTransactionContextId, Member->name.givenName + " " + Member->name.familyName);
      }
    }
  }
  return Names;
}

}  // namespace

void PrintAnswer(const TBeamContributionResponse& Answer, const TBeamContributionDetail& Detail) {
  TTable Payments({"Pay to", ">Amount", "Reference", "How", "Account or biller"});
  std::int64_t Total = 0;
  ForEachPayment(Answer, [&](const TBeamSuperPayment& Payment) {
    Total += CentsOf(Payment.amount);
    Payments.Add(
        {Payment.organisationName.empty() ? Payment.ABN : Payment.organisationName,
         FormatDollars(CentsOf(Payment.amount)),
         Payment.paymentReferenceNumber.empty() ? Payment.customerReferenceNumber : Payment.paymentReferenceNumber,
         Payment.paymentType, Payment.billerCode.empty() ? Account(Payment.account) : "biller " + Payment.billerCode});
  });
  if (!Payments.IsEmpty()) {
    PrintLine();
    PrintLine("Payments to make, " + FormatDollars(Total) + " in all:");
    Payments.Print(2);
  }
  TTable Findings({"Severity", "Code", "About", "Message", "Place"});
  const auto Names = Answer.GetValidationsCount() > 0 ? MemberNames(Detail) : std::map<std::string, std::string>{};
  ForEachValidation(Answer, [&](const TBeamSuperValidation& Validation) {
    const auto Member = Validation.context.empty() ? Names.end() : Names.find(Validation.context);
    const std::string About =
        Member == Names.end() ? Validation.context : "LINE ID " + Member->first + ", " + Member->second;
    Findings.Add({Validation.severity, Validation.errorCode, About, Validation.message, Validation.path});
  });
  if (!Findings.IsEmpty()) {
    PrintLine();
    PrintLine("The service found:");
    Findings.Print(2);
  }
}

TJSONObject AnswerDocument(const TBeamContributionResponse& Answer) {
  TJSONArray Payments;
  ForEachPayment(Answer, [&](const TBeamSuperPayment& Payment) {
    TJSONObject Entry;
    AddText(Entry, "abn", Payment.ABN);
    AddText(Entry, "usi", Payment.USI);
    AddText(Entry, "organisationName", Payment.organisationName);
    AddDollars(Entry, "amount", CentsOf(Payment.amount));
    AddText(Entry, "paymentType", Payment.paymentType);
    AddText(Entry, "paymentReferenceNumber", Payment.paymentReferenceNumber);
    AddText(Entry, "customerReferenceNumber", Payment.customerReferenceNumber);
    AddText(Entry, "billerCode", Payment.billerCode);
    AddText(Entry, "bsb", Payment.account.BSB);
    AddText(Entry, "accountNumber", Payment.account.accountNumber);
    AddText(Entry, "accountName", Payment.account.accountName);
    Payments.Append(TJSONValue(std::move(Entry)));
  });
  TJSONArray Validations;
  ForEachValidation(Answer, [&](const TBeamSuperValidation& Validation) {
    TJSONObject Entry;
    AddText(Entry, "severity", Validation.severity);
    AddText(Entry, "errorCode", Validation.errorCode);
    AddText(Entry, "context", Validation.context);
    AddText(Entry, "message", Validation.message);
    AddText(Entry, "path", Validation.path);
    Validations.Append(TJSONValue(std::move(Entry)));
  });
  TJSONObject Document;
  AddText(Document, "messageId", Answer.messageId);
  AddText(Document, "processId", Answer.processId);
  AddText(Document, "status", Answer.status);
  AddFlag(Document, "hasErrors", HasErrors(Answer));
  Document.Append("payments", TJSONValue(std::move(Payments)));
  Document.Append("validations", TJSONValue(std::move(Validations)));
  return Document;
}

bool HasErrors(const TBeamContributionResponse& Answer) {
  bool Errors = Answer.hasErrors || Answer.StatusCode == 400;
  ForEachValidation(Answer, [&](const TBeamSuperValidation& Validation) {
    Errors = Errors || SameText(Validation.severity, "error");
  });
  return Errors;
}

bool IsEmpty(const TBeamContributionResponse& Answer) {
  return Answer.messageId.empty() && Answer.processId.empty() && Answer.status.empty() && !Answer.processed &&
         Answer.GetPaymentsCount() == 0 && Answer.GetValidationsCount() == 0;
}

}  // namespace oxSuperAPI
