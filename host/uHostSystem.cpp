#include "oxSuperAPI/host/uHostSystem.h"

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <ctime>
#include <random>

namespace oxSuperAPI {

namespace {

constexpr double MillisecondsPerDay = 86'400'000.0;

// A broken-down time as days since 1899-12-30; the calendar is chrono's, since timegm is not standard.
TDateTime FromBrokenDown(const std::tm& Time, int Milliseconds) {
  using namespace std::chrono;
  const sys_days Day = year{Time.tm_year + 1900} / month{static_cast<unsigned>(Time.tm_mon + 1)} /
                       day{static_cast<unsigned>(Time.tm_mday)};
  const auto Days = (Day - sys_days{year{1899} / December / 30}).count();
  const int Seconds = (Time.tm_hour * 60 + Time.tm_min) * 60 + Time.tm_sec;
  return static_cast<double>(Days) + (Seconds * 1000.0 + Milliseconds) / MillisecondsPerDay;
}

}  // namespace

TDateTime THostSystem::Now() const {
  using namespace std::chrono;
  const auto Moment = time_point_cast<milliseconds>(system_clock::now());
  const auto Second = floor<seconds>(Moment);
  const std::time_t Time = system_clock::to_time_t(Second);
  std::tm Local{};
  if (!localtime_r(&Time, &Local)) throw TBeamError("The machine's clock shows a time outside the calendar");
  return FromBrokenDown(Local, static_cast<int>((Moment - Second).count()));
}

TDateTime THostSystem::LocalToUTC(TDateTime Local) const {
  using namespace std::chrono;
  const double Milliseconds = std::round(Local * MillisecondsPerDay);
  if (!(std::abs(Milliseconds) < 1e15)) throw TBeamConversionError("A date-time lies outside the calendar");
  const auto Whole = static_cast<std::int64_t>(Milliseconds);
  const sys_time<milliseconds> Moment = sys_days{year{1899} / December / 30} + milliseconds{Whole};
  const auto Day = floor<days>(Moment);
  const year_month_day Date{Day};
  const hh_mm_ss Clock{Moment - Day};
  std::tm Time{};
  Time.tm_year = static_cast<int>(Date.year()) - 1900;
  Time.tm_mon = static_cast<int>(static_cast<unsigned>(Date.month())) - 1;
  Time.tm_mday = static_cast<int>(static_cast<unsigned>(Date.day()));
  Time.tm_hour = static_cast<int>(Clock.hours().count());
  Time.tm_min = static_cast<int>(Clock.minutes().count());
  Time.tm_sec = static_cast<int>(Clock.seconds().count());
  Time.tm_isdst = -1;
  const std::time_t Stamp = std::mktime(&Time);
  std::tm Utc{};
  if (!gmtime_r(&Stamp, &Utc)) throw TBeamConversionError("A date-time lies outside the calendar");
  return FromBrokenDown(Utc, static_cast<int>(Clock.subseconds().count()));
}

bool THostSystem::CreateGUID(TGUID& GUID) {
  try {
    std::random_device Device;
    for (std::size_t Index = 0; Index < GUID.size(); Index += 4) {
      const std::uint32_t Random = Device();
      for (std::size_t Byte = 0; Byte < 4; ++Byte) GUID[Index + Byte] = static_cast<std::uint8_t>(Random >> (8 * Byte));
    }
  } catch (const std::exception&) {
    return false;
  }
  GUID[6] = static_cast<std::uint8_t>((GUID[6] & 0x0F) | 0x40);
  GUID[8] = static_cast<std::uint8_t>((GUID[8] & 0x3F) | 0x80);
  return true;
}

std::uint32_t THostSystem::GetCurrentProcessId() const {
  return static_cast<std::uint32_t>(getpid());
}

bool THostSystem::ProcessIdToSessionId(std::uint32_t, std::uint32_t& SessionId) const {
  const int Terminal = open("/dev/tty", O_RDONLY | O_NOCTTY | O_CLOEXEC);
  SessionId = Terminal >= 0 ? 1 : 0;
  if (Terminal >= 0) close(Terminal);
  return true;
}

}  // namespace oxSuperAPI
