#include "commands/commands.h"
#include "output.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/foundation/uBeamText.h"
#include "session.h"
#include "url_text.h"

namespace oxSuperAPI {
namespace {

struct TSearchOptions {
  std::string Text;
};

TExit Search(const TToolOptions& Options, const TSearchOptions& Own) {
  const std::string Text(Trim(Own.Text));
  if (Text.empty()) throw TToolError(exitUsage, "Search for what? TEXT is a part of a name, an ABN or a USI");
  TSession Session(Options);
  Session.NeedCustomerToken();
  std::unique_ptr<TSuperFundSearchResult> Found;
  std::string Message, Error, Status;
  const bool Answered = Session.Call("The search", [&] {
    const TProgress Progress("Searching");
    return GetSuperFunds("oxsuper.funds.search", EscapedForURL(Text), Found, Message, Error, Status);
  });
  if (!Answered) throw Session.Refusal("The search", Message, Error, Status);
  if (!Found) throw Session.NotUnderstood("The search");
  // The library keeps no more than these, and not whether there were more.
  const bool Full = Found->FundCount >= static_cast<std::int32_t>(TSuperFundSearchResult::MaxFunds);
  TTable Table({"USI", "ABN", "Product"});
  TJSONArray Funds;
  for (std::size_t Index = 0; Index < static_cast<std::size_t>(Found->FundCount); ++Index) {
    const TSuperFund& Fund = Found->Funds[Index];
    Table.Add({Fund.USI, Fund.ABN, Fund.FundName});
    TJSONObject Entry;
    AddText(Entry, "usi", Fund.USI);
    AddText(Entry, "abn", Fund.ABN);
    AddText(Entry, "productName", Fund.FundName);
    Funds.Append(TJSONValue(std::move(Entry)));
  }
  if (Options.Json) {
    TJSONObject Document;
    Document.Append("funds", TJSONValue(std::move(Funds)));
    AddFlag(Document, "maybeMore", Full);
    PrintDocument(Document);
    return exitDone;
  }
  if (Table.IsEmpty()) PrintLine("No fund has \"" + Printable(Text) + "\" in its name, ABN or USI.");
  Table.Print();
  if (Full)
    Note("These are the first " + std::to_string(TSuperFundSearchResult::MaxFunds) +
         "; there may be more. Search for a longer text.");
  return exitDone;
}

}  // namespace

void AddFundsCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("funds", "The register of funds");
  Command->require_subcommand(1);
  CLI::App* SearchCommand = Command->add_subcommand("search", "Funds by name, ABN or USI, 20 at most");
  auto Values = std::make_shared<TSearchOptions>();
  SearchCommand->add_option("TEXT", Values->Text, "A part of the name, the ABN or the USI")->required();
  OnCommand(SearchCommand, Line, Values, Search);
}

}  // namespace oxSuperAPI
