#include "doctor/finding.h"
#include "oxSuperAPI/reference/private_file.h"
#include "oxSuperAPI/reference/reference_host.h"
#include "oxSuperAPI/reference/secrets_toml.h"

namespace oxSuperAPI {

void CheckSecrets(const TPatient& Patient, TFindings& Findings) {
  constexpr const char* Subject = "secrets";
  const std::string File = Patient.Config.files.secrets.string();
  const std::string Environment(TBeamSuperEnvironmentString[Patient.Environment]);
  TReferenceHost Host(Patient.Config);
  const struct {
    std::string Group, Name, Command;
  } Known[] = {{"application", Environment, "application " + Environment},
               {"administrator", Environment, "administrator " + Environment},
               {"http", "proxy_password", "proxy"},
               {"http", "client_key_passphrase", "client-key"}};
  for (const auto& [Group, Name, Command] : Known) {
    const std::string Set = "Run \"oxsuper config set-secret " + Command + "\"";
    const std::string Scrambled = ReadScrambledSecret(File, Group, Name);
    if (Scrambled.empty()) {
      if (Group == "application") Findings.Warning(Subject, "the secret " + Command + " is not stored", Set);
      continue;
    }
    try {
      static_cast<void>(Host.Cipher().DecodeDecrypt(Scrambled));
      Findings.OK(Subject, "the secret " + Command + " is stored");
    } catch (const TCipherError&) {
      Findings.Problem(Subject, "the key does not open the secret " + Command,
                       "Restore the key file from its backup, or set the secret anew: " + Set);
    }
  }
}

}  // namespace oxSuperAPI
