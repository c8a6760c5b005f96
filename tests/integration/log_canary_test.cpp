#include <algorithm>

#include "payroll_office.h"

namespace oxSuperAPI {
namespace {

const std::string Token = "canary.of-an-access_token~opaque+1";
const std::string Torn = "canary-in-a-torn-answer-2";
const std::string Stranger = "canary-under-a-key-that-nobody-knows-3";

/// An office whose calls have carried marked values everywhere, and through every kind of failure.
class TMarkedOffice : public TPayrollOffice {
 public:
  explicit TMarkedOffice(const std::string& Masking) {
    Write("oxsuper.toml", Replaced(ReadFile(ConfigFile()), "masking = \"tokens\"", "masking = \"" + Masking + "\""));
    Pin = ReadConfig(ConfigFile()).identity.customer_pin;
    const std::string Participant =
        Write("participant.json", R"({"clientParticipantNumber":"P1","organisationName":"Bakery","contact":{
          "familyName":"Canarysurname","email":"canary@mail.example","phone":{"number":"0455512345"}},
          "directDebitAuthorities":[{"account":{"accountName":"Canaryaccount","accountNumber":"987650321","bsb":"062-109"},
          "startDate":"2026-07-01","employerNumbers":[{"clientEmployerNumber":"E1"}]}]})");
    for (const char* Command : {"register", "activate", "opt-in", "reissue", "funds search super"}) Run(Command);
    for (const std::string& Command :
         {"batch validate " + PayRun, "batch submit " + PayRun, "participant post " + Participant})
      Run(Command);
    for (const char* Command : {"participant get P1", "notifications list"}) Run(Command);
    // The service quotes what it was sent, in every wrapping.
    const std::pair<std::string, std::string> Calls[] = {
        {Answer("/auth/token", 400, R"({"error":"no","error_description":"no: )" + Secret + R"("})"), "register"},
        {Answer("/auth/token", 200, R"({"access_token":")" + Token + R"(","expires_in":"3600"})") + "," +
             Answer("/clearing-house/healthcheck", 401, R"("<html><p>)" + Token + R"( is unknown</p>")"),
         "ping"},
        {Answer("/auth/token", 200, R"({"access_token":")" + Token + R"(","expires_in":"3600"})") + "," +
             Answer("/clearing-house/validate", 400,
                    R"({"odd":{"k":")" + Token + R"("},"message":"Bearer )" + Token + R"(: 104562914, 1984-03-19"})"),
         "batch validate " + PayRun},
        {Answer("/clearing-house/channel-security/reissue", 500, R"("PIN )" + Pin + R"( is not known")"), "reissue"},
        {Answer("/search/funds", 200, R"("{\"access_token\":\")" + Torn + R"(")"), "funds search super"},
        {Answer("/search/funds", 200, R"({"someToken":")" + Stranger + R"("})"), "funds search super"},
        {R"({"path":"/clearing-house/validate","fault":"garbage"})", "batch validate " + PayRun},
        {R"({"path":"/clearing-house/validate","fault":"truncate"})", "batch validate " + PayRun},
        {Answer("/clearing-house/notifications", 200, R"([{"notificationId":1,"payload":
             "{\"parameters\":[{\"value\":\"555666777\",\"name\":\"elementvalue\"}]}"}])"),
         "notifications list"},
    };
    for (const auto& [Presets, Command] : Calls) {
      Preset("[" + Presets + "]");
      Run(Command);
    }
    Run("config show");
    for (std::size_t Row = Rows(); Row > 0; --Row)
      for (const char* Format : {"", "--json "}) Shown += Run(Format + ("log show " + std::to_string(Row))).Out;
  }

  /// Every byte of the databases and of the host log.
  std::string Files() const {
    std::string Bytes;
    for (const char* Name : {"payroll.db", "payroll.db-wal", "common.db", "common.db-wal", "host.log", "host.1.log"})
      Bytes += ReadFile(Path(Name));
    return Bytes;
  }
  std::size_t Rows() { return static_cast<std::size_t>(std::ranges::count(Run("log export").Out, '\n')); }

  std::vector<std::string> Secrets() const { return {"\"" + Pin + "\"", "PIN " + Pin, Secret, Token, Torn, Stranger}; }
  /// The first three are never shown either.
  static std::vector<std::string> Personal() {
    return {"555666777",     "987650321",  "302466336",     "062-109",
            "Canaryaccount", "104562914",  "Canarysurname", "canary@mail.example",
            "0455512345",    "1984-03-19", "Marrickville",  "siobhan@odea.example"};
  }

  std::string Pin;
  std::string Shown;  ///< of every row of the log

 private:
  static std::string Answer(const std::string& Path, int Status, const std::string& Body) {
    return R"({"path":")" + Path + R"(","status":)" + std::to_string(Status) + R"(,"body":)" + Body + "}";
  }
  const std::string Secret = "sandbox-administrator-secret-01";
};

void ExpectNone(const std::string& Text, const std::vector<std::string>& Markers) {
  for (const std::string& Marker : Markers) EXPECT_FALSE(Holds(Text, Marker)) << Marker;
}

TEST(LogCanaries, NoMarkerThatTheMaskingHidesIsLeftAnywhere) {
  for (const std::string Masking : {"tokens", "private"}) {
    SCOPED_TRACE(Masking);
    TMarkedOffice Office(Masking);
    EXPECT_GT(Office.Rows(), 30u);
    ExpectNone(Office.Files(), Office.Secrets());
    ExpectNone(Office.Everything(), Office.Secrets());
    EXPECT_TRUE(Holds(Office.Shown, "Bearer (hidden)"));
    if (Masking == "tokens") continue;
    ExpectNone(Office.Files(), TMarkedOffice::Personal());
    const std::vector<std::string> Personal = TMarkedOffice::Personal();
    ExpectNone(Office.Everything(), {Personal.begin(), Personal.begin() + 3});
  }
}

TEST(LogCanaries, WhatAnUnmaskedLogHoldsIsHiddenWhenItIsShownAndGoneWhenItIsScrubbed) {
  TMarkedOffice Office("off");
  const std::size_t Rows = Office.Rows();
  for (const auto& Markers : {Office.Secrets(), TMarkedOffice::Personal()})
    for (const std::string& Marker : Markers) EXPECT_TRUE(Holds(Office.Files(), Marker)) << Marker;

  ExpectNone(Office.Run("log export").Out, Office.Secrets());
  const TOutcome Page = Office.Run("log export --format html --masking private");
  ExpectNone(Page.Out, Office.Secrets());
  ExpectNone(Page.Out, TMarkedOffice::Personal());
  EXPECT_TRUE(Holds(Page.Out, "&lt;html&gt;&lt;p&gt;(hidden) is unknown&lt;/p&gt;"));
  EXPECT_FALSE(Holds(Page.Out, "<html><p>"));
  const TOutcome Open = Office.Run("log export --masking off -o " + Office.Path("open.jsonl"));
  EXPECT_TRUE(Holds(Open.Error, "keep it to yourself")) << Open.Error;
  EXPECT_TRUE(Holds(ReadFile(Office.Path("open.jsonl")), Token));
  EXPECT_EQ(0600u, tests::ModeOf(Office.Path("open.jsonl")));
  EXPECT_EQ(1, Office.Run("log export -o " + Office.Path("open.jsonl")).Exit);  // nothing is overwritten

  EXPECT_EQ("0", Member(Office.Run("--json log scrub --before 2000-01-01").Out, "rows"));
  const std::string Tried = Member(Office.Run("--json log scrub --masking private --dry-run").Out, "changed");
  EXPECT_TRUE(Holds(Office.Files(), Token));
  EXPECT_EQ(Tried, Member(Office.Run("--json log scrub --masking private").Out, "changed"));
  ExpectNone(Office.Files(), Office.Secrets());
  ExpectNone(Office.Files(), TMarkedOffice::Personal());
  EXPECT_EQ(Rows, Office.Rows());
  EXPECT_EQ("0", Member(Office.Run("--json log scrub --masking private").Out, "changed"));
}

TEST(LogCanaries, RowsAreFoundByTimeSourceAndStatus) {
  TPayrollOffice Office;
  Office.Run("register");
  Office.Run("activate");
  const std::tuple<const char*, int, int> Cases[] = {
      {"", 0, 5},
      {"--count 2", 0, 2},
      {"--source ACTIVATE", 0, 2},
      {"--status 401", 0, 1},
      {"--status 4xx", 0, 1},
      {"--status failed --source register", 0, 0},
      {"--since 2001-01-01 --until 9998-12-31T10:00", 0, 5},
      {"--until 2001-01-01", 0, 0},
      {"--since 9998-01-01", 0, 0},
      {"--since yesterday", 2, 0},
      {"--status 4x", 2, 0},
      {"--count 0", 2, 0},
  };
  for (const auto& [Filter, Exit, Rows] : Cases) {
    const TOutcome List = Office.Run("--json log list " + std::string(Filter));
    EXPECT_EQ(Exit, List.Exit) << Filter << List.Error;
    int Found = 0;
    for (std::size_t At = 0; (At = List.Out.find("\"row\":", At)) != std::string::npos; ++At) ++Found;
    EXPECT_EQ(Rows, Found) << Filter << List.Out;
  }
}

}  // namespace
}  // namespace oxSuperAPI
