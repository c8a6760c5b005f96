#include <charconv>

#include "commands/commands.h"
#include "output.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/foundation/uBeamText.h"
#include "session.h"

namespace oxSuperAPI {
namespace {

struct TRegisterOptions {
  std::string CustomerNumber;
};

/// The columns and ranges in which activation looks for the number.
std::string CustomerNumber(TToolHost& Host) {
  const auto Row = Host.ADOMainConnection()->Open({"select cSTPGatewayUsername, cClientNumber from Entities", {}});
  if (Row->Eof()) return "";
  for (const char* Column : {"cClientNumber", "cSTPGatewayUsername"}) {
    const std::string Text(Trim(Row->FieldAsString(Column)));
    int Number = 0;
    const auto [End, Problem] = std::from_chars(Text.data(), Text.data() + Text.size(), Number);
    const bool Known = (Number >= 15000 && Number <= 15999) || (Number >= 50000 && Number <= 59999);
    if (Problem == std::errc() && End == Text.data() + Text.size() && Known) return std::to_string(Number);
  }
  return "";
}

TExit Register(const TToolOptions& Options, const TRegisterOptions& Own) {
  TSession Session(Options);
  THostIdentity& Identity = Session.Host().Identity();
  const std::string Number = Own.CustomerNumber.empty() ? CustomerNumber(Session.Host()) : Own.CustomerNumber;
  if (Number.empty())
    throw TToolError(exitRefusedHere,
                     "The table Entities holds no customer number: enter it there, or give --customer-number");
  std::string Message, Error, Status;
  const bool Registered = Session.Call("The registration", [&] {
    const TProgress Progress("Registering");
    return PostRegisterCustomer(Identity.CustomerKey() + "-" + Number, Number, Identity.RegisteredCompanyName(),
                                Identity.CustomerPIN(), "oxsuper.register", Message, Error, Status);
  });
  if (!Registered) throw Session.Refusal("The registration", Message, Error, Status);
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "done", true);
    AddText(Document, "customerNumber", Number);
    AddText(Document, "message", Message);
    PrintDocument(Document);
  } else {
    PrintLine("Customer " + Number + " is registered; activate it next.");
  }
  return exitDone;
}

}  // namespace

void AddRegisterCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("register", "Announce this customer to the service (administrators)");
  auto Values = std::make_shared<TRegisterOptions>();
  Command->add_option("--customer-number", Values->CustomerNumber, "Instead of the one in the table Entities");
  OnCommand(Command, Line, Values, Register);
}

}  // namespace oxSuperAPI
