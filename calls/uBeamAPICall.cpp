#include "oxSuperAPI/calls/uBeamAPICall.h"

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/log/uBeamSuperLog.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"

namespace oxSuperAPI {

namespace {

std::string MethodName(TBeamCallMethod Method) {
  if (TBeamMethodString.Contains(Method)) return std::string(TBeamMethodString[Method]);
  return "Method=" + std::to_string(static_cast<int>(Method));
}

// The text without the raw line breaks that stand inside its string literals, where JSON forbids them.
std::string WithoutBreaksInStrings(std::string_view Text) {
  std::string Result;
  Result.reserve(Text.size());
  std::size_t Start = 0;  // of what is not copied yet
  bool InString = false;
  bool Escaped = false;
  for (std::size_t At = 0; At < Text.size(); ++At) {
    const char Character = Text[At];
    if (InString && (Character == '\r' || Character == '\n')) {
      Result += Text.substr(Start, At - Start);
      Start = At + 1;
      continue;
    }
    if (Character == '"' && !Escaped) InString = !InString;
    Escaped = InString && Character == '\\' && !Escaped;
  }
  return Result += Text.substr(Start);
}

}  // namespace

TBeamAPICall::TBeamAPICall() : FLists(std::in_place) {}
TBeamAPICall::TBeamAPICall(TConstruction) {}
TBeamAPICall::~TBeamAPICall() = default;

TBeamAPICall::TLists& TBeamAPICall::Lists() {
  if (!FLists) throw TBeamError(ClassName() + " was not constructed: this library cannot make that call");
  return *FLists;
}

std::string TBeamAPICall::GetBaseURL() {
  const auto Environment = TBeamSuperGlobal::BeamSuperGlobal().GetBeamSuperEnvironment();
  const auto Index = static_cast<TBeamSuperEnvironment>(static_cast<std::uint8_t>(Environment) & 0x7F);
  return std::string(BaseBeamURL[BaseBeamURL.Contains(Index) ? Index : bsenvUnknown]);
}

void TBeamAPICall::SetURLChannel(const std::string& Channel) {
  FURLChannel = Trim(Channel);
  const std::string Slash = FURLChannel.empty() || FURLChannel.starts_with('/') ? "" : "/";
  FURL = GetBaseURL() + Slash + FURLChannel;
}

void TBeamAPICall::SetURLCommand(const std::string& Command) {
  FURLCommand = Trim(Command);
  const std::string Base = GetBaseURL();
  if (!FURLChannel.empty() && !FURLChannel.starts_with('/')) {
    FURL = Base + "/" + FURLChannel;  // the command is not appended; no endpoint has such a channel
    return;
  }
  // Without a channel only "?" saves the slash: a command "/x" then gives "//x".
  const bool Joined =
      FURLCommand.empty() || FURLCommand.starts_with('?') || (!FURLChannel.empty() && FURLCommand.starts_with('/'));
  FURL = Base + FURLChannel + (Joined ? "" : "/") + FURLCommand;
}

bool TBeamAPICall::IsMandatoryPropertyPresent(std::string_view PropertyName, std::string_view Value) {
  if (!Trim(Value).empty()) return true;
  LogDetails().Add(std::string(PropertyName) + " is Mandatory");
  return false;
}

bool TBeamAPICall::IsRunningAsAService() {
  THostSystem& System = Host().System();
  std::uint32_t SessionId = 0;
  // Whether the query succeeded is not looked at: one that failed leaves session 0, a service.
  System.ProcessIdToSessionId(System.GetCurrentProcessId(), SessionId);
  return SessionId == 0;
}

void TBeamAPICall::AddAuthorization(const std::string& BearerToken) {
  Headers().Add("authorization: Bearer " + BearerToken);
}

bool TBeamAPICall::MakeCall() {
  FStatusCode = 0;
  ResponseAsStrings().Clear();
  SetRequestHeaders();
  SetRequestBody();
  if (!(ValidateRequestBody() && ValidateCommandParameters())) {
    FResponseMessage = "No API call made due to validation errors:\r\n" + LogDetails().Text();
    return false;
  }
  try {
    RunRequest();
    return FStatusCode == 200;
  } catch (const std::exception& Error) {
    ReportProgramError(Error.what());
  } catch (...) {
    ReportProgramError("an error of unknown kind");
  }
  throw TBeamError(
      "A program error occurred calling the Beam Superannuation API. Check the Beam Super log for details");
}

void TBeamAPICall::RunRequest() {
  const bool Skipped = EditRequest();
  if (!Skipped) Send();
  EditResponse();
  ParseResponse();
  ExtractValuesFromResponse();
}

void TBeamAPICall::Send() {
  const std::string Method = MethodName(FBeamCallMethod);
  switch (FBeamCallMethod) {
    case bcmPost:
      FStatusCode = Host().HTTPHelper().httpNetPost(FURL, Headers(), Body(), LogDetails(), ResponseAsStrings());
      break;
    case bcmGet:
      FStatusCode = Host().HTTPHelper().httpNetGet(FURL, Headers(), LogDetails(), ResponseAsStrings());
      break;
    case bcmPut:
      FStatusCode = Host().HTTPHelper().httpNetPut(FURL, Headers(), Body(), LogDetails(), ResponseAsStrings());
      break;
    default:
      LogDetails().Add("Unknown HTTP method");
      LogCall("Method=" + std::to_string(static_cast<int>(FBeamCallMethod)));
      throw TBeamError("The Beam Superannuation API was called with an unknown Method");
  }
  LogCall(Method);
}

void TBeamAPICall::ParseResponse() {
  std::string Joined;
  const std::string_view Text = ResponseAsStrings().Text(Joined);  // an answer in one piece is not copied
  auto Json = ParseJSON(Text);
  // Some answers carry raw line breaks inside their strings: they are dropped, and only then does the text parse.
  if (!Json && Text.find_first_of("\r\n") != std::string_view::npos) Json = ParseJSON(WithoutBreaksInStrings(Text));
  if (Json && (Json->AsObject() || Json->AsArray())) FJSONResponse = std::move(Json);
}

void TBeamAPICall::ExtractValuesFromResponse() {
  if (!FJSONResponse) return;
  const auto FirstOf = [this](std::string_view Name, std::string_view Other) {
    std::string Value = TBeamAPIHelper::SafeJsonValue(FJSONResponse.get(), Name);
    return Value.empty() ? TBeamAPIHelper::SafeJsonValue(FJSONResponse.get(), Other) : Value;
  };
  FResponseStatus = TBeamAPIHelper::SafeJsonValue(FJSONResponse.get(), "status");
  if (FResponseStatus.empty()) FResponseStatus = std::to_string(FStatusCode);
  FResponseMessage = FirstOf("message", "error");
  FResponseError = FirstOf("errorCode", "Code");
}

void TBeamAPICall::ReportProgramError(const std::string& ErrorText) {
  if (FJSONResponse) {
    try {
      ExtractValuesFromResponse();
    } catch (...) {
      // What failed may well have been this very step; the failure is on its way to the log already.
    }
  } else {
    FResponseError = ErrorText;
    FResponseMessage = "An error occurred calling the Beam Superannuation API. Check the logs for details";
  }
  LogDetails().Add("Beam API called from  " + ClassName() + " failed due to " + ErrorText);
  LogCall(MethodName(FBeamCallMethod));
}

void TBeamAPICall::LogCall(const std::string& Method) {
  FLastLogID = TBeamSuperLog::AddToLog(FSource, FURL, Method, Headers().Text(), Body().Text(),
                                       ResponseAsStrings().Text(), LogDetails().Text(), std::to_string(FStatusCode));
}

std::unique_ptr<TfrmResponseEditor> TBeamAPICall::OpenEditor(TEditorKind Kind, bool Wanted) {
  if (!Wanted || !MayBeShownInEditor() || !IsUserInteractive()) return nullptr;
  return Host().CreateResponseEditor(Kind);
}

bool TBeamAPICall::EditRequest() {
  const auto Editor = OpenEditor(TEditorKind::Request, Host().Identity().DisplayHTTPRequestEditor());
  if (!Editor) return false;
  Editor->SetCaption("Edit Request");
  Editor->SetLines(Body());
  if (Editor->ShowModal() != mrOk) return false;
  Body() = Editor->Lines();
  return Editor->SkipChecked();
}

void TBeamAPICall::EditResponse() {
  const auto Editor = OpenEditor(TEditorKind::Response, Host().Identity().DisplayHTTPResponseEditor());
  if (!Editor) return;
  Editor->SetCaption("Edit Response");
  Editor->SetLines(ResponseAsStrings());
  Editor->SetStatusText(std::to_string(FStatusCode));
  if (Editor->ShowModal() != mrOk) return;
  ResponseAsStrings() = Editor->Lines();
  FStatusCode = IntegerOrZero(Trim(Editor->StatusText()));
}

}  // namespace oxSuperAPI
