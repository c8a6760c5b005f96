#include "oxSuperAPI/session/uBeamSuperGlobal.h"

#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/foundation/uBeamText.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/session/uBeamHostAccess.h"

namespace oxSuperAPI {

namespace {

constexpr std::uint8_t ClearingHouseCountry = 5;

bool IsClearingHouseCountry() {
  return Host().Identity().CountryCode() == ClearingHouseCountry;
}

// A domain of the United Kingdom's offices falls back to development, the hosted machines to production; only the
// latter know "DEV" by name.
TBeamSuperEnvironment DecideEnvironment() {
  THostIdentity& Identity = Host().Identity();
  const std::string Domain = Identity.GetDomainName();
  if (IsUKDomain(Domain)) {
    const std::string Forced = Identity.ForceBeamSuperEnvironment();
    return Forced == "QA" ? bsenvAcptQa : Forced == "PROD" ? bsenvProdLive : bsenvIntgDev;
  }
  if (IsHostedDomain(Domain) && Identity.ComputerName().find("PPP") != std::string::npos) {
    const std::string Forced = Identity.ForceBeamSuperEnvironment();
    return Forced == "DEV" ? bsenvIntgDev : Forced == "QA" ? bsenvAcptQa : bsenvProdLive;
  }
  return bsenvProdLive;
}

}  // namespace

TBeamSuperGlobal* TBeamSuperGlobal::FBeamSuperGlobal = nullptr;

TBeamSuperGlobal& TBeamSuperGlobal::BeamSuperGlobal() {
  if (!FBeamSuperGlobal) {
    std::shared_ptr<TBeamSuperGlobal> Created(new TBeamSuperGlobal);
    FBeamSuperGlobal = Created.get();
    Created->FSelf = Created;
  }
  return *FBeamSuperGlobal;
}

void TBeamSuperGlobal::Finalize() {
  if (!FBeamSuperGlobal) return;
  const std::shared_ptr<TBeamSuperGlobal> Dying = std::move(FBeamSuperGlobal->FSelf);
  Dying->Release();
  FBeamSuperGlobal = nullptr;
}

TBeamSuperGlobal::~TBeamSuperGlobal() {
  Release();
}

void TBeamSuperGlobal::Release() {
  FBeamSuperCustomerToken.reset();
  FBeamSuperAppToken.reset();
  FBeamSuperAdminToken.reset();
  FCredentials.reset();
}

TBeamSuperEnvironment TBeamSuperGlobal::GetBeamSuperEnvironment() {
  const auto Alive = shared_from_this();
  if (!IsClearingHouseCountry()) return FBeamSuperEnvironment = bsenvIntgDev;
  if (FBeamSuperEnvironment != bsenvUnknown) return FBeamSuperEnvironment;
  FBeamSuperEnvironment = DecideEnvironment();
  if (FBeamSuperEnvironment == bsenvIntgDev)
    AddToLog("Using Super Clearing Dev Environment", TLogSeverity::Information);
  else if (FBeamSuperEnvironment == bsenvAcptQa)
    AddToLog("Using Super Clearing QA Environment", TLogSeverity::Information);
  return FBeamSuperEnvironment;
}

TBeamSuperEnabled TBeamSuperGlobal::GetBeamSuperEnabled() {
  const auto Alive = shared_from_this();
  if (FBeamSuperEnabled == bseUnknown) FBeamSuperEnabled = IsClearingHouseCountry() ? bseYes : bseNo;
  return FBeamSuperEnabled;
}

TBeamSuperStatus TBeamSuperGlobal::GetBeamSuperStatus() {
  const auto Alive = shared_from_this();
  if (!GetIsBeamSuperEnabled()) return FBeamSuperStatus = bssNotEnabled;

  // Not GetCustomerUCID, which would create an identifier: asking for the status changes nothing.
  const std::string UCID = DefDecrypt(GetCurrentSystemValue("BeamSuperUCID", "", false));
  if (UCID.empty()) return FBeamSuperStatus = bssEnabled;

  const TDBStatement Key{"select * from _iptblBeamSuperCustomerIDs where cUCID = :UCID and cEnvironment = :ENV",
                         {{"UCID", DefEncrypt(UCID)}, {"ENV", EncipheredEnvironment()}}};
  const auto Row = OpenQuery(Host().ADOMainCommonConnection(), "common", Key);
  if (Row->Eof()) return FBeamSuperStatus = bssEnabled;
  if (Row->FieldAsString("cClientID").empty()) return FBeamSuperStatus;

  const TDateTime Expiry = IncYear(Row->FieldAsDateTime("dDateLastIssued"), 1);
  const TDateTime Moment = Now();
  if (CompareDateTime(Moment, Expiry) > 0) return FBeamSuperStatus = bssExpired;
  if (CompareDateTime(Moment, IncMonth(Expiry, -1)) > 0) return FBeamSuperStatus = bssNearlyExpired;
  return FBeamSuperStatus = bssActivated;
}

bool TBeamSuperGlobal::GetIsBeamSuperActive() {
  const TBeamSuperStatus Status = GetBeamSuperStatus();
  return Status == bssActivated || Status == bssNearlyExpired;
}

bool TBeamSuperGlobal::GetOptedIn() {
  return UpperCase(GetCurrentSystemValue("BeamSuperOptedIn", "", false)) == "Y";
}

void TBeamSuperGlobal::SetOptedIn(bool pValue) {
  const auto Alive = shared_from_this();
  SetCurrentSystemValue("BeamSuperOptedIn", pValue ? "Y" : "N", false);
  FBeamSuperStatus = bssUnknown;
  FBeamSuperAppToken.reset();
  FBeamSuperCustomerToken.reset();
}

std::string TBeamSuperGlobal::GetCustomerUCID() {
  const auto Alive = shared_from_this();
  if (!IsClearingHouseCountry()) {
    FBeamSuperCustomerUCID.clear();
    return {};
  }
  if (!FBeamSuperCustomerUCID.empty()) return FBeamSuperCustomerUCID;

  std::string UCID = DefDecrypt(GetCurrentSystemValue("BeamSuperUCID", "", false));
  TGUID GUID{};
  if (UCID.empty() && Host().System().CreateGUID(GUID)) {
    UCID = GUIDToString(GUID);
    const std::string Enciphered = DefEncrypt(UCID);
    SetCurrentSystemValue("BeamSuperUCID", Enciphered, false);  // first: an identifier that is not stored is lost
    FBeamSuperCustomerUCID = UCID;
    AddToLog("Created Customer UCID >" + Enciphered + "<", TLogSeverity::Information);
  }
  return FBeamSuperCustomerUCID = UCID;
}

TBeamSuperCredentials& TBeamSuperGlobal::BeamSuperCredentials() {
  if (!BeamSuperGlobal().FCredentials) LoadCredentials("");
  return ProcessWideCredentials();
}

TBeamSuperCredentials& TBeamSuperGlobal::BeamSuperCredentials(std::string pUCID) {
  const auto Credentials = LoadCredentials(pUCID);
  // Compared with what Load left: the warning appears only when the current customer was asked for by "".
  if (!Credentials->UCID.empty() && Credentials->UCID != pUCID)
    AddToLog("Loaded Super Clearing credentials for <" + pUCID + "> replacing the credentials already loaded for <" +
                 Credentials->UCID + ">. ",
             TLogSeverity::Warning);
  return ProcessWideCredentials();
}

std::shared_ptr<TBeamSuperCredentials> TBeamSuperGlobal::LoadCredentials(const std::string& pUCID) {
  TBeamSuperGlobal& Global = BeamSuperGlobal();
  const bool Fresh = !Global.FCredentials;
  // Registered before it is loaded: loading may reissue, which asks for the process-wide credentials.
  if (Fresh) Global.FCredentials = std::make_shared<TBeamSuperCredentials>();
  const auto Credentials = Global.FCredentials;
  try {
    Credentials->Load(pUCID);
  } catch (...) {
    if (Fresh && IsProcessWide(*Credentials)) FBeamSuperGlobal->FCredentials.reset();
    throw;
  }
  return Credentials;
}

TBeamSuperCredentials& TBeamSuperGlobal::ProcessWideCredentials() {
  if (!FBeamSuperGlobal || !FBeamSuperGlobal->FCredentials)
    throw TBeamError("Unable to create the credentials needed to call Super Clearing APIs");
  return *FBeamSuperGlobal->FCredentials;
}

bool TBeamSuperGlobal::IsProcessWide(const TBeamSuperCredentials& Credentials) {
  return FBeamSuperGlobal && FBeamSuperGlobal->FCredentials.get() == &Credentials;
}

}  // namespace oxSuperAPI
