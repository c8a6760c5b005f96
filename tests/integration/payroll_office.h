#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <memory>
#include <string>

#include "../reference/temporary_directory.h"
#include "oxSuperAPI/reference/config_toml.h"
#include "oxSuperAPI/reference/http_curl.h"

namespace oxSuperAPI {

/// `Text` with another first `From`.
inline std::string Replaced(std::string Text, const std::string& From, const std::string& To) {
  return Text.replace(Text.find(From), From.size(), To);
}

struct TOutcome {
  int Exit = -1;
  std::string Out;
  std::string Error;
};

using tests::Holds;
using tests::ReadFile;

const std::string PayRun = SOURCE_DIR "/examples/payrun.csv";
constexpr const char* SubmitPath = "/clearing-house/submit";

/// A payroll office: a directory with a configuration, the tool, and a sandbox that runs as long as the office lives.
class TPayrollOffice {
 public:
  explicit TPayrollOffice(const std::string& StartOptions = {}) {
    Run("init --sandbox");
    Run("sandbox start --lifetime 300 --program " BEAM_SANDBOX " " + StartOptions);
    const TReferenceConfig Config = ReadConfig(ConfigFile());
    THTTPCurlOptions Options;
    Options.CAFile = Config.http.ca_file.string();
    Options.ConnectTo = {{"localhost:443", Config.http.connect_to.begin()->second}};
    FControl = std::make_unique<THTTPCurl>(Options);
  }
  ~TPayrollOffice() { Run("sandbox stop"); }

  std::string ConfigFile() const { return Path("oxsuper.toml"); }
  std::string Path(const std::string& Name) const { return FDirectory / Name; }
  std::string Write(const std::string& Name, const std::string& Text) const { return FDirectory.Write(Name, Text); }

  /// Runs oxsuper, at most a minute; `Before` is a piece of shell in front of it.
  TOutcome Run(const std::string& Arguments, const std::string& Before = "timeout 60 ") {
    return Shell(Before + OXSUPER " --config " + ConfigFile() + " " + Arguments + " </dev/null");
  }
  TOutcome Shell(const std::string& Command) {
    const int Status = std::system(("{ " + Command + "; } >" + Path("out") + " 2>" + Path("error")).c_str());
    TOutcome Outcome{WIFEXITED(Status) ? WEXITSTATUS(Status) : -1, ReadFile(Path("out")), ReadFile(Path("error"))};
    FEverything += Outcome.Out + Outcome.Error;
    return Outcome;
  }
  /// All that any command has ever shown.
  const std::string& Everything() const { return FEverything; }

  /// How the sandbox treats the next request that fits.
  void Preset(const std::string& Json) { Control("presets", Json); }
  /// Posts to the sandbox's control path.
  void Control(const std::string& Path, const std::string& Json) {
    TStringList Details, Answer, Body;
    Body.Add(Json);
    ASSERT_EQ(200, FControl->httpNetPost("https://localhost/__sandbox/" + Path, {}, Body, Details, Answer))
        << Answer.Text();
  }
  /// How many requests for this path the sandbox has seen.
  std::size_t Count(const std::string& PathSeen) {
    TStringList Details, Answer;
    FControl->httpNetGet("https://localhost/__sandbox/requests?path=" + PathSeen, {}, Details, Answer);
    const std::string Text = Answer.Text();
    std::size_t Result = 0;
    for (std::size_t At = 0; (At = Text.find("\"target\":\"" + PathSeen, At)) != std::string::npos; ++At) ++Result;
    return Result;
  }
  void ForgetSubmissions() { std::filesystem::remove(Path("submissions.jsonl")); }

 private:
  tests::TTemporaryDirectory FDirectory;
  std::unique_ptr<THTTPCurl> FControl;
  std::string FEverything;
};

/// One activated office and one sandbox for all tests of a suite.
class TOfficeTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { Open(); }
  static void TearDownTestSuite() { Office.reset(); }
  void SetUp() override { Office->ForgetSubmissions(); }

  static void Open(const std::string& StartOptions = {}) {
    Office = std::make_unique<TPayrollOffice>(StartOptions);
    for (const char* Command : {"register", "activate", "opt-in"}) ASSERT_EQ(0, Office->Run(Command).Exit) << Command;
  }
  inline static std::unique_ptr<TPayrollOffice> Office;
};

/// The value of a member of the tool's JSON, which stands on a line of its own.
inline std::string Member(const std::string& Document, const std::string& Name) {
  const std::size_t At = Document.find("\"" + Name + "\": ");
  if (At == std::string::npos) return "";
  std::string Value = Document.substr(At + Name.size() + 4);
  Value = Value.substr(0, Value.find_first_of(",\n"));
  if (Value.starts_with('"')) Value = Value.substr(1, Value.size() - 2);
  return Value;
}

/// Runs a command and interrupts it as soon as it is `Ready` for it.
template <class Condition>
TOutcome Interrupt(TPayrollOffice& Office, const std::string& Arguments, Condition Ready) {
  const std::string PidFile = Office.Path("pid");
  auto Running = std::async(std::launch::async,
                            [&] { return Office.Run(Arguments, "sh -c 'echo $$ >" + PidFile + "; exec \"$@\"' sh "); });
  const auto End = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  const auto Runs = [&] { return Running.wait_for(std::chrono::milliseconds(50)) == std::future_status::timeout; };
  while (Runs() && !Ready() && std::chrono::steady_clock::now() < End) continue;
  if (Runs()) ::kill(std::stoi(ReadFile(PidFile)), SIGINT);
  return Running.get();
}

}  // namespace oxSuperAPI
