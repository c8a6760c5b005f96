#include <algorithm>

#include "payroll_office.h"

namespace oxSuperAPI {
namespace {

using namespace std::string_literals;

constexpr const char* NotificationsPath = "/clearing-house/notifications";

/// A participant in the writer's names; `Contact` and `Account` take the place of the usual ones.
std::string Participant(const std::string& Account = "987654321",
                        const std::string& Contact = R"({"firstName":"Kim","Title":"Ms","phone":{"number":"5550"}})") {
  return R"({"clientParticipantNumber":"P/1 x","organisationName":"Harbour Bakery",
      "businessIdentifier":{"businessIdentifierType":"ABN","value":"51824753556"},"contact":)" +
         Contact + R"(,"redirectUrl":"https://bakery.example/",
      "employers":[{"clientEmployerNumber":"E1","organisationName":"Bakery","contact":{"phone":{"number":"9999"}}}],
      "directDebitAuthorities":[{"account":{"accountName":"Bakery","accountNumber":")" +
         Account + R"(","bsb":"062000"},"startDate":"2026-07-01","employerNumbers":[{"clientEmployerNumber":"E1"}]}]})";
}

/// Batches stay in a status until they are told to move.
class Lookups : public TOfficeTest {
 protected:
  static void SetUpTestSuite() { Open("--time-step 0"); }
  static std::string Submit() { return Member(Office->Run("--json batch submit --again " + PayRun).Out, "processId"); }
  static std::string LastId() { return Member(Office->Run("--json notifications list").Out, "lastId"); }
};

TEST_F(Lookups, AParticipantIsSentAndReadBackWithoutItsAccountAndItsToken) {
  const std::string File = Office->Write("participant.json", Participant());
  const TOutcome Sent = Office->Run("participant post " + File);
  ASSERT_EQ(0, Sent.Exit) << Sent.Error;
  for (const char* Path : {"\n  contact.Title\n", "\n  redirectUrl\n", "\n  employers[0].contact.phone.number\n"})
    EXPECT_TRUE(Holds(Sent.Error, Path)) << Sent.Error;  // the last is sent, with the participant's value
  EXPECT_FALSE(Holds(Sent.Error, "clientEmployerNumber")) << Sent.Error;
  for (const char* Format : {"", "--json "}) {
    const TOutcome Read = Office->Run(Format + std::string("participant get 'P/1 x'"));
    EXPECT_EQ(0, Read.Exit) << Read.Error;
    EXPECT_TRUE(Holds(Read.Out, "******321") && Holds(Read.Out, "Harbour Bakery")) << Read.Out;
    EXPECT_FALSE(Holds(Read.Out, "987654321")) << Read.Out;
  }
  ASSERT_EQ(0, Office->Run("log show " + Member(Office->Run("--json log list -n 1").Out, "row")).Exit);
  const TOutcome Shown = Office->Run("participant post --show-sign-up-url " + File);
  const std::string Portal = "/#access_token=";
  ASSERT_TRUE(Holds(Shown.Out, Portal)) << Shown.Out;
  const std::string Token = Shown.Out.substr(Shown.Out.find(Portal) + Portal.size(), 40);
  const TOutcome Log = Office->Run("log show " + Member(Office->Run("--json log list -n 1").Out, "row"));
  EXPECT_TRUE(Holds(Log.Out, "\"token\": \"(hidden)\"") && !Holds(Log.Out, Token)) << Log.Out;
  EXPECT_EQ(Office->Everything().find(Portal), Office->Everything().rfind(Portal));
}

TEST_F(Lookups, TermsAreAcceptedByParticipantEmployerAndAuthorityEachOnItsOwn) {
  ASSERT_EQ(0, Office->Run("participant post " + Office->Write("participant.json", Participant())).Exit);
  const std::string Command = "--json participant terms 'P/1 x' ";
  EXPECT_EQ("false", Member(Office->Run(Command).Out, "accepted"));
  Office->Control("participants/P%2F1%20x/terms-acceptance", R"({"user":"kim","date":"2026-07-02T00:00:00Z"})");
  EXPECT_EQ("kim", Member(Office->Run(Command).Out, "userAcceptingTermsAndConditions"));
  for (const char* Other : {"--employer 1", "--authority 2"})
    EXPECT_EQ("false", Member(Office->Run(Command + Other).Out, "accepted")) << Other;
  for (const std::string& Unknown :
       {Command + "--authority 1", "participant terms unknown"s, "participant get unknown"s})
    EXPECT_EQ(5, Office->Run(Unknown).Exit) << Unknown;
  EXPECT_EQ(3, Office->Run("participant get").Exit);  // and the configuration has no number
  for (const char* Wrong : {"--employer 1 --authority 2", "--employer 0", "--employer 2147483648"})
    EXPECT_EQ(2, Office->Run(Command + Wrong).Exit) << Wrong;
}

TEST_F(Lookups, AParticipantThatCannotBeSentAsItStandsIsNotSent) {
  const std::string Files[] = {"[]", "{", R"({"organisationName":"nobody"})", Participant("******321"),
                               Participant("1", R"("Kim")")};
  const std::size_t Before = Office->Count("/");
  for (const std::string& Text : Files)
    EXPECT_EQ(3, Office->Run("participant post " + Office->Write("wrong.json", Text)).Exit) << Text;
  EXPECT_EQ(1, Office->Run("participant post " + Office->Path("missing.json")).Exit);
  EXPECT_EQ(Before, Office->Count("/"));
}

TEST_F(Lookups, ExitCodesTellWhatBecameOfARequest) {
  const std::string Post = "participant post " + Office->Write("participant.json", Participant());
  const std::tuple<const char*, std::string, int> Cases[] = {
      {R"("path":"/clearing-house/validate","status":500,"body":"")", "batch validate " + PayRun, 6},
      {R"("path":"/clearing-house/validate","fault":"reset-after-read")", "batch validate " + PayRun, 6},
      {R"("path":"/clearing-house/healthcheck","status":503,"body":"")", "ping", 6},
      {R"("path":"/clearing-house/healthcheck","fault":"reset-after-read")", "ping", 6},
      {R"("path":"/search/contributions","status":404,"body":"")", "batch status P", 5},
      {R"("path":"/clearing-house/cancel","fault":"reset-after-read")", "batch cancel P", 7},
      {R"("path":"/clearing-house/channel-security/reissue","status":500,"body":"")", "reissue", 6},
      {R"("path":"/clearing-house/participant-details","fault":"reset-after-read")", Post, 7},
      {R"("path":"/clearing-house/participant-details","status":200,"body":"thanks")", Post, 7},
      {R"("path":"/clearing-house/participant-details","status":400,"body":{"message":"no"})", Post, 5},
      {R"("path":"/clearing-house/participant-details","status":401,"body":{"message":"who"})", Post, 4},
      {R"("path":"/clearing-house/participant/","status":200,"body":"thanks")", "participant get P", 6},
      {R"("path":"/clearing-house/participant/","status":200,"body":{"contact":"Kim"})", "participant get P", 6},
      {R"("path":"/clearing-house/participant/","fault":"truncate")", "participant terms P", 6},
      {R"("path":"/clearing-house/notifications","status":200,"body":"thanks")", "notifications list", 6},
      {R"("path":"/clearing-house/notifications","status":200,"body":[{"notificationId":1}])", "notifications list", 6},
      {R"("path":"/clearing-house/notifications","status":503,"body":"")", "notifications list --follow", 6},
      {R"("path":"/search/funds","status":200,"body":"thanks")", "funds search super", 6},
      {R"("path":"/search/funds","status":404,"body":"")", "funds search super", 5},
  };
  for (const auto& [Preset, Command, Exit] : Cases) {
    Office->Preset("{" + std::string(Preset) + "}");
    const TOutcome Outcome = Office->Run(Command);
    EXPECT_EQ(Exit, Outcome.Exit) << Preset << Outcome.Error;
  }
}

TEST_F(Lookups, NotificationsTellWhatHappenedToABatch) {
  const std::string Since = LastId(), Process = Submit();
  Office->Control("batches/" + Process + "/refund", R"({"contextId":"R001","amount":"12.50"})");
  Office->Control("batches/" + Process + "/exception", R"({"message":"pay again"})");
  const TOutcome List = Office->Run("notifications list --since " + Since);
  ASSERT_EQ(0, List.Exit) << List.Error;
  const char* Expected[] = {"STATUS           Submitted", "error CONTRIBUTION_REFUNDED; LINE ID R001; member HRF100234",
                            "refund 12.50 of 12.50, reference ", "PAYMENT_NOT_MATCHED; pay again; pay 8411.02; to BSB"};
  for (const char* Text : Expected) EXPECT_TRUE(Holds(List.Out, Text)) << Text << "\n" << List.Out;
  const std::string Document = Office->Run("--json notifications list --since " + Since).Out;
  EXPECT_EQ("12.50", Member(Document, "refundAmount"));
  EXPECT_EQ("8411.02", Member(Document, "amount"));
  EXPECT_EQ(Process, Member(Document, "processId"));

  const TOutcome First = Office->Run("--json notifications list --count 1 --since " + Since);
  EXPECT_EQ(Member(First.Out, "notificationId"), Member(First.Out, "lastId"));
  EXPECT_FALSE(Holds(First.Out, "EXCEPTION")) << First.Out;
  EXPECT_TRUE(Holds(Office->Run("notifications list --count 1").Error, "go on with --since "));
  EXPECT_TRUE(Holds(Office->Run("notifications list --participant P").Out, "There are no notifications."));
  EXPECT_TRUE(Holds(Office->Run("notifications list --since 2147483647").Out, "no newer"));
  for (const char* Wrong : {"--since -1", "--count 0", "--times 2", "--follow --interval 0"})
    EXPECT_EQ(2, Office->Run("notifications list " + std::string(Wrong)).Exit) << Wrong;
}

TEST_F(Lookups, OnlyWhatIsNewerIsListedWhateverTheServiceSends) {
  Office->Preset(R"({"path":"/clearing-house/notifications","status":200,"body":[
      {"create_date":"d","notificationId":9,"notification_type":"OTHER","processId":"nine\u001b[31m",
       "payload":{"parameters":[{"name":"elementvalue","value":"123456782"}]}},
      {"create_date":"d","notificationId":7,"notification_type":"OTHER","payload":"","processId":"seven"},
      {"create_date":"d","notificationId":8,"notification_type":"MEMBER_RESPONSE","processId":"eight",
       "payload":"{\"summary\":\"s\",\"parameters\":[{\"name\":\"elementvalue\",\"value\":\"123456782\"},{\"name\":\"RefundAmount\",\"value\":\"1e300\"}]}"}]})");
  const TOutcome List = Office->Run("notifications list --since 7");
  EXPECT_EQ(0, List.Exit) << List.Error;
  EXPECT_FALSE(Holds(List.Out, "seven")) << List.Out;
  EXPECT_TRUE(Holds(List.Out, "s; refund 90,000,000,000,000.00 of 0.00")) << List.Out;
  EXPECT_LT(List.Out.find("eight"), List.Out.find("nine?[31m")) << List.Out;
  EXPECT_FALSE(Holds(List.Out, "\x1b")) << List.Out;
}

TEST_F(Lookups, FollowingShowsEachNotificationOnceAndOutlivesAFailure) {
  const std::string Since = LastId(), Process = Submit();
  const std::size_t Before = Office->Count(NotificationsPath);
  Office->Preset(R"([{"path":"/clearing-house/notifications","times":1},
                     {"path":"/clearing-house/notifications","status":503,"body":""}])");
  const std::string Options = "notifications list --since " + Since + " --follow --interval ";
  const TOutcome Followed = Office->Run("--json " + Options + "1 --times 3");
  EXPECT_EQ(0, Followed.Exit) << Followed.Error;
  EXPECT_TRUE(Holds(Followed.Error, "503")) << Followed.Error;
  EXPECT_EQ(1, std::ranges::count(Followed.Out, '\n')) << Followed.Out;  // a document a line
  EXPECT_TRUE(Holds(Followed.Out, "\"processId\":\"" + Process + "\"")) << Followed.Out;
  EXPECT_EQ(3u, Office->Count(NotificationsPath) - Before);

  const TOutcome Interrupted =
      Interrupt(*Office, Options + "600", [] { return Holds(ReadFile(Office->Path("out")), "What happened"); });
  EXPECT_EQ(130, Interrupted.Exit);
  EXPECT_TRUE(Holds(Interrupted.Out, Process)) << Interrupted.Out;
}

TEST_F(Lookups, FundsAreFoundByAPartOfTheirNameABNOrUSI) {
  const TOutcome One = Office->Run("--json funds search que0003");
  EXPECT_EQ("QUE0003AU", Member(One.Out, "usi"));
  EXPECT_EQ("false", Member(One.Out, "maybeMore"));
  EXPECT_TRUE(Holds(Office->Run("funds search 'growth super'").Out, "Quellmoor Growth Super"));
  EXPECT_TRUE(Holds(Office->Run("funds search 'a/b?c#d%20'").Out, "No fund has"));
  const TOutcome Many = Office->Run("funds search super");
  EXPECT_EQ(21, std::ranges::count(Many.Out, '\n')) << Many.Out;
  EXPECT_TRUE(Holds(Many.Error, "there may be more")) << Many.Error;
  EXPECT_EQ(2, Office->Run("funds search ' '").Exit);
}

}  // namespace
}  // namespace oxSuperAPI
