#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

#include "output.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"
#include "tool.h"
#include "tool_host.h"

namespace oxSuperAPI {

/// The library, ready for use with the tool's configuration; it is finalized when the session ends.
class TSession {
 public:
  explicit TSession(const TToolOptions& Options);
  ~TSession();
  TSession(const TSession&) = delete;
  TSession& operator=(const TSession&) = delete;

  TToolHost& Host() { return *FHost; }
  const TReferenceConfig& Config() { return FHost->Reference().Config(); }
  /// Where the tool keeps its own files: beside the configuration.
  const std::filesystem::path& Directory() const { return FDirectory; }
  bool IsProduction() const;
  std::string Environment() const;

  /// Makes a call of the library. What it raises becomes a TToolError that tells whether the request may have arrived;
  /// `What` names it for the person ("The submission").
  template <class Function>
  auto Call(const std::string& What, Function Facade) {
    FFirstRequest = FHost->Requests().size();
    FHost->ForgetReview();
    try {
      const auto Result = Facade();
      if (FHost->Review() == TReview::Skipped)
        Note("warning: " + What + " was skipped in the editor: nothing was sent.");
      return Result;
    } catch (const std::exception& Error) {
      throw Failure(What, Error.what());
    }
  }

  /// The reason why the last Call came back with false, from its texts and its request.
  TToolError Refusal(const std::string& What, const std::string& Message, const std::string& Error,
                     const std::string& Status) const;

  /// Of an answer with status 200 that does not say what it has to say.
  TToolError NotUnderstood(const std::string& What) const;

  /// Raises TToolError (not authenticated) unless the customer is activated and the service gives it a token.
  void NeedCustomerToken();

  /// The request of the last Call, or null when it made none. A token fetched for a request that was then kept back in
  /// the editor does not count.
  const TSentRequest* LastRequest() const;

 private:
  TToolError Failure(const std::string& What, const std::string& Text) const;

  std::filesystem::path FDirectory;
  std::unique_ptr<TToolHost> FHost;
  std::size_t FFirstRequest = 0;
};

/// The texts that are not empty, each once, with blanks between them.
std::string JoinTexts(std::initializer_list<std::string> Texts);

}  // namespace oxSuperAPI
