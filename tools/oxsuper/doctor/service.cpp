#include <algorithm>
#include <chrono>
#include <cstdlib>

#include "doctor/days_left.h"
#include "doctor/finding.h"
#include "oxSuperAPI/reference/reference_host.h"

namespace oxSuperAPI {
namespace {

using namespace std::chrono_literals;

constexpr std::int64_t SmallClockError = 60, LargeClockError = 300;  // seconds
constexpr std::int64_t FewDays = 14;

void CheckChain(const THTTPCurl& HTTP, bool Refused, TFindings& Findings) {
  const std::vector<TServerCertificate>& Chain = HTTP.ServerCertificates();
  if (Chain.empty() || Refused) return;
  const auto First = std::ranges::min_element(Chain, {}, &TServerCertificate::ValidTo);
  const std::int64_t Days = DaysLeft(First->ValidTo);
  const std::string What = Chain.front().Subject + ", issued by " + Chain.front().Issuer + ": of " +
                           std::to_string(Chain.size()) + " certificates " + First->Subject + " ends first, on " +
                           DayText(First->ValidTo) + ", in " + std::to_string(Days) + " days";
  if (Days < FewDays)
    Findings.Warning("certificates", What,
                     "Watch whether it is renewed; when it is this office's own authority, renew it");
  else
    Findings.OK("certificates", What);
}

void CheckClock(const THTTPCurl& HTTP, TFindings& Findings) {
  const std::optional<std::int64_t> Theirs = HTTP.ServerTime();
  if (!Theirs) return Findings.Warning("clock", "the service's answer has no date to compare with", "Compare by hand");
  const std::int64_t Difference = static_cast<std::int64_t>(std::time(nullptr)) - *Theirs;
  const std::string What = "this machine's clock is " + std::to_string(std::abs(Difference)) + " s " +
                           (Difference < 0 ? "behind" : "ahead of") + " the service's";
  constexpr const char* Advice = "Have the clock set by the network (timedatectl set-ntp true)";
  if (std::abs(Difference) > LargeClockError)
    Findings.Problem("clock", What, Advice);
  else if (std::abs(Difference) > SmallClockError)
    Findings.Warning("clock", What, Advice);
  else
    Findings.OK("clock", What);
}

}  // namespace

void CheckService(const TPatient& Patient, TFindings& Findings) {
  TReferenceConfig Config = Patient.Config;
  Config.http.connect_timeout_seconds = std::min(Config.http.connect_timeout_seconds, 10s);
  Config.http.total_timeout_seconds = std::min(Config.http.total_timeout_seconds, 20s);
  TReferenceHost Host(Config);
  THTTPCurl& HTTP = Host.HTTPHelper();
  const std::string Base(BaseBeamURL[Patient.Environment]);
  const std::string Service = Base.substr(Base.find("://") + 3);
  const bool UsesProxy = HTTP.UsesProxy(Service);
  // The health check changes nothing, and without a token none has to be fetched, which could end in a reissue.
  TStringList Details, Answer;
  try {
    const std::int32_t Status = HTTP.httpNetGet(Base + "/clearing-house/healthcheck/ping", {}, Details, Answer);
    if (UsesProxy) Findings.OK("proxy", "it lets connections to " + Service + " through");
    const std::string What = Service + " answers (HTTP status " + std::to_string(Status) + ")";
    if (Status >= 500)
      Findings.Problem("service", What + " and is out of order",
                       "Wait, then try again; ask the clearing house if it lasts");
    else if (Status != 200 && Status != 401 && Status != 403)
      Findings.Warning("service", What + ", which is not what the service says to a stranger",
                       "Check http.connect_to and whether something in between answers in its place");
    else
      Findings.OK("service", What + "; \"oxsuper ping\" tells whether it accepts this customer");
    CheckChain(HTTP, false, Findings);
    CheckClock(HTTP, Findings);
  } catch (const THTTPError& Error) {
    const std::string Text = Error.what();
    const bool IsOfProxy = UsesProxy && Text.find("the proxy") != std::string::npos;
    const bool IsOfCertificate = Text.find("the certificate of the server") != std::string::npos;
    Findings.Problem(IsOfProxy         ? "proxy"
                     : IsOfCertificate ? "certificates"
                                       : "service",
                     Text, "docs/https.md lists the reasons and what to do");
    if (IsOfProxy || IsOfCertificate)
      Findings.Warning("service", "it was not reached, so it was not examined", "Solve the problem before it");
    CheckChain(HTTP, IsOfCertificate, Findings);
  }
}

}  // namespace oxSuperAPI
