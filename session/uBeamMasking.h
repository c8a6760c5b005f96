#pragma once

#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

// Both work in place: a text that is moved in is masked without a copy. The cost is linear in the length of the text,
// whatever it holds.

/// Masks what follows each occurrence of `Key` (lower case; found in any letter case): every character up to the next
/// "&", ";", ",", "{" or "}" becomes "*", but blanks, double quotes and colons stay, so that a JSON pair keeps its
/// shape. An occurrence with nothing before the next delimiter ends the search: later ones stay visible, as in the rows
/// that hosts already have.
OXSUPERAPI_EXPORT std::string HideString(std::string Text, std::string_view Key);

/// Masks client ids, client secrets and UUIDs in a text bound for a log: HideString for each of their names. Bearer
/// tokens are not among them.
OXSUPERAPI_EXPORT std::string HideCredentials(std::string Text);

}  // namespace oxSuperAPI
