#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// Where a text stops being JSON, and why.
struct TJSONProblem {
  std::size_t Offset = 0;  ///< in bytes from the beginning
  /// The same place for people: from 1, and a column is a code point. @{
  std::size_t Line = 1;
  std::size_t Column = 1;
  /// @}
  std::string Reason{};  ///< an English sentence that holds nothing of the text
};

/// The first place at which TJSONRapidJson refuses the text; none when it accepts it.
OXSUPERAPI_EXPORT std::optional<TJSONProblem> FindJSONProblem(std::string_view Text);

}  // namespace oxSuperAPI
