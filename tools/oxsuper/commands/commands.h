#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>

#include "tool.h"

/// One command, one file: each function adds its command to the command line. A new command is a new file with such a
/// function, declared here and listed in main.cpp.
namespace oxSuperAPI {

/// Where a command puts what is to be done once the whole command line is understood.
struct TCommandLine {
  CLI::App& App;
  TCommand& Chosen;
};

void AddInitCommand(TCommandLine Line);
void AddConfigCommand(TCommandLine Line);
void AddDbCommand(TCommandLine Line);
void AddSandboxCommand(TCommandLine Line);
void AddDoctorCommand(TCommandLine Line);
void AddStatusCommand(TCommandLine Line);
void AddPingCommand(TCommandLine Line);
void AddRegisterCommand(TCommandLine Line);
void AddActivateCommand(TCommandLine Line);
void AddReissueCommand(TCommandLine Line);
void AddOptCommands(TCommandLine Line);
void AddBatchCommand(TCommandLine Line);
void AddParticipantCommand(TCommandLine Line);
void AddNotificationsCommand(TCommandLine Line);
void AddFundsCommand(TCommandLine Line);
void AddLogCommand(TCommandLine Line);

/// Chooses `Run` when `Command` stands on the command line. `Options` are filled by then.
template <class Options, class Function>
void OnCommand(CLI::App* Command, TCommandLine Line, std::shared_ptr<Options> Values, Function Run) {
  Command->callback([&Chosen = Line.Chosen, Values, Run] {
    Chosen = [Values, Run](const TToolOptions& Common) { return Run(Common, *Values); };
  });
}
template <class Function>
void OnCommand(CLI::App* Command, TCommandLine Line, Function Run) {
  Command->callback([&Chosen = Line.Chosen, Run] { Chosen = Run; });
}

}  // namespace oxSuperAPI
