#pragma once

#include <cstdint>

#include "json.h"

namespace sandbox {

/// Where employers pay to.
inline constexpr std::string_view kBillerCode = "999999";
json::object ClearingAccount();

/// What an employer has to pay for a batch: one entry for each fund that gets money.
struct Payments {
  json::array list;
  std::int64_t totalCents = 0;
};

/// `reference` is the payment reference number; empty for a batch that is only validated.
Payments PaymentsFor(const json::value& batch, const std::string& reference);

}  // namespace sandbox
