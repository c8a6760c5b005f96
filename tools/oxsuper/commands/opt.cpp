#include "commands/commands.h"
#include "output.h"
#include "session.h"

namespace oxSuperAPI {
namespace {

TExit SetOptedIn(const TToolOptions& Options, bool Value) {
  TSession Session(Options);
  TBeamSuperGlobal::BeamSuperGlobal().SetOptedIn(Value);
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "done", true);
    AddFlag(Document, "optedIn", Value);
    PrintDocument(Document);
  } else {
    PrintLine(Value ? "This company is opted in." : "This company is opted out.");
  }
  return exitDone;
}

}  // namespace

void AddOptCommands(TCommandLine Line) {
  OnCommand(Line.App.add_subcommand("opt-in", "Remember that this company uses the service"), Line,
            [](const TToolOptions& Options) { return SetOptedIn(Options, true); });
  OnCommand(Line.App.add_subcommand("opt-out", "Remember that this company does not use the service"), Line,
            [](const TToolOptions& Options) { return SetOptedIn(Options, false); });
}

}  // namespace oxSuperAPI
