#include "commands/batch.h"

namespace oxSuperAPI {

void AddBatchCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("batch", "Contribution batches from pay-run files");
  Command->require_subcommand(1);
  const TCommandLine Batch{*Command, Line.Chosen};
  for (const auto Add : {AddBatchShowCommand, AddBatchValidateCommand, AddBatchSubmitCommand, AddBatchStatusCommand,
                         AddBatchCancelCommand})
    Add(Batch);
}

}  // namespace oxSuperAPI
