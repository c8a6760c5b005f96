#pragma once

#include <string_view>

#include "oxSuperAPI/host/uHostJson.h"
#include "payrun/payrun.h"

namespace oxSuperAPI {

/// Reads one batch in the service's own JSON. An amount that a member lacks, or that is no number, is an error that
/// names the member and the key; what the library's reader does not take over is listed as not sent, by its path.
TPayRun ReadJSONBatch(std::string_view Text, TJSONParser& Parser);

/// All contributions of a batch, in whole cents.
std::int64_t TotalCents(const TBeamContributionDetail& Detail);
std::int64_t TotalCents(const TBeamContributionFund& Fund);
std::int64_t TotalCents(const TBeamMemberContribution& Member);

}  // namespace oxSuperAPI
