#include <gtest/gtest.h>

#include <functional>

#include "../support/test_host.h"
#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/foundation/uBeamDates.h"

// What a host may do from inside its own facilities. The address sanitizer is the judge of most of this.
namespace oxSuperAPI {
namespace {

/// Runs an action at one of the library's accesses to the host.
class TInterruptingHost : public TTestHost {
 public:
  std::function<void()> Action;
  int AccessesLeft = -1;  // counts down; the action runs at 0

  THTTPHelper& HTTPHelper() override { return Pass(FakeHTTP); }
  TJSONParser& JSONParser() override { return Pass(FakeJSON); }
  THostSettings& Settings() override { return Pass(FakeSettings); }
  THostCipher& Cipher() override { return Pass(FakeCipher); }
  THostLog& Log() override { return Pass(FakeLog); }
  THostIdentity& Identity() override { return Pass(FakeIdentity); }
  THostSystem& System() override { return Pass(FakeSystem); }
  TADOConnection* ADOMainCommonConnection() override { return &Pass(CommonConnection); }
  TADOConnection* ADOMainConnection() override { return &Pass(PayrollConnection); }
  std::unique_ptr<TfrmResponseEditor> CreateResponseEditor(TEditorKind Kind) override {
    return Pass(FakeEditor).Create(Kind);
  }

 private:
  template <class Facility>
  Facility& Pass(Facility& Wanted) {
    if (AccessesLeft-- == 0) Action();
    return Wanted;
  }
};

TEST(Reentrancy, TheHostMayResetTheSessionAtAnyAccess) {
  std::string A, B, C, D, E;
  const std::function<void()> Operations[] = {
      [&] { PostRegisterCustomer("u", "n", "c", "p", "s", A, B, C); },
      [&] { PostActivateCustomer(false, "u", "n", "c", "p", "s", A, B, C, D, E); },
      [&] {
        TBeamContributionDetail Detail;
        std::unique_ptr<TBeamContributionResponse> Response;
        PostContribution("s", &Detail, true, Response, A, B, C);
      },
      [&] { Global().ActivateCustomer("s", A); },
      [&] { Global().ReissueCredentials("s", A); },
      [&] { TBeamSuperGlobal::BeamSuperCredentials("{other}"); },
      [&] { Credentials().GetIsExpired(); },
      [&] { Credentials().Save(); },
      [&] { Global().GetAppToken(), Global().GetAppToken(); },  // the second one finds it cached
      [&] { Global().GetCustomerToken(), Global().GetCustomerToken(); },
      [&] { Global().GetIsBeamSuperActive(); },
      [&] { Global().GetCustomerUCID(); },
  };
  const std::function<void()> Actions[] = {
      [] { TBeamSuperGlobal::Finalize(); },
      [] { Global().SetOptedIn(true); },
      [] { TBeamSuperGlobal::Finalize(), Global().GetAppToken(), Global().GetCustomerToken(); },
  };
  int Interrupted = 0;
  for (const bool Activated : {true, false})
    for (const auto& Operation : Operations)
      for (const auto& Action : Actions)
        for (int Access = 0;; ++Access) {
          ASSERT_LT(Access, 500) << "no end";
          TInterruptingHost Host;
          // Old enough to be reissued while loading.
          if (Activated) Host.AddActivatedCustomer({.DateLastIssued = Host.FakeSystem.Time - 300});
          Host.EntitiesTable().Add({{"cClientNumber", "15500"}});
          Host.AnswerTokens();
          Host.FakeHTTP.AnswerURL("/channel-security/", 200, R"({"clientId":"i","clientSecret":"s"})");
          Host.FakeHTTP.AnswerURL("/ping", 401, "{}");
          Host.FakeHTTP.DefaultAnswer = TFakeAnswer{.Body = R"({"status":"SUBMITTED"})"};
          Host.FakeIdentity.ShowRequestEditor = Host.FakeIdentity.ShowResponseEditor = true;
          Host.Action = Action;
          Host.AccessesLeft = Access;
          const std::string Error = ErrorOf(Operation);
          EXPECT_NE(Error, "another kind of error");
          const bool Reached = Host.AccessesLeft < 0;
          Interrupted += Reached;
          Host.AccessesLeft = -1;
          if (!Reached) break;
          EXPECT_EQ(Host.CommonConnection.OpenQueries() + Host.PayrollConnection.OpenQueries(), 0);
          EXPECT_EQ(ErrorOf([&] { GetHealthCheck("after", A, B, C); }), "no error");
        }
  EXPECT_GT(Interrupted, 500);
}

TEST(Reentrancy, ATokenDroppedDuringItsFetchIsNoTokenAndNothingElseIsSent) {
  for (const bool Finalizes : {false, true}) {
    TActivatedHost Host;
    Host.FakeHTTP.AnswerURL("/auth/token", {.Body = R"({"access_token":"t"})", .During = [&](auto&) {
                                              Finalizes ? TBeamSuperGlobal::Finalize() : Global().SetOptedIn(true);
                                            }});
    EXPECT_EQ(Global().GetAppToken(), nullptr);
    EXPECT_EQ(Global().GetCustomerToken(), nullptr);
    EXPECT_EQ(Global().GetAdminToken() == nullptr, Finalizes);
    TTexts Out;
    std::string ID = "old", Secret = "old";
    for (const bool Reissue : {false, true}) {
      EXPECT_FALSE(
          PostActivateCustomer(Reissue, "u", "n", "c", "p", "s", Out.Message, Out.Error, Out.Status, ID, Secret));
      EXPECT_EQ(Out.All() + ID + Secret, Finalizes ? "||" : "200||Token generated");
    }
    EXPECT_FALSE(Finalizes && PostRegisterCustomer("u", "n", "c", "p", "s", Out.Message, Out.Error, Out.Status));
    std::unique_ptr<TBeamNotifications> List;
    std::int32_t LogID = 9;
    EXPECT_FALSE(GetNotifications("s", "", 0, 0, List, LogID, Out.Message, Out.Error, Out.Status));
    EXPECT_EQ(Out.All(), "No token obtained||");
    Out = {};
    EXPECT_THROW(GetHealthCheck("s", Out.Message, Out.Error, Out.Status), TBeamError);
    EXPECT_EQ(Out.All(), "||");
    EXPECT_EQ(Host.FakeHTTP.CountOf("/auth/token"), Host.FakeHTTP.Requests.size());
  }
}

}  // namespace
}  // namespace oxSuperAPI
