#pragma once

#include "oxSuperAPI/session/uBeamSaveStatement.h"

namespace oxSuperAPI::tests {

// The statement by which credentials are saved, with its runs of blanks: 741 characters.
inline constexpr std::string_view SaveStatement = SaveCredentialsSQL;

}  // namespace oxSuperAPI::tests
