#pragma once

#include <chrono>
#include <string_view>

#include "store.h"

namespace sandbox {

// Texts that travel: the status of a batch as the service names it.
inline constexpr std::string_view kHasErrors = "Has Errors";
inline constexpr std::string_view kValidated = "Validated";
inline constexpr std::string_view kSubmitted = "Submitted";
inline constexpr std::string_view kSentToFund = "Sent To Fund";
inline constexpr std::string_view kSentToFundWithRefund = "Sent To Fund With Refund";
inline constexpr std::string_view kCancelled = "Cancelled";
inline constexpr std::string_view kRefunded = "Refunded";
inline constexpr std::string_view kUnknown = "Unknown";

/// Whether a batch can have this status.
bool IsStatus(std::string_view text);

/// Gives a batch its status and announces it to the customer, with all that follows from it. Nothing happens when the
/// batch has this status already.
void SetStatus(State& state, Batch& batch, std::string_view status, TimePoint when);

/// The next status on the road from "Submitted" to "Sent To Fund"; false at its end and beside it.
bool MoveOn(State& state, Batch& batch, TimePoint now);

/// Moves on once for every `step` that has passed; true when the status changed. A step of 0 never does.
bool MoveOnWithTime(State& state, Batch& batch, TimePoint now, std::chrono::milliseconds step);

/// ... every batch.
bool MoveAllOnWithTime(State& state, TimePoint now, std::chrono::milliseconds step);

/// Only before the money is awaiting clearance; false afterwards.
bool Cancel(State& state, Batch& batch, TimePoint now);

}  // namespace sandbox
