#include "batch_checks.h"

#include <algorithm>

#include "batch_shape.h"
#include "identifiers.h"
#include "identity_checks.h"

namespace sandbox {
namespace {

std::string_view Either(std::string_view first, std::string_view second) {
  return first.empty() ? second : first;
}

void CheckParticipant(const json::value* participant, const Path& path, Findings& findings) {
  const Part part{findings, "Participant", path};
  if (TextAt(At(participant, "businessIdentifier"), "value").empty() &&
      TextAt(participant, "clientParticipantNumber").empty())
    part.Error("PARTICIPANT_MISSING", "The participant needs a business identifier or a participant number");
  CheckIdentifier(part, participant, "businessIdentifierType");
}

void CheckPayment(const json::value* payment, const Path& path, Findings& findings) {
  constexpr std::string_view kTypes[] = {"DIRECT_CREDIT", "DIRECT_DEBIT", "BPAY", "PAYID", "PASS_THROUGH"};
  const Part part{findings, "Payment", path};
  CheckIdentifier(part, payment, "businessidentifierType");
  const std::string_view type = TextAt(payment, "paymentType");
  if (std::ranges::find(kTypes, type) == std::end(kTypes))
    part.Error("PAYMENT_TYPE_INVALID", "The payment type is missing or not one of the service's", path / "paymentType");

  const Path debit = path / "directDebitDetail";
  if (type == "DIRECT_DEBIT") CheckAccount(part, At(At(payment, "directDebitDetail"), "account"), debit / "account");
  const Path refund = path / "refundDetail";
  if (const json::value* account = At(At(payment, "refundDetail"), "account")) {
    CheckAccount(part, account, refund / "account");
  } else {
    part.Warning("REFUND_ACCOUNT_MISSING", "Without a refund account a refund has to be asked for", refund);
  }
}

void CheckDates(const Part& part, const json::value& member, std::string_view start, std::string_view end) {
  const std::string_view first = TextAt(&member, start), last = TextAt(&member, end);
  if (IsDate(first) && IsDate(last) && first > last)
    part.Error("DATES_REVERSED", "The end lies before the start", part.path / end);
}

void CheckMember(const json::value& member, std::string_view today, const Path& path, Findings& findings) {
  const Part part{findings, Either(TextAt(&member, "memberTransactionContextId"), "Member"), path};
  const Path name = path / "name";
  if (TextAt(At(&member, "name"), "familyName").empty())
    part.Error("FAMILY_NAME_MISSING", "The member needs a family name", name / "familyName");
  const std::string_view dob = TextAt(&member, "dob");
  if (dob.empty()) part.Error("DOB_MISSING", "The member needs a date of birth", path / "dob");
  if (IsDate(dob) && dob > today) part.Error("DOB_IN_FUTURE", "The date of birth lies in the future", path / "dob");

  const Path taxFileNumber = path / "employerProvidedTaxFileNumber";
  const std::string_view tfn = TextAt(&member, "employerProvidedTaxFileNumber");
  if (tfn.empty()) part.Warning("TFN_MISSING", "The member has quoted no tax file number", taxFileNumber);
  if (!tfn.empty() && !IsTaxFileNumber(tfn))
    part.Error("TFN_INVALID", "The tax file number fails its check", taxFileNumber);

  const Contributions contributions = ContributionsOf(member);
  if (contributions.any) {
    for (const std::string_view key : {"payPeriodStartDate", "payPeriodEndDate"})
      if (TextAt(&member, key).empty())
        part.Error("PAY_PERIOD_MISSING", "Contributions need the dates of the pay period", path / key);
  }
  if (contributions.negative)
    part.Warning("CONTRIBUTION_NEGATIVE", "A contribution is negative; the fund may refuse it", path);
  CheckDates(part, member, "payPeriodStartDate", "payPeriodEndDate");
  CheckDates(part, member, "employmentStartDate", "employmentEndDate");
}

void CheckSelfManaged(const Part& part, const json::value& fund) {
  const Path detail = part.path / "smsfDetail";
  const Path bank = detail / "bankDetail";
  CheckAccount(part, SelfManagedAccount(fund), bank / "account");
  if (TextAt(At(&fund, "smsfDetail"), "electronicServiceAddressAlias").empty())
    part.Error("ESA_MISSING", "A self-managed fund needs its electronic service address",
               detail / "electronicServiceAddressAlias");
}

void CheckFund(const json::value& fund, std::string_view today, const Path& path, Findings& findings) {
  const Part part{findings, Either(TextAt(&fund, "fundTransactionContextId"), "Fund"), path};
  const json::value* identifier = At(&fund, "fundIdentifier");
  const std::string_view abn = TextAt(identifier, "abn"), usi = TextAt(identifier, "usi");
  const Path identity = path / "fundIdentifier";
  if (abn.empty()) part.Error("FUND_ABN_MISSING", "The fund needs its ABN", identity / "abn");
  if (!abn.empty() && !IsAbn(abn)) part.Error("ABN_INVALID", "The ABN fails its check", identity / "abn");
  if (!usi.empty() && !IsUsi(usi, abn))
    part.Warning("USI_UNUSUAL", "The USI has neither of the two usual forms", identity / "usi");
  if (!At(&fund, "isDefaultFund"))
    part.Error("DEFAULT_FLAG_MISSING", "The fund needs isDefaultFund", path / "isDefaultFund");
  if (IsSelfManaged(fund)) CheckSelfManaged(part, fund);

  const json::array& members = ListAt(&fund, "members");
  if (members.empty()) part.Error("MEMBERS_MISSING", "The fund needs at least one member", path / "members");
  std::int64_t total = 0;
  for (std::size_t i = 0; i < members.size(); ++i) {
    CheckMember(members[i], today, {&path, "members", i}, findings);
    total += ContributionsOf(members[i]).cents;
  }
  if (total < 0) part.Error("FUND_TOTAL_NEGATIVE", "The contributions of the fund sum up to less than nothing");
}

void CheckEmployer(const json::value& employer, std::string_view today, const Path& path, Findings& findings) {
  const std::string_view context = Either(TextAt(&employer, "employerTransactionContextId"), "Employer");
  const Path detail = path / "employerDetail";
  const Part part{findings, context, detail};
  const json::value* identity = At(&employer, "employerDetail");
  const Path identifier = detail / "businessIdentifier";
  if (TextAt(At(identity, "businessIdentifier"), "value").empty())
    part.Error("EMPLOYER_ABN_MISSING", "The employer needs its ABN", identifier / "value");
  CheckIdentifier(part, identity, "businessIdentifierType");

  const json::array& funds = ListAt(&employer, "funds");
  if (funds.empty()) part.Error("FUNDS_MISSING", "The employer needs at least one fund", path / "funds");
  for (std::size_t i = 0; i < funds.size(); ++i) CheckFund(funds[i], today, {&path, "funds", i}, findings);
}

}  // namespace

void CheckBatch(const json::value& batch, std::string_view today, Findings& findings) {
  const Path root;
  const Path identifier = root / "identifier";
  const Part message{findings, "Batch", identifier};
  const json::value* identity = At(&batch, "identifier");
  if (TextAt(identity, "messageId").empty())
    message.Error("MESSAGE_ID_MISSING", "The message needs an identifier of its own", identifier / "messageId");
  if (!IsUtcTime(TextAt(identity, "time")))
    message.Error("TIME_INVALID", "The message needs the time it was made, written yyyy-mm-ddThh:nn:ssZ",
                  identifier / "time");

  const Path detail = root / "contributionDetail";
  const json::value* contributions = At(&batch, "contributionDetail");
  CheckParticipant(At(contributions, "participantDetail"), detail / "participantDetail", findings);
  CheckPayment(At(contributions, "paymentDetail"), detail / "paymentDetail", findings);
  const json::array& employers = ListAt(contributions, "employers");
  if (employers.empty())
    findings.Add(Severity::error, "Batch", "EMPLOYERS_MISSING", "The batch needs at least one employer",
                 detail / "employers");
  for (std::size_t i = 0; i < employers.size(); ++i)
    CheckEmployer(employers[i], today, {&detail, "employers", i}, findings);
}

bool IsSelfManaged(const json::value& fund) {
  return TextAt(At(&fund, "fundIdentifier"), "usi").empty() || At(&fund, "smsfDetail") != nullptr;
}

const json::value* SelfManagedAccount(const json::value& fund) {
  return At(At(At(&fund, "smsfDetail"), "bankDetail"), "account");
}

}  // namespace sandbox
