#pragma once

#include "commands/commands.h"

/// The commands below "batch", one a file.
namespace oxSuperAPI {

void AddBatchShowCommand(TCommandLine Line);
void AddBatchValidateCommand(TCommandLine Line);
void AddBatchSubmitCommand(TCommandLine Line);
void AddBatchStatusCommand(TCommandLine Line);
void AddBatchCancelCommand(TCommandLine Line);

}  // namespace oxSuperAPI
