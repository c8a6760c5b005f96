#include "payments.h"

#include <map>
#include <tuple>
#include <vector>

#include "batch_checks.h"
#include "batch_shape.h"
#include "identifiers.h"

namespace sandbox {
namespace {

struct FundTotal {
  const json::value* fund;  ///< the first of this fund in the batch
  std::int64_t cents = 0;
};

/// The funds in the order of the batch; a fund that stands under several employers is one.
std::vector<FundTotal> TotalsByFund(const json::value& batch) {
  std::vector<FundTotal> totals;
  std::map<std::tuple<std::string_view, std::string_view, std::string_view, std::string_view>, std::size_t> places;
  for (const json::value& employer : ListAt(At(&batch, "contributionDetail"), "employers")) {
    for (const json::value& fund : ListAt(&employer, "funds")) {
      const json::value* identifier = At(&fund, "fundIdentifier");
      const json::value* account = SelfManagedAccount(fund);
      const auto [place, isNew] = places.try_emplace({TextAt(identifier, "abn"), TextAt(identifier, "usi"),
                                                      TextAt(account, "bsb"), TextAt(account, "accountNumber")},
                                                     totals.size());
      if (isNew) totals.push_back({&fund});
      for (const json::value& member : ListAt(&fund, "members"))
        totals[place->second].cents += ContributionsOf(member).cents;
    }
  }
  return totals;
}

void AddText(json::object& object, std::string_view key, std::string_view value) {
  if (!value.empty()) object[key] = value;
}

/// Where the money goes, as the payment type wants it.
void AddDestination(json::object& payment, const json::value& fund, const json::value* paymentDetail,
                    const std::string& reference, std::size_t number) {
  const std::string_view type = TextAt(paymentDetail, "paymentType");
  AddText(payment, "paymentType", type);
  if (type == "BPAY") {
    payment["billerCode"] = kBillerCode;
    if (!reference.empty()) payment["customerReferenceNumber"] = reference + std::to_string(number);
  } else if (type == "DIRECT_DEBIT") {
    if (const json::value* account = At(At(paymentDetail, "directDebitDetail"), "account"))
      payment["account"] = *account;
  } else if (type == "PASS_THROUGH" && SelfManagedAccount(fund) != nullptr) {
    payment["account"] = *SelfManagedAccount(fund);
  } else {
    payment["account"] = ClearingAccount();
  }
}

}  // namespace

json::object ClearingAccount() {
  return {{"accountName", "Beam Sandbox Clearing Account"}, {"accountNumber", "100200300"}, {"bsb", "000-000"}};
}

Payments PaymentsFor(const json::value& batch, const std::string& reference) {
  Payments payments;
  const json::value* paymentDetail = At(At(&batch, "contributionDetail"), "paymentDetail");
  for (const FundTotal& total : TotalsByFund(batch)) {
    if (total.cents == 0) continue;  // registration only: nothing to pay
    const json::value* identifier = At(total.fund, "fundIdentifier");
    std::string_view name = TextAt(total.fund, "organisationName");
    if (name.empty()) name = TextAt(At(total.fund, "smsfDetail"), "fundName");
    json::object payment;
    AddText(payment, "abn", TextAt(identifier, "abn"));
    AddText(payment, "usi", TextAt(identifier, "usi"));
    AddText(payment, "organisationName", name);
    payment["amount"] = CentsText(total.cents);
    AddDestination(payment, *total.fund, paymentDetail, reference, payments.list.size() + 1);
    AddText(payment, "paymentReferenceNumber", reference);
    payments.list.push_back(std::move(payment));
    payments.totalCents += total.cents;
  }
  return payments;
}

}  // namespace sandbox
