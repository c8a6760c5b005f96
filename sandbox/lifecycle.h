#pragma once

#include <chrono>
#include <string_view>

#include "store.h"

namespace sandbox {

// Texts that travel: the status of a batch as the service names it.
inline constexpr std::string_view kHasErrors = "Has Errors";
inline constexpr std::string_view kValidated = "Validated";
inline constexpr std::string_view kSubmitted = "Submitted";
inline constexpr std::string_view kCancelled = "Cancelled";

/// Whether a batch can have this status.
bool IsStatus(std::string_view text);

/// The next status on the road from "Submitted" to "Sent To Fund"; false at its end and beside it.
bool MoveOn(Batch& batch, TimePoint now);

/// Moves on once for every `step` that has passed; true when the status changed. A step of 0 never does.
bool MoveOnWithTime(Batch& batch, TimePoint now, std::chrono::milliseconds step);

/// Only before the money is awaiting clearance; false afterwards.
bool Cancel(Batch& batch, TimePoint now);

}  // namespace sandbox
