#pragma once

#include "findings.h"

namespace sandbox {

/// Checks what a batch says: who pays, for whom, into which funds. `today` is "yyyy-mm-dd".
void CheckBatch(const json::value& batch, std::string_view today, Findings& findings);

/// Whether a fund is self-managed: no USI, or the details of such a fund.
bool IsSelfManaged(const json::value& fund);

/// The account {accountName, accountNumber, bsb} of a self-managed fund; null when there is none.
const json::value* SelfManagedAccount(const json::value& fund);

}  // namespace sandbox
