#include "oxSuperAPI/testing/uFakeLog.h"

namespace oxSuperAPI {

std::vector<std::string> TFakeLog::Texts() const {
  std::vector<std::string> Result;
  for (const TEntry& Entry : Entries) Result.push_back(Entry.Text);
  return Result;
}

void TFakeLog::AddToLog(const std::string& Text, int Kind, TLogSeverity Severity) {
  Faults.Check("AddToLog");
  Entries.push_back({Text, Kind, Severity});
}

}  // namespace oxSuperAPI
