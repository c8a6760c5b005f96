#pragma once

#include "call_log.h"
#include "commands/commands.h"
#include "session.h"

/// The commands below "log", one a file.
namespace oxSuperAPI {

void AddLogListCommand(TCommandLine Line);
void AddLogShowCommand(TCommandLine Line);
void AddLogExportCommand(TCommandLine Line);
void AddLogScrubCommand(TCommandLine Line);

/// --since, --until, --source and --status.
void AddLogFilter(CLI::App* Command, TLogFilter& Filter);

/// What the configuration says.
TLogMasking ConfiguredMasking(TSession& Session);
/// The call log of the session's company, shown as `Masking` allows.
TCallLog OpenCallLog(TSession& Session, TLogMasking Masking);

}  // namespace oxSuperAPI
