#include "session.h"

#include <algorithm>
#include <vector>

#include "editors.h"
#include "output.h"
#include "oxSuperAPI/calls/uBeamAPICall.h"

namespace oxSuperAPI {
namespace {

constexpr const char* UnknownAdvice =
    "It may have arrived and have been carried out. Do not repeat it blindly: \"oxsuper batch status\" and \"oxsuper "
    "log list\" show what is known here; ask the clearing house when in doubt.";

/// Of an answer that means no success.
TExit ExitOfStatus(const TSentRequest& Request) {
  if (Request.Status == 401 || Request.Status == 403) return exitNotAuthenticated;
  if (Request.Status >= 400 && Request.Status < 500)
    return Request.Path.ends_with("/token") ? exitNotAuthenticated : exitRefusedByService;
  const bool HalfUnderstood = Request.Status >= 200 && Request.Status < 300;
  return HalfUnderstood && Request.Changes ? exitOutcomeUnknown : exitServiceFailure;
}

}  // namespace

std::string JoinTexts(std::initializer_list<std::string> Texts) {
  std::vector<std::string> Seen;
  std::string Result;
  for (const std::string& Text : Texts) {
    if (Text.empty() || std::find(Seen.begin(), Seen.end(), Text) != Seen.end()) continue;
    Result += (Result.empty() ? "" : " ") + Text;
    Seen.push_back(Text);
  }
  return Result;
}

TSession::TSession(const TToolOptions& Options) : FDirectory(std::filesystem::path(Options.ConfigFile).parent_path()) {
  if (!std::filesystem::exists(Options.ConfigFile))
    throw TToolError(exitFailed, "There is no configuration " + Options.ConfigFile +
                                     ": run \"oxsuper init\", or name another one with --config");
  TReferenceConfig Settings = ReadConfig(Options.ConfigFile);
  Settings.identity.display_request_editor |= Options.EditRequest;
  Settings.identity.display_response_editor |= Options.EditResponse;
  FHost = std::make_unique<TToolHost>(std::move(Settings));
  RegisterHost(FHost.get());
  if ((Options.EditRequest || Options.EditResponse) && !(TBeamAPICall::IsUserInteractive() && EditorAvailable())) {
    RegisterHost(nullptr);
    throw TToolError(exitFailed,
                     "No editor is available, nothing was sent: --edit-request and --edit-response need a person at a "
                     "terminal (standard input leads to one, and this process is in its foreground)");
  }
  // Kept beyond the session: the text of an error is printed after it.
  MaskOutput([Known = FHost->Reference().KnownSecrets()](std::string_view Text) { return Known->Hide(Text); });
}

TSession::~TSession() {
  TBeamSuperGlobal::Finalize();
  RegisterHost(nullptr);
}

bool TSession::IsProduction() const {
  return TBeamSuperGlobal::BeamSuperGlobal().GetBeamSuperEnvironment() == bsenvProdLive;
}

std::string TSession::Environment() const {
  return std::string(TBeamSuperEnvironmentString[TBeamSuperGlobal::BeamSuperGlobal().GetBeamSuperEnvironment()]);
}

const TSentRequest* TSession::LastRequest() const {
  const auto& Requests = FHost->Requests();
  if (FHost->Review() != TReview::Passed) return nullptr;
  return Requests.size() > FFirstRequest ? &Requests.back() : nullptr;
}

TToolError TSession::Failure(const std::string& What, const std::string& Text) const {
  if (FHost->Review() == TReview::Cancelled)
    return {exitRefusedHere, What + " was cancelled in the editor, nothing was sent"};
  const TSentRequest* Request = LastRequest();
  if (!Request) return {exitFailed, What + " failed, nothing was sent: " + Text};
  const std::string Reason = JoinTexts({Request->Problem, Text});
  if (Request->Fate == TRequestFate::NotSent) return {exitFailed, What + " failed, nothing was sent: " + Reason};
  const bool Unclear = Request->Fate != TRequestFate::Answered || Request->Status == 200;
  if (Request->Changes && Unclear)
    return {exitOutcomeUnknown, What + " was sent, its outcome is not known: " + Reason + "\n" + UnknownAdvice};
  return {Unclear ? exitServiceFailure : ExitOfStatus(*Request), What + " failed: " + Reason};
}

TToolError TSession::Refusal(const std::string& What, const std::string& Message, const std::string& Error,
                             const std::string& Status) const {
  const TSentRequest* Request = LastRequest();
  const std::string Reason = Printable(JoinTexts({Message, Error, Status}), true);
  if (!Request) return {exitRefusedHere, What + " was not sent: " + Reason};
  const std::string Answer = " (HTTP status " + std::to_string(Request->Status) + ")";
  const TExit Exit = ExitOfStatus(*Request);
  const bool Doubtful = Request->Changes && (Exit == exitServiceFailure || Exit == exitOutcomeUnknown);
  return {Exit, What + " failed: " + Reason + Answer + (Doubtful ? "\n" + std::string(UnknownAdvice) : "")};
}

TToolError TSession::NotUnderstood(const std::string& What) const {
  const TSentRequest* Request = LastRequest();
  const bool Doubtful = Request && Request->Changes;
  return {Doubtful ? exitOutcomeUnknown : exitServiceFailure,
          What + " was answered, and the answer is not understood (\"oxsuper log list\" has it)." +
              (Doubtful ? " " + std::string(UnknownAdvice) : "")};
}

void TSession::NeedCustomerToken() {
  TBeamSuperGlobal& Global = TBeamSuperGlobal::BeamSuperGlobal();
  const TBeamSuperStatus Status = Global.GetBeamSuperStatus();
  if (Status == bssNotEnabled)
    throw TToolError(exitNotAuthenticated, "The service is not enabled for country " +
                                               std::to_string(Config().identity.country_code) +
                                               " (identity.country_code)");
  if (Status == bssExpired)
    throw TToolError(exitNotAuthenticated, "The customer's credentials have expired: run \"oxsuper reissue\"");
  if (Status != bssActivated && Status != bssNearlyExpired)
    throw TToolError(exitNotAuthenticated, "The customer is not activated: run \"oxsuper activate\"");

  const TProgress Progress("Signing in");
  const TBeamToken* Token = Call("Signing in", [] { return TBeamSuperGlobal::BeamSuperGlobal().GetCustomerToken(); });
  if (Token && !Token->TokenString.empty()) return;
  const TBeamSuperGlobal& Now = TBeamSuperGlobal::BeamSuperGlobal();
  const TToolError Reason =
      Refusal("Signing in", Now.LastAPICallStatus(), Now.LastAPICallError(), Now.LastAPICallMessage());
  throw LastRequest() ? Reason : TToolError(exitNotAuthenticated, Reason.what());
}

}  // namespace oxSuperAPI
