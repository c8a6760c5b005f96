#include <charconv>

#include "commands/commands.h"
#include "output.h"
#include "oxSuperAPI/foundation/uBeamEnumerations.h"
#include "oxSuperAPI/reference/config_toml.h"
#include "oxSuperAPI/reference/json_rapidjson.h"
#include "sandbox_process.h"

namespace oxSuperAPI {
namespace {

struct TStartOptions {
  std::string Program;
  double Lifetime = 0;
  double TimeStep = 3;
};

std::filesystem::path Directory(const TToolOptions& Options) {
  return std::filesystem::path(Options.ConfigFile).parent_path();
}

/// The port to which the configuration leads the requests for the service.
unsigned short ConfiguredPort(const TToolOptions& Options) {
  const TReferenceConfig Config = ReadConfig(Options.ConfigFile);
  for (const auto& [From, To] : Config.http.connect_to) {
    const std::string Port = To.substr(To.rfind(':') + 1);
    unsigned short Number = 0;
    std::from_chars(Port.data(), Port.data() + Port.size(), Number);
    if (To.starts_with("127.0.0.1:") && Number > 0) return Number;
  }
  throw TToolError(exitFailed, "The configuration " + Options.ConfigFile +
                                   " does not lead to a sandbox (http.connect_to): make one with \"oxsuper init "
                                   "--sandbox\"");
}

TExit Show(const TToolOptions& Options, const std::optional<TSandboxProcess>& Process) {
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "running", Process.has_value());
    if (Process) {
      AddNumber(Document, "pid", Process->Pid);
      AddNumber(Document, "port", Process->Port);
      AddText(Document, "ca", Process->CAFile);
    }
    PrintDocument(Document);
  } else if (Process) {
    PrintLine("The sandbox runs on port " + std::to_string(Process->Port) + " (process " +
              std::to_string(Process->Pid) + ").");
  } else {
    PrintLine("No sandbox is running.");
  }
  return exitDone;
}

TExit Start(const TToolOptions& Options, const TStartOptions& Own) {
  TJSONRapidJson Parser;
  if (const auto Running = FindSandbox(Directory(Options), Parser)) return Show(Options, Running);
  return Show(Options, StartSandbox({.Directory = Directory(Options),
                                     .Program = Own.Program,
                                     .Port = ConfiguredPort(Options),
                                     .LifetimeSeconds = Own.Lifetime,
                                     .TimeStepSeconds = Own.TimeStep},
                                    Parser));
}

TExit Stop(const TToolOptions& Options) {
  TJSONRapidJson Parser;
  const bool Stopped = StopSandbox(Directory(Options), Parser);
  if (!Options.Json && Stopped) PrintLine("The sandbox has ended.");
  return Stopped && !Options.Json ? exitDone : Show(Options, std::nullopt);
}

TExit Status(const TToolOptions& Options) {
  TJSONRapidJson Parser;
  return Show(Options, FindSandbox(Directory(Options), Parser));
}

}  // namespace

void AddSandboxCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("sandbox", "The clearing house on your own machine, to try things out");
  Command->require_subcommand(1);
  CLI::App* StartCommand = Command->add_subcommand("start", "Start it in the background");
  auto Values = std::make_shared<TStartOptions>();
  StartCommand->add_option("--program", Values->Program, "The beam-sandbox to start (default: beside oxsuper, $PATH)");
  StartCommand->add_option("--lifetime", Values->Lifetime, "Seconds after which it ends by itself; 0: never");
  StartCommand->add_option("--time-step", Values->TimeStep, "Seconds a batch stays in a status")->capture_default_str();
  OnCommand(StartCommand, Line, Values, Start);
  OnCommand(Command->add_subcommand("stop", "End it"), Line, Stop);
  OnCommand(Command->add_subcommand("status", "Is it running?"), Line, Status);
}

}  // namespace oxSuperAPI
