#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "clock.h"
#include "json.h"

namespace sandbox {

/// A request as it arrived. Secrets in it are kept: it is for tests, in memory only.
struct Received {
  std::uint64_t id = 0;
  std::string time;
  std::uint64_t connection = 0;  ///< number of the connection, from 1
  unsigned onConnection = 0;     ///< place of the request on it, from 1
  bool tlsResumed = false;
  std::string method;
  std::string target;
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;            ///< at most kBodyKept bytes; of the large ones only the last fifty
  std::uint64_t bodySize = 0;  ///< all of it
  bool complete = false;       ///< the whole request was read
  std::string channel;         ///< of the bearer token, when the token is good
  unsigned status = 0;         ///< of the answer; 0 while there is none
  std::string fault;           ///< name of the fault that was applied
};

/// The requests received, in order. Keeps the last 10,000; counts all. Safe to use from every thread.
class Journal {
 public:
  static constexpr std::size_t kBodyKept = 1 << 20;

  /// Takes down the head of a request and numbers it.
  std::uint64_t Begin(Received received);
  void BodyRead(std::uint64_t id, const std::string& body);
  void Answered(std::uint64_t id, unsigned status, std::string_view fault);

  /// {"count":all ever received,"requests":[...]}, only those after `since` whose target begins with `prefix`.
  json::value ToJson(std::uint64_t since, std::string_view prefix) const;
  void Clear();

 private:
  Received* Find(std::uint64_t id);

  std::deque<Received> received_;
  std::deque<std::uint64_t> large_;  ///< ids of large bodies; the oldest are dropped, so that memory stays bounded
  std::uint64_t lastId_ = 0;
  std::uint64_t cleared_ = 0;  ///< last id before the latest Clear
  mutable std::mutex mutex_;
};

}  // namespace sandbox
