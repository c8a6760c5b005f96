#include "commands/batch.h"
#include "journal.h"
#include "output.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "session.h"

namespace oxSuperAPI {
namespace {

struct TCancelOptions {
  std::string ProcessId;
};

TExit Cancel(const TToolOptions& Options, const TCancelOptions& Own) {
  TSession Session(Options);
  Session.NeedCustomerToken();
  TJournal Journal(Session.Directory(), Session.Host().JSONParser(), TJournalUse::Submit);
  std::string Message, Error, Status;
  const bool Cancelled = Session.Call("The cancellation", [&] {
    const TProgress Progress("Cancelling");
    return PutCancelContribution("oxsuper.batch.cancel", Own.ProcessId, Message, Error, Status);
  });
  if (!Cancelled) throw Session.Refusal("The cancellation", Message, Error, Status);
  const TJournalEntry* const Found = Journal.FindProcess(Own.ProcessId);
  // What the service said counts, not what an editor made of it.
  if (Found && Session.LastRequest() && Session.LastRequest()->Status == 200) {
    TJournalEntry Entry = *Found;
    Entry.Outcome = JournalOutcome::Cancelled;  // the file may be submitted again
    Journal.Write(Entry);
  }
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "done", true);
    AddText(Document, "processId", Own.ProcessId);
    AddText(Document, "message", Message);
    PrintDocument(Document);
  } else {
    PrintLine("Process " + Printable(Own.ProcessId) + " is cancelled.");
  }
  return exitDone;
}

}  // namespace

void AddBatchCancelCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("cancel", "Cancel a batch that was submitted");
  auto Values = std::make_shared<TCancelOptions>();
  Command->add_option("PROCESS", Values->ProcessId, "Process id, as \"batch submit\" showed it")->required();
  OnCommand(Command, Line, Values, Cancel);
}

}  // namespace oxSuperAPI
