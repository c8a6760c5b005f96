#include <algorithm>
#include <array>

#include "commands/commands.h"
#include "interrupt.h"
#include "output.h"
#include "oxSuperAPI/reference/db_open.h"
#include "oxSuperAPI/reference/reference_host.h"
#include "oxSuperAPI/reference/secrets_toml.h"

namespace oxSuperAPI {
namespace {

constexpr std::array<const char*, 2> Channels{"application", "administrator"};
constexpr std::array<const char*, 3> Environments{"Dev", "QA", "Prod"};

/// A secret that is not a channel's: its name on the command line, its place in the secrets file, and what it is.
struct TOtherSecret {
  const char *Name, *Table, *Key, *Meaning;
};
constexpr std::array<TOtherSecret, 4> OtherSecrets{
    {{"common-database", "database", "common", "Password of the common database"},
     {"payroll-database", "database", "payroll", "Password of the payroll database"},
     {"proxy", "http", "proxy_password", "Password of the proxy"},
     {"client-key", "http", "client_key_passphrase", "Passphrase of the client certificate's key"}}};

struct TSecretOptions {
  std::string Name;
  std::string Environment;
};

TExit ShowConfig(const TToolOptions& Options) {
  TReferenceConfig Config = ReadConfig(Options.ConfigFile);
  if (!Config.identity.customer_pin.empty()) Config.identity.customer_pin = "(hidden)";
  if (Config.http.proxy.find('@') != std::string::npos) Config.http.proxy = "(hidden: it holds a password)";
  for (std::string* Address : {&Config.files.common_database, &Config.files.payroll_database})
    *Address = ShownAddress(*Address);
  TJSONObject Secrets;
  std::string Lines;
  const auto List = [&](const std::string& Table, const char* Key, const std::string& Name) {
    const bool Set = !ReadScrambledSecret(Config.files.secrets.string(), Table, Key).empty();
    AddFlag(Secrets, Table + "." + Key, Set);
    Lines += "# secret of " + Name + ": " + (Set ? "set" : "not set") + "\n";
  };
  for (const char* Channel : Channels)
    for (const char* Environment : Environments) List(Channel, Environment, Channel + std::string(" ") + Environment);
  for (const auto& [Name, Table, Key, Meaning] : OtherSecrets) List(Table, Key, Name);
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
  const auto Other = std::ranges::find(OtherSecrets, Own.Name, &TOtherSecret::Name);
  const bool IsOfChannel = Other == OtherSecrets.end();
  if (IsOfChannel == Own.Environment.empty())
    throw TToolError(exitUsage, IsOfChannel ? "The secret of " + Own.Name + " needs an ENVIRONMENT: Dev, QA or Prod"
                                            : "The secret of " + Own.Name + " is the same in every environment");
  if (HoldsPassword(Own.Name == "common-database"    ? Config.files.common_database
                    : Own.Name == "payroll-database" ? Config.files.payroll_database
                                                     : ""))
    throw TToolError(exitFailed, "The connection string of the " + Own.Name +
                                     " holds a password (PWD), which would be used instead: take it out");
  const std::string Prompt =
      IsOfChannel ? "Client secret of the " + Own.Name + " channel in " + Own.Environment : Other->Meaning;
  const std::string Secret = ReadSecretLine(Prompt + ": ");
  TReferenceHost Host(Config);
  WriteScrambledSecret(Config.files.secrets.string(), IsOfChannel ? Own.Name : Other->Table,
                       IsOfChannel ? Own.Environment : Other->Key, Host.Cipher().Scramble(Secret));
  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "done", true);
    PrintDocument(Document);
  } else {
    PrintLine("The secret is set (" + Own.Name + (IsOfChannel ? ", " + Own.Environment : "") + ").");
  }
  return exitDone;
}

}  // namespace

void AddConfigCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("config", "The configuration and the secrets");
  Command->require_subcommand(1);
  OnCommand(Command->add_subcommand("show", "Every key with its value and meaning; no secret"), Line, ShowConfig);
  CLI::App* Set = Command->add_subcommand("set-secret", "Store a secret, which is read from standard input");
  auto Values = std::make_shared<TSecretOptions>();
  std::vector<std::string> Names(Channels.begin(), Channels.end());
  for (const TOtherSecret& Secret : OtherSecrets) Names.push_back(Secret.Name);
  Set->add_option("NAME", Values->Name,
                  "application, administrator, common-database, payroll-database, proxy or client-key")
      ->required()
      ->check(CLI::IsMember(Names));
  Set->add_option("ENVIRONMENT", Values->Environment, "Dev, QA or Prod; for application and administrator")
      ->check(CLI::IsMember(std::vector<std::string>(Environments.begin(), Environments.end())));
  OnCommand(Set, Line, Values, SetSecret);
}

}  // namespace oxSuperAPI
