#include <charconv>
#include <optional>

#include "lifecycle.h"
#include "router.h"

namespace sandbox {
namespace {

/// A whole number of the query; `missing` when it does not name it, nothing when it is no number.
std::optional<std::int64_t> QueryNumber(const Call& call, std::string_view name, std::int64_t missing) {
  const std::string_view text = QueryValue(View(call.request.target()), name);
  if (text.empty()) return missing;
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

json::value ToJson(const Notification& notification) {
  return {{"create_date", IsoTime(notification.created)},
          {"notificationId", notification.id},
          {"notification_type", notification.type},
          {"payload", notification.payload},
          {"processId", notification.processId}};
}

/// The oldest first, so that a client that goes on from the last id it has seen misses none.
Answer List(const Call& call) {
  const auto count = QueryNumber(call, "count", 500), after = QueryNumber(call, "notificationId", 0);
  if (!count || *count < 1) return ErrorAnswer(400, "COUNT_INVALID", "The count must be a number from 1");
  if (!after) return ErrorAnswer(400, "NOTIFICATION_ID_INVALID", "The notification id must be a whole number");
  const auto wanted = [&](const Notification& notification) {
    return notification.customer == call.customer && notification.id > *after &&
           (call.ids.empty() || notification.participant == call.ids[0]);
  };
  json::array found;
  call.services.store.Change([&](State& state) {
    const bool moved = MoveAllOnWithTime(state, call.services.clock.Now(), call.services.options.timeStep);
    for (const Notification& notification : state.notifications) {
      if (static_cast<std::int64_t>(found.size()) == *count) break;
      if (wanted(notification)) found.push_back(ToJson(notification));
    }
    return moved;
  });
  return JsonAnswer(200, found);
}

constexpr Endpoint kEndpoints[] = {
    {http::verb::get, "/clearing-house/notifications", Channel::customer, List},
    {http::verb::get, "/clearing-house/notifications/{}", Channel::customer, List},
};

}  // namespace

std::span<const Endpoint> NotificationEndpoints() {
  return kEndpoints;
}

}  // namespace sandbox
