#pragma once

#include <cstddef>

namespace bench {

/// What the process takes from the heap between making the meter and asking it, counted at malloc and free, so that
/// every library counts. One meter at a time.
class TMemoryMeter {
 public:
  /// Blocks of at least `LargeBlock` bytes are counted.
  explicit TMemoryMeter(std::size_t LargeBlock = static_cast<std::size_t>(-1));
  ~TMemoryMeter();
  TMemoryMeter(const TMemoryMeter&) = delete;

  /// More than at the start, in bytes: now, and at most. @{
  double Held() const;
  double Peak() const;
  /// @}
  std::size_t LargeBlocks() const;
};

/// Takes SQLite's memory out of the meter's sight; before SQLite is used at all.
void KeepSQLiteApart();

/// What SQLite takes for itself.
class TSQLiteMeter {
 public:
  TSQLiteMeter();
  double Peak() const;

 private:
  double FStart;
};

}  // namespace bench
