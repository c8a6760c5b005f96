#pragma once

#include <cstdint>

#include "oxSuperAPI/host/uHostSystem.h"
#include "oxSuperAPI/testing/uFault.h"

namespace oxSuperAPI {

/// A machine on which nothing happens by itself: the clock stands, the zone has one offset all year, and GUIDs count.
class TFakeSystem : public THostSystem {
 public:
  /// Mutable, as are all counters here, since the clock is asked through constant operations.
  mutable TFaults Faults{"Now", "LocalToUTC", "CreateGUID", "GetCurrentProcessId", "ProcessIdToSessionId"};

  TDateTime Time = 45356.5;  ///< local; 2024-03-05 12:00
  int ZoneMinutes = 600;     ///< local time is this far ahead of UTC
  bool GUIDsWork = true;     ///< false: the machine has no source of randomness
  /// GUIDs made so far; the next one ends with this number plus one.
  std::uint32_t GUIDCount = 0;
  /// The only process that this machine knows.
  std::uint32_t ProcessId = 4711;
  std::uint32_t SessionId = 1;    ///< 0 is a service
  bool SessionQueryWorks = true;  ///< false: the query fails and gives no session

  /// Moves the clock, back too when negative. @{
  void Advance(double Days) { Time += Days; }
  void AdvanceSeconds(double Seconds);
  /// @}

  TDateTime Now() const override;
  TDateTime LocalToUTC(TDateTime Local) const override;
  /// {ABCDEF00-0000-4000-8000-000000000001}, ...02 and so on.
  bool CreateGUID(TGUID& GUID) override;
  std::uint32_t GetCurrentProcessId() const override;
  /// Raises TBeamError for another process than this one.
  bool ProcessIdToSessionId(std::uint32_t Process, std::uint32_t& Session) const override;
};

}  // namespace oxSuperAPI
