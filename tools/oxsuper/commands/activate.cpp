#include "commands/commands.h"
#include "output.h"
#include "session.h"

namespace oxSuperAPI {
namespace {

TExit Done(const TToolOptions& Options, const std::string& Message) {
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "done", true);
    AddText(Document, "message", Message);
    PrintDocument(Document);
  } else {
    PrintLine(Printable(Message));
  }
  return exitDone;
}

TExit Activate(const TToolOptions& Options) {
  TSession Session(Options);
  std::string Message;
  const bool Activated = Session.Call("The activation", [&] {
    const TProgress Progress("Activating");
    return TBeamSuperGlobal::BeamSuperGlobal().ActivateCustomer("oxsuper.activate", Message);
  });
  if (Activated) return Done(Options, Message);
  // Without a request the library has refused, and the reason may be that nothing is left to do.
  if (!Session.LastRequest() && TBeamSuperGlobal::BeamSuperCredentials().GetActivated()) return Done(Options, Message);
  throw Session.Refusal("The activation", Message, "", "");
}

TExit Reissue(const TToolOptions& Options) {
  TSession Session(Options);
  std::string Message;
  const bool Reissued = Session.Call("The reissue", [&] {
    const TProgress Progress("Reissuing the credentials");
    return TBeamSuperGlobal::BeamSuperGlobal().ReissueCredentials("oxsuper.reissue", Message);
  });
  if (Reissued) return Done(Options, Message);
  if (!Session.LastRequest()) throw TToolError(exitNotAuthenticated, Message);
  throw Session.Refusal("The reissue", Message, "", "");
}

}  // namespace

void AddActivateCommand(TCommandLine Line) {
  OnCommand(Line.App.add_subcommand("activate", "Obtain this customer's own credentials, once"), Line, Activate);
}

void AddReissueCommand(TCommandLine Line) {
  OnCommand(Line.App.add_subcommand("reissue", "Exchange the credentials for new ones"), Line, Reissue);
}

}  // namespace oxSuperAPI
