#pragma once

/// The data objects of the service: everything that is sent or comes back.
#include "oxSuperAPI/model/uBeamContributionDetail.h"
#include "oxSuperAPI/model/uBeamContributionResponse.h"
#include "oxSuperAPI/model/uBeamMemberContribution.h"
