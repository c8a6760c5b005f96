// Is the cost of masking a log text linear in its length and in the number of matches? Each text is twice as long as
// the one before it, so each time may be at most twice the one before.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>

#include "oxSuperAPI/session/uBeamMasking.h"

namespace {

constexpr std::int64_t SmallestKB = 512;
constexpr std::int64_t LargestKB = 16 * 1024;
constexpr double Goal = 2.0;
constexpr double Noise = 1.25;  // what two runs of the same work may differ by on a busy machine

std::string TextFullOfMatches(std::int64_t KB) {
  std::string Text;
  while (Text.size() < static_cast<std::size_t>(KB) * 1024)
    Text += R"({"clientId": "0f8fad5b-d9cb-469f", "clientSecret": "s3cr3t-w0rd", "uuid": "KEY-15001"},)";
  return Text;
}

void Hide(benchmark::State& State) {
  const std::string Text = TextFullOfMatches(State.range(0));
  for (auto _ : State) benchmark::DoNotOptimize(oxSuperAPI::HideCredentials(Text));
  State.SetBytesProcessed(static_cast<std::int64_t>(State.iterations() * Text.size()));
}
BENCHMARK(Hide)->RangeMultiplier(2)->Range(SmallestKB, LargestKB);

// Keeps the medians, which arrive in any order, and prints each beside its ratio to the text of half the length.
class TRatioReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& Runs) override {
    for (const Run& One : Runs)
      if (One.run_type == Run::RT_Aggregate && One.aggregate_name == "median")
        FMedians[std::stoll(One.run_name.args)] = One.GetAdjustedCPUTime() / 1e6;
  }
  /// False when a goal was missed.
  bool Print() const {
    bool AllMet = true;
    std::printf("%-16s %8s %10s %14s %6s\n", "masking", "KB", "median ms", "ratio to half", "goal");
    for (const auto& [KB, Milliseconds] : FMedians) {
      std::printf("%-16s %8lld %10.2f", "full of matches", static_cast<long long>(KB), Milliseconds);
      if (const auto Half = FMedians.find(KB / 2); Half != FMedians.end()) {
        const double Ratio = Milliseconds / Half->second;
        const bool Met = Ratio <= Goal * Noise;
        AllMet = AllMet && Met;
        std::printf(" %14.2f %6.2f  %s", Ratio, Goal, Ratio <= Goal ? "met" : Met ? "met within noise" : "MISSED");
      }
      std::printf("\n");
    }
    return AllMet && !FMedians.empty();
  }

 private:
  std::map<std::int64_t, double> FMedians;
};

}  // namespace

int main(int Count, char** Arguments) {
  benchmark::Initialize(&Count, Arguments);
  benchmark::SetDefaultTimeUnit(benchmark::kNanosecond);
  TRatioReporter Reporter;
  benchmark::RunSpecifiedBenchmarks(&Reporter);
  return Reporter.Print() ? 0 : 1;
}
