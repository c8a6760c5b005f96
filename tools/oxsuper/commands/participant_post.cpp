#include "commands/participant.h"
#include "output.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/foundation/uBeamText.h"
#include "payrun/losses.h"
#include "text_file.h"

namespace oxSuperAPI {
namespace {

struct TPostOptions {
  std::string File;
  bool ShowSignUpURL = false;
};

/// A participant's file as the library read it, and where what it would send differs from the file.
struct TParticipantFile {
  TBeamParticipantDetails Details;
  std::vector<std::string> NotSent;
  std::vector<std::string> SentDifferently;  ///< with another value than the file's, or although the file has none
};

/// The writer has other names than the reader for three members. Here they all have the reader's, so that
/// "contact.title" in a file counts as sent and "contact.Title", which the reader does not know, does not.
TSaidValues InNamesOfTheReader(const TSaidValues& Written) {
  TSaidValues Result;
  for (const auto& [Path, Text] : Written) {
    std::string Name = Path;
    if (Path == "contact.Title") Name = "contact.title";
    if (Path == "redirectUrl") Name = "redirectURL";
    const std::size_t At = Path.find("].employers[");
    if (Path.starts_with("directDebitAuthorities[") && At != std::string::npos)
      Name.replace(At, std::string_view("].employers[").size(), "].employerNumbers[");
    Result.emplace(Name, Text);
  }
  return Result;
}

TParticipantFile ReadParticipantFile(const std::string& Name) {
  const auto Document = ParseJSON(ReadWholeFile(Name));
  if (!Document || !Document->AsObject()) throw TToolError(exitRefusedHere, Name + " is no JSON object");
  TParticipantFile File;
  try {
    File.Details.LoadFromJsonObject(*Document->AsObject());
  } catch (const TBeamError& Error) {
    throw TToolError(exitRefusedHere, Name + ": " + Error.what());
  }
  if (Trim(File.Details.ClientParticipantNumber()).empty())
    throw TToolError(exitRefusedHere, Name + " has no clientParticipantNumber");
  for (std::size_t Index = 0; Index < File.Details.GetDDAuthorityCount(); ++Index)
    if (File.Details.GetDDAuthority(static_cast<std::ptrdiff_t>(Index))->accountNumber.find('*') != std::string::npos)
      throw TToolError(exitRefusedHere, Name + ": directDebitAuthorities[" + std::to_string(Index) +
                                            "].account.accountNumber is masked; enter the whole number");

  const TSaidValues Before = SaidValues(*Document);
  const TSaidValues After = InNamesOfTheReader(SaidValues(TJSONValue(std::move(*File.Details.GetAsJsonObject()))));
  File.NotSent = LostPaths(Before, After);
  for (const auto& [Path, Text] : After) {
    const auto Found = Before.find(Path);
    if (Found == Before.end() || Found->second != Text) File.SentDifferently.push_back(Path);
  }
  return File;
}

void NotePaths(const char* Title, const std::vector<std::string>& Paths) {
  if (Paths.empty()) return;
  Note(Title);
  for (const std::string& Path : Paths) Note("  " + Printable(Path));
}

void AddPaths(TJSONObject& Document, std::string Name, const std::vector<std::string>& Paths) {
  TJSONArray Array;
  for (const std::string& Path : Paths) Array.Append(TJSONValue(Path));
  Document.Append(std::move(Name), TJSONValue(std::move(Array)));
}

TExit Post(const TToolOptions& Options, const TPostOptions& Own) {
  TSession Session(Options);
  const TParticipantFile File = ReadParticipantFile(Own.File);
  if (!Options.Json) {
    NotePaths("Not sent:", File.NotSent);
    NotePaths("Sent with the participant's value, since the library keeps one phone for all:", File.SentDifferently);
  }
  Session.NeedCustomerToken();
  std::string Message, Error, Status, Token;
  const bool Taken = Session.Call("The participant", [&] {
    const TProgress Progress("Sending");
    return PostParticipantDetails("oxsuper.participant.post", &File.Details, Message, Error, Status, Token);
  });
  if (!Taken) throw Session.Refusal("The participant", Message, Error, Status);
  if (Token.empty()) throw Session.NotUnderstood("The participant");
  const std::string URL =
      std::string(BaseBeamSignUpUrl[TBeamSuperGlobal::BeamSuperGlobal().GetBeamSuperEnvironment()]) + Token;
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "done", true);
    AddText(Document, "participantNumber", File.Details.ClientParticipantNumber());
    AddText(Document, "message", Message);
    AddFlag(Document, "signUpUrlReceived", true);
    if (Own.ShowSignUpURL) AddText(Document, "signUpUrl", URL);
    AddPaths(Document, "notSent", File.NotSent);
    AddPaths(Document, "sentDifferently", File.SentDifferently);
    PrintDocument(Document);
    return exitDone;
  }
  PrintLine("Participant " + Printable(File.Details.ClientParticipantNumber()) + " was sent.");
  PrintLine(Own.ShowSignUpURL ? "Sign up, and accept the terms, at " + Printable(URL)
                              : "The address to sign up at was received; it lets in whoever has it: "
                                "--show-sign-up-url shows it.");
  return exitDone;
}

}  // namespace

void AddParticipantPostCommand(TCommandLine Line) {
  CLI::App* Command =
      Line.App.add_subcommand("post", "Send the participant; it takes the place of what was sent before");
  auto Values = std::make_shared<TPostOptions>();
  Command->add_option("FILE", Values->File, "The participant in the service's JSON")->required();
  Command->add_flag("--show-sign-up-url", Values->ShowSignUpURL, "Show the address to sign up at; it is a secret");
  OnCommand(Command, Line, Values, Post);
}

}  // namespace oxSuperAPI
