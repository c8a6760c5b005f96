#include "lifecycle.h"

#include <algorithm>
#include <array>

#include "announcements.h"

namespace sandbox {
namespace {

constexpr std::array<std::string_view, 5> kRoad = {kSubmitted, "Awaiting Payment", "Awaiting Clearance", "Reconciled",
                                                   kSentToFund};
constexpr std::size_t kFirstNotCancellable = 2;
constexpr std::array<std::string_view, 5> kBeside = {kSentToFundWithRefund, kCancelled, kRefunded, kUnknown,
                                                     "Marked as Processed"};

std::size_t PlaceOnRoad(const Batch& batch) {
  return static_cast<std::size_t>(std::ranges::find(kRoad, batch.status) - kRoad.begin());
}

}  // namespace

bool IsStatus(std::string_view text) {
  return std::ranges::find(kRoad, text) != kRoad.end() || std::ranges::find(kBeside, text) != kBeside.end();
}

void SetStatus(State& state, Batch& batch, std::string_view status, TimePoint when) {
  if (batch.status == status) return;
  batch.status = status;
  batch.since = when;
  AnnounceStatus(state, batch);
  if (status == kSentToFund) AnnounceFundAnswers(state, batch, Refunds::none);
  if (status == kSentToFundWithRefund) AnnounceFundAnswers(state, batch, Refunds::firstMember);
  if (status == kRefunded) AnnounceFundAnswers(state, batch, Refunds::all);
  if (status == kUnknown) AnnounceException(state, batch, UnmatchedPayment(batch), when);
}

bool MoveOn(State& state, Batch& batch, TimePoint now) {
  const std::size_t place = PlaceOnRoad(batch);
  if (place + 1 >= kRoad.size()) return false;
  SetStatus(state, batch, kRoad[place + 1], now);
  return true;
}

bool MoveOnWithTime(State& state, Batch& batch, TimePoint now, std::chrono::milliseconds step) {
  bool moved = false;
  while (step.count() > 0 && now - batch.since >= step && MoveOn(state, batch, batch.since + step)) moved = true;
  return moved;
}

bool MoveAllOnWithTime(State& state, TimePoint now, std::chrono::milliseconds step) {
  bool moved = false;
  for (auto& [processId, batch] : state.batches) moved |= MoveOnWithTime(state, batch, now, step);
  return moved;
}

bool Cancel(State& state, Batch& batch, TimePoint now) {
  if (PlaceOnRoad(batch) >= kFirstNotCancellable) return false;
  SetStatus(state, batch, kCancelled, now);
  return true;
}

}  // namespace sandbox
