#pragma once

/// The data objects of the service: everything that is sent or comes back.
#include "oxSuperAPI/model/uBeamContributionDetail.h"
#include "oxSuperAPI/model/uBeamContributionResponse.h"
#include "oxSuperAPI/model/uBeamDDAuthority.h"
#include "oxSuperAPI/model/uBeamDefaultFunds.h"
#include "oxSuperAPI/model/uBeamEmployer.h"
#include "oxSuperAPI/model/uBeamFieldChanges.h"
#include "oxSuperAPI/model/uBeamFundSearch.h"
#include "oxSuperAPI/model/uBeamMemberContribution.h"
#include "oxSuperAPI/model/uBeamNotification.h"
#include "oxSuperAPI/model/uBeamNotifications.h"
#include "oxSuperAPI/model/uBeamParticipantDetails.h"
#include "oxSuperAPI/model/uBeamSuperUsage.h"
#include "oxSuperAPI/model/uBeamTermsAcceptance.h"
