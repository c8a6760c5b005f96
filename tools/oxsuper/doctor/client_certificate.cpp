#include "doctor/days_left.h"
#include "doctor/finding.h"
#include "oxSuperAPI/reference/http_client_key.h"
#include "oxSuperAPI/reference/reference_host.h"
#include "oxSuperAPI/reference/secrets_toml.h"

namespace oxSuperAPI {

void CheckClientCertificate(const TPatient& Patient, TFindings& Findings) {
  constexpr const char* Subject = "client certificate";
  const THttpConfig& HTTP = Patient.Config.http;
  if (HTTP.client_certificate.empty()) return;
  const TClientKey Key = ReadClientKey(HTTP.client_certificate.string(), HTTP.client_key.string(), [&] {
    const std::string Scrambled =
        ReadScrambledSecret(Patient.Config.files.secrets.string(), "http", "client_key_passphrase");
    return Scrambled.empty() ? "" : TReferenceHost(Patient.Config).Cipher().DecodeDecrypt(Scrambled);
  });
  const std::int64_t Days = DaysLeft(Key.Own.ValidTo);
  const std::string What = Key.Own.Subject + " is valid to " + DayText(Key.Own.ValidTo);
  if (Days < 0)
    Findings.Problem(Subject, What, "It has expired: have it renewed");
  else if (DaysLeft(Key.Own.ValidFrom) >= 0)
    Findings.Problem(Subject, Key.Own.Subject + " is not valid before " + DayText(Key.Own.ValidFrom),
                     "Wait, or check the clock of this machine");
  else if (Days < 30)
    Findings.Warning(Subject, What + ", for " + std::to_string(Days) + " more days", "Have it renewed");
  else
    Findings.OK(Subject, What + ", for " + std::to_string(Days) + " more days");
}

}  // namespace oxSuperAPI
