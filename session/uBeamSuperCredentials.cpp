#include "oxSuperAPI/session/uBeamSuperCredentials.h"

#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/session/uBeamHostAccess.h"
#include "oxSuperAPI/session/uBeamSaveStatement.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"

namespace oxSuperAPI {

namespace {

TBeamSuperCredentialsState Compare(const TADOQuery& Common, const TADOQuery& Payroll) {
  if (Common.Eof() && Payroll.Eof()) return bscsNone;
  if (Common.Eof()) return bscsPayrollOnly;
  if (Payroll.Eof()) return bscsCommonOnly;
  const auto Order =
      CompareDateTime(Common.FieldAsDateTime("dDateLastIssued"), Payroll.FieldAsDateTime("dDateLastIssued"));
  return Order == 0 ? bscsSame : Order < 0 ? bscsPayrollNewer : bscsCommonNewer;
}

}  // namespace

TBeamSuperCredentials::TBeamSuperCredentials(std::string pUCID) {
  Load(std::move(pUCID));
}

void TBeamSuperCredentials::Load(std::string pUCID) {
  const auto Alive = weak_from_this().lock();  // the host may call Finalize while it is asked
  UCID = std::move(pUCID);
  if (UCID.empty()) UCID = TBeamSuperGlobal::BeamSuperGlobal().GetCustomerUCID();
  if (!TBeamSuperGlobal::BeamSuperGlobal().GetStoreCredentialsInDB()) return;
  try {
    LoadFromDatabases();
  } catch (...) {
    TryAddToLog("Error loading Super Clearing credentials from DB " + UCID, TLogSeverity::Error);
    throw TBeamError("Unable to load the credentials to call Super Clearing APIs");
  }
}

void TBeamSuperCredentials::LoadFromDatabases() {
  const TDBStatement Key{"select * from _iptblBeamSuperCustomerIDs where cUCID = :UCID and cEnvironment = :Env",
                         {{"UCID", DefEncrypt(UCID)}, {"Env", EncipheredEnvironment()}}};
  const auto Common = OpenQuery(Host().ADOMainCommonConnection(), "common", Key);
  const auto Payroll = OpenQuery(Host().ADOMainConnection(), "payroll", Key);

  TBeamSuperCredentialsState State = Compare(*Common, *Payroll);
  const bool FromPayroll = State == bscsPayrollOnly || State == bscsPayrollNewer;
  const TADOQuery& Source = FromPayroll ? *Payroll : *Common;
  TADOQuery& Target = FromPayroll ? *Common : *Payroll;

  if (Source.Eof()) {
    for (std::string* Field :
         {&UUID, &CustomerNumber, &PIN, &CompanyName, &ClientID, &ClientSecret, &AcknowledgementToken})
      Field->clear();
    DateLastIssued = 0;
    AddToLog("No Super Clearing credentials found in DB ", TLogSeverity::Warning);
    return;
  }

  ReadFrom(Source);
  // A reissue has saved both copies, so the two result sets are stale: nothing is left to bring up to date.
  if (ReissueIfOld()) State = bscsSame;
  AddToLog("Super Clearing credentials last reissued at " + FormatDateMinutes(DateLastIssued),
           TLogSeverity::Information);
  AddToLog("Loaded Super Clearing credentials from DB ", TLogSeverity::Information);
  if (State != bscsSame) CopyTo(Target, Key);
}

void TBeamSuperCredentials::ReadFrom(const TADOQuery& Row) {
  const auto Deciphered = [&Row](std::string_view Column) { return DefDecrypt(Row.FieldAsString(Column)); };
  UUID = Deciphered("cUUID");
  CustomerNumber = Deciphered("cCustomerNumber");
  PIN = Deciphered("cPIN");
  CompanyName = Deciphered("cCompanyName");
  ClientID = Deciphered("cClientID");
  ClientSecret = Deciphered("cClientSecret");
  AcknowledgementToken = Row.FieldAsString("cAcknowledgementToken");
  DateLastIssued = Row.FieldAsDateTime("dDateLastIssued");
}

bool TBeamSuperCredentials::ReissueIfOld() {
  if (CompareDateTime(DateLastIssued, IncMonth(DateOf(Now()), -6)) >= 0) return false;
  // Reissuing changes the process-wide object. Any other would keep the old pair and write it back over the new one.
  std::string Message;
  const bool Reissued = TBeamSuperGlobal::IsProcessWide(*this) &&
                        TBeamSuperGlobal::BeamSuperGlobal().ReissueCredentials("TBeamSuperCredentials.Load", Message);
  if (Reissued)
    AddToLog("Reissued Super Clearing credentials", TLogSeverity::Information);
  else
    AddToLog("Unable to Reissue Super Clearing credentials at this time", TLogSeverity::Warning);
  return Reissued;
}

void TBeamSuperCredentials::CopyTo(TADOQuery& Target, const TDBStatement& Key) const {
  if (Target.Eof()) {
    Target.Append();
    Target.SetField("cUCID", Key.Parameters[0].Value);
    Target.SetField("cEnvironment", Key.Parameters[1].Value);
  } else {
    Target.Edit();
  }
  Target.SetField("cUUID", DefEncrypt(UUID));
  Target.SetField("cCustomerNumber", DefEncrypt(CustomerNumber));
  Target.SetField("cPIN", DefEncrypt(PIN));
  Target.SetField("cCompanyName", DefEncrypt(CompanyName));
  Target.SetField("cClientID", DefEncrypt(ClientID));
  Target.SetField("cClientSecret", DefEncrypt(ClientSecret));
  Target.SetField("cAcknowledgementToken", AcknowledgementToken);
  Target.SetField("dDateLastIssued", DateLastIssued);
  Target.Post();
}

void TBeamSuperCredentials::Save() {
  const auto Alive = weak_from_this().lock();
  if (!TBeamSuperGlobal::BeamSuperGlobal().GetStoreCredentialsInDB()) return;
  try {
    const TDBStatement Statement = SaveStatement();
    Execute(Host().ADOMainCommonConnection(), "common", Statement);
    Execute(Host().ADOMainConnection(), "payroll", Statement);
    AddToLog("Super Clearing credentials have been saved to the common database", TLogSeverity::Information);
  } catch (...) {
    TryAddToLog("Error saving Super Clearing credentials to the Common Database " + UCID, TLogSeverity::Error);
    throw TBeamError("Error saving Super Clearing Credentials");
  }
}

TDBStatement TBeamSuperCredentials::SaveStatement() const {
  const TDBParameter Columns[] = {
      {"UCID", DefEncrypt(UCID)},
      {"ClientID", DefEncrypt(ClientID)},
      {"ClientSecret", DefEncrypt(ClientSecret)},
      {"UUID", DefEncrypt(UUID)},
      {"CustomerNumber", DefEncrypt(CustomerNumber)},
      {"PIN", DefEncrypt(PIN)},
      {"CompanyName", DefEncrypt(CompanyName)},
      {"Token", AcknowledgementToken},
      {"Environment", EncipheredEnvironment()},
      {"DateLastIssued", DateLastIssued},
  };
  TDBStatement Statement{std::string(SaveCredentialsSQL), {{"Env", Columns[8].Value}}};
  for (const TDBParameter& Column : Columns) {
    Statement.Parameters.push_back(Column);
    Statement.Parameters.push_back({"i" + Column.Name, Column.Value});
  }
  return Statement;
}

bool TBeamSuperCredentials::GetIsExpired() const {
  const TDateTime Issued = DateLastIssued;  // read first: the host may call Finalize while its clock is asked
  return CompareDateTime(Issued, IncYear(Now(), -2)) < 0;
}

bool TBeamSuperCredentials::GetNeedsReIssuing() const {
  const TDateTime Moment = Now();
  return CompareDateTime(Moment, IncMonth(IncYear(Moment, -1), -3)) > 0;
}

}  // namespace oxSuperAPI
