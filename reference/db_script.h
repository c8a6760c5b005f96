#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// The pieces of a script for SQL Server: what stands between lines that hold nothing but "GO", as the vendor's tools
/// cut it. Blank pieces are left out.
OXSUPERAPI_EXPORT std::vector<std::string> SplitBatches(std::string_view Script);

/// The statements of a script without triggers, cut at the semicolons outside literals, quoted names and comments.
OXSUPERAPI_EXPORT std::vector<std::string> SplitStatements(std::string_view Script);

}  // namespace oxSuperAPI
