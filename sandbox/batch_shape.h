#pragma once

#include "findings.h"

namespace sandbox {

/// Checks the form of a whole batch against the table of its members: texts are texts, flags are true or false, dates
/// exist, amounts are texts with two decimals, and nothing is a JSON number. Unknown members are warnings.
void CheckShape(const json::value& batch, Findings& findings);

/// The money a member record carries, and whether it carries any.
struct Contributions {
  std::int64_t cents = 0;
  bool any = false;
  bool negative = false;
};
Contributions ContributionsOf(const json::value& member);

}  // namespace sandbox
