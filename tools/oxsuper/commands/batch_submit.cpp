#include <unistd.h>

#include <iostream>

#include "batch_answer.h"
#include "batch_file.h"
#include "commands/batch.h"
#include "journal.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/foundation/uBeamText.h"
#include "payrun/cells.h"

namespace oxSuperAPI {
namespace {

struct TSubmitOptions : TBatchOptions {
  bool Again = false;
  bool Yes = false;
};

/// Money moves in production: a person says so, or a script by --yes.
void ConfirmProduction(const TSession& Session, const TBatchFile& File, bool Yes) {
  if (!Session.IsProduction() || Yes) return;
  if (::isatty(STDIN_FILENO) != 1 || ::isatty(STDERR_FILENO) != 1)
    throw TToolError(exitRefusedHere, "This would submit to production; give --yes when that is meant");
  std::int64_t Cents = 0;
  for (const TPayRunBatch& Batch : File.Run.Batches) Cents += Batch.Cents;
  std::cerr << "Submit " << Counted(File.Run.Batches.size(), "batch", "batches") << " of " << FormatDollars(Cents)
            << " from " << Printable(File.Name) << " to PRODUCTION? Type yes: " << std::flush;
  std::string Line;
  std::getline(std::cin, Line);
  if (!SameText(Trim(Line), "yes")) throw TToolError(exitRefusedHere, "Nothing was sent");
}

TJournalEntry EntryFor(const TSession& Session, const TBatchFile& File, std::size_t Index) {
  const TPayRunBatch& Batch = File.Run.Batches[Index];
  // The stamp of a former call is no part of the contributions.
  Batch.Detail->identifier = {};
  TJournalEntry Entry;
  Entry.Time = FormatDateMinutes(Now());
  Entry.Environment = Session.Environment();
  Entry.File = File.Name;
  Entry.FileDigest = File.Digest;
  Entry.FileId = File.Run.FileId;
  Entry.BatchNumber = std::to_string(Index + 1);
  Entry.BatchDigest = Digest(Batch.Detail->GetAsJsonString());
  Entry.Sender = Batch.Detail->participant.businessIdentifierValue;
  Entry.Total = FormatCents(Batch.Cents);
  return Entry;
}

void RefuseTwin(const TJournal& Journal, const TJournalEntry& Entry) {
  const TJournalEntry* Twin = Journal.FindTwin(Entry);
  if (!Twin) return;
  const bool Certain = Twin->Outcome == JournalOutcome::Accepted;
  throw TToolError(
      exitRefusedHere,
      "Batch " + Entry.BatchNumber + " of " + Entry.File + (Certain ? " was" : " may have been") +
          " submitted already: " + Twin->File + " on " + Twin->Time + ", " + Twin->Total + " dollars, " +
          (Certain ? "process " + Twin->ProcessId : "message " + Twin->MessageId) +
          ". Nothing was sent now. Find out what became of it (\"oxsuper batch status\"); only when it has "
          "to be paid once more, give --again");
}

/// What the journal says once the call is over.
std::string OutcomeOf(const TSentRequest* Request, bool Accepted) {
  if (!Request || !Request->Changes || Request->Fate == TRequestFate::NotSent) return JournalOutcome::NotSent;
  // What the service said counts, not what an editor made of it.
  if (Accepted && Request->Status == 200) return JournalOutcome::Accepted;
  const bool Refused = Request->Fate == TRequestFate::Answered && Request->Status >= 400 && Request->Status < 500;
  return Refused ? JournalOutcome::Refused : JournalOutcome::Unknown;
}

struct TSubmission {
  std::unique_ptr<TBeamContributionResponse> Answer;
  bool Errors = false;
};

/// Sends one batch, at most once. The journal has it before it leaves and learns what became of it.
TSubmission SubmitBatch(TSession& Session, TJournal& Journal, TBeamContributionDetail& Detail, TJournalEntry Entry) {
  TSubmission Result;
  std::string Message, Error, Status;
  Session.Host().BeforeChange = [&](const std::string& Path) {
    if (!Path.ends_with("/submit")) return;
    Entry.MessageId = Detail.identifier.messageId;
    Entry.Outcome = JournalOutcome::Sending;
    Journal.Write(Entry);
  };
  const auto Record = [&](bool Accepted) {
    Session.Host().BeforeChange = nullptr;
    if (Entry.MessageId.empty()) return;  // it never came to the point of being sent
    Entry.Outcome = OutcomeOf(Session.LastRequest(), Accepted);
    if (Accepted) Entry.ProcessId = Result.Answer->processId;
    try {
      Journal.Write(Entry);
    } catch (const TBeamError& Problem) {  // "sending" stays on record, which refuses the file from here on
      Note("warning: the outcome could not be recorded: " + std::string(Problem.what()));
    }
  };
  bool Completed = false;
  try {
    Completed = Session.Call("The submission", [&] {
      const TProgress Progress("Submitting");
      return PostContribution("oxsuper.batch.submit", &Detail, true, Result.Answer, Message, Error, Status);
    });
  } catch (...) {
    Record(false);
    throw;
  }
  const bool Understood = Completed && Result.Answer && !IsEmpty(*Result.Answer);
  Record(Understood && Result.Answer->StatusCode == 200);
  if (!Completed) throw Session.Refusal("The submission", Message, Error, Status);
  if (!Understood && Session.LastRequest() && Session.LastRequest()->Status == 200)
    throw TToolError(exitOutcomeUnknown,
                     "The submission was sent, and its answer is not understood (\"oxsuper log list\" has it). Do not "
                     "repeat it blindly: ask the clearing house for message " +
                         Entry.MessageId);
  if (!Understood) throw Session.Refusal("The submission", Message, Error, Status);
  Result.Errors = HasErrors(*Result.Answer);
  return Result;
}

void PrintSubmission(const TSubmission& Submission, const TBeamContributionDetail& Detail) {
  PrintAnswer(*Submission.Answer, Detail);
  PrintLine();
  const std::string Process = Printable(Submission.Answer->processId);
  if (Submission.Answer->StatusCode == 400)
    PrintLine("The service refused the batch; nothing was booked. Correct the file and submit it again.");
  else
    PrintLine((Submission.Errors ? "Submitted WITH ERRORS, process " : "Submitted, process ") + Process +
              ". Follow it with: oxsuper batch status " + Process);
}

TExit Submit(const TToolOptions& Options, const TSubmitOptions& Own) {
  TSession Session(Options);
  const TBatchFile File = ReadBatchFile(Own, Session);
  NeedCleanFile(File, Options);
  ConfirmProduction(Session, File, Own.Yes);  // before the journal is held: a person may take long
  if (!TBeamSuperGlobal::BeamSuperGlobal().GetOptedIn())
    Note("warning: this company is not opted in (\"oxsuper opt-in\")");

  TJournal Journal(Session.Directory(), Session.Host().JSONParser(), TJournalUse::Submit);
  std::vector<TJournalEntry> Entries;
  for (std::size_t Index = 0; Index < File.Run.Batches.size(); ++Index) {
    Entries.push_back(EntryFor(Session, File, Index));
    if (!Own.Again) RefuseTwin(Journal, Entries.back());
  }
  Session.NeedCustomerToken();

  TExit Exit = exitDone;
  TJSONObject Document;
  TJSONArray Answers;
  std::size_t Sent = 0;
  while (Sent < Entries.size() && Exit == exitDone) {
    TBeamContributionDetail& Detail = *File.Run.Batches[Sent].Detail;
    if (!Options.Json) PrintBatch(Detail, File.Run.Batches[Sent].Cents);
    try {
      const TSubmission Submission = SubmitBatch(Session, Journal, Detail, Entries[Sent]);
      if (Submission.Errors) Exit = exitRefusedByService;
      if (!Options.Json) PrintSubmission(Submission, Detail);
      TJSONObject Answer = AnswerDocument(*Submission.Answer);
      AddNumber(Answer, "logRow", Detail.BeamSuperLogID);
      Answers.Append(TJSONValue(std::move(Answer)));
    } catch (const TToolError& Error) {
      if (Sent == 0) throw;
      Exit = Error.Exit();  // the answers to the batches before it must not be lost
      Note("oxsuper: " + std::string(Error.what()));
      AddText(Document, "message", Error.what());
    }
    ++Sent;
  }
  if (Sent < Entries.size()) Note(Counted(Entries.size() - Sent, "batch", "batches") + " of the file not sent.");
  if (Options.Json) {
    AddFlag(Document, "done", Exit == exitDone);
    Document.Append("batches", TJSONValue(std::move(Answers)));
    AddFindings(Document, File.Run);
    PrintDocument(Document);
  }
  return Exit;
}

}  // namespace

void AddBatchSubmitCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("submit", "Submit a file; the same file is refused a second time");
  auto Values = std::make_shared<TSubmitOptions>();
  AddBatchOptions(*Command, *Values);
  Command->add_flag("--again", Values->Again, "Although it was, or may have been, submitted already: it is paid twice");
  Command->add_flag("--yes", Values->Yes, "Submit to production without asking");
  OnCommand(Command, Line, Values, Submit);
}

}  // namespace oxSuperAPI
