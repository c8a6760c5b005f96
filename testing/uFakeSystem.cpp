#include "oxSuperAPI/testing/uFakeSystem.h"

#include <cmath>

namespace oxSuperAPI {

namespace {
constexpr double MillisecondsPerDay = 86'400'000.0;
}

void TFakeSystem::AdvanceSeconds(double Seconds) {
  Advance(Seconds / 86'400.0);
}

TDateTime TFakeSystem::Now() const {
  Faults.Check("Now");
  return Time;
}

TDateTime TFakeSystem::LocalToUTC(TDateTime Local) const {
  Faults.Check("LocalToUTC");
  return std::round(Local * MillisecondsPerDay - ZoneMinutes * 60'000.0) / MillisecondsPerDay;
}

bool TFakeSystem::CreateGUID(TGUID& GUID) {
  Faults.Check("CreateGUID");
  if (!GUIDsWork) return false;
  ++GUIDCount;
  GUID = {0xAB, 0xCD, 0xEF, 0x00, 0x00, 0x00, 0x40, 0x00, 0x80, 0x00};
  for (std::size_t Byte = 0; Byte < 4; ++Byte) GUID[15 - Byte] = static_cast<std::uint8_t>(GUIDCount >> (8 * Byte));
  return true;
}

std::uint32_t TFakeSystem::GetCurrentProcessId() const {
  Faults.Check("GetCurrentProcessId");
  return ProcessId;
}

bool TFakeSystem::ProcessIdToSessionId(std::uint32_t Process, std::uint32_t& Session) const {
  Faults.Check("ProcessIdToSessionId");
  if (Process != ProcessId) throw TBeamError("The session of a foreign process was asked for");
  if (SessionQueryWorks) Session = SessionId;
  return SessionQueryWorks;
}

}  // namespace oxSuperAPI
