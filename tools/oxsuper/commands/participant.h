#pragma once

#include <string>

#include "commands/commands.h"
#include "session.h"

/// The commands below "participant".
namespace oxSuperAPI {

void AddParticipantGetCommand(TCommandLine Line);
void AddParticipantPostCommand(TCommandLine Line);
void AddParticipantTermsCommand(TCommandLine Line);

/// The number that was given, else that of the configuration. Raises TToolError when there is none.
std::string ParticipantNumber(TSession& Session, const std::string& Given);

}  // namespace oxSuperAPI
