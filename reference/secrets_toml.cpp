#include "oxSuperAPI/reference/secrets_toml.h"

#include <algorithm>
#include <array>
#include <map>

#include "oxSuperAPI/reference/private_file.h"
#include "oxSuperAPI/reference/toml_file.h"

namespace oxSuperAPI {

namespace {

constexpr std::string_view What = "secrets file";
constexpr std::array<std::string_view, 2> Channels = {"application", "administrator"};
constexpr std::array<std::string_view, 3> Environments = {"Dev", "QA", "Prod"};

using TSecrets = std::map<std::string, std::map<std::string, std::string>>;  // channel, environment, text

template <std::size_t Size>
bool Known(const std::array<std::string_view, Size>& Names, std::string_view Name) {
  return std::ranges::find(Names, Name) != Names.end();
}

void CheckNames(std::string_view Channel, std::string_view Environment) {
  if (!Known(Channels, Channel))
    throw TBeamError(fmt::format("The channel has to be one of {}", fmt::join(Channels, ", ")));
  if (!Known(Environments, Environment))
    throw TBeamError(fmt::format("The environment has to be one of {}", fmt::join(Environments, ", ")));
}

TSecrets Read(const std::string& FileName) {
  TSecrets Secrets;
  if (!PathExists(FileName)) return Secrets;
  const toml::table Root = ReadTOMLFile(FileName, What);
  for (const auto& [Channel, Entries] : Root) {
    if (!Known(Channels, Channel.str()) || !Entries.is_table())
      FailAt(FileName, Channel, fmt::format("only the tables {} may stand here", fmt::join(Channels, ", ")));
    for (const auto& [Environment, Text] : *Entries.as_table()) {
      if (!Known(Environments, Environment.str()) || !Text.is_string())
        FailAt(FileName, Environment, fmt::format("only the texts {} may stand here", fmt::join(Environments, ", ")));
      Secrets[std::string(Channel.str())][std::string(Environment.str())] = Text.as_string()->get();
    }
  }
  return Secrets;
}

}  // namespace

std::string ReadScrambledSecret(const std::string& FileName, std::string_view Channel, std::string_view Environment) {
  CheckNames(Channel, Environment);
  return Read(FileName)[std::string(Channel)][std::string(Environment)];
}

void WriteScrambledSecret(const std::string& FileName, std::string_view Channel, std::string_view Environment,
                          std::string_view Scrambled) {
  CheckNames(Channel, Environment);
  TSecrets Secrets = Read(FileName);
  Secrets[std::string(Channel)][std::string(Environment)] = Scrambled;
  std::string Text = "# Scrambled client secrets; set them with \"oxsuper config set-secret\".\n";
  for (const auto& [Name, Entries] : Secrets) {
    Text += fmt::format("\n[{}]\n", Name);
    for (const auto& [Key, Value] : Entries) Text += fmt::format("{} = {}\n", Key, QuotedTOML(Value));
  }
  ReplacePrivateFile(FileName, What, Text);
}

}  // namespace oxSuperAPI
