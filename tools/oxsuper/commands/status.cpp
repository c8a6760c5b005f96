#include "commands/commands.h"
#include "output.h"
#include "oxSuperAPI/reference/db_open.h"
#include "session.h"

namespace oxSuperAPI {
namespace {

TExit Status(const TToolOptions& Options) {
  TSession Session(Options);
  TBeamSuperGlobal& Global = TBeamSuperGlobal::BeamSuperGlobal();
  const TBeamSuperEnvironment Environment = Global.GetBeamSuperEnvironment();
  const TBeamSuperStatus Status = Global.GetBeamSuperStatus();
  const std::string URL(BaseBeamURL[Environment]);
  if (Options.Json) {
    TJSONObject Document;
    AddText(Document, "environment", Session.Environment());
    AddText(Document, "service", URL);
    AddText(Document, "status", std::string(TTBeamSuperStatusString[Status]));
    AddFlag(Document, "activated", Global.GetIsBeamSuperActive());
    AddFlag(Document, "optedIn", Global.GetOptedIn());
    AddText(Document, "company", Session.Config().identity.company_name);
    PrintDocument(Document);
    return exitDone;
  }
  PrintLine("Company      " + Printable(Session.Config().identity.company_name));
  PrintLine("Environment  " + Session.Environment() + " (" + URL + ")");
  PrintLine("Status       " + std::string(TTBeamSuperStatusString[Status]));
  PrintLine(std::string("Opted in     ") + (Global.GetOptedIn() ? "yes" : "no"));
  PrintLine("Databases    " + ShownAddress(Session.Config().files.common_database));
  PrintLine("             " + ShownAddress(Session.Config().files.payroll_database));
  return exitDone;
}

}  // namespace

void AddStatusCommand(TCommandLine Line) {
  OnCommand(Line.App.add_subcommand("status", "Environment, activation and opt-in of this company; asks nobody"), Line,
            Status);
}

}  // namespace oxSuperAPI
