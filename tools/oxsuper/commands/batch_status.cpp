#include "commands/batch.h"
#include "journal.h"
#include "output.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "session.h"

namespace oxSuperAPI {
namespace {

struct TStatusOptions {
  std::string ProcessId;
};

/// What was submitted from here; asks nobody.
TExit ListSubmissions(const TToolOptions& Options, TSession& Session) {
  const TJournal Journal(Session.Directory(), Session.Host().JSONParser(), TJournalUse::Read);
  TTable Table({"When", "Environment", "File", "Batch", ">Dollars", "Outcome", "Process", "Message"});
  TJSONArray Array;
  for (const TJournalEntry& Entry : Journal.Entries()) {
    Table.Add({Entry.Time, Entry.Environment, Entry.File, Entry.BatchNumber, Entry.Total, Entry.Outcome,
               Entry.ProcessId, Entry.MessageId});
    TJSONObject Document;
    AddText(Document, "time", Entry.Time);
    AddText(Document, "environment", Entry.Environment);
    AddText(Document, "file", Entry.File);
    AddText(Document, "fileId", Entry.FileId);
    AddText(Document, "batch", Entry.BatchNumber);
    AddText(Document, "total", Entry.Total);
    AddText(Document, "outcome", Entry.Outcome);
    AddText(Document, "processId", Entry.ProcessId);
    AddText(Document, "messageId", Entry.MessageId);
    Array.Append(TJSONValue(std::move(Document)));
  }
  if (Options.Json) {
    TJSONObject Document;
    Document.Append("submissions", TJSONValue(std::move(Array)));
    PrintDocument(Document);
  } else if (Table.IsEmpty()) {
    PrintLine("Nothing has been submitted from here.");
  } else {
    Table.Print();
  }
  return exitDone;
}

TExit AskService(const TToolOptions& Options, TSession& Session, const std::string& ProcessId) {
  Session.NeedCustomerToken();
  std::string State, Reference, Message, Error, Status;
  double Total = 0;
  std::int32_t LogID = 0;
  const bool Known = Session.Call("The question", [&] {
    const TProgress Progress("Asking");
    return GetContributionStatus("oxsuper.batch.status", ProcessId, State, Reference, Total, LogID, Message, Error,
                                 Status);
  });
  if (!Known) throw Session.Refusal("The question", Message, Error, Status);
  const std::int64_t Cents = CentsOf(Total);
  if (Options.Json) {
    TJSONObject Document;
    AddText(Document, "processId", ProcessId);
    AddText(Document, "status", State);
    AddText(Document, "paymentReferenceNumber", Reference);
    AddDollars(Document, "totalAmount", Cents);
    AddNumber(Document, "logRow", LogID);
    PrintDocument(Document);
    return exitDone;
  }
  PrintLine("Process    " + Printable(ProcessId));
  PrintLine("Status     " + Printable(State));
  PrintLine("Reference  " + Printable(Reference));
  PrintLine("Total      " + FormatDollars(Cents));
  return exitDone;
}

TExit BatchStatus(const TToolOptions& Options, const TStatusOptions& Own) {
  TSession Session(Options);
  return Own.ProcessId.empty() ? ListSubmissions(Options, Session) : AskService(Options, Session, Own.ProcessId);
}

}  // namespace

void AddBatchStatusCommand(TCommandLine Line) {
  CLI::App* Command =
      Line.App.add_subcommand("status", "What became of a batch; without PROCESS, what was submitted from here");
  auto Values = std::make_shared<TStatusOptions>();
  Command->add_option("PROCESS", Values->ProcessId, "Process id, as \"batch submit\" showed it");
  OnCommand(Command, Line, Values, BatchStatus);
}

}  // namespace oxSuperAPI
