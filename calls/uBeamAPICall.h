#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "oxSuperAPI/foundation/uBeamEnumerations.h"
#include "oxSuperAPI/host/uHostEditor.h"
#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/host/uHostStrings.h"

namespace oxSuperAPI {

/// One request to the service, from its URL to its log row. Used once: made, given its parameters, run by `MakeCall`,
/// read out, freed. Endpoints override the virtual steps; hosts go through the facades of uBeamSuperCalls.
class OXSUPERAPI_EXPORT TBeamAPICall {
 public:
  /// With empty text lists, ready to be given its parameters.
  TBeamAPICall();
  virtual ~TBeamAPICall();
  TBeamAPICall(const TBeamAPICall&) = delete;
  TBeamAPICall& operator=(const TBeamAPICall&) = delete;

  /// Fill `Headers()` and `Body()`; run by `MakeCall` before the validations. @{
  virtual void SetRequestHeaders() {}
  virtual void SetRequestBody() {}
  /// @}

  /// False when the request may not be sent; the reason is then added to `LogDetails()`. @{
  virtual bool ValidateRequestBody() { return true; }
  virtual bool ValidateCommandParameters() { return true; }
  /// @}

  /// Reads status, message and error from the JSON answer, if there is one. May run twice: after an answer arrived, and
  /// again when a later step failed.
  virtual void ExtractValuesFromResponse();
  /// Runs the request; true exactly when the final status is 200. Nothing is sent or logged when a validation fails;
  /// the report is then `ResponseMessage()`. From then on any error, transport failures included, is logged and
  /// raised as TBeamError with one fixed text; an error before it, while headers and body are made, passes on as it is.
  virtual bool MakeCall();

  /// The name under which the log speaks of this call: part of the rows, so not the compiler's type name.
  virtual std::string ClassName() const { return "TBeamAPICall"; }
  /// False for the token call: its body carries the client secret.
  virtual bool MayBeShownInEditor() const { return true; }

  /// The base URL of the current environment, looked up at each composition.
  static std::string GetBaseURL();
  /// Channel and command are joined to the base URL of the current environment; SetURL replaces the whole. @{
  void SetURL(std::string URL) { FURL = std::move(URL); }
  void SetURLChannel(const std::string& Channel);
  void SetURLCommand(const std::string& Command);
  /// @}

  /// The bearer token without "Bearer", the calling routine for the log, and the HTTP verb. @{
  void SetToken(std::string Token) { FToken = std::move(Token); }
  void SetSource(std::string Source) { FSource = std::move(Source); }
  void SetBeamCallMethod(TBeamCallMethod Method) { FBeamCallMethod = Method; }
  /// @}

  /// As set. @{
  const std::string& Token() const { return FToken; }
  const std::string& Source() const { return FSource; }
  TBeamCallMethod BeamCallMethod() const { return FBeamCallMethod; }
  const std::string& URLBase() const { return FURL; }
  const std::string& URLChannel() const { return FURLChannel; }
  const std::string& URLCommand() const { return FURLCommand; }
  /// @}

  /// Key of the log row of the last attempt to write one, 0 when it failed or there was none.
  std::int32_t SuperLogID() const { return FLastLogID; }
  /// HTTP status, 0 before an answer came; the service's texts, or the report of what kept the request from being sent.
  /// @{
  std::int32_t StatusCode() const { return FStatusCode; }
  const std::string& ResponseMessage() const { return FResponseMessage; }
  const std::string& ResponseStatus() const { return FResponseStatus; }
  const std::string& ResponseError() const { return FResponseError; }
  /// @}

  /// The answer when it is a JSON object or array, else null. Owned by the call.
  const TJSONValue* ResponseAsJson() const { return FJSONResponse.get(); }
  /// These four raise TBeamError for a call that was not constructed. @{
  TStringList& LogDetails() { return Lists().LogDetails; }
  TStringList& ResponseAsStrings() { return Lists().Response; }
  TStringList& Headers() { return Lists().Headers; }
  TStringList& Body() { return Lists().Body; }
  /// @}

  /// Whether `Value` holds more than blanks; if not, the line "<PropertyName> is Mandatory" is added to `LogDetails()`.
  bool IsMandatoryPropertyPresent(std::string_view PropertyName, std::string_view Value);
  /// Service: the process runs in session 0, where nobody sees a form. Interactive is the opposite. @{
  static bool IsRunningAsAService();
  static bool IsUserInteractive() { return !IsRunningAsAService(); }
  /// @}

 protected:
  /// For a call that must not run: it has no text lists, so `MakeCall` fails at its first step, before any request and
  /// any log row.
  enum class TConstruction : std::uint8_t { NotConstructed };
  /// Makes such a call.
  explicit TBeamAPICall(TConstruction);

  /// "authorization: Bearer " and the token, which may be empty: the service refuses such a call itself.
  void AddAuthorization(const std::string& BearerToken);

  /// What the public readers give; steps and endpoints may change it. @{
  std::string FToken;
  std::int32_t FLastLogID = 0;
  std::unique_ptr<TJSONValue> FJSONResponse;
  std::int32_t FStatusCode = 0;
  std::string FResponseMessage;
  std::string FResponseStatus;
  std::string FResponseError;
  std::string FURL;
  std::string FURLChannel;
  std::string FURLCommand;
  std::string FSource;
  TBeamCallMethod FBeamCallMethod = bcmPost;
  /// @}

 private:
  struct TLists {
    TStringList LogDetails;
    TStringList Response;
    TStringList Headers;
    TStringList Body;
  };
  TLists& Lists();
  void RunRequest();
  void Send();
  void ParseResponse();
  void ReportProgramError(const std::string& ErrorText);
  void LogCall(const std::string& MethodName);
  std::unique_ptr<TfrmResponseEditor> OpenEditor(TEditorKind Kind, bool Wanted);
  /// True when the person chose not to send the request.
  bool EditRequest();
  void EditResponse();

  std::optional<TLists> FLists;
};

}  // namespace oxSuperAPI
