#include "oxSuperAPI/session/uBeamToken.h"

#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"

namespace oxSuperAPI {

TBeamToken::~TBeamToken() {
  // Never through BeamSuperGlobal(): a token that dies last must not create a new singleton.
  if (TBeamSuperGlobal* Global = TBeamSuperGlobal::FBeamSuperGlobal) Global->ForgetToken(*this);
}

bool TBeamToken::IsExpired(int pBufferSeconds) const {
  const TDateTime Expiry = ExpiryDate;  // read first: the host may drop this token while its clock is asked
  return CompareDateTime(IncSeconds(Now(), -pBufferSeconds), Expiry) >= 0;
}

void TBeamToken::CopyTexts(const TBeamToken& Answer) {
  TokenType = Answer.TokenType;
  ExpiresIn = Answer.ExpiresIn;
  ExtExpiresIn = Answer.ExtExpiresIn;
  ExpiresOn = Answer.ExpiresOn;
  NotBefore = Answer.NotBefore;
  Resource = Answer.Resource;
  TokenString = Answer.TokenString;
}

}  // namespace oxSuperAPI
