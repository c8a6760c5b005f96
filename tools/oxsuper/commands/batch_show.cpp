#include "batch_file.h"
#include "commands/batch.h"
#include "output.h"

namespace oxSuperAPI {
namespace {

TExit Show(const TToolOptions& Options, const TBatchOptions& Own) {
  TSession Session(Options);
  const TBatchFile File = ReadBatchFile(Own, Session);
  const TExit Exit = HasErrors(File.Run.Findings) ? exitRefusedHere : exitDone;
  if (Options.Json) {
    TJSONArray Batches;
    for (const TPayRunBatch& Batch : File.Run.Batches)
      Batches.Append(TJSONValue(BatchDocument(*Batch.Detail, Batch.Cents)));
    TJSONObject Document;
    AddText(Document, "file", File.Name);
    AddText(Document, "fileId", File.Run.FileId);
    AddFlag(Document, "usable", Exit == exitDone);
    Document.Append("batches", TJSONValue(std::move(Batches)));
    AddFindings(Document, File.Run);
    PrintDocument(Document);
    return Exit;
  }
  const std::size_t Count = File.Run.Batches.size();
  for (std::size_t Index = 0; Index < Count; ++Index) {
    if (Count > 1) PrintLine((Index ? "\nBatch " : "Batch ") + std::to_string(Index + 1));
    PrintBatch(*File.Run.Batches[Index].Detail, File.Run.Batches[Index].Cents);
  }
  NoteFindings(File.Run);
  if (Exit != exitDone) Note(File.Name + " has errors and would not be sent.");
  return Exit;
}

}  // namespace

void AddBatchShowCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("show", "Read and check a file here; nothing is sent");
  auto Values = std::make_shared<TBatchOptions>();
  AddBatchOptions(*Command, *Values);
  OnCommand(Command, Line, Values, Show);
}

}  // namespace oxSuperAPI
