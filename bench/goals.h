#pragma once

#include <optional>
#include <string>
#include <vector>

#include "results.h"

namespace bench {

/// How a goal is judged.
enum class TRule : std::uint8_t {
  Faster,    ///< peer's time / our time is at least the bound
  AtMost,    ///< ours / peer's, or ours alone where there is no peer, is at most the bound
  Spread,    ///< over a series of sizes: cost of one item, the dearest / the cheapest, is at most the bound
  Doubling,  ///< over a series of sizes that double: what doubling the size costs, at most the bound
  Told,      ///< no goal: for orientation
};

/// One line of the table.
struct TGoal {
  const char* Group;
  const char* Work;
  const char* Ours;  ///< a metric of TResults; for a series, what stands before the size
  const char* Peer;  ///< "" for none
  TRule Rule;
  double Bound;
};
extern const std::vector<TGoal> Goals;

/// A goal and what was measured for it. Without a ratio something was not measured, and the goal is missed.
struct TVerdict {
  const TGoal* Goal;
  std::optional<double> Ours, Peer, Ratio;
  bool Met = false;
};
TVerdict Judge(const TGoal& Goal, const TResults& Results);

void PrintTable(const std::vector<TVerdict>& Verdicts);
/// The same for machines, with every bound and ratio in full.
std::string AsJson(const std::vector<TVerdict>& Verdicts);

}  // namespace bench
