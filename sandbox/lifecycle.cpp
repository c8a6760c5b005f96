#include "lifecycle.h"

#include <algorithm>
#include <array>

namespace sandbox {
namespace {

constexpr std::array<std::string_view, 5> kRoad = {kSubmitted, "Awaiting Payment", "Awaiting Clearance", "Reconciled",
                                                   "Sent To Fund"};
constexpr std::size_t kFirstNotCancellable = 2;
constexpr std::array<std::string_view, 5> kBeside = {"Sent To Fund With Refund", kCancelled, "Refunded", "Unknown",
                                                     "Marked as Processed"};

std::size_t PlaceOnRoad(const Batch& batch) {
  return static_cast<std::size_t>(std::ranges::find(kRoad, batch.status) - kRoad.begin());
}

}  // namespace

bool IsStatus(std::string_view text) {
  return std::ranges::find(kRoad, text) != kRoad.end() || std::ranges::find(kBeside, text) != kBeside.end();
}

bool MoveOn(Batch& batch, TimePoint now) {
  const std::size_t place = PlaceOnRoad(batch);
  if (place + 1 >= kRoad.size()) return false;
  batch.status = kRoad[place + 1];
  batch.since = now;
  return true;
}

bool MoveOnWithTime(Batch& batch, TimePoint now, std::chrono::milliseconds step) {
  bool moved = false;
  while (step.count() > 0 && now - batch.since >= step && MoveOn(batch, batch.since + step)) moved = true;
  return moved;
}

bool Cancel(Batch& batch, TimePoint now) {
  if (PlaceOnRoad(batch) >= kFirstNotCancellable) return false;
  batch.status = kCancelled;
  batch.since = now;
  return true;
}

}  // namespace sandbox
