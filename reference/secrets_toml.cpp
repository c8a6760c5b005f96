#include "oxSuperAPI/reference/secrets_toml.h"

#include <algorithm>
#include <array>
#include <map>
#include <vector>

#include "oxSuperAPI/reference/private_file.h"
#include "oxSuperAPI/reference/toml_file.h"

namespace oxSuperAPI {

namespace {

constexpr std::string_view What = "secrets file";

struct TGroup {
  std::string_view Name;
  std::array<std::string_view, 3> Secrets;
};
constexpr TGroup Groups[] = {
    {"application", {"Dev", "QA", "Prod"}},
    {"administrator", {"Dev", "QA", "Prod"}},
    {"database", {"common", "payroll"}},
    {"http", {"client_key_passphrase", "proxy_password"}},
};

using TSecrets = std::map<std::string, std::map<std::string, std::string>>;  // group, name, text

std::string GroupNames() {
  std::vector<std::string_view> Names;
  for (const TGroup& Group : Groups) Names.push_back(Group.Name);
  return fmt::format("{}", fmt::join(Names, ", "));
}
std::string SecretNames(const TGroup& Group) {
  const std::string Names = fmt::format("{}", fmt::join(Group.Secrets, ", "));
  return Names.ends_with(", ") ? Names.substr(0, Names.size() - 2) : Names;
}

const TGroup* FindGroup(std::string_view Name) {
  const auto Found = std::ranges::find(Groups, Name, &TGroup::Name);
  return Found == std::end(Groups) ? nullptr : Found;
}
bool Holds(const TGroup& Group, std::string_view Secret) {
  return !Secret.empty() && std::ranges::find(Group.Secrets, Secret) != Group.Secrets.end();
}

void CheckNames(std::string_view GroupName, std::string_view Name) {
  const TGroup* const Group = FindGroup(GroupName);
  if (!Group) throw TBeamError("The group of a secret has to be one of " + GroupNames());
  if (!Holds(*Group, Name))
    throw TBeamError(fmt::format("A secret of {} has to be one of {}", GroupName, SecretNames(*Group)));
}

TSecrets Read(const std::string& FileName) {
  TSecrets Secrets;
  if (!PathExists(FileName)) return Secrets;
  const toml::table Root = ReadTOMLFile(FileName, What);
  for (const auto& [GroupName, Entries] : Root) {
    const TGroup* const Group = FindGroup(GroupName.str());
    if (!Group || !Entries.is_table())
      FailAt(FileName, GroupName, fmt::format("only the tables {} may stand here", GroupNames()));
    for (const auto& [Name, Text] : *Entries.as_table()) {
      if (!Holds(*Group, Name.str()) || !Text.is_string())
        FailAt(FileName, Name, fmt::format("only the texts {} may stand here", SecretNames(*Group)));
      Secrets[std::string(GroupName.str())][std::string(Name.str())] = Text.as_string()->get();
    }
  }
  return Secrets;
}

}  // namespace

std::string ReadScrambledSecret(const std::string& FileName, std::string_view Group, std::string_view Name) {
  CheckNames(Group, Name);
  return Read(FileName)[std::string(Group)][std::string(Name)];
}

void WriteScrambledSecret(const std::string& FileName, std::string_view Group, std::string_view Name,
                          std::string_view Scrambled) {
  CheckNames(Group, Name);
  TSecrets Secrets = Read(FileName);
  Secrets[std::string(Group)][std::string(Name)] = Scrambled;
  std::string Text = "# Scrambled secrets; set them with \"oxsuper config set-secret\".\n";
  for (const auto& [Table, Entries] : Secrets) {
    Text += fmt::format("\n[{}]\n", Table);
    for (const auto& [Key, Value] : Entries) Text += fmt::format("{} = {}\n", Key, QuotedTOML(Value));
  }
  ReplacePrivateFile(FileName, What, Text);
}

}  // namespace oxSuperAPI
