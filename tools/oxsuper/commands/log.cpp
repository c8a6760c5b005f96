#include "commands/commands.h"
#include "display_mask.h"
#include "output.h"
#include "session.h"

namespace oxSuperAPI {
namespace {

struct TLogOptions {
  std::int32_t Count = 20;
  std::int32_t Id = 0;
};

struct TColumnTitle {
  const char* Column;
  const char* Title;
};

TExit List(const TToolOptions& Options, const TLogOptions& Own) {
  TSession Session(Options);
  const auto Rows = Session.Host().Reference().ADOMainConnection()->OpenRows(
      {"select idBeamSuperLog, dLogged, cSource, cMethod, cURL, cStatus from (select * from _iptblBeamSuperLog order "
       "by "
       "idBeamSuperLog desc limit :Count) order by idBeamSuperLog",
       {{"Count", Own.Count}}});
  TTable Table({">Row", "When", "Source", "Method", "URL", ">Status"});
  TJSONArray Array;
  for (; !Rows->Eof(); Rows->Next()) {
    const std::string When = Rows->FieldAsString("dLogged").substr(0, 19);
    const std::string URL = HideForDisplay(Rows->FieldAsString("cURL"));
    Table.Add({Rows->FieldAsString("idBeamSuperLog"), When, Rows->FieldAsString("cSource"),
               Rows->FieldAsString("cMethod"), URL, Rows->FieldAsString("cStatus")});
    TJSONObject Row;
    AddNumber(Row, "row", Rows->FieldAsInteger("idBeamSuperLog"));
    AddText(Row, "when", When);
    AddText(Row, "source", Rows->FieldAsString("cSource"));
    AddText(Row, "method", Rows->FieldAsString("cMethod"));
    AddText(Row, "url", URL);
    AddText(Row, "status", Rows->FieldAsString("cStatus"));
    Array.Append(TJSONValue(std::move(Row)));
  }
  if (Options.Json) {
    TJSONObject Document;
    Document.Append("rows", TJSONValue(std::move(Array)));
    PrintDocument(Document);
  } else if (Table.IsEmpty()) {
    PrintLine("The call log is empty.");
  } else {
    Table.Print();
  }
  return exitDone;
}

TExit Show(const TToolOptions& Options, const TLogOptions& Own) {
  static constexpr TColumnTitle Columns[] = {{"idBeamSuperLog", "Row"},
                                             {"dLogged", "When"},
                                             {"cSource", "Source"},
                                             {"cMethod", "Method"},
                                             {"cURL", "URL"},
                                             {"cStatus", "Status"},
                                             {"iAgentID", "Agent"},
                                             {"cRequestHeader", "Request header"},
                                             {"cRequestBody", "Request"},
                                             {"cResponse", "Response"},
                                             {"cLogDetails", "Details"}};
  TSession Session(Options);
  const auto Row = Session.Host().Reference().ADOMainConnection()->OpenRows(
      {"select * from _iptblBeamSuperLog where idBeamSuperLog = :Id", {{"Id", Own.Id}}});
  if (Row->Eof()) throw TToolError(exitFailed, "The call log has no row " + std::to_string(Own.Id));
  TJSONObject Document;
  for (const TColumnTitle& Column : Columns) {
    const std::string Text = HideForDisplay(Row->FieldAsString(Column.Column));
    if (Options.Json) {
      AddText(Document, Column.Column, Text);
      continue;
    }
    const bool Long = Text.size() > 100 || Text.find('\n') != std::string::npos;
    if (Text.empty()) continue;
    PrintLine(std::string(Column.Title) + (Long ? ":\n" : ": ") + Printable(Text, true));
  }
  if (Options.Json) PrintDocument(Document);
  return exitDone;
}

}  // namespace

void AddLogCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("log", "The call log: every request that was sent");
  Command->require_subcommand(1);
  auto Values = std::make_shared<TLogOptions>();
  CLI::App* ListCommand = Command->add_subcommand("list", "The last requests");
  ListCommand->add_option("-n,--count", Values->Count, "How many")
      ->check(CLI::Range(1, 1000000))
      ->capture_default_str();
  OnCommand(ListCommand, Line, Values, List);
  CLI::App* ShowCommand = Command->add_subcommand("show", "One request and its answer; secrets are hidden");
  ShowCommand->add_option("ROW", Values->Id, "Row of \"log list\"")->required();
  OnCommand(ShowCommand, Line, Values, Show);
}

}  // namespace oxSuperAPI
