#include "office.h"

namespace sandbox_test {
namespace {

/// Unwraps a payload as clients do: purely textually, on the JSON text of the member.
json::object Unwrapped(const json::value& notification) {
  std::string text = json::serialize(notification.at("payload"));
  EXPECT_TRUE(text.starts_with("\"{") && text.ends_with("}\"")) << text;
  text.replace(text.find("\"{"), 2, "{");
  text.replace(text.find("}\""), 2, "}");
  for (std::size_t at = 0; (at = text.find("\\\"", at)) != std::string::npos; ++at) text.replace(at, 2, "\"");
  return json::parse(text).as_object();
}

json::array List(Client& client, const std::string& rest = "?count=500&notificationId=0") {
  return client.Send("GET", "/clearing-house/notifications" + rest).Json().as_array();
}

/// The first letter of each type.
std::string Types(const json::array& notifications) {
  std::string types;
  for (const json::value& each : notifications) types += each.at("notification_type").as_string()[0];
  return types;
}

/// The value of a parameter, inside the event item or beside it; empty when there is none.
std::string Parameter(const json::object& payload, const char* name) {
  const json::value& event = payload.at("eventItem");
  const json::value* inside = event.as_object().if_contains("parameters");
  for (const json::value& each : (inside != nullptr ? *inside : payload.at("parameters")).as_array())
    if (each.at("name") == name) return json::value_to<std::string>(each.at("value"));
  return "";
}

/// Submits the sample batch and skips what the clearing house says about that.
std::string Submit(Client& client, const json::value& batch = SampleBatch()) {
  return ProcessId(Post(client, "submit", batch));
}

TEST_F(Office, EveryStatusOfABatchIsAnnouncedOnce) {
  const std::string id = Submit(client);
  Move(client, id);
  Move(client, id, "Awaiting Payment");  // it is there already
  client.Send("PUT", "/clearing-house/cancel/" + id);
  const json::array all = List(client);
  std::string statuses;
  for (const json::value& each : all) {
    (statuses += Unwrapped(each).at("statusMessage").as_string()) += ";";
    EXPECT_EQ(each.at("notification_type"), "STATUS");
    EXPECT_EQ(each.at("processId"), id.c_str());
    EXPECT_EQ(each.at("create_date").as_string().size(), 24u);
  }
  EXPECT_EQ(statuses, "Submitted;Awaiting Payment;Cancelled;");
}

TEST_F(Office, FundsAnswerWhenTheMoneyReachesThem) {
  const std::string id = Submit(client);
  Move(client, id, "Sent To Fund");
  const json::array all = List(client);
  EXPECT_EQ(Types(all), "SSCMCM");
  EXPECT_EQ(all[2].at("notification_type"), "CONTRIBUTION_RESPONSE");
  EXPECT_EQ(all[3].at("notification_type"), "MEMBER_RESPONSE");
  const json::object fund = Unwrapped(all[2]), member = Unwrapped(all[3]), registered = Unwrapped(all[5]);
  EXPECT_EQ(fund.at("summary"), "Contribution accepted: 1100.75");
  EXPECT_EQ(Parameter(fund, "SuperFundABNDimension") + " " +
                Parameter(fund, "SuperFundUniqueSuperannuationIdentifierDimension") + " " +
                Parameter(fund, "EmployersABNDimension"),
            "53004085616 ABC1234AU 51824753556");
  EXPECT_FALSE(fund.contains("parameters")) << "inside the event item";
  EXPECT_TRUE(member.contains("parameters")) << "beside the event item";
  for (const char* key : {"contextId", "severityCode", "errorCode", "shortDescription", "detailedDescription"})
    EXPECT_NE(member.at("eventItem").at(key), "") << key;
  EXPECT_EQ(member.at("eventItem").at("contextId"), "row-1");
  EXPECT_EQ(Parameter(member, "ContextID"), "row-1");
  EXPECT_EQ(Parameter(registered, "SuperannuationFundDetails.MemberClient.Identifier").size(), 9u) << "a new number";
  EXPECT_EQ(json::serialize(all).find("123456782"), std::string::npos) << "never a tax file number";
}

TEST_F(Office, RefundsSayHowMuchComesBack) {
  // Of fund, member, self-managed fund, its member.
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"Sent To Fund", {"", "", "", ""}},
      {"Sent To Fund With Refund", {"1100.75", "1100.75", "", ""}},
      {"Refunded", {"1100.75", "1100.75", "9.99", "9.99"}}};
  for (const auto& [status, refunds] : cases) {
    Move(client, Submit(client, SampleBatch(status)), status);
    const json::array all = List(client);
    ASSERT_GE(all.size(), 6u);
    for (std::size_t i = 0; i < 4; ++i) {
      const json::object payload = Unwrapped(all[all.size() - 4 + i]);
      EXPECT_EQ(Parameter(payload, "RefundAmount"), refunds[i]) << status << i;
      EXPECT_EQ(Parameter(payload, "RefundPaymentTotal"), refunds[i]) << status << i;
      EXPECT_EQ(Parameter(payload, "RefundPaymentReferenceNumber").empty(), refunds[i].empty());
      EXPECT_EQ(payload.at("eventItem").at("severityCode") == "Error", !refunds[i].empty());
    }
  }
}

TEST_F(Office, RefundsAndExceptionsAreRaisedWhenTold) {
  const std::string control = "batches/" + Submit(client);
  // clang-format off
  const std::tuple<std::string, const char*, long> cases[] = {
      {"/refund", R"({"contextId":"row-1","amount":"12.50"})", 200}, {"/refund", "", 200},
      {"/refund", R"({"contextId":"nobody"})", 400}, {"/refund", R"({"amount":"12.5"})", 400},
      {"/refund", R"({"amount":"-1.00"})", 400}, {"/exception", "", 200},
      {"/exception", R"({"exceptionType":"T","message":"M","properties":{"Amount":"1.00"}})", 200},
      {"/exception", R"({"properties":{"Amount":1}})", 400}, {"/exception", R"({"properties":[]})", 400}};
  // clang-format on
  for (const auto& [path, body, status] : cases)
    EXPECT_EQ(client.Control("POST", control + path, body).status, status) << path << body;
  for (const std::string each : {"refund", "exception"})
    EXPECT_EQ(client.Control("POST", "batches/none/" + each).status, 404);

  const json::array all = List(client);
  EXPECT_EQ(Types(all), "SMMEE");
  EXPECT_EQ(Parameter(Unwrapped(all[1]), "RefundAmount"), "12.50");
  EXPECT_EQ(Parameter(Unwrapped(all[2]), "RefundAmount"), "1100.75");
  const json::object exception = Unwrapped(all[3]);
  EXPECT_EQ(exception.at("exceptionType"), "PAYMENT_NOT_MATCHED");
  for (const char* key : {"Amount", "BSB", "Account", "Account Name", "RefNo", "BPAY\u00AE Biller Code", "Reference"})
    EXPECT_NE(exception.at("properties").at(key), "") << key;
  EXPECT_EQ(json::serialize(Unwrapped(all[4])),
            R"({"exceptionType":"T","message":"M","properties":{"Amount":"1.00"}})");
  EXPECT_EQ(all[3].at("notification_type"), "EXCEPTION");
  Move(client, Submit(client, SampleBatch("unmatched")), "Unknown");
  EXPECT_EQ(Types(List(client)), "SMMEESSE");
}

TEST_F(Office, PayloadsSurviveTextualUnwrappingWhateverTheBatchSays) {
  json::value batch = SampleBatch();
  const std::string member = "/contributionDetail/employers/0/funds/0/members/0";
  Change(batch, member + "/memberTransactionContextId", R"("{row}\"q\"}\n\t\\\"{é")");
  Change(batch, member + "/memberNumber", R"("{7}\\")");
  const std::string id = Submit(client, batch);
  Move(client, id, "Sent To Fund");
  client.Control("POST", "batches/" + id + "/exception",
                 R"({"message":"a}\"\\\u0007","properties":{"k\"}\n":"v\"{"}})");
  const json::array all = List(client);
  const json::object answer = Unwrapped(all[3]), exception = Unwrapped(all[6]);
  EXPECT_EQ(answer.at("eventItem").at("contextId"), "{row}'q'}  /'{é");
  EXPECT_EQ(Parameter(answer, "SuperannuationFundDetails.MemberClient.Identifier"), "{7}/");
  EXPECT_EQ(exception.at("message"), "a}'/ ");
  EXPECT_EQ(exception.at("properties").at("k'} "), "v'{");
}

TEST_F(Office, NotificationsArePagedFromTheOldestAndFilteredByParticipant) {
  json::value named = SampleBatch("A");
  Change(named, "/contributionDetail/participantDetail/clientParticipantNumber", R"("P 1")");
  const std::string first = Submit(client, named);
  const std::string second = Submit(client, SampleBatch("B"));
  client.Control("POST", "batches/" + first);

  const json::array all = List(client, "");
  ASSERT_EQ(all.size(), 3u);
  const auto id = [&](std::size_t i) { return all[i].at("notificationId").as_int64(); };
  EXPECT_TRUE(id(0) < id(1) && id(1) < id(2));
  // clang-format off
  const std::pair<std::string, std::vector<std::size_t>> cases[] = {
      {"?count=2&notificationId=0", {0, 1}}, {"?count=500&notificationId=" + std::to_string(id(0)), {1, 2}},
      {"?count=1&notificationId=" + std::to_string(id(1)), {2}},
      {"?count=500&notificationId=" + std::to_string(id(2)), {}}, {"/P%201?count=500&notificationId=0", {0, 2}},
      {"/P%201?count=500&notificationId=" + std::to_string(id(0)), {2}}, {"/nobody?count=500&notificationId=0", {}}};
  // clang-format on
  for (const auto& [rest, indexes] : cases) {
    json::array expected;
    for (const std::size_t i : indexes) expected.push_back(all[i]);
    EXPECT_EQ(List(client, rest), expected) << rest;
  }
  for (const char* wrong :
       {"?count=0", "?count=x", "?count=-1", "?notificationId=1x", "?notificationId=99999999999999999999"})
    EXPECT_EQ(client.Send("GET", std::string("/clearing-house/notifications") + wrong).status, 400) << wrong;
  BecomeCustomer(client, "STRANGER");
  EXPECT_TRUE(List(client).empty()) << "each customer's own";
}

TEST_F(Office, AnswersAboutALargeBatchAndKeepsABoundedNumber) {
  json::value batch = SampleBatch();
  json::array& members = batch.at_pointer("/contributionDetail/employers/0/funds/0/members").as_array();
  for (int i = 1; i < 150; ++i) members.push_back(json::value(members[0]));
  const std::string id = Submit(client, batch);
  for (int i = 0; i < 60; ++i) Move(client, id, i % 2 == 0 ? "Sent To Fund" : "Refunded");
  const json::array first = List(client, "?count=1");
  const json::array all = List(client, "?count=100000");
  EXPECT_EQ(all.size(), 5000u);
  EXPECT_EQ(first.at(0), all.at(0));
  EXPECT_EQ(all.back().at("notificationId"), 1 + 60 * (1 + 2 + 100));
}

}  // namespace
}  // namespace sandbox_test
