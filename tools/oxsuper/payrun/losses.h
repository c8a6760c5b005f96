#pragma once

#include <map>
#include <string>
#include <vector>

#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

/// The values of a document that say something (not null, empty or zero), as text, by their paths:
/// "employers[0].contact.email".
using TSaidValues = std::map<std::string, std::string>;
TSaidValues SaidValues(const TJSONValue& Document);

/// The paths of what a file says and what is gone once the record that was read from it is written again.
std::vector<std::string> LostPaths(const TSaidValues& File, const TSaidValues& Written);

}  // namespace oxSuperAPI
