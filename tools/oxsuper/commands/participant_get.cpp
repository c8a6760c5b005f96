#include <algorithm>
#include <cctype>

#include "commands/participant.h"
#include "output.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "url_text.h"

namespace oxSuperAPI {
namespace {

struct TGetOptions {
  std::string Number;
};

/// The last three digits, and as many stars as there are more: enough to recognise an account.
std::string MaskedAccount(std::string Number) {
  std::erase_if(Number, [](unsigned char Each) { return !std::isalnum(Each); });
  const std::size_t Hidden = Number.size() > 3 ? Number.size() - 3 : Number.size();
  std::fill_n(Number.begin(), Hidden, '*');
  return Number;
}

/// The texts that are not empty, with the separator between them.
std::string Joined(const std::vector<std::string>& Texts, const std::string& Separator) {
  std::string Result;
  for (const std::string& Text : Texts)
    if (!Text.empty()) Result += (Result.empty() ? "" : Separator) + Text;
  return Result;
}

std::string AddressOf(const TBeamAddressFields& Address) {
  const std::string Place = Joined({Address.Suburb, Address.State, Address.PostCode, Address.CountryCode}, " ");
  return Joined({Address.Line1, Address.Line2, Address.Line3, Address.Line4, Place}, ", ");
}

std::string ContactOf(const TBeamContactFields& Contact, bool WithPhone) {
  const std::string Name = Joined({Contact.ContactTitle, Contact.ContactFirstName, Contact.ContactFamilyName}, " ");
  const std::string Phone = Joined({Contact.ContactPhoneAreaCode, Contact.ContactPhoneNumber}, " ");
  return Joined({Name, Contact.ContactEmail, WithPhone ? Phone : ""}, ", ");
}

/// "Kim Lee, 2026-07-01T00:00:00Z" of anything that has terms to accept.
template <class Record>
std::string AcceptanceOf(const Record& Each) {
  return Each.TermsAndConditionsAcceptanceDate.empty()
             ? "not yet"
             : Joined({Each.UserAcceptingTermsAndConditions, Each.TermsAndConditionsAcceptanceDate}, ", ");
}

std::vector<std::string> FundsOf(const TBeamEmployer& Employer) {
  std::vector<std::string> Funds;
  for (std::size_t Index = 0; Index < Employer.GetFundCount(); ++Index)
    Funds.push_back(Employer.GetDefaultFund(static_cast<std::ptrdiff_t>(Index))->USI);
  return Funds;
}

std::vector<std::string> EmployersOf(const TBeamDDAuthority& Authority) {
  std::vector<std::string> Numbers;
  for (std::size_t Index = 0; Index < Authority.GetEmployerNumberCount(); ++Index)
    Numbers.push_back(Authority.GetEmployerNumber(static_cast<std::ptrdiff_t>(Index))->ClientEmployerNumber);
  return Numbers;
}

void Print(const TBeamParticipantDetails& Details) {
  const std::pair<const char*, std::string> Lines[] = {
      {"Participant  ", Details.ClientParticipantNumber()},
      {"Name         ", Details.OrganisationName},
      {"ABN          ", Details.BusinessIdentifierValue},
      {"Payroll      ", Details.PayrollName},
      {"Address      ", AddressOf(Details)},
      {"Contact      ", ContactOf(Details, true)},
      {"Returns to   ", Details.RedirectURL},
      {"Terms        ", AcceptanceOf(Details)},
  };
  for (const auto& [Title, Text] : Lines)
    if (!Text.empty()) PrintLine(Title + Printable(Text));
  TTable Employers({"Employer", "Name", "ABN", "Contact", "Default funds", "Terms accepted"});
  for (std::size_t Index = 0; Index < Details.GetEmployerCount(); ++Index) {
    const auto Each = Details.GetEmployer(static_cast<std::ptrdiff_t>(Index));
    // The library reads the participant's phone into every employer.
    Employers.Add({Each->ClientEmployerNumber(), Each->OrganisationName, Each->BusinessIdentifierValue,
                   ContactOf(*Each, false), Joined(FundsOf(*Each), " "), AcceptanceOf(*Each)});
  }
  TTable Authorities({"Direct debit", "BSB", ">Account", "From", "Until", "Employers", "Terms accepted"});
  for (std::size_t Index = 0; Index < Details.GetDDAuthorityCount(); ++Index) {
    const auto Each = Details.GetDDAuthority(static_cast<std::ptrdiff_t>(Index));
    Authorities.Add({Each->accountName.empty() ? Each->OrganisationName : Each->accountName, Each->BSB,
                     MaskedAccount(Each->accountNumber), Each->StartDate, Each->EndDate,
                     Joined(EmployersOf(*Each), " "), AcceptanceOf(*Each)});
  }
  for (const TTable* Table : {&Employers, &Authorities}) {
    if (!Table->IsEmpty()) PrintLine();
    Table->Print();
  }
}

template <class Record>
void AddIdentity(TJSONObject& Document, const Record& Each) {
  AddText(Document, "organisationName", Each.OrganisationName);
  AddText(Document, "businessIdentifierType", Each.BusinessIdentifierType);
  AddText(Document, "businessIdentifier", Each.BusinessIdentifierValue);
  AddText(Document, "userAcceptingTermsAndConditions", Each.UserAcceptingTermsAndConditions);
  AddText(Document, "termsAndConditionsAcceptanceDate", Each.TermsAndConditionsAcceptanceDate);
}

void AddTexts(TJSONObject& Document, std::string Name, const std::vector<std::string>& Texts) {
  TJSONArray Array;
  for (const std::string& Text : Texts) Array.Append(TJSONValue(Text));
  Document.Append(std::move(Name), TJSONValue(std::move(Array)));
}

/// Not in the form of "participant post": what is masked or not read must not get back to the service.
TJSONObject DocumentOf(const TBeamParticipantDetails& Details) {
  TJSONObject Document;
  AddText(Document, "participantNumber", Details.ClientParticipantNumber());
  AddIdentity(Document, Details);
  AddText(Document, "payrollName", Details.PayrollName);
  AddText(Document, "address", AddressOf(Details));
  AddText(Document, "contact", ContactOf(Details, true));
  AddText(Document, "redirectUrl", Details.RedirectURL);
  TJSONArray Employers, Authorities;
  for (std::size_t Index = 0; Index < Details.GetEmployerCount(); ++Index) {
    const auto Each = Details.GetEmployer(static_cast<std::ptrdiff_t>(Index));
    TJSONObject Entry;
    AddText(Entry, "employerNumber", Each->ClientEmployerNumber());
    AddIdentity(Entry, *Each);
    AddText(Entry, "contact", ContactOf(*Each, false));
    AddTexts(Entry, "defaultFunds", FundsOf(*Each));
    Employers.Append(TJSONValue(std::move(Entry)));
  }
  for (std::size_t Index = 0; Index < Details.GetDDAuthorityCount(); ++Index) {
    const auto Each = Details.GetDDAuthority(static_cast<std::ptrdiff_t>(Index));
    TJSONObject Entry;
    AddIdentity(Entry, *Each);
    AddText(Entry, "accountName", Each->accountName);
    AddText(Entry, "bsb", Each->BSB);
    AddText(Entry, "maskedAccountNumber", MaskedAccount(Each->accountNumber));
    AddText(Entry, "startDate", Each->StartDate);
    AddText(Entry, "endDate", Each->EndDate);
    AddTexts(Entry, "employerNumbers", EmployersOf(*Each));
    Authorities.Append(TJSONValue(std::move(Entry)));
  }
  Document.Append("employers", TJSONValue(std::move(Employers)));
  Document.Append("directDebitAuthorities", TJSONValue(std::move(Authorities)));
  return Document;
}

TExit Get(const TToolOptions& Options, const TGetOptions& Own) {
  TSession Session(Options);
  const std::string Number = ParticipantNumber(Session, Own.Number);
  Session.NeedCustomerToken();
  std::unique_ptr<TBeamParticipantDetails> Details;
  std::string Message, Error, Status;
  const bool Known = Session.Call("The question", [&] {
    const TProgress Progress("Asking");
    return GetParticipantDetails("oxsuper.participant.get", EscapedForURL(Number), Details, Message, Error, Status);
  });
  if (!Known) throw Session.Refusal("The question", Message, Error, Status);
  if (!Details || (Details->ClientParticipantNumber().empty() && Details->OrganisationName.empty()))
    throw Session.NotUnderstood("The question");
  if (Options.Json)
    PrintDocument(DocumentOf(*Details));
  else
    Print(*Details);
  return exitDone;
}

}  // namespace

void AddParticipantGetCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("get", "What the service knows; account numbers are masked");
  auto Values = std::make_shared<TGetOptions>();
  Command->add_option("NUMBER", Values->Number, "Instead of batch.client_participant_number of the configuration");
  OnCommand(Command, Line, Values, Get);
}

}  // namespace oxSuperAPI
