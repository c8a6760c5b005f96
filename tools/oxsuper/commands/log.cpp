#include "commands/log.h"

namespace oxSuperAPI {

void AddLogCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("log", "The call log: every request that was sent");
  Command->require_subcommand(1);
  const TCommandLine Log{*Command, Line.Chosen};
  for (const auto Add : {AddLogListCommand, AddLogShowCommand, AddLogExportCommand, AddLogScrubCommand}) Add(Log);
}

void AddLogFilter(CLI::App* Command, TLogFilter& Filter) {
  const auto Moment = CLI::Validator(CheckMoment, "DATE[Ttime]");
  Command->add_option("--since", Filter.Since, "From this local date, or date and time, on")->check(Moment);
  Command->add_option("--until", Filter.Until, "Up to this date with all its day, or before this date and time")
      ->check(Moment);
  Command->add_option("--source", Filter.Source, "A piece of the source's name");
  Command->add_option("--status", Filter.Status, "200, 4xx, or \"failed\": all but 200")
      ->check(CLI::Validator(CheckStatus, "STATUS"));
}

TLogMasking ConfiguredMasking(TSession& Session) {
  return LogMaskingOf(Session.Config().log.masking);
}

TCallLog OpenCallLog(TSession& Session, TLogMasking Masking) {
  TReferenceHost& Host = Session.Host().Reference();
  return {Host.PayrollDatabase(), Masking, Host.KnownSecrets()};
}

}  // namespace oxSuperAPI
