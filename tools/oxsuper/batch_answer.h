#pragma once

#include <string>

#include "output.h"
#include "oxSuperAPI/model/uBeamSuperObjects.h"

namespace oxSuperAPI {

/// The service's answer to a batch: payments to make, findings.
void PrintAnswer(const TBeamContributionResponse& Answer, const TBeamContributionDetail& Detail);
TJSONObject AnswerDocument(const TBeamContributionResponse& Answer);

/// Whether the service found errors.
bool HasErrors(const TBeamContributionResponse& Answer);
/// Whether there is anything in it: an answer that was no JSON leaves it empty.
bool IsEmpty(const TBeamContributionResponse& Answer);

}  // namespace oxSuperAPI
