#include "goals.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace bench {

using enum TRule;

namespace {

/// Two runs of the same work differ by so much; only a line that asks for exactly linear cost needs it.
constexpr double Noise = 1.05;

}  // namespace

// One line a goal. Times are CPU time of one core.
const std::vector<TGoal> Goals = {
    {"writing", "batch of 100,000 to text : RapidJSON writer", "writing/ours", "writing/rapidjson", Faster, 4.0},
    {"writing", "... : memcpy of the text", "writing/ours", "writing/memcpy", Faster, 0.20},
    {"writing", "... : copy to fresh memory", "writing/ours", "writing/memcpy_fresh", Told, 0},
    {"writing", "... 1,000 members, memory touched before", "writing/small", "writing/small_rapidjson", Told, 0},
    {"writing", "... memory beyond the text : text", "writing/memory:beyond", "writing/memory:text", AtMost, 0.05},
    {"reading", "text to tree : RapidJSON document", "reading/tree", "reading/tree_rapidjson", Faster, 1.0},
    {"reading", "... memory of the tree : document's", "reading/memory:ours", "reading/memory:rapidjson", AtMost, 1.2},
    {"reading", "... : simdjson", "reading/tree", "reading/tree_simdjson", Told, 0},
    {"reading", "tree to records : nlohmann::ordered_json", "reading/records", "reading/records_nlohmann", Faster, 5.0},
    {"reading", "text to records : RapidJSON reader", "reading/whole", "reading/whole_rapidjson", Faster, 1.0},
    {"records", "a member in memory, bytes", "records/memory:member", "", AtMost, 1000},
    {"records", "sizeof(TBeamMemberContribution)", "records/memory:sizeof", "", AtMost, 640},
    {"masking", "HideCredentials, 50 MB, nothing matches : memcpy", "masking/nothing", "masking/memcpy", AtMost, 1.5},
    {"masking", "... 100,000 matches : memcpy", "masking/matches", "masking/memcpy", AtMost, 4.0},
    {"masking", "... doubling the text", "masking/doubling/", "", Doubling, 2.0},
    {"response", "response of 20 MB to ResponseAsJson : one parse", "response/call", "response/parse", AtMost, 1.3},
    {"pipeline", "PostContribution, 100,000: buffers of a body's size", "pipeline/post:buffers", "", AtMost, 2},
    {"pipeline", "... peak memory beyond the batch : text", "pipeline/post:peak", "pipeline/post:text", AtMost, 2.2},
    {"pipeline", "... SQLite's own peak : text", "pipeline/post:sqlite", "pipeline/post:text", Told, 0},
    {"small_call", "ping minus floors : bare libcurl", "small_call/ping:beyond", "small_call/ping:http", AtMost, 0.10},
    {"log_row", "log row : prepared insert", "log_row/disk:ours", "log_row/disk:prepared", AtMost, 1.2},
    {"log_row", "... with files in memory", "log_row/memory:ours", "log_row/memory:prepared", Told, 0},
    {"log_row", "... masked by the library alone", "log_row/memory_unmasked:ours", "log_row/memory_unmasked:prepared",
     Told, 0},
    {"linearity", "writing, 1,000 to 200,000 members", "linearity/write/", "", Spread, 1.3},
    {"linearity", "reading, 1,000 to 200,000 members", "linearity/read/", "", Spread, 1.3},
};

TVerdict Judge(const TGoal& Goal, const TResults& Results) {
  TVerdict Verdict{&Goal, {}, {}, {}, false};
  if (Goal.Rule == Spread || Goal.Rule == Doubling) {
    const std::map<long, double> Series = Results.Series(Goal.Ours);
    if (Series.size() < 2) return Verdict;
    std::vector<double> PerItem;
    for (const auto& [Size, Time] : Series) PerItem.push_back(Time / static_cast<double>(Size));
    if (Goal.Rule == Spread) {
      Verdict.Ours = *std::ranges::max_element(PerItem);
      Verdict.Peer = *std::ranges::min_element(PerItem);
      Verdict.Ratio = *Verdict.Ours / *Verdict.Peer;
      Verdict.Met = *Verdict.Ratio <= Goal.Bound;
    } else {
      Verdict.Ours = Series.rbegin()->second;
      Verdict.Peer = Series.begin()->second;
      Verdict.Ratio = std::pow(*Verdict.Ours / *Verdict.Peer, 1.0 / static_cast<double>(Series.size() - 1));
      Verdict.Met = *Verdict.Ratio <= Goal.Bound * Noise;
    }
    return Verdict;
  }
  Verdict.Ours = Results.Median(Goal.Ours);
  if (*Goal.Peer) Verdict.Peer = Results.Median(Goal.Peer);
  if (!Verdict.Ours || (*Goal.Peer && !Verdict.Peer)) return Verdict;
  const double Peer = Verdict.Peer.value_or(1);
  Verdict.Ratio = Goal.Rule != Faster ? *Verdict.Ours / Peer : Peer / *Verdict.Ours;
  Verdict.Met =
      Goal.Rule == Told || (Goal.Rule == AtMost ? *Verdict.Ratio <= Goal.Bound : *Verdict.Ratio >= Goal.Bound);
  return Verdict;
}

namespace {

std::string Formatted(const char* Format, double Value) {
  char Buffer[64];
  std::snprintf(Buffer, sizeof Buffer, Format, Value);
  return Buffer;
}

/// Counters are bytes or counts, or seconds when they are as small as that; all other metrics are times.
std::string Shown(const TGoal& Goal, std::optional<double> Value) {
  if (!Value) return "-";
  if (std::string(Goal.Ours).find(':') != std::string::npos && std::abs(*Value) >= 1)
    return *Value >= 1e6 ? Formatted("%.1f MB", *Value / 1e6) : Formatted("%.4g", *Value);
  return *Value >= 1e-3 ? Formatted("%.1f ms", *Value * 1e3) : Formatted("%.2f us", *Value * 1e6);
}

const char* Word(const TVerdict& Verdict) {
  if (!Verdict.Ratio) return "NOT MEASURED";
  if (Verdict.Goal->Rule == Told) return "";
  return Verdict.Met ? "met" : "MISSED";
}

}  // namespace

void PrintTable(const std::vector<TVerdict>& Verdicts) {
  std::printf("%-52s %12s %12s %8s %10s\n", "work", "ours", "peer", "ratio", "goal");
  for (const TVerdict& Verdict : Verdicts) {
    const TGoal& Goal = *Verdict.Goal;
    const std::string Bound = Goal.Rule == Told ? ""
                                                : (Goal.Rule == Faster ? ">= " : "<= ") +
                                                      Formatted(Goal.Bound < 10 ? "%.2f" : "%.0f", Goal.Bound);
    const std::string Ratio = Verdict.Ratio ? Formatted(*Verdict.Ratio < 100 ? "%.2f" : "%.0f", *Verdict.Ratio) : "-";
    std::printf("%-52s %12s %12s %8s %10s  %s\n", Goal.Work, Shown(Goal, Verdict.Ours).c_str(),
                *Goal.Peer || Verdict.Peer ? Shown(Goal, Verdict.Peer).c_str() : "", Ratio.c_str(), Bound.c_str(),
                Word(Verdict));
  }
}

std::string AsJson(const std::vector<TVerdict>& Verdicts) {
  static constexpr const char* Rules[] = {"faster", "at most", "spread at most", "doubling at most", "told"};
  const auto Number = [](std::optional<double> Value) {
    return Value ? nlohmann::ordered_json(*Value) : nlohmann::ordered_json();
  };
  nlohmann::ordered_json Lines = nlohmann::ordered_json::array();
  for (const TVerdict& Verdict : Verdicts) {
    const TGoal& Goal = *Verdict.Goal;
    nlohmann::ordered_json Line = {{"group", Goal.Group}, {"work", Goal.Work}, {"metric", Goal.Ours}};
    Line["ours"] = Number(Verdict.Ours);
    Line["peer"] = Number(Verdict.Peer);
    Line["ratio"] = Number(Verdict.Ratio);
    Line["rule"] = Rules[static_cast<std::size_t>(Goal.Rule)];
    Line["goal"] = Goal.Bound;
    Line["met"] = Verdict.Met;
    Lines.push_back(std::move(Line));
  }
  return Lines.dump(2) + "\n";
}

}  // namespace bench
