#pragma once

#include <array>
#include <cstdint>

#include "oxSuperAPI/host/uBeamError.h"
#include "oxSuperAPI/host/uHostDates.h"

namespace oxSuperAPI {

/// The sixteen bytes of a GUID in the order in which its text shows them.
using TGUID = std::array<std::uint8_t, 16>;

/// Clock, time zone, identifiers and process of the machine. Every operation has a working default; a test overrides
/// what it wants to fix.
class OXSUPERAPI_EXPORT THostSystem {
 public:
  virtual ~THostSystem() = default;
  /// Local time now, to the millisecond.
  virtual TDateTime Now() const;
  /// The zone's rule of that moment decides. A local time that a clock change skips or repeats is resolved as the C
  /// library does.
  virtual TDateTime LocalToUTC(TDateTime Local) const;
  /// Fills in a random (version 4) GUID. False when the machine has no source of randomness.
  virtual bool CreateGUID(TGUID& GUID);
  /// For `ProcessIdToSessionId` only.
  virtual std::uint32_t GetCurrentProcessId() const;
  /// Session 0 means a service: nobody is at the keyboard. The
  /// result is not looked at: leave `SessionId` at 0 when the query fails. The default
  /// gives session 1 when the process has a controlling terminal, else 0.
  virtual bool ProcessIdToSessionId(std::uint32_t ProcessId, std::uint32_t& SessionId) const;
};

}  // namespace oxSuperAPI
