#include "results.h"

#include <algorithm>
#include <cstdio>

namespace bench {

void TResults::ReportRuns(const std::vector<Run>& Runs) {
  for (const Run& One : Runs) {
    if (One.run_type != Run::RT_Iteration) continue;
    std::string Name = One.run_name.function_name;
    if (!One.run_name.args.empty()) Name += "/" + One.run_name.args;
    if (One.error_occurred) {
      std::fprintf(stderr, "%s: %s\n", Name.c_str(), One.error_message.c_str());
      continue;
    }
    const double Time = One.run_name.time_type.empty() ? One.GetAdjustedCPUTime() : One.GetAdjustedRealTime();
    FMeasured[Name].push_back(Time / benchmark::GetTimeUnitMultiplier(One.time_unit));
    for (const auto& [Counter, Value] : One.counters) FMeasured[Name + ":" + Counter].push_back(Value);
  }
}

std::optional<double> TResults::Median(const std::string& Metric) const {
  const auto Found = FMeasured.find(Metric);
  if (Found == FMeasured.end()) return std::nullopt;
  std::vector<double> Values = Found->second;
  const auto Middle = Values.begin() + static_cast<std::ptrdiff_t>(Values.size() / 2);
  std::nth_element(Values.begin(), Middle, Values.end());
  return *Middle;
}

std::size_t TResults::Repetitions(const std::string& Metric) const {
  const auto Found = FMeasured.find(Metric);
  return Found == FMeasured.end() ? 0 : Found->second.size();
}

std::map<long, double> TResults::Series(const std::string& Prefix) const {
  std::map<long, double> Result;
  for (const auto& [Name, Values] : FMeasured) {
    if (!Name.starts_with(Prefix) || Name.find(':') != std::string::npos) continue;
    Result[std::stol(Name.substr(Prefix.size()))] = *Median(Name);
  }
  return Result;
}

}  // namespace bench
