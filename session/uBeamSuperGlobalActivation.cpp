#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/foundation/uBeamNumbers.h"
#include "oxSuperAPI/foundation/uBeamText.h"
#include "oxSuperAPI/session/uBeamHostAccess.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"

namespace oxSuperAPI {

namespace {

// The column may be of fixed width, padded with blanks.
std::string RegisteredNumber(const TADOQuery& Row, std::string_view Column) {
  const std::int32_t Number = IntegerOrZero(Trim(Row.FieldAsString(Column)));
  const bool Accepted = (Number >= 15000 && Number <= 15999) || (Number >= 50000 && Number <= 59999);
  return Accepted ? std::to_string(Number) : std::string();
}

// The service hands a pair out once: a clock that fails must not keep it from being saved.
TDateTime NowOr(TDateTime Fallback) noexcept {
  try {
    return Now();
  } catch (...) {
    return Fallback;
  }
}

}  // namespace

std::string TBeamSuperGlobal::FindCustomerNumber() {
  std::string Number;
  const auto Row =
      OpenQuery(Host().ADOMainConnection(), "payroll", {"select cSTPGatewayUsername, cClientNumber from Entities", {}});
  if (!Row->Eof()) {
    Number = RegisteredNumber(*Row, "cClientNumber");
    if (Number.empty()) Number = RegisteredNumber(*Row, "cSTPGatewayUsername");
  }
  THostIdentity& Identity = Host().Identity();
  const std::string Domain = Identity.GetDomainName();
  if (!Number.empty() || !(IsUKDomain(Domain) || IsHostedDomain(Domain))) return Number;

  const std::string LoginDatabase = Identity.LoginDatabaseName();
  const std::string_view FromLogin = Characters(LoginDatabase, 2, 5);
  if (IntegerOrZero(Trim(FromLogin)) > 0) return std::string(FromLogin);  // as characters: "00012" stays so
  const std::string CommonDatabase = Identity.CommonDatabaseName();
  return std::string(FirstCharacters(Trim(CommonDatabase), 5));
}

bool TBeamSuperGlobal::ActivateCustomer(std::string, std::string& pMessage) {
  static constexpr char Source[] = "BeamSuperGlobal.ActivateCustomer";
  const auto Alive = shared_from_this();
  pMessage.clear();
  const auto Credentials = LoadCredentials("");
  pMessage = "Activating Customer";
  const auto Refuse = [&pMessage](std::string Reason) {
    pMessage = std::move(Reason);
    return false;
  };
  if (!GetIsBeamSuperEnabled()) return Refuse("Super Clearing is not enabled");
  if (Credentials->GetActivated()) return Refuse("Already activated");
  const std::string CustomerNumber = FindCustomerNumber();
  if (CustomerNumber.empty()) {
    const std::string Reason = "Unable to determine the Customer Number to activate the customer for Super Clearing";
    AddToLog(Reason, TLogSeverity::Error);
    return Refuse(Reason);
  }

  const std::string CompanyName = Host().Identity().RegisteredCompanyName();
  std::string Key, PIN;
  TBeamAPIHelper::GetRegoKeyAndPIN(Key, PIN);
  const std::string UUID = Key + "-" + CustomerNumber;

  std::string Message, Error, Status;
  if (GetHealthCheck(Source, Message, Error, Status)) {
    AddToLog("Customer already Activated in Super Clearing", TLogSeverity::Information);
    pMessage = "Customer is already activated";
    return true;
  }

  const TDateTime Asked = Now();
  std::string ClientID, ClientSecret;
  const bool Activated = PostActivateCustomer(false, UUID, CustomerNumber, CompanyName, PIN, Source, Message, Error,
                                              Status, ClientID, ClientSecret);
  // A success without a complete pair must not overwrite anything.
  if (!Activated || ClientID.empty() || ClientSecret.empty()) return Refuse(Message + " " + Error + " " + Status);

  Credentials->ClientID = ClientID;
  Credentials->ClientSecret = ClientSecret;
  TryAddToLog("Activated Customer in Super Clearing", TLogSeverity::Information);
  pMessage = "Customer Activated";
  if (Credentials->UCID.empty()) Credentials->UCID = GetCustomerUCID();
  Credentials->UUID = UUID;
  Credentials->CustomerNumber = CustomerNumber;
  Credentials->PIN = PIN;
  Credentials->CompanyName = CompanyName;
  Credentials->DateLastIssued = NowOr(Asked);
  Credentials->Save();
  return true;
}

bool TBeamSuperGlobal::ReissueCredentials(std::string pSource, std::string& pMessage) {
  const auto Alive = shared_from_this();
  pMessage = "Reissuing Customer's Credentials";
  const auto Refuse = [&pMessage](std::string Reason) {
    pMessage = std::move(Reason);
    return false;
  };
  if (!GetIsBeamSuperEnabled()) return Refuse("Super Clearing is not enabled");
  const auto Credentials = BeamSuperCredentials().shared_from_this();
  if (!Credentials->GetActivated()) return Refuse("Customer has not been activated");
  if (Credentials->GetIsExpired())
    return Refuse("The Customer credentials have already expired. The Customer must be re-registered");

  const TDateTime Asked = Now();
  std::string Message, Error, Status, ClientID, ClientSecret;
  const bool Reissued =
      PostActivateCustomer(true, Credentials->UUID, Credentials->CustomerNumber, Credentials->CompanyName,
                           Credentials->PIN, std::move(pSource), Message, Error, Status, ClientID, ClientSecret);
  if (!Reissued || ClientID.empty() || ClientSecret.empty()) return Refuse(Message);

  Credentials->ClientID = ClientID;
  Credentials->ClientSecret = ClientSecret;
  TryAddToLog("Super Clearing credentials have been reissued", TLogSeverity::Information);
  pMessage = "Credentials Reissued";
  Credentials->DateLastIssued = NowOr(Asked);
  Credentials->Save();
  return true;
}

}  // namespace oxSuperAPI
