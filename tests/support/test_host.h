#pragma once

#include <string>
#include <vector>

#include "oxSuperAPI/session/uBeamSuperGlobal.h"
#include "oxSuperAPI/testing/uFakeHost.h"

namespace oxSuperAPI {

/// A fake host for one test; the library forgets everything when it goes.
class TTestHost : public TFakeHost {
 public:
  ~TTestHost() override { TBeamSuperGlobal::Finalize(); }

  /// From now on every token request brings a token of this text and lifetime.
  void AnswerTokens(const std::string& Token = "token", const std::string& ExpiresIn = "3600") {
    FakeHTTP.AnswerURL("/auth/token", 200,
                       R"({"access_token":")" + Token + R"(","expires_in":")" + ExpiresIn + R"("})");
  }

  /// The host log, one "severity text" an entry.
  std::vector<std::string> LogLines() const {
    std::vector<std::string> Result;
    for (const TFakeLog::TEntry& Entry : FakeLog.Entries)
      Result.push_back(std::to_string(static_cast<int>(Entry.Severity)) + " " + Entry.Text);
    return Result;
  }

  /// One column of the call log, row by row.
  std::vector<std::string> LogColumn(const std::string& Name) {
    std::vector<std::string> Result;
    for (std::size_t Row = 0; Row < LogTable().Rows.size(); ++Row) Result.push_back(LogTable().Text(Row, Name));
    return Result;
  }

  /// The last part of every request's path, in order ("ping", "token", ...).
  std::vector<std::string> RequestNames() const {
    std::vector<std::string> Result;
    for (const TFakeRequest& Request : FakeHTTP.Requests)
      Result.push_back(Request.URL.substr(Request.URL.rfind('/') + 1));
    return Result;
  }
};

using TLines = std::vector<std::string>;

/// A customer with credentials, and a service that gives the token "abc" to every channel.
class TActivatedHost : public TTestHost {
 public:
  explicit TActivatedHost(const TFakeCredentials& Customer = {}) {
    AddActivatedCustomer(Customer);
    AnswerTokens("abc");
  }
};

inline TBeamSuperGlobal& Global() {
  return TBeamSuperGlobal::BeamSuperGlobal();
}
inline TBeamSuperCredentials& Credentials() {
  return TBeamSuperGlobal::BeamSuperCredentials();
}

/// The text of the error that `Run` raises, "no error", or "another kind of error" for what is not a TBeamError.
template <class Action>
std::string ErrorOf(Action Run) {
  try {
    Run();
  } catch (const TBeamError& Error) {
    return Error.what();
  } catch (...) {
    return "another kind of error";
  }
  return "no error";
}

inline const std::string Dev = "https://" OXSUPERAPI_API_HOST_DEV;
inline const std::string ProgramError =
    "A program error occurred calling the Beam Superannuation API. Check the Beam Super log for details";
inline const std::string NotValid = "No API call made due to validation errors:\r\n";
inline const std::string LoadError = "Unable to load the credentials to call Super Clearing APIs";

}  // namespace oxSuperAPI
