#include "commands/log.h"
#include "output.h"

namespace oxSuperAPI {
namespace {

TExit List(const TToolOptions& Options, const TLogFilter& Filter) {
  TSession Session(Options);
  const std::vector<TLogHead> Heads = OpenCallLog(Session, ConfiguredMasking(Session)).Find(Filter);
  TTable Table({">Row", "When", "Source", "Method", "URL", ">Status"});
  TJSONArray Array;
  for (const TLogHead& Head : Heads) {
    Table.Add({std::to_string(Head.Id), Head.When, Head.Source, Head.Method, Head.URL, Head.Status});
    TJSONObject Row;
    AddNumber(Row, "row", Head.Id);
    AddText(Row, "when", Head.When);
    AddText(Row, "source", Head.Source);
    AddText(Row, "method", Head.Method);
    AddText(Row, "url", Head.URL);
    AddText(Row, "status", Head.Status);
    Array.Append(TJSONValue(std::move(Row)));
  }
  if (Options.Json) {
    TJSONObject Document;
    Document.Append("rows", TJSONValue(std::move(Array)));
    PrintDocument(Document);
  } else if (Table.IsEmpty()) {
    PrintLine("The call log has no such rows.");
  } else {
    Table.Print();
  }
  return exitDone;
}

}  // namespace

void AddLogListCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("list", "The last requests");
  auto Values = std::make_shared<TLogFilter>();
  Values->Count = 20;
  AddLogFilter(Command, *Values);
  Command->add_option("-n,--count", Values->Count, "How many at most")
      ->check(CLI::Range(1, 1000000))
      ->capture_default_str();
  OnCommand(Command, Line, Values, List);
}

}  // namespace oxSuperAPI
