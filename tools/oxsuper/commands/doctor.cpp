#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <memory>
#include <thread>

#include "commands/commands.h"
#include "doctor/finding.h"
#include "doctor/silent_host.h"
#include "output.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"

namespace oxSuperAPI {
namespace {

using TCheckFunction = void (*)(const TPatient&, TFindings&);

struct TCheck {
  const char* Subject;
  TCheckFunction Function;
};
constexpr TCheck Checks[] = {
    {"configuration", CheckConfiguration},
    {"files", CheckFiles},
    {"secrets", CheckSecrets},
    {"databases", CheckDatabases},
    {"credentials", CheckCredentials},
    {"client certificate", CheckClientCertificate},
    {"service", CheckService},
};
/// Longer than the time-outs of connections and statements within a check, which have better texts.
constexpr std::chrono::seconds Patience{60};
constexpr std::chrono::seconds DatabasePatience{10};

/// The library decides on the environment by itself; it logs that when it can.
TBeamSuperEnvironment EnvironmentOf(const TReferenceConfig& Config) {
  TSilentHost Host(Config);
  RegisterHost(&Host);
  const TBeamSuperEnvironment Result = TBeamSuperGlobal::BeamSuperGlobal().GetBeamSuperEnvironment();
  TBeamSuperGlobal::Finalize();
  RegisterHost(nullptr);
  return Result;
}

/// Reads the configuration; none, with a finding, when that is not possible.
std::shared_ptr<TPatient> Admit(const TToolOptions& Options, TFindings& Findings) try {
  if (!std::filesystem::exists(Options.ConfigFile)) {
    Findings.Problem("configuration", "there is no configuration " + Options.ConfigFile,
                     "Run \"oxsuper init\", or name another one with --config");
    return nullptr;
  }
  TReferenceConfig Config = ReadConfig(Options.ConfigFile);
  Config.database.login_timeout_seconds = std::min(Config.database.login_timeout_seconds, DatabasePatience);
  Config.database.query_timeout_seconds = std::min(Config.database.query_timeout_seconds, DatabasePatience);
  const TBeamSuperEnvironment Environment = EnvironmentOf(Config);
  return std::make_shared<TPatient>(TPatient{Options.ConfigFile, std::move(Config), Environment});
} catch (const std::exception& Error) {
  Findings.Problem("configuration", Error);
  return nullptr;
}

/// Runs a check on a thread of its own, which is left behind when it takes too long. False then.
bool Run(const TCheck& Check, const std::shared_ptr<TPatient>& Patient, TFindings& Findings) {
  std::packaged_task<TFindings()> Task([Check, Patient] {
    TFindings Own;
    try {
      Check.Function(*Patient, Own);
    } catch (const std::exception& Error) {
      Own.Problem(Check.Subject, Error);
    }
    return Own;
  });
  std::future<TFindings> Result = Task.get_future();
  std::thread Thread(std::move(Task));
  if (Result.wait_for(Patience) == std::future_status::timeout) {
    Thread.detach();
    Findings.Problem(Check.Subject, "no result after " + std::to_string(Patience.count()) + " s",
                     "See what the disk, the database server or the network is waiting for");
    return false;
  }
  Thread.join();
  Findings.Append(Result.get());
  return true;
}

void PrintFindings(const TFindings& Findings, std::size_t Problems, std::size_t Warnings) {
  TJSONArray List;
  for (const TDoctorFinding& Finding : Findings.All()) {
    TJSONObject Entry;
    constexpr const char* Grades[] = {"ok", "warning", "problem"};
    AddText(Entry, "grade", Grades[static_cast<std::size_t>(Finding.Grade)]);
    AddText(Entry, "subject", Finding.Subject);
    AddText(Entry, "finding", Finding.What);
    AddText(Entry, "advice", Finding.Advice);
    List.Append(TJSONValue(std::move(Entry)));
  }
  TJSONObject Document;
  AddFlag(Document, "done", Problems == 0);
  AddNumber(Document, "problems", static_cast<std::int64_t>(Problems));
  AddNumber(Document, "warnings", static_cast<std::int64_t>(Warnings));
  Document.Append("findings", TJSONValue(std::move(List)));
  PrintDocument(Document);
}

void PrintLines(const TFindings& Findings, std::size_t Problems, std::size_t Warnings) {
  constexpr const char* Grades[] = {"ok       ", "warning  ", "PROBLEM  "};
  for (const TDoctorFinding& Finding : Findings.All()) {
    PrintLine(Grades[static_cast<std::size_t>(Finding.Grade)] + Printable(Finding.Subject + ": " + Finding.What));
    if (!Finding.Advice.empty()) PrintLine("         " + Printable(Finding.Advice) + ".");
  }
  PrintLine();
  PrintLine(Counted(Problems, "problem") + ", " + Counted(Warnings, "warning") + ". Nothing was changed.");
}

TExit Doctor(const TToolOptions& Options) {
  TFindings Findings;
  bool InTime = true;
  if (const std::shared_ptr<TPatient> Patient = Admit(Options, Findings))
    for (const TCheck& Check : Checks) {
      const TProgress Progress(std::string("Checking: ") + Check.Subject);
      InTime = Run(Check, Patient, Findings) && InTime;
    }
  else
    Findings.Warning("everything else", "it was not examined", "Correct the configuration, then run this again");
  std::size_t Problems = 0, Warnings = 0;
  for (const TDoctorFinding& Finding : Findings.All()) {
    Problems += Finding.Grade == TGrade::Problem;
    Warnings += Finding.Grade == TGrade::Warning;
  }
  (Options.Json ? PrintFindings : PrintLines)(Findings, Problems, Warnings);
  const TExit Exit = Problems == 0 ? exitDone : exitFailed;
  if (!InTime) {  // a thread that is still at it must not meet the end of the process
    std::fflush(nullptr);
    std::_Exit(Exit);
  }
  return Exit;
}

}  // namespace

void AddDoctorCommand(TCommandLine Line) {
  OnCommand(Line.App.add_subcommand("doctor", "Examine configuration, files, databases, network; changes nothing"),
            Line, Doctor);
}

}  // namespace oxSuperAPI
