#include "commands/log.h"
#include "output.h"

namespace oxSuperAPI {
namespace {

struct TShowOptions {
  std::int32_t Id = 0;
};

TExit Show(const TToolOptions& Options, const TShowOptions& Own) {
  TSession Session(Options);
  const std::optional<TLogRow> Row = OpenCallLog(Session, ConfiguredMasking(Session)).Read(Own.Id);
  if (!Row) throw TToolError(exitFailed, "The call log has no row " + std::to_string(Own.Id));
  const struct {
    const char* Column;
    const char* Title;
    std::string Text;
  } Fields[] = {
      {"idBeamSuperLog", "Row", std::to_string(Row->Id)},
      {"dLogged", "When", Row->When},
      {"cSource", "Source", Row->Source},
      {"cMethod", "Method", Row->Method},
      {"cURL", "URL", Row->URL},
      {"cStatus", "Status", Row->Status},
      {"iAgentID", "Agent", Row->Agent},
      {"cRequestHeader", "Request header", Row->RequestHeader},
      {"cRequestBody", "Request", Row->RequestBody},
      {"cResponse", "Response", Row->Response},
      {"cLogDetails", "Details", Row->Details},
  };
  TJSONObject Document;
  for (const auto& [Column, Title, Text] : Fields) {
    if (Options.Json) {
      AddText(Document, Column, Text);
    } else if (!Text.empty()) {
      const std::string Pretty = PrettyText(Text);
      const bool Long = Pretty.size() > 100 || Pretty.find('\n') != std::string::npos;
      PrintLine(Title + std::string(Long ? ":\n" : ": ") + Printable(Pretty, true));
    }
  }
  if (Options.Json) PrintDocument(Document);
  return exitDone;
}

}  // namespace

void AddLogShowCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("show", "One request and its answer, masked as log.masking says");
  auto Values = std::make_shared<TShowOptions>();
  Command->add_option("ROW", Values->Id, "Row of \"log list\"")->required();
  OnCommand(Command, Line, Values, Show);
}

}  // namespace oxSuperAPI
