#pragma once

#include "findings.h"

namespace sandbox {

/// Checks the form and the contents of posted participant details.
void CheckParticipantDetails(const json::value& details, Findings& findings);

}  // namespace sandbox
