#pragma once

#include <atomic>
#include <chrono>
#include <string>

namespace sandbox {

using TimePoint = std::chrono::sys_time<std::chrono::milliseconds>;

/// The sandbox's own time: the machine's clock plus what it was told to skip. Safe to use from every thread.
class Clock {
 public:
  TimePoint Now() const;
  void Advance(std::chrono::milliseconds by) { skipped_ += by.count(); }
  void Reset() { skipped_ = 0; }

 private:
  std::atomic<std::int64_t> skipped_{0};
};

/// UTC as "2024-03-05T10:20:30.123Z"; the first ten characters are the date.
std::string IsoTime(TimePoint time);

}  // namespace sandbox
