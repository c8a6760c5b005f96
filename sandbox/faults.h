#pragma once

#include <chrono>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

#include "http.h"

namespace sandbox {

/// What goes wrong. Names in faults.cpp, their meaning in docs/sandbox.md.
enum class Fault {
  none,
  resetOnConnect,      ///< the connection is reset before TLS
  resetInHandshake,    ///< ... after the first bytes of TLS
  resetBeforeRead,     ///< the head of the request was read (to know which it is), its body was not
  resetAfterRead,      ///< the whole request was read, no byte is answered
  resetMidResponse,    ///< a part of the answer leaves, then a reset
  closeAfterRead,      ///< the whole request was read, then an orderly close without an answer
  truncate,            ///< a Content-Length larger than the body that comes, then an orderly close
  cutWithoutLength,    ///< an answer without any length ends early, without the end mark of TLS
  chunkedCut,          ///< a chunked answer without its last chunk, then an orderly close
  garbage,             ///< bytes that are no HTTP
  drip,                ///< the answer in small pieces
  closeAfterResponse,  ///< a whole answer that promises to keep the connection, which is then closed
};

std::string_view Name(Fault fault);

/// One line of the play book: how one of the next requests, or the next connection, is treated.
struct Preset {
  std::string path;                 ///< only targets that begin so
  std::string method;               ///< only this method; empty: all
  std::uint64_t times = 1;          ///< how often it is used; 0: until it is cleared
  Fault fault = Fault::none;        //
  bool handle = true;               ///< whether the endpoint runs (a submission is booked, say)
  std::optional<unsigned> status;   ///< instead of the endpoint's
  std::optional<std::string> body;  ///< instead of the endpoint's
  std::vector<std::pair<std::string, std::string>> headers;  ///< beside the usual ones, replacing equal names
  std::chrono::milliseconds delay{};                         ///< before the answer or the fault
  std::optional<std::size_t> sendBytes;      ///< body bytes that leave before a cut; half of them by default
  std::size_t dripBytes = 1;                 ///< size of a piece
  std::chrono::milliseconds dripPause{100};  ///< between two pieces
};

/// Throws std::invalid_argument with a message for the caller: unknown names and wrong types are refused.
Preset PresetFrom(const json::value& value);

/// The presets that are waiting, used in the order they came. Safe to use from every thread.
class Presets {
 public:
  void Add(Preset preset);
  void Clear();
  std::size_t Count() const;

  /// The first preset for a new connection, or for a request; one use is counted off.
  std::optional<Preset> TakeForConnection();
  std::optional<Preset> TakeForRequest(std::string_view method, std::string_view target);

 private:
  template <class Fits>
  std::optional<Preset> Take(Fits fits);

  std::deque<Preset> presets_;
  mutable std::mutex mutex_;
};

/// Puts the preset's status, body and headers in the place of the endpoint's.
void Override(Answer& answer, const Preset& preset);

}  // namespace sandbox
