#include "doctor/finding.h"
#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/reference/reference_host.h"

namespace oxSuperAPI {
namespace {

constexpr const char* Subject = "credentials";

/// By the rules of the library: exchanged by the next call after half a year, refused after one, lost after two.
void CheckAge(TDateTime Issued, TDateTime Now, TFindings& Findings) {
  const auto Day = &FormatDate;
  const TDateTime End = IncMonth(Issued, 12);
  const std::string What = "issued on " + Day(Issued) + ", they end on " + Day(End);
  if (Now > IncMonth(Issued, 24))
    Findings.Problem(Subject, What, "They are too old to be exchanged: the customer has to be registered anew");
  else if (Now > End)
    Findings.Problem(Subject, What, "Run \"oxsuper reissue\"");
  else if (Now > IncMonth(Issued, 11))
    Findings.Warning(Subject, What, "Run \"oxsuper reissue\"; any call that needs them does it as well");
  else
    Findings.OK(Subject, What + "; from " + Day(IncMonth(Issued, 6)) + " on the next call exchanges them");
}

}  // namespace

void CheckCredentials(const TPatient& Patient, TFindings& Findings) {
  // Read by hand: loading them through the library may exchange them, and asking it for the customer's identifier may
  // make one.
  TReferenceHost Host(Patient.Config);
  const std::string UCID = Host.Cipher().DefDecrypt(Host.Settings().GetCurrentSystemValue("BeamSuperUCID", "", false));
  const std::string Environment(TBeamSuperEnvironmentString[Patient.Environment]);
  const auto Row = Host.ADOMainCommonConnection()->Open(
      {"select cClientID, cClientSecret, dDateLastIssued from _iptblBeamSuperCustomerIDs where cUCID = :UCID and "
       "cEnvironment = :ENV",
       {{"UCID", Host.Cipher().DefEncrypt(UCID)}, {"ENV", Host.Cipher().DefEncrypt(Environment)}}});
  if (UCID.empty() || Row->Eof() || Row->FieldAsString("cClientID").empty())
    return Findings.Warning(Subject, "this customer is not activated in " + Environment, "Run \"oxsuper activate\"");
  for (const char* Column : {"cClientID", "cClientSecret"})
    static_cast<void>(Host.Cipher().DefDecrypt(Row->FieldAsString(Column)));  // raises when the key is another one
  CheckAge(Row->FieldAsDateTime("dDateLastIssued"), Host.System().Now(), Findings);
}

}  // namespace oxSuperAPI
