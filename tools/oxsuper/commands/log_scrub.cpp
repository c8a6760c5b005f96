#include "oxSuperAPI/reference/log_scrub.h"
#include "commands/log.h"
#include "output.h"

namespace oxSuperAPI {
namespace {

struct TScrubOptions {
  TLogFilter Filter;
  std::string Masking;
  bool DryRun = false;
};

TExit Scrub(const TToolOptions& Options, const TScrubOptions& Own) {
  TSession Session(Options);
  TReferenceHost& Host = Session.Host().Reference();
  const TLogMasking Masking =
      Own.Masking.empty() ? std::max(ConfiguredMasking(Session), TLogMasking::Tokens) : LogMaskingOf(Own.Masking);
  std::vector<std::int32_t> Rows;
  for (const TLogHead& Head : OpenCallLog(Session, Masking).Find(Own.Filter)) Rows.push_back(Head.Id);
  const std::size_t Changed = ScrubCallLog(Host.PayrollDatabase(), Rows, Masking, Host.KnownSecrets(), Own.DryRun);
  if (!Own.DryRun) EraseRemains(Host.PayrollDatabase());
  if (Options.Json) {
    TJSONObject Document;
    AddText(Document, "masking", std::string(LogMaskingName(Masking)));
    AddNumber(Document, "rows", static_cast<std::int64_t>(Rows.size()));
    AddNumber(Document, "changed", static_cast<std::int64_t>(Changed));
    AddFlag(Document, "dryRun", Own.DryRun);
    PrintDocument(Document);
  } else {
    PrintLine(Counted(Changed, "row") + " of " + std::to_string(Rows.size()) +
              (Own.DryRun ? " would be masked" : " masked") + " (" + std::string(LogMaskingName(Masking)) + ").");
  }
  return exitDone;
}

}  // namespace

void AddLogScrubCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("scrub", "Mask rows where they stand, for good; the rows are kept");
  auto Values = std::make_shared<TScrubOptions>();
  AddLogFilter(Command, Values->Filter);
  Command->add_option("--before", Values->Filter.Before, "Before this local date, or date and time")
      ->check(CLI::Validator(CheckMoment, "DATE[Ttime]"));
  Command->add_option("--masking", Values->Masking, "tokens or private; otherwise log.masking, at least tokens")
      ->check(CLI::IsMember({"tokens", "private"}));
  Command->add_flag("--dry-run", Values->DryRun, "Only count the rows that would change");
  OnCommand(Command, Line, Values, Scrub);
}

}  // namespace oxSuperAPI
