#pragma once

#include <optional>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"
#include "oxSuperAPI/host/uHostDates.h"

namespace oxSuperAPI {

/// The UTC moment of an ISO 8601 calendar date or date-time, or none when `Text` is not one: "2024-03-05",
/// "2024-03-05T10:02", "2024-03-05T10:02:03.004+10:00", also without the separators ("20240305T100203Z").
///
/// A date alone is its midnight. Without a zone designator the time is UTC. The seconds' fraction may have any length;
/// "24:00" is the end of the day. No blanks, week dates or ordinal dates.
OXSUPERAPI_EXPORT std::optional<TDateTime> ParseISODateTime(std::string_view Text);

}  // namespace oxSuperAPI
