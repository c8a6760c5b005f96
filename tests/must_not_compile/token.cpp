#include "oxSuperAPI/session/uBeamToken.h"

#include <utility>

// The end of a copy would empty the slot of the token that it was made from.
void Use(oxSuperAPI::TBeamToken& Token) {
  oxSuperAPI::TBeamToken Other;
  Other.CopyTexts(Token);
#if defined COPIED
  oxSuperAPI::TBeamToken Copy(Token);
#elif defined MOVED
  oxSuperAPI::TBeamToken Moved(std::move(Token));
#endif
}
