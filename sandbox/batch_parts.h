#pragma once

#include "store.h"

namespace sandbox {

/// What is kept of a submission, so that its funds can answer: every fund, and the first hundred members of the batch.
std::vector<FundPart> PartsOf(const json::value& batch);

}  // namespace sandbox
