#include "commands/commands.h"
#include "output.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "session.h"

namespace oxSuperAPI {
namespace {

TExit Ping(const TToolOptions& Options) {
  TSession Session(Options);
  std::string Message, Error, Status;
  const bool Reached = Session.Call("The health check", [&] {
    const TProgress Progress("Asking the service");
    return GetHealthCheck("oxsuper.ping", Message, Error, Status);
  });
  if (!Reached && !TBeamSuperGlobal::BeamSuperGlobal().GetIsBeamSuperActive())
    throw TToolError(exitNotAuthenticated,
                     "The service was asked without credentials, since this customer is not activated (\"oxsuper "
                     "activate\"); it says: " +
                         Printable(JoinTexts({Message, Error, Status})));
  if (!Reached) throw Session.Refusal("The health check", Message, Error, Status);
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "done", true);
    AddText(Document, "environment", Session.Environment());
    AddText(Document, "message", Message);
    PrintDocument(Document);
  } else {
    PrintLine("The service (" + Session.Environment() + ") answers and accepts this customer.");
  }
  return exitDone;
}

}  // namespace

void AddPingCommand(TCommandLine Line) {
  OnCommand(Line.App.add_subcommand("ping", "Is the service there, and does it accept this customer?"), Line, Ping);
}

}  // namespace oxSuperAPI
