#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/foundation/uBeamNumbers.h"
#include "oxSuperAPI/foundation/uBeamText.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"

namespace oxSuperAPI {

/// A channel on which the library itself is the client.
struct TBeamSuperGlobal::TClientChannel {
  TTokenSlot Slot;
  TBeamSuperTokenChannel Channel;
  TBeamTable<TBeamSuperEnvironment, 4> ClientIDs;
  std::string_view SecretName;  // under which the host keeps the scrambled client secret
  const char* Source;           // as the call log shows it
  const char* NoEnvironment;
  bool AdminTexts;
};

namespace {

constexpr int ExpiryBufferSeconds = 120;

/// Issued by the service: they may not change.
constexpr TBeamTable<TBeamSuperEnvironment, 4> ApplicationClientIDs{{"", "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f601",
                                                                     "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f602",
                                                                     "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f603"}};
constexpr TBeamTable<TBeamSuperEnvironment, 4> AdministratorClientIDs{{"", "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f611",
                                                                       "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f612",
                                                                       "3f1a2b4c-5d6e-4f70-8a91-b2c3d4e5f613"}};

// The plain secret lives in the caller's local for the length of the token call, nowhere else.
std::string PlainSecret(std::string_view SecretName, TBeamSuperEnvironment Environment) {
  return DecodeDecrypt(Host().Identity().ScrambledClientSecret(SecretName, TBeamSuperEnvironmentString[Environment]));
}

}  // namespace

TBeamToken* TBeamSuperGlobal::GetAppToken() {
  return FetchClientToken({&TBeamSuperGlobal::FBeamSuperAppToken, bstcApp, ApplicationClientIDs, "application",
                           "BeamnSuperGlobal.GetAppToken",  // the stray n is what the rows hold
                           "Requested Super Clearing App token when no Super Clearing Environment set up", false});
}

TBeamToken* TBeamSuperGlobal::GetAdminToken() {
  return FetchClientToken({&TBeamSuperGlobal::FBeamSuperAdminToken, bstcAdmin, AdministratorClientIDs, "administrator",
                           "BeamSuperGlobal.GetAdminToken",
                           "Requested Super Clearing Admin token when no Super Clearing Environment set up", true});
}

TBeamToken* TBeamSuperGlobal::GetCustomerToken() {
  const auto Alive = shared_from_this();
  constexpr TTokenSlot Slot = &TBeamSuperGlobal::FBeamSuperCustomerToken;
  if (TBeamToken* Valid = ValidToken(Slot)) return Valid;
  // Asked for before the slot is touched: the first load may reissue, which fetches a customer token of its own.
  const TBeamSuperCredentials& Credentials = BeamSuperCredentials();
  const std::string ClientID = Credentials.ClientID;
  const std::string ClientSecret = Credentials.ClientSecret;
  if (!PutStaleToken(Slot, bstcCustomer)) return nullptr;
  return FetchToken(Slot, ClientID, ClientSecret, "GetCustomerToken", false);
}

TBeamToken* TBeamSuperGlobal::FetchClientToken(const TClientChannel& Channel) {
  const auto Alive = shared_from_this();
  if (TBeamToken* Valid = ValidToken(Channel.Slot)) return Valid;
  TBeamToken* Token = PutStaleToken(Channel.Slot, Channel.Channel);
  if (!Token) return nullptr;
  const TBeamSuperEnvironment Environment = Token->Environment;
  if (!Channel.ClientIDs.Contains(Environment) || Channel.ClientIDs[Environment].empty()) {
    AddToLog(Channel.NoEnvironment, TLogSeverity::Error);
    return FBeamSuperGlobal ? (FBeamSuperGlobal->*Channel.Slot).get() : nullptr;
  }
  return FetchToken(Channel.Slot, std::string(Channel.ClientIDs[Environment]),
                    PlainSecret(Channel.SecretName, Environment), Channel.Source, Channel.AdminTexts);
}

TBeamToken* TBeamSuperGlobal::ValidToken(TTokenSlot Slot) {
  if (!(this->*Slot) || (this->*Slot)->IsExpired(ExpiryBufferSeconds)) return nullptr;
  return (this->*Slot).get();
}

// From here on the host may drop the token, or this object, in any of its facilities: the slot is found anew, through
// the class variable, after each of them.
TBeamToken* TBeamSuperGlobal::PutStaleToken(TTokenSlot Slot, TBeamSuperTokenChannel Channel) {
  const TDateTime Yesterday = Now() - 1;
  if (!FBeamSuperGlobal) return nullptr;
  (FBeamSuperGlobal->*Slot).reset();  // on its own: a token's end empties its slot
  (FBeamSuperGlobal->*Slot) = std::make_unique<TBeamToken>();
  (FBeamSuperGlobal->*Slot)->ExpiryDate = Yesterday;
  const TBeamSuperEnvironment Environment = FBeamSuperGlobal->GetBeamSuperEnvironment();
  TBeamToken* Token = FBeamSuperGlobal ? (FBeamSuperGlobal->*Slot).get() : nullptr;
  if (!Token) return nullptr;
  Token->Environment = Environment;
  Token->TokenChannel = Channel;
  return Token;
}

TBeamToken* TBeamSuperGlobal::FetchToken(TTokenSlot Slot, const std::string& ClientID, const std::string& ClientSecret,
                                         const std::string& Source, bool AdminTexts) {
  TBeamToken Answer;  // of no channel, so that its end empties no slot
  std::string Message, Error, Status;
  const bool Obtained = GetBeamToken(ClientID, ClientSecret, Source, &Answer, Message, Error, Status);
  const TDateTime Expiry = Obtained ? IncSeconds(Now(), IntegerOrZero(Trim(Answer.ExpiresIn))) : 0;
  TBeamSuperGlobal* Global = FBeamSuperGlobal;
  if (!Global) return nullptr;

  TBeamToken* Token = (Global->*Slot).get();
  if (Token && Obtained) {  // a failure leaves what is there: the host may have fetched a good one meanwhile
    Token->CopyTexts(Answer);
    Token->ExpiryDate = Expiry;
  }
  // The message goes where the status belongs, and but on the administrator channel the other way round: kept, hosts
  // show these texts so.
  Global->FLastAPICallStatus = Message;
  Global->FLastAPICallError = Error;
  Global->FLastAPICallMessage = AdminTexts ? "GetAdminToken " + Message : Status;
  return Token;
}

void TBeamSuperGlobal::ForgetToken(TBeamToken& Dying) {
  if (Dying.TokenChannel != bstcCustomer && Dying.TokenChannel != bstcApp) return;
  auto& Slot = Dying.TokenChannel == bstcCustomer ? FBeamSuperCustomerToken : FBeamSuperAppToken;
  if (Slot.get() == &Dying) {
    Slot.release();  // it is being destroyed already
    return;
  }
  const auto Dropped = std::move(Slot);  // dies last, when its slot is empty
}

}  // namespace oxSuperAPI
