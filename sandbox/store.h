#pragma once

#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "clock.h"
#include "json.h"

namespace sandbox {

/// An employer customer. Secret and PIN are kept as digests only.
struct Customer {
  std::string uuid;
  std::string customerNumber;
  std::string companyName;
  std::string pinDigest;  ///< empty while no register call has named the PIN
  std::string clientId;
  std::string secretDigest;
  bool preRegistered = false;  ///< may activate; used up by activating
  bool activated = false;      ///< its client id and secret open the token endpoint
};

/// What a fund answers about a member: no name, no date, no tax file number.
struct MemberPart {
  std::string contextId;
  std::string memberNumber;  ///< the fund's; made up for a member that had none
  std::int64_t cents = 0;
};

/// A fund of a batch, under one of its employers.
struct FundPart {
  std::string contextId;
  std::string employerAbn;
  std::string abn;
  std::string usi;
  std::int64_t cents = 0;           ///< of all its members
  std::vector<MemberPart> members;  ///< those the fund answers about
};

/// An accepted submission.
struct Batch {
  std::string processId;
  std::string messageId;
  std::string customer;     ///< uuid of the customer that submitted it
  std::string participant;  ///< its client participant number; may be empty
  std::string status;       ///< one of the texts in lifecycle.h; changed by the functions there
  TimePoint since;          ///< when it got this status
  TimePoint submitted;
  std::string paymentReferenceNumber;
  std::int64_t totalCents = 0;
  std::string contentDigest;  ///< of the contributions without the message's own identifier
  std::vector<FundPart> funds;
};

/// The details of a participant as they were posted, with the ids that the clearing house gave its records.
struct Participant {
  std::string customer;  ///< uuid of the customer that posted them
  std::string number;    ///< the client participant number
  json::value details;
};

/// Something the clearing house has to tell a customer.
struct Notification {
  std::int64_t id = 0;
  std::string customer;     ///< uuid
  std::string participant;  ///< of the batch it is about
  std::string processId;
  std::string type;
  TimePoint created;
  std::string payload;  ///< JSON text
};

/// Everything that outlives a restart.
struct State {
  std::map<std::string, Customer> customers;                                ///< by uuid
  std::map<std::string, Batch> batches;                                     ///< by process id
  std::map<std::pair<std::string, std::string>, Participant> participants;  ///< by customer and number
  std::deque<Notification> notifications;                                   ///< the oldest first; the last 5,000
  std::int64_t lastRecordId = 0;        ///< of an employer or direct debit authority
  std::int64_t lastNotificationId = 0;  //
};

/// Holds the state and, where a file is named, keeps it there. Safe to use from every thread.
class Store {
 public:
  /// Reads `file` when it exists; an empty name keeps the state in memory. Throws std::runtime_error when the file is
  /// no state file.
  explicit Store(std::string file);

  /// Runs `change` alone on the state. When it returns true the file is written (beside the old one, then renamed, for
  /// the owner only) before anyone else sees the state; when that fails the change is taken back and the error thrown.
  void Change(const std::function<bool(State&)>& change);

  void Read(const std::function<void(const State&)>& read) const;

 private:
  std::string file_;
  State state_;
  mutable std::mutex mutex_;
};

}  // namespace sandbox
