#include <algorithm>
#include <array>

#include "commands/commands.h"
#include "interrupt.h"
#include "output.h"
#include "oxSuperAPI/reference/reference_host.h"
#include "oxSuperAPI/reference/secrets_toml.h"

namespace oxSuperAPI {
namespace {

constexpr std::array<const char*, 2> Channels{"application", "administrator"};
constexpr std::array<const char*, 3> Environments{"Dev", "QA", "Prod"};

struct TSecretOptions {
  std::string Channel;
  std::string Environment;
};

TExit ShowConfig(const TToolOptions& Options) {
  TReferenceConfig Config = ReadConfig(Options.ConfigFile);
  if (!Config.identity.customer_pin.empty()) Config.identity.customer_pin = "(hidden)";
  if (Config.http.proxy.find('@') != std::string::npos) Config.http.proxy = "(hidden: it holds a password)";
  TJSONObject Secrets;
  std::string Lines;
  for (const char* Channel : Channels) {
    for (const char* Environment : Environments) {
      const bool Set = !ReadScrambledSecret(Config.files.secrets.string(), Channel, Environment).empty();
      AddFlag(Secrets, std::string(Channel) + "." + Environment, Set);
      Lines += std::string("# secret of ") + Channel + " " + Environment + ": " + (Set ? "set" : "not set") + "\n";
    }
  }
  if (Options.Json) {
    TJSONObject Document;
    AddText(Document, "config", Options.ConfigFile);
    AddText(Document, "text", ConfigText(Config));
    Document.Append("secrets", TJSONValue(std::move(Secrets)));
    PrintDocument(Document);
  } else {
    PrintLine("# " + Options.ConfigFile);
    PrintLine(Lines);
    PrintLine(ConfigText(Config));
  }
  return exitDone;
}

TExit SetSecret(const TToolOptions& Options, const TSecretOptions& Own) {
  const TReferenceConfig Config = ReadConfig(Options.ConfigFile);
  const std::string Secret =
      ReadSecretLine("Client secret of the " + Own.Channel + " channel in " + Own.Environment + ": ");
  TReferenceHost Host(Config);
  WriteScrambledSecret(Config.files.secrets.string(), Own.Channel, Own.Environment, Host.Cipher().Scramble(Secret));
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "done", true);
    PrintDocument(Document);
  } else {
    PrintLine("The secret is set (" + Own.Channel + ", " + Own.Environment + ").");
  }
  return exitDone;
}

}  // namespace

void AddConfigCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("config", "The configuration and the client secrets");
  Command->require_subcommand(1);
  OnCommand(Command->add_subcommand("show", "Every key with its value and meaning; no secret"), Line, ShowConfig);
  CLI::App* Set = Command->add_subcommand("set-secret", "Store a client secret, which is read from standard input");
  auto Values = std::make_shared<TSecretOptions>();
  Set->add_option("CHANNEL", Values->Channel, "application or administrator")
      ->required()
      ->check(CLI::IsMember(std::vector<std::string>(Channels.begin(), Channels.end())));
  Set->add_option("ENVIRONMENT", Values->Environment, "Dev, QA or Prod")
      ->required()
      ->check(CLI::IsMember(std::vector<std::string>(Environments.begin(), Environments.end())));
  OnCommand(Set, Line, Values, SetSecret);
}

}  // namespace oxSuperAPI
