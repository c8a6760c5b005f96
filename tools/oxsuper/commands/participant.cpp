#include "commands/participant.h"

#include "oxSuperAPI/foundation/uBeamText.h"

namespace oxSuperAPI {

void AddParticipantCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("participant", "The sign-up data of the customer at the service");
  Command->require_subcommand(1);
  const TCommandLine Participant{*Command, Line.Chosen};
  for (const auto Add : {AddParticipantGetCommand, AddParticipantPostCommand, AddParticipantTermsCommand})
    Add(Participant);
}

std::string ParticipantNumber(TSession& Session, const std::string& Given) {
  for (const std::string& Number : {Given, Session.Config().batch.client_participant_number})
    if (!Trim(Number).empty()) return std::string(Trim(Number));
  throw TToolError(exitRefusedHere,
                   "Which participant? Give its NUMBER, or enter it in the configuration "
                   "(batch.client_participant_number)");
}

}  // namespace oxSuperAPI
