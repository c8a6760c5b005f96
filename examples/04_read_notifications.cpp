// 04: reads what the service has to tell since the last time, and keeps the highest id for the next.
#include <algorithm>
#include <iostream>

#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"
#include "oxSuperAPI/testing/uFakeHost.h"

using namespace oxSuperAPI;

namespace {

void Report(const TBeamNotification& Notification) {
  std::cout << Notification.NotificationId << ' ' << Notification.NotificationType << ", process "
            << Notification.ProcessId << ": ";
  if (Notification.NotificationType == "STATUS")
    std::cout << Notification.StatusMessage << '\n';
  else if (Notification.NotificationType == "EXCEPTION")
    std::cout << Notification.Exception.ExceptionMessage << ", pay " << Notification.Exception.Properties.Amount
              << '\n';
  else
    std::cout << Notification.Summary << ", member " << Notification.EventItem.MemberNumber << ", refund of "
              << Notification.EventItem.RefundAmount << " dollars\n";
}

}  // namespace

int main() {
  TFakeHost Host;
  Host.AddActivatedCustomer();
  Host.FakeHTTP.AnswerURL("/auth/token", 200, R"({"access_token":"abc","expires_in":"3599"})");
  // A payload is JSON inside a string.
  Host.FakeHTTP.AnswerURL("/clearing-house/notifications", 200, R"([
    {"create_date": "2026-11-20T09:00:00Z", "notificationId": "41", "notification_type": "STATUS", "processId": "PR-1",
     "payload": "{\"statusMessage\":\"Awaiting Payment\"}"},
    {"create_date": "2026-11-21T09:00:00Z", "notificationId": "42", "notification_type": "MEMBER_RESPONSE",
     "processId": "PR-1", "payload": "{\"summary\":\"Refunded\",\"eventItem\":{\"contextId\":\"M-1\",\"errorCode\":\"E1\",\"severityCode\":\"Error\",\"shortDescription\":\"left\",\"detailedDescription\":\"left the fund\",\"parameters\":[{\"name\":\"SuperannuationFundDetails.MemberClient.Identifier\",\"value\":\"M-1001\"},{\"name\":\"RefundAmount\",\"value\":\"12.50\"}]}}"}])");

  constexpr int LastSeen = 40;  // kept by the application from one run to the next
  std::unique_ptr<TBeamNotifications> Notifications;
  std::int32_t LogID = 0;
  std::string Message, Error, Status;
  int Highest = LastSeen;
  if (GetNotifications("example 04", "15001", 0, LastSeen, Notifications, LogID, Message, Error, Status) &&
      Notifications) {
    for (std::size_t Index = 0; Index < Notifications->GetNotificationCount(); ++Index) {
      const auto Notification = Notifications->GetNotification(static_cast<std::ptrdiff_t>(Index));
      Report(*Notification);
      Highest = std::max(Highest, static_cast<int>(Notification->NotificationId));
    }
  } else {
    std::cout << "not read: " << Message << '\n';
  }
  std::cout << "next time from " << Highest << '\n';
  TBeamSuperGlobal::Finalize();
  return Highest == 42 ? 0 : 1;
}
