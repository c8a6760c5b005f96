#pragma once

#include <string>

namespace oxSuperAPI {

/// A text of the call log without bearer tokens, access tokens, PINs and tax file numbers, each shown as "(hidden)".
/// The rows themselves hold them: the library masks client ids, secrets and customer ids only.
std::string HideForDisplay(const std::string& Text);

}  // namespace oxSuperAPI
