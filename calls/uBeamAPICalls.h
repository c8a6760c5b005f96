#pragma once

/// The call classes, one per endpoint of the service.
#include "oxSuperAPI/calls/uBeamAPICall.h"
#include "oxSuperAPI/calls/uBeamChannelSecurity.h"
#include "oxSuperAPI/calls/uBeamContributionCalls.h"
#include "oxSuperAPI/calls/uBeamGetToken.h"
#include "oxSuperAPI/calls/uBeamHealthCheck.h"
#include "oxSuperAPI/calls/uBeamLookupCalls.h"
#include "oxSuperAPI/calls/uBeamParticipantCalls.h"
