#include <algorithm>
#include <random>

#include "commands/commands.h"
#include "output.h"
#include "oxSuperAPI/foundation/uBeamEnumerations.h"
#include "oxSuperAPI/reference/db_open.h"
#include "oxSuperAPI/reference/private_file.h"
#include "oxSuperAPI/reference/reference_host.h"
#include "oxSuperAPI/reference/secrets_toml.h"
#include "sandbox_process.h"

namespace oxSuperAPI {
namespace {

namespace fs = std::filesystem;

struct TInitOptions {
  bool Sandbox = false;
  unsigned short Port = 0;
};

// The secrets that beam-sandbox has when it is given none: they open nothing but a sandbox.
constexpr const char* SandboxApplicationSecret = "sandbox-application-secret-0001";
constexpr const char* SandboxAdministratorSecret = "sandbox-administrator-secret-01";

std::string RandomDigits(std::size_t Count) {
  std::random_device Device;
  std::uniform_int_distribution<int> Digit('0', '9');
  std::string Result(Count, '0');
  std::generate(Result.begin(), Result.end(), [&] { return static_cast<char>(Digit(Device)); });
  return Result;
}

/// Where the library's requests to the development environment go, with the port that a URL leaves out.
std::string ServiceHost() {
  constexpr std::string_view Scheme = "https://";
  const std::string_view URL = BaseBeamURL[bsenvIntgDev];
  const std::string Host(URL.substr(Scheme.size()));
  return Host.find(':') == std::string::npos ? Host + ":443" : Host;
}

/// A company of its own, in a domain and with a setting by which the library chooses the development environment.
TReferenceConfig SandboxConfig(unsigned short Port) {
  TReferenceConfig Config;
  Config.identity.domain = "UK-SANDBOX";
  Config.identity.force_environment = "DEV";
  Config.identity.agent = 1;
  Config.identity.customer_key = "SANDBOX" + RandomDigits(6);
  Config.identity.customer_pin = RandomDigits(6);
  Config.identity.company_name = "Lyrebird Payroll Bureau Pty Ltd";
  Config.http.ca_file = "sandbox/ca.pem";
  Config.http.connect_to[ServiceHost()] = "127.0.0.1:" + std::to_string(Port ? Port : FreePort());
  return Config;
}

bool LeadsToSandbox(const TReferenceConfig& Config) {
  return Config.http.connect_to.contains(ServiceHost());
}

void FillForSandbox(const TReferenceConfig& Config) {
  TReferenceHost Host(Config);
  const std::string Secrets = Config.files.secrets.string();
  const std::pair<const char*, const char*> Channels[] = {{"application", SandboxApplicationSecret},
                                                          {"administrator", SandboxAdministratorSecret}};
  for (const auto& [Channel, Secret] : Channels)
    if (ReadScrambledSecret(Secrets, Channel, "Dev").empty())
      WriteScrambledSecret(Secrets, Channel, "Dev", Host.Cipher().Scramble(Secret));
  if (Host.ADOMainConnection()->Open({"select idEntity from Entities", {}})->Eof())
    Host.ADOMainConnection()->Execute({"insert into Entities (cClientNumber) values ('15001')", {}});
}

TExit Init(const TToolOptions& Options, const TInitOptions& Own) {
  const fs::path File = Options.ConfigFile;
  if (!File.parent_path().empty() && fs::create_directories(File.parent_path()))
    fs::permissions(File.parent_path(), fs::perms::owner_all);
  const bool Kept = PathExists(File.string());
  if (!Kept) CreateConfigFile(File, Own.Sandbox ? SandboxConfig(Own.Port) : TReferenceConfig{});
  const TReferenceConfig Config = ReadConfig(File);
  if (Own.Sandbox && !LeadsToSandbox(Config))
    throw TToolError(exitFailed, File.string() +
                                     " exists and does not lead to a sandbox; it is kept as it is. Choose another "
                                     "place with --config");
  CreateHostFiles(Config.files);
  const std::string Secrets = Config.files.secrets.string();
  if (!PathExists(Secrets))
    CreatePrivateFile(Secrets, "secrets file",
                      "# Scrambled client secrets; set them with \"oxsuper config set-secret\".\n");
  if (Own.Sandbox) FillForSandbox(Config);

  if (Options.Json) {
    TJSONObject Document;
    AddFlag(Document, "done", true);
    AddText(Document, "config", File.string());
    AddFlag(Document, "kept", Kept);
    PrintDocument(Document);
    return exitDone;
  }
  PrintLine("Configuration  " + File.string() + (Kept ? " (kept as it was)" : ""));
  PrintLine("Key            " + Config.files.key.string() + " (back it up: without it the credentials are lost)");
  PrintLine("Secrets        " + Secrets);
  PrintLine("Databases      " + ShownAddress(Config.files.common_database));
  PrintLine("               " + ShownAddress(Config.files.payroll_database));
  PrintLine();
  PrintLine(Own.Sandbox ? "Next: oxsuper sandbox start, oxsuper register, oxsuper activate, oxsuper opt-in"
                        : "Next: fill in the configuration, then oxsuper config set-secret application Prod, oxsuper "
                          "activate");
  return exitDone;
}

}  // namespace

void AddInitCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand(
      "init", "Make configuration, key, secrets file and databases; what exists is never overwritten");
  auto Values = std::make_shared<TInitOptions>();
  Command->add_flag("--sandbox", Values->Sandbox, "For the clearing house on your own machine");
  Command->add_option("--port", Values->Port, "Port of the sandbox (default: a free one)");
  OnCommand(Command, Line, Values, Init);
}

}  // namespace oxSuperAPI
