#include "commands/commands.h"
#include "output.h"
#include "oxSuperAPI/reference/db_open.h"
#include "oxSuperAPI/reference/reference_host.h"
#include "oxSuperAPI/reference/schema_check.h"

namespace oxSuperAPI {
namespace {

struct TPlace {
  TDatabaseRole Role;
  const char* Name;
  const std::string& Address;
};

std::vector<TPlace> Places(const TReferenceConfig& Config) {
  return {{TDatabaseRole::Common, "common", Config.files.common_database},
          {TDatabaseRole::Payroll, "payroll", Config.files.payroll_database}};
}

/// Looks at both databases and reports. Each one that cannot be opened is reported, too.
TExit Report(const TToolOptions& Options, TReferenceHost& Host, bool Create) {
  bool Failed = false;
  TJSONArray Databases;
  for (const TPlace& Place : Places(Host.Config())) {
    std::vector<TSchemaFinding> Findings;
    std::string Problem;
    try {
      if (Create) CreateDatabaseFile(Place.Address);
      const std::unique_ptr<TDBConnection> Connection = Host.OpenDatabase(Place.Role);
      if (Create) CreateSchema(*Connection, Place.Role);
      Findings = FindSchemaProblems(*Connection, Place.Role);
    } catch (const TBeamError& Error) {
      Problem = Error.what();
    }
    Failed = Failed || !Findings.empty() || !Problem.empty();

    if (!Options.Json) {
      PrintLine(std::string(Place.Name) + " database, " + ShownAddress(Place.Address));
      if (HoldsPassword(Place.Address))
        PrintLine("  note: the password stands in the configuration; \"oxsuper config set-secret " +
                  std::string(Place.Name) + "-database\" keeps it scrambled instead");
      for (const TSchemaFinding& Finding : Findings)
        PrintLine("  " + Printable(Finding.Problem) + "\n    " + Printable(Finding.Advice));
      if (!Problem.empty()) PrintLine("  " + Printable(Problem, true));
      if (Findings.empty() && Problem.empty()) PrintLine("  in order");
      continue;
    }
    TJSONArray List;
    for (const TSchemaFinding& Finding : Findings) {
      TJSONObject Object;
      AddText(Object, "problem", Finding.Problem);
      AddText(Object, "advice", Finding.Advice);
      List.Append(TJSONValue(std::move(Object)));
    }
    TJSONObject Database;
    AddText(Database, "name", Place.Name);
    AddText(Database, "address", ShownAddress(Place.Address));
    AddText(Database, "error", Problem);
    Database.Append("findings", TJSONValue(std::move(List)));
    Databases.Append(TJSONValue(std::move(Database)));
  }
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "done", !Failed);
    Document.Append("databases", TJSONValue(std::move(Databases)));
    PrintDocument(Document);
  }
  return Failed ? exitFailed : exitDone;
}

TExit Init(const TToolOptions& Options) {
  TReferenceHost Host(ReadConfig(Options.ConfigFile));
  return Report(Options, Host, true);
}

TExit Check(const TToolOptions& Options) {
  TReferenceHost Host(ReadConfig(Options.ConfigFile));
  return Report(Options, Host, false);
}

}  // namespace

void AddDbCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("db", "The common and the payroll database");
  Command->require_subcommand(1);
  OnCommand(Command->add_subcommand("init", "Make the tables that are missing; what exists stays as it is"), Line,
            Init);
  OnCommand(Command->add_subcommand("check", "Compare the tables with what is needed; nothing is changed"), Line,
            Check);
}

}  // namespace oxSuperAPI
