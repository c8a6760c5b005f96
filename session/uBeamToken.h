#pragma once

#include <string>

#include "oxSuperAPI/foundation/uBeamEnumerations.h"
#include "oxSuperAPI/host/uHostDates.h"

namespace oxSuperAPI {

/// An OAuth bearer token of one channel. The texts are the service's own, as they came.
///
/// A token whose `TokenChannel` is `bstcCustomer` or `bstcApp` empties that slot of the process-wide cache when it is
/// destroyed, whoever made it; an administrator token does not. Neither copied nor moved: a copy's end would empty the
/// slot as well.
class OXSUPERAPI_EXPORT TBeamToken {
 public:
  TBeamToken() = default;
  ~TBeamToken();
  TBeamToken(const TBeamToken&) = delete;
  TBeamToken& operator=(const TBeamToken&) = delete;

  /// Whether the token has been stale for `pBufferSeconds` or longer: the buffer prolongs a token's use, it does not
  /// renew it early.
  bool IsExpired(int pBufferSeconds) const;

  /// Environment and channel say for what it was issued. @{
  TBeamSuperEnvironment Environment = bsenvUnknown;
  TBeamSuperTokenChannel TokenChannel = bstcNone;
  std::string TokenType;
  std::string ExpiresIn;  ///< seconds
  std::string ExtExpiresIn;
  std::string ExpiresOn;
  std::string NotBefore;
  TDateTime ExpiryDate = 0;  ///< local time from which the token counts as stale
  std::string Resource;
  std::string TokenString;  ///< the bearer token itself: never for a log or a screen
  /// @}

  /// Takes the service's texts over from `Answer`; environment, channel and expiry date stay.
  void CopyTexts(const TBeamToken& Answer);
};

}  // namespace oxSuperAPI
