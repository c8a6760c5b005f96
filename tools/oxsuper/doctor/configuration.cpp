#include <algorithm>

#include "doctor/finding.h"
#include "oxSuperAPI/reference/http_proxy.h"
#include "oxSuperAPI/reference/secrets_toml.h"

namespace oxSuperAPI {
namespace {

constexpr const char* Subject = "configuration";

void CheckIdentity(const TPatient& Patient, TFindings& Findings) {
  const TIdentityConfig& Identity = Patient.Config.identity;
  if (Identity.country_code != 5)
    Findings.Warning(
        Subject,
        "identity.country_code is " + std::to_string(Identity.country_code) + ", for which the service is not enabled",
        "Set it to 5");
  const TBeamSuperEnvironment Wanted = Identity.force_environment == "DEV"  ? bsenvIntgDev
                                       : Identity.force_environment == "QA" ? bsenvAcptQa
                                                                            : bsenvProdLive;
  if (!Identity.force_environment.empty() && Wanted != Patient.Environment)
    Findings.Warning(Subject,
                     "identity.force_environment is \"" + Identity.force_environment +
                         "\", but this domain and computer work with " +
                         std::string(TBeamSuperEnvironmentString[Patient.Environment]),
                     "Remove it, or set identity.domain");
  if (Identity.customer_key.empty() || Identity.company_name.empty() ||
      (Identity.customer_pin.empty() && Identity.customer_pin_file.empty()))
    Findings.Warning(Subject, "identity.customer_key, customer_pin (or customer_pin_file) or company_name is empty",
                     "The activation needs all of them: fill them in");
}

void CheckWay(const TPatient& Patient, TFindings& Findings) {
  const THttpConfig& HTTP = Patient.Config.http;
  const TProxy Proxy = ParseProxy(HTTP.proxy);
  if (Proxy.URL.empty() && (!HTTP.proxy_user.empty() || !HTTP.proxy_ca_file.empty() || !HTTP.no_proxy.empty()))
    Findings.Warning(Subject, "http.proxy_user, proxy_ca_file or no_proxy is set, but no proxy is",
                     "Set http.proxy, or remove them");
  if (!Proxy.URL.empty() && !Proxy.IsTLS && !HTTP.proxy_ca_file.empty())
    Findings.Warning(Subject, "http.proxy_ca_file is set, but the way to the proxy is not TLS",
                     "Begin http.proxy with https://, or remove it");
  if (!Proxy.Password.empty())
    Findings.Warning(Subject, "http.proxy holds the proxy's password in clear",
                     "Use http.proxy_user and \"oxsuper config set-secret proxy\"");
  if (!HTTP.proxy_user.empty() &&
      ReadScrambledSecret(Patient.Config.files.secrets.string(), "http", "proxy_password").empty())
    Findings.Warning(Subject, "http.proxy_user is set, but no password for it is stored",
                     "Run \"oxsuper config set-secret proxy\"");
  if (std::max(HTTP.connect_timeout_seconds, HTTP.stall_timeout_seconds) > HTTP.total_timeout_seconds)
    Findings.Warning(Subject, "a time-out of http is longer than total_timeout_seconds and never reached",
                     "Shorten it, or lengthen http.total_timeout_seconds");
  if (Patient.Environment == bsenvProdLive && !HTTP.connect_to.empty())
    Findings.Warning(Subject, "http.connect_to leads requests elsewhere, and this is production",
                     "Remove it unless that is meant");
}

}  // namespace

void CheckConfiguration(const TPatient& Patient, TFindings& Findings) {
  const std::size_t Before = Findings.All().size();
  CheckIdentity(Patient, Findings);
  CheckWay(Patient, Findings);
  if (Patient.Config.files.common_database == Patient.Config.files.payroll_database)
    Findings.Warning(Subject, "files.common_database and files.payroll_database are the same",
                     "Give each company a payroll database of its own");
  if (Patient.Environment == bsenvProdLive && Patient.Config.log.masking == "off")
    Findings.Warning(Subject, "log.masking is \"off\", and this is production: the call log holds tokens and the PIN",
                     "Set it to \"tokens\" or \"private\"; \"oxsuper log scrub\" masks the rows that exist");
  if (Findings.All().size() == Before)
    Findings.OK(Subject, Patient.ConfigFile + " is in order; environment " +
                             std::string(TBeamSuperEnvironmentString[Patient.Environment]));
}

}  // namespace oxSuperAPI
