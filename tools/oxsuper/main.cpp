#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "commands/commands.h"
#include "interrupt.h"
#include "output.h"

namespace oxSuperAPI {
namespace {

std::string DefaultConfigFile() {
  const char* Variable = std::getenv("OXSUPER_CONFIG");
  return Variable && *Variable ? Variable : "oxsuper.toml";
}

TExit Report(TExit Exit, const std::string& Text, const TToolOptions& Options) {
  Note("oxsuper: " + Printable(Text, true));
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "done", false);
    AddNumber(Document, "exitCode", Exit);
    AddText(Document, "message", Text);
    PrintDocument(Document);
  }
  return Exit;
}

int Main(int argc, char** argv) {
  TToolOptions Options{.ConfigFile = DefaultConfigFile()};
  TCommand Chosen;
  CLI::App App{"oxsuper: superannuation contributions through the Beam clearing house", "oxsuper"};
  App.add_flag("--json", Options.Json, "One JSON document on standard output, for machines");
  App.add_option("--config", Options.ConfigFile, "Configuration file; before it $OXSUPER_CONFIG")
      ->capture_default_str();
  App.add_flag("--edit-request", Options.EditRequest, "Show each request in an editor before it is sent");
  App.add_flag("--edit-response", Options.EditResponse, "Show each answer in an editor when it has come");
  App.set_version_flag("--version", OXSUPER_VERSION);
  App.require_subcommand(1);
  App.fallthrough();  // these options may also follow the command
  const TCommandLine Line{App, Chosen};
  for (const auto Add :
       {AddInitCommand, AddConfigCommand, AddDbCommand, AddSandboxCommand, AddDoctorCommand, AddStatusCommand,
        AddPingCommand, AddRegisterCommand, AddActivateCommand, AddReissueCommand, AddOptCommands, AddBatchCommand,
        AddParticipantCommand, AddNotificationsCommand, AddFundsCommand, AddLogCommand})
    Add(Line);
  try {
    App.parse(argc, argv);
  } catch (const CLI::ParseError& Error) {
    return App.exit(Error) == 0 ? exitDone : exitUsage;
  }

  InstallInterrupt();
  try {
    Options.ConfigFile = std::filesystem::absolute(Options.ConfigFile).string();
    return Chosen(Options);
  } catch (const TToolError& Error) {
    return Report(Error.Exit(), Error.what(), Options);
  } catch (const std::exception& Error) {
    return Report(exitFailed, Error.what(), Options);
  }
}

}  // namespace
}  // namespace oxSuperAPI

int main(int argc, char** argv) {
  return oxSuperAPI::Main(argc, argv);
}
