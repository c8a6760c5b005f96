#pragma once

#include <string>
#include <vector>

#include "oxSuperAPI/session/uBeamSuperGlobal.h"
#include "oxSuperAPI/testing/uFakeHost.h"

namespace oxSuperAPI {

using TLines = std::vector<std::string>;

inline const std::string Dev = "https://" OXSUPERAPI_API_HOST_DEV;
inline const std::string ProgramError =
    "A program error occurred calling the Beam Superannuation API. Check the Beam Super log for details";
inline const std::string NotValid = "No API call made due to validation errors:\r\n";
inline const std::string LoadError = "Unable to load the credentials to call Super Clearing APIs";
inline const std::string UCID = TFakeCredentials().UCID;
inline const std::string NewPair = R"({"clientId":"new-id","clientSecret":"new-secret"})";
inline constexpr TFakeSide BothSides[] = {TFakeSide::Common, TFakeSide::Payroll};

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
  TLines LogLines() const {
    TLines Result;
    for (const TFakeLog::TEntry& Entry : FakeLog.Entries)
      Result.push_back(std::to_string(static_cast<int>(Entry.Severity)) + " " + Entry.Text);
    return Result;
  }

  /// One column of the call log, row by row.
  TLines LogColumn(const std::string& Name) {
    TLines Result;
    for (std::size_t Row = 0; Row < LogTable().Rows.size(); ++Row) Result.push_back(LogTable().Text(Row, Name));
    return Result;
  }

  /// The last part of every request's path, in order ("ping", "token", ...).
  TLines RequestNames() const {
    TLines Result;
    for (const TFakeRequest& Request : FakeHTTP.Requests)
      Result.push_back(Request.URL.substr(Request.URL.rfind('/') + 1));
    return Result;
  }

  /// "method path|header|...|body" of the last request to the development environment, the whole URL of another one.
  std::string LastSent() const {
    const TFakeRequest& Request = FakeHTTP.LastRequest();
    std::string Result = Request.Method + " " + Request.URL.substr(Request.URL.starts_with(Dev) ? Dev.size() : 0);
    for (const std::string& Header : Request.Headers) Result += "|" + Header;
    return Result + "|" + Request.Body;
  }

  /// "id secret" as stored in the only credential row of each database, the common one first.
  TLines StoredPairs() {
    TLines Result;
    for (const TFakeSide Side : BothSides) {
      const TFakeTable& Table = CredentialTable(Side);
      Result.push_back(Table.Rows.size() != 1 ? std::to_string(Table.Rows.size()) + " rows"
                                              : Table.Text(0, "cClientID") + " " + Table.Text(0, "cClientSecret"));
    }
    return Result;
  }
};

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

/// The texts that every call hands out.
struct TTexts {
  std::string Message = "old", Error = "old", Status = "old";
  std::string All() const { return Message + "|" + Error + "|" + Status; }
};

}  // namespace oxSuperAPI
