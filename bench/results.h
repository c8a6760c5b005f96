#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace bench {

/// What the benchmarks measured: every repetition of every metric. A metric is "group/name" for the time of one
/// iteration in seconds (CPU time, or real time where the benchmark asks for it) and "group/name:counter" for a
/// counter.
class TResults : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& Runs) override;

  /// Median of the repetitions; none when the metric was not measured.
  std::optional<double> Median(const std::string& Metric) const;
  std::size_t Repetitions(const std::string& Metric) const;
  /// The metrics that begin with `Prefix` and go on with a number, by that number.
  std::map<long, double> Series(const std::string& Prefix) const;

 private:
  std::map<std::string, std::vector<double>> FMeasured;
};

}  // namespace bench
