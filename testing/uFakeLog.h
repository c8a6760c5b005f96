#pragma once

#include <string>
#include <vector>

#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/testing/uFault.h"

namespace oxSuperAPI {

/// A host log that remembers its lines.
class TFakeLog : public THostLog {
 public:
  /// A line of the log.
  struct TEntry {
    /// As it was handed over. @{
    std::string Text;
    int Kind = 0;
    TLogSeverity Severity = TLogSeverity::Information;

    bool operator==(const TEntry&) const = default;
    /// @}
  };

  /// Armed by a test; an armed operation raises instead of working.
  TFaults Faults{"AddToLog"};
  /// In order; those that ended in a fault are missing.
  std::vector<TEntry> Entries;

  /// The texts alone, in order.
  std::vector<std::string> Texts() const;

  void AddToLog(const std::string& Text, int Kind, TLogSeverity Severity) override;
};

}  // namespace oxSuperAPI
