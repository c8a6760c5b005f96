#include "payroll_office.h"

namespace oxSuperAPI {
namespace {

using Tool = TOfficeTest;

TEST(Enrolment, GoesThroughItsStepsInOrder) {
  TPayrollOffice Office;
  const std::pair<std::string, int> Steps[] = {{"ping", 4},     {"batch validate " + PayRun, 4},
                                               {"activate", 5},  // not registered yet
                                               {"reissue", 4},  {"register", 0},
                                               {"activate", 0}, {"activate", 0},
                                               {"opt-in", 0},   {"ping", 0}};
  for (const auto& [Command, Exit] : Steps) ASSERT_EQ(Exit, Office.Run(Command).Exit) << Command;
}

TEST_F(Tool, TakesAPayRunFromValidationToCancellation) {
  EXPECT_EQ(0, Office->Run("batch show " + PayRun).Exit);
  const TOutcome Valid = Office->Run("--json batch validate " + PayRun);
  EXPECT_EQ(0, Valid.Exit) << Valid.Error;
  EXPECT_EQ("true", Member(Valid.Out, "valid"));
  const std::size_t Before = Office->Count(SubmitPath);
  const TOutcome Submitted = Office->Run("--json batch submit " + PayRun);
  ASSERT_EQ(0, Submitted.Exit) << Submitted.Error;
  const std::string Process = Member(Submitted.Out, "processId");
  EXPECT_EQ("Submitted", Member(Submitted.Out, "status"));
  EXPECT_EQ(Before + 1, Office->Count(SubmitPath));

  const TOutcome Status = Office->Run("--json batch status " + Process);
  EXPECT_EQ(0, Status.Exit);
  EXPECT_EQ("8411.02", Member(Status.Out, "totalAmount"));
  EXPECT_EQ(5, Office->Run("batch status 00000000-0000-0000-0000-000000000000").Exit);
  EXPECT_EQ(3, Office->Run("batch submit " + PayRun).Exit);
  EXPECT_EQ(0, Office->Run("batch cancel " + Process).Exit);
  EXPECT_TRUE(Holds(Office->Run("batch status").Out, "cancelled"));
  EXPECT_EQ(5, Office->Run("batch cancel " + Process).Exit);
  EXPECT_EQ(0, Office->Run("batch submit " + PayRun).Exit);
  EXPECT_EQ(0, Office->Run("batch submit --again " + PayRun).Exit);
  EXPECT_EQ(Before + 3, Office->Count(SubmitPath));
  EXPECT_EQ(0, Office->Run("reissue").Exit);
  EXPECT_EQ(0, Office->Run("ping").Exit);
}

TEST_F(Tool, TellsByItsExitCodeWhatBecameOfASubmission) {
  const struct {
    const char* Preset;
    int Exit;
    const char* Outcome;
    std::size_t Sent;
    int Repeated;  ///< exit code when the same file is submitted once more
  } Cases[] = {
      {R"("fault":"reset-before-read")", 7, "unknown", 1, 3},
      {R"("fault":"reset-after-read")", 7, "unknown", 1, 3},
      {R"("fault":"close-after-read")", 7, "unknown", 1, 3},
      {R"("fault":"reset-mid-response")", 7, "unknown", 1, 3},
      {R"("fault":"truncate")", 7, "unknown", 1, 3},
      {R"("fault":"garbage")", 7, "unknown", 1, 3},
      {R"("status":200,"body":"thank you")", 7, "unknown", 1, 3},
      {R"("status":200,"body":{"payments":[{"abn":"1"}]})", 7, "unknown", 1, 3},
      {R"("status":202,"body":{"status":"queued"})", 7, "unknown", 1, 3},
      {R"("status":500,"body":{"message":"down"})", 6, "unknown", 1, 3},
      {R"("status":302,"body":"")", 6, "unknown", 1, 3},
      {R"("status":400,"body":{"message":"bad"})", 5, "refused", 1, 0},
      {R"("status":409,"body":{"message":"twice"})", 5, "refused", 1, 0},
      {R"("status":401,"body":{"message":"who"})", 4, "refused", 1, 0},
      {R"("path":"/auth/token","status":401,"body":{"error":"invalid_client"})", 4, "", 0, 0},
      {R"("path":"/auth/token","status":500,"body":"")", 6, "", 0, 0},
      {R"("path":"/auth/token","fault":"reset-after-read")", 6, "", 0, 0},
      {R"("fault":"reset-on-connect")", 1, "", 0, 0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Preset);
    Office->ForgetSubmissions();
    const std::size_t Before = Office->Count(SubmitPath);
    const bool Everywhere = Holds(Case.Preset, "path") || Holds(Case.Preset, "connect");
    Office->Preset("{" + std::string(Everywhere ? "" : R"("path":"/clearing-house/submit",)") + Case.Preset + "}");
    const TOutcome First = Office->Run("batch submit " + PayRun);
    EXPECT_EQ(Case.Exit, First.Exit) << First.Error;
    EXPECT_EQ(Case.Sent, Office->Count(SubmitPath) - Before);
    EXPECT_EQ(std::string(Case.Outcome) == "unknown", Holds(First.Error, "blindly")) << First.Error;
    EXPECT_EQ(Case.Outcome, Member(Office->Run("--json batch status").Out, "outcome"));
    EXPECT_EQ(Case.Repeated, Office->Run("batch submit " + PayRun).Exit);
    EXPECT_EQ(Case.Sent + (Case.Repeated == 0 ? 1 : 0), Office->Count(SubmitPath) - Before);
  }
}

TEST_F(Tool, PassesTheServicesFindingsOn) {
  const std::string File = Office->Write("future.csv", Replaced(ReadFile(PayRun), "1984-03-19", "2084-03-19"));
  for (const char* Command : {"batch validate ", "batch submit "}) {
    const TOutcome Outcome = Office->Run(Command + File);
    EXPECT_EQ(5, Outcome.Exit) << Outcome.Error;
    EXPECT_TRUE(Holds(Outcome.Out, "DOB_IN_FUTURE")) << Outcome.Out << Outcome.Error;
    EXPECT_TRUE(Holds(Outcome.Out, "LINE ID R001, Văn An Nguyễn")) << Outcome.Out;
  }
}

TEST_F(Tool, SendsOnceWhenTwoSubmitAtTheSameTime) {
  const std::size_t Before = Office->Count(SubmitPath);
  Office->Preset(R"({"path":"/clearing-house/submit","delayMs":500})");
  const std::string Submit = "timeout 60 " OXSUPER " --config " + Office->ConfigFile() + " batch submit " + PayRun;
  const TOutcome Both =
      Office->Shell(Submit + " & first=$!; " + Submit + "; second=$?; wait $first; echo \"codes $? $second\"");
  EXPECT_TRUE(Holds(Both.Out, "codes 0 3") || Holds(Both.Out, "codes 3 0")) << Both.Out << Both.Error;
  EXPECT_EQ(1u, Office->Count(SubmitPath) - Before);
}

TEST_F(Tool, LetsAnInterruptWaitOnlyForASubmissionUnderWay) {
  const auto OnceSent = [](const std::string& Command, const std::string& Path) {
    const std::size_t Before = Office->Count(Path);
    return Interrupt(*Office, Command, [&] { return Office->Count(Path) > Before; });
  };
  Office->Preset(R"({"path":"/clearing-house/healthcheck","delayMs":5000})");
  EXPECT_EQ(130, OnceSent("ping", "/clearing-house/healthcheck").Exit);
  Office->Preset(R"({"path":"/clearing-house/submit","delayMs":2000})");
  const TOutcome Submitted = OnceSent("batch submit " + PayRun, SubmitPath);
  EXPECT_EQ(0, Submitted.Exit) << Submitted.Error;
  EXPECT_TRUE(Holds(Submitted.Error, "Interrupt again")) << Submitted.Error;
}

TEST_F(Tool, ChecksItsCommandLineAndItsFilesBeforeAnythingIsSent) {
  const std::size_t Before = Office->Count("/");
  const std::string Json = Office->Write("batch.json", R"({"contributionDetail":{"employers":[{"funds":[{"members":[
      {"payrollNumber":"E7","annualSalaryForContributions":"1"}]}]}]}})");
  const std::tuple<std::string, int, const char*> Cases[] = {
      {"", 2, ""},
      {"batch submit", 2, ""},
      {"config set-secret customer Dev", 2, ""},
      {"--help", 0, ""},
      {"batch submit " + Office->Path("missing.csv"), 1, ""},
      {"batch submit " SOURCE_DIR "/CMakeLists.txt", 3, ""},
      {"batch submit " + Office->Write("wrong.csv", Replaced(ReadFile(PayRun), "762.50", "762.05")), 3,
       "row 4 (LINE ID R001), column Z Payment Amount"},
      {"batch submit " + Json, 3, "employer 1, fund 1, member 1 (payroll number E7)"},
      {"batch submit " + Json, 3, "annualSalaryForInsurance"}};
  for (const auto& [Command, Exit, Error] : Cases) {
    const TOutcome Outcome = Office->Run(Command);
    EXPECT_EQ(Exit, Outcome.Exit) << Command << Outcome.Error;
    EXPECT_TRUE(Holds(Outcome.Error, Error)) << Command << Outcome.Error;
  }
  EXPECT_EQ(1, Office->Shell(OXSUPER " --config " + Office->Path("none.toml") + " status").Exit);
  EXPECT_EQ(Before, Office->Count("/"));
}

TEST_F(Tool, AsksBeforeItSubmitsToProduction) {
  const std::string Config = Office->Path("production.toml");
  ASSERT_EQ(0, Office->Shell(OXSUPER " --config " + Config + " init").Exit);
  const std::string Text = Replaced(ReadFile(Config), "domain = \"\"", "domain = \"office.example\"");
  std::ofstream(Config) << Text;
  const std::string Submit = OXSUPER " --config " + Config + " batch submit " + PayRun;
  EXPECT_EQ(3, Office->Shell(Submit + " </dev/null").Exit);
  EXPECT_EQ(4, Office->Shell(Submit + " --yes </dev/null").Exit);  // said, but not activated there
  std::ofstream(Config, std::ios::app) << "\n[files]\nunknown = 1\n";
  EXPECT_EQ(1, Office->Shell(Submit + " --yes").Exit);
}

TEST_F(Tool, KeepsWhatIsThereWhenItInitialisesAgain) {
  const std::string Key = ReadFile(Office->Path("cipher.key")), Config = ReadFile(Office->ConfigFile());
  EXPECT_EQ(0, Office->Run("init --sandbox").Exit);
  EXPECT_EQ(Key, ReadFile(Office->Path("cipher.key")));
  EXPECT_EQ(Config, ReadFile(Office->ConfigFile()));
  EXPECT_TRUE(Holds(Office->Run("status").Out, "Activated"));
  EXPECT_EQ(0, Office
                   ->Shell("printf 'a-secret-from-standard-input\\n' | " OXSUPER " --config " + Office->ConfigFile() +
                           " config set-secret application QA")
                   .Exit);
  EXPECT_EQ(2, Office->Run("config set-secret application QA").Exit);  // nothing on standard input
  EXPECT_FALSE(Holds(ReadFile(Office->Path("secrets.toml")), "a-secret"));
}

}  // namespace
}  // namespace oxSuperAPI
