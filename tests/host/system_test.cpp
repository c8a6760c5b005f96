#include "oxSuperAPI/host/uHostSystem.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <ctime>

#include "oxSuperAPI/host/uHost.h"

namespace oxSuperAPI {
namespace {

// The zone of the process for the time of a test; a rule in full needs no zone files.
class TZone {
 public:
  explicit TZone(const char* Rule) {
    if (const char* Old = std::getenv("TZ")) FOld = Old;
    setenv("TZ", Rule, 1);
    tzset();
  }
  ~TZone() {
    FOld.empty() ? unsetenv("TZ") : setenv("TZ", FOld.c_str(), 1);
    tzset();
  }

 private:
  std::string FOld;
};

constexpr double Millisecond = 1 / 86'400'000.0;

TEST(System, LocalTimeBecomesUtcByTheRuleOfItsMoment) {
  const TZone Sydney("AEST-10AEDT,M10.1.0,M4.1.0/3");
  const struct {
    TDateTime Local;
    double HoursAhead;
  } Cases[] = {{45306.5, 11}, {45488.5, 10}, {45488.0 + 10 * Millisecond, 10}, {45292.25, 11}};
  for (const auto& Case : Cases)
    EXPECT_NEAR(THostSystem().LocalToUTC(Case.Local), Case.Local - Case.HoursAhead / 24, Millisecond / 2);
  for (const double Bad : {std::nan(""), HUGE_VAL, 1e300}) EXPECT_THROW(THostSystem().LocalToUTC(Bad), TBeamError);
}

TEST(System, NowIsTheLocalClock) {
  constexpr double UnixEpoch = 25569;
  const TZone Zone("XXX-2");
  const double Expected = UnixEpoch + static_cast<double>(std::time(nullptr)) / 86'400 + 2 / 24.0;
  EXPECT_NEAR(THostSystem().Now(), Expected, 5 / 86'400.0);
}

TEST(System, GuidsAreRandomOfVersionFour) {
  TGUID First{};
  TGUID Second{};
  ASSERT_TRUE(THostSystem().CreateGUID(First) && THostSystem().CreateGUID(Second));
  EXPECT_NE(First, Second);
  EXPECT_EQ(First[6] >> 4, 4);
  EXPECT_EQ(First[8] >> 6, 2);
}

TEST(System, AProcessWithoutATerminalIsInSessionZero) {
  const auto SessionOfDetachedProcess = [] {
    std::uint32_t Session = 9;
    const bool Known = setsid() >= 0 && THostSystem().ProcessIdToSessionId(0, Session);
    _exit(Known && Session == 0 ? 0 : 1);
  };
  EXPECT_EXIT(SessionOfDetachedProcess(), testing::ExitedWithCode(0), "");
}

TEST(Strings, LinesAreJoinedByCrLfWithNoneAtTheEnd) {
  TStringList List;
  EXPECT_EQ(List.Text(), "");
  List.Add("a");
  EXPECT_EQ(List.Text(), "a");
  List.Add("");
  List.Add("b\nc");
  EXPECT_EQ(List.Text(), "a\r\n\r\nb\nc");
  EXPECT_THROW(List[3], TBeamRangeError);
  List.SetText("x\r\ny");
  EXPECT_EQ(List.Count(), 1u);
  List.SetText("");
  EXPECT_TRUE(List.IsEmpty());
}

TEST(Host, AskingForAHostThatIsNotRegisteredIsAnError) {
  RegisterHost(nullptr);
  EXPECT_THROW(Host(), TBeamError);
  EXPECT_THROW(Now(), TBeamError);
}

}  // namespace
}  // namespace oxSuperAPI
