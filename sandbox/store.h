#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>

#include "clock.h"

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

/// An accepted submission. Nothing about its members is kept.
struct Batch {
  std::string processId;
  std::string messageId;
  std::string customer;  ///< uuid of the customer that submitted it
  std::string status;    ///< one of the texts in lifecycle.h
  TimePoint since;       ///< when it got this status
  TimePoint submitted;
  std::string paymentReferenceNumber;
  std::int64_t totalCents = 0;
  std::string contentDigest;  ///< of the contributions without the message's own identifier
};

/// Everything that outlives a restart.
struct State {
  std::map<std::string, Customer> customers;  ///< by uuid
  std::map<std::string, Batch> batches;       ///< by process id
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
