#include "doctor/finding.h"
#include "oxSuperAPI/reference/db_open.h"
#include "oxSuperAPI/reference/reference_host.h"
#include "oxSuperAPI/reference/schema_check.h"

namespace oxSuperAPI {
namespace {

/// Ends a trial transaction without leaving anything behind.
struct TUndo {};

/// Statements that a trial runs: they need the right to write, find no row, and are undone besides.
std::vector<std::string> Trials(TDatabaseRole Role) {
  std::vector<std::string> Result{
      "update _iptblBeamSuperCustomerIDs set cUUID = cUUID where 1 = 0",
      "insert into _iptblBeamSuperCustomerIDs (cUCID, cEnvironment) select cUCID, cEnvironment "
      "from _iptblBeamSuperCustomerIDs where 1 = 0"};
  if (Role == TDatabaseRole::Payroll)
    Result.emplace_back("insert into _iptblBeamSuperLog (cSource) select cSource from _iptblBeamSuperLog where 1 = 0");
  return Result;
}

void CheckDatabase(const std::string& Subject, TDBConnection& Connection, TDatabaseRole Role, TFindings& Findings) {
  const auto Problems = FindSchemaProblems(Connection, Role);
  for (const TSchemaFinding& Found : Problems) Findings.Problem(Subject, Found.Problem, Found.Advice);
  if (!Problems.empty()) return;
  try {
    Connection.InTransaction([&] {
      for (const std::string& Trial : Trials(Role)) Connection.Execute({Trial, {}});
      throw TUndo();
    });
  } catch (const TUndo&) {
    Findings.OK(Subject, "it opens, has its tables and takes writes");
  } catch (const std::exception& Error) {
    Findings.Problem(Subject, "it opens, but takes no writes: " + std::string(Error.what()),
                     "Check its rights, the room on its disk, and who else uses it");
  }
}

}  // namespace

void CheckDatabases(const TPatient& Patient, TFindings& Findings) {
  TReferenceHost Host(Patient.Config);
  const TFilesConfig& Files = Patient.Config.files;
  for (const TDatabaseRole Role : {TDatabaseRole::Common, TDatabaseRole::Payroll}) {
    const bool Common = Role == TDatabaseRole::Common;
    const std::string Subject = Common ? "common database" : "payroll database";
    try {
      CheckDatabase(Subject, *Host.OpenDatabase(Role), Role, Findings);
    } catch (const std::exception& Error) {
      Findings.Problem(Subject, Error.what(),
                       "Check " + ShownAddress(Common ? Files.common_database : Files.payroll_database));
    }
  }
}

}  // namespace oxSuperAPI
