#include "batch_answer.h"
#include "batch_file.h"
#include "commands/batch.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"

namespace oxSuperAPI {
namespace {

/// Lets the service check one batch; nothing is booked.
std::unique_ptr<TBeamContributionResponse> ValidateBatch(TSession& Session, TBeamContributionDetail& Detail) {
  std::unique_ptr<TBeamContributionResponse> Answer;
  std::string Message, Error, Status;
  const bool Valid = Session.Call("The validation", [&] {
    const TProgress Progress("Validating");
    return PostContribution("oxsuper.batch.validate", &Detail, false, Answer, Message, Error, Status);
  });
  if (!Valid && (!Answer || Answer->GetValidationsCount() == 0))
    throw Session.Refusal("The validation", Message, Error, Status);
  if (IsEmpty(*Answer))
    throw TToolError(exitServiceFailure, "The service's answer to the validation is not understood");
  return Answer;
}

TExit Validate(const TToolOptions& Options, const TBatchOptions& Own) {
  TSession Session(Options);
  const TBatchFile File = ReadBatchFile(Own, Session);
  NeedCleanFile(File, Options);
  Session.NeedCustomerToken();
  TExit Exit = exitDone;
  TJSONArray Answers;
  for (const TPayRunBatch& Batch : File.Run.Batches) {
    const auto Answer = ValidateBatch(Session, *Batch.Detail);
    const bool Errors = HasErrors(*Answer);
    if (Errors) Exit = exitRefusedByService;
    if (Options.Json) {
      Answers.Append(TJSONValue(AnswerDocument(*Answer)));
      continue;
    }
    PrintBatch(*Batch.Detail, Batch.Cents);
    PrintAnswer(*Answer, *Batch.Detail);
    PrintLine();
    PrintLine(Errors ? "The service would refuse this batch." : "The batch is valid; nothing was submitted.");
  }
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "valid", Exit == exitDone);
    Document.Append("batches", TJSONValue(std::move(Answers)));
    AddFindings(Document, File.Run);
    PrintDocument(Document);
  }
  return Exit;
}

}  // namespace

void AddBatchValidateCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("validate", "Check a file here and let the service check it");
  auto Values = std::make_shared<TBatchOptions>();
  AddBatchOptions(*Command, *Values);
  OnCommand(Command, Line, Values, Validate);
}

}  // namespace oxSuperAPI
