#include <algorithm>
#include <chrono>
#include <cstdio>
#include <thread>

#include "commands/commands.h"
#include "interrupt.h"
#include "notification_text.h"
#include "output.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/foundation/uBeamText.h"
#include "session.h"
#include "url_text.h"

namespace oxSuperAPI {
namespace {

struct TListOptions {
  std::string Participant;
  std::int32_t Since = 0;
  std::int32_t Count = 500;
  bool Follow = false;
  std::int32_t Interval = 10;
  std::int32_t Times = 0;  ///< 0: until it is interrupted
};

using TNotificationList = std::vector<std::shared_ptr<TBeamNotification>>;

/// Those newer than `Since`, whatever else the service lists, the oldest first.
TNotificationList Ask(TSession& Session, const TListOptions& Own, std::int32_t Since) {
  std::unique_ptr<TBeamNotifications> Answer;
  std::string Message, Error, Status;
  std::int32_t LogID = 0;
  const bool Answered = Session.Call("The question", [&] {
    const TProgress Progress("Asking");
    return GetNotifications("oxsuper.notifications.list", EscapedForURL(Trim(Own.Participant)), Own.Count, Since,
                            Answer, LogID, Message, Error, Status);
  });
  if (!Answered) throw Session.Refusal("The question", Message, Error, Status);
  if (!Answer) throw Session.NotUnderstood("The question");
  TNotificationList List;
  for (std::size_t Index = 0; Index < Answer->GetNotificationCount(); ++Index)
    if (auto Each = Answer->GetNotification(static_cast<std::ptrdiff_t>(Index)); Each->NotificationId > Since)
      List.push_back(std::move(Each));
  std::ranges::stable_sort(List, {}, [](const auto& Each) { return Each->NotificationId; });
  return List;
}

TTable EmptyTable() {
  return TTable({">Id", "Date", "Process", "Type", "What happened"});
}

void AddTo(TTable& Table, const TNotificationList& List) {
  for (const auto& Each : List)
    Table.Add({std::to_string(Each->NotificationId), Each->Createdate, Each->ProcessId, Each->NotificationType,
               WhatHappened(*Each)});
}

TExit ListOnce(const TToolOptions& Options, TSession& Session, const TListOptions& Own) {
  const TNotificationList List = Ask(Session, Own, Own.Since);
  const std::int32_t Last = List.empty() ? Own.Since : List.back()->NotificationId;
  if (Options.Json) {
    TJSONArray Array;
    for (const auto& Each : List) Array.Append(TJSONValue(NotificationDocument(*Each)));
    TJSONObject Document;
    Document.Append("notifications", TJSONValue(std::move(Array)));
    AddNumber(Document, "lastId", Last);
    PrintDocument(Document);
    return exitDone;
  }
  TTable Table = EmptyTable();
  AddTo(Table, List);
  if (Table.IsEmpty()) PrintLine(Own.Since > 0 ? "There are no newer notifications." : "There are no notifications.");
  Table.Print();
  if (List.size() >= static_cast<std::size_t>(Own.Count))
    Note("There may be more; go on with --since " + std::to_string(Last) + ".");
  return exitDone;
}

/// Asks again and again. A service that fails may work again, so that ends nothing; being refused does.
TExit Follow(const TToolOptions& Options, TSession& Session, const TListOptions& Own) {
  TTable Table = EmptyTable();
  std::int32_t Last = Own.Since;
  TExit Exit = exitDone;
  for (std::int32_t Asked = 0; Own.Times == 0 || Asked < Own.Times; ++Asked) {
    ResumeInterrupt();  // credentials that were exchanged on the way had put it off
    if (Asked > 0) std::this_thread::sleep_for(std::chrono::seconds(Own.Interval));
    try {
      const TNotificationList List = Ask(Session, Own, Last);
      if (!List.empty()) Last = List.back()->NotificationId;
      Exit = exitDone;
      if (Options.Json)
        for (const auto& Each : List) PrintLine(PrintJSON(NotificationDocument(*Each), TJSONLayout::Compact));
      else
        AddTo(Table, List);
      Table.PrintOn();
    } catch (const TToolError& Error) {
      Exit = Error.Exit();
      if (Asked == 0 || (Exit != exitServiceFailure && Exit != exitFailed)) throw;
      Note("oxsuper: " + Printable(Error.what(), true));
    }
    // An interrupt ends the process without writing what is still here; and nobody may be reading any more.
    if (std::fflush(stdout) != 0) throw TToolError(exitFailed, "Nobody reads the notifications any more");
  }
  return Exit;
}

TExit List(const TToolOptions& Options, const TListOptions& Own) {
  TSession Session(Options);
  Session.NeedCustomerToken();
  return Own.Follow ? Follow(Options, Session, Own) : ListOnce(Options, Session, Own);
}

}  // namespace

void AddNotificationsCommand(TCommandLine Line) {
  constexpr std::int32_t Most = 2147483647;
  CLI::App* Command = Line.App.add_subcommand("notifications", "What became of batches, members and payments");
  Command->require_subcommand(1);
  CLI::App* ListCommand = Command->add_subcommand("list", "What the service has to say, the oldest first");
  auto Values = std::make_shared<TListOptions>();
  ListCommand->add_option("--participant", Values->Participant,
                          "Only about batches of this participant, by its number");
  ListCommand->add_option("--since", Values->Since, "Only those with a greater id")->check(CLI::Range(0, Most));
  ListCommand->add_option("--count", Values->Count, "At most so many at a time")
      ->check(CLI::Range(1, Most))
      ->capture_default_str();
  CLI::Option* FollowFlag = ListCommand->add_flag("--follow", Values->Follow,
                                                  "Go on asking, until it is interrupted; with --json a line each");
  ListCommand->add_option("--interval", Values->Interval, "Seconds between two questions")
      ->check(CLI::Range(1, 86400))
      ->capture_default_str()
      ->needs(FollowFlag);
  ListCommand->add_option("--times", Values->Times, "Ask so often, then end")
      ->check(CLI::Range(1, Most))
      ->needs(FollowFlag);
  OnCommand(ListCommand, Line, Values, List);
}

}  // namespace oxSuperAPI
