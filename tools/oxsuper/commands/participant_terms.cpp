#include "commands/participant.h"
#include "output.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "url_text.h"

namespace oxSuperAPI {
namespace {

struct TTermsOptions {
  std::string Number;
  std::int32_t Employer = 0;
  std::int32_t Authority = 0;
};

TExit Terms(const TToolOptions& Options, const TTermsOptions& Own) {
  TSession Session(Options);
  const std::string Number = ParticipantNumber(Session, Own.Number);
  Session.NeedCustomerToken();
  std::unique_ptr<TBeamTermsAcceptance> Acceptance;
  std::string Message, Error, Status;
  const bool Known = Session.Call("The question", [&] {
    const TProgress Progress("Asking");
    return GetTermsAcceptances("oxsuper.participant.terms", EscapedForURL(Number), Own.Employer, Own.Authority,
                               Acceptance, Message, Error, Status);
  });
  if (!Known) throw Session.Refusal("The question", Message, Error, Status);
  if (!Acceptance) throw Session.NotUnderstood("The question");
  const bool Accepted = !Acceptance->TermsAndConditionsAcceptanceDate.empty();
  if (Options.Json) {
    TJSONObject Document;
    AddText(Document, "participantNumber", Number);
    if (Own.Employer > 0) AddNumber(Document, "employerId", Own.Employer);
    if (Own.Authority > 0) AddNumber(Document, "directDebitAuthorityId", Own.Authority);
    AddFlag(Document, "accepted", Accepted);
    AddText(Document, "userAcceptingTermsAndConditions", Acceptance->UserAcceptingTermsAndConditions);
    AddText(Document, "termsAndConditionsAcceptanceDate", Acceptance->TermsAndConditionsAcceptanceDate);
    PrintDocument(Document);
    return exitDone;
  }
  const std::string Whose = Own.Employer > 0    ? "employer " + std::to_string(Own.Employer) + " of participant "
                            : Own.Authority > 0 ? "authority " + std::to_string(Own.Authority) + " of participant "
                                                : "participant ";
  const std::string User = Acceptance->UserAcceptingTermsAndConditions;
  PrintLine("The terms for " + Whose + Printable(Number) +
            (Accepted ? " were accepted" + (User.empty() ? "" : " by " + Printable(User)) + " on " +
                            Printable(Acceptance->TermsAndConditionsAcceptanceDate) + "."
                      : " have not been accepted yet."));
  return exitDone;
}

}  // namespace

void AddParticipantTermsCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("terms", "Who accepted the terms, and when");
  auto Values = std::make_shared<TTermsOptions>();
  Command->add_option("NUMBER", Values->Number, "Instead of batch.client_participant_number of the configuration");
  const CLI::Range Ids(1, 2147483647);
  CLI::Option* Employer =
      Command->add_option("--employer", Values->Employer, "Those of an employer, by the service's id")->check(Ids);
  Command->add_option("--authority", Values->Authority, "Those of a direct debit authority, by the service's id")
      ->check(Ids)
      ->excludes(Employer);
  OnCommand(Command, Line, Values, Terms);
}

}  // namespace oxSuperAPI
