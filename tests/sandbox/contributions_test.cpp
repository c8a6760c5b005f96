#include <atomic>
#include <thread>

#include "office.h"

namespace sandbox_test {

json::value SampleBatch(const std::string& messageId) {
  json::value batch = json::parse(
      R"({"contributionDetail": {
      "employers": [{
        "employerDetail": {"businessIdentifier": {"businessIdentifierType": "ABN", "value": "51824753556"},
                           "organisationName": "Café Ñandú"},
        "funds": [{
          "fundIdentifier": {"abn": "53004085616", "usi": "ABC1234AU"}, "isDefaultFund": true,
          "members": [{"atWork": true, "dob": "1980-02-29", "employerProvidedTaxFileNumber": "123456782",
            "memberTransactionContextId": "row-1", "name": {"familyName": "Nguyễn"},
            "definedBenefits": {"definedBenefitEmployerContribution": "100.00",
              "definedBenefitEmployerRate.": {"value": "0.10"},
              "definedBenefitsAnnualSalary": [{"endDate": "2024-06-30", "value": "90000.00"}]},
            "memberRegistrationOtherDetails": [{"endDate": "2024-01-01", "endDate": "2024-01-01", "Text": "t"}],
            "otherContributionAmounts": [{"amount": "0.50", "description": "d"}], "superGuaranteeAmount": "1000.25",
            "payPeriodEndDate": "2024-03-14", "payPeriodStartDate": "2024-03-01", "weeklyHoursWorked": "38.00"}],
          "organisationName": "Retail Fund"}, {
          "fundIdentifier": {"abn": "51824753556"}, "isDefaultFund": false,
          "members": [{"dob": "1990-01-01", "employerProvidedTaxFileNumber": "123456782", "voluntaryAmount": "9.99",
            "name": {"familyName": "Doe"}, "payPeriodEndDate": "2024-03-14", "payPeriodStartDate": "2024-03-01"}],
          "smsfDetail": {"bankDetail": {"account": {"accountName": "F", "accountNumber": "12345", "bsb": "062-000"}},
                         "electronicServiceAddressAlias": "ESA1", "fundName": "Doe Fund"}}]}],
      "participantDetail": {"businessIdentifier": {"businessIdentifierType": "ABN", "value": "51824753556"}},
      "paymentDetail": {"businessIdentifier": {"businessidentifierType": "ABN", "value": "51824753556"},
        "paymentType": "DIRECT_CREDIT", "refundDetail": {"account": {"accountNumber": "1", "bsb": "062000"}}}},
    "identifier": {"time": "2024-03-05T10:20:30Z"}, "version": "1.0"})");
  batch.at("identifier").as_object()["messageId"] = messageId;
  return batch;
}

namespace {

const std::string kEmployer = "/contributionDetail/employers/0";
const std::string kRetail = kEmployer + "/funds/0";
const std::string kSmsf = kEmployer + "/funds/1";
const std::string kMember = kRetail + "/members/0";
const std::string kAmount = kMember + "/superGuaranteeAmount";
const std::string kSalary = kMember + "/definedBenefits/definedBenefitsAnnualSalary/0/value";
const std::string kTfn = kMember + "/employerProvidedTaxFileNumber";
const std::string kPayment = "/contributionDetail/paymentDetail";

TEST_F(Office, RefusesWhatAClearingHouseWouldRefuse) {
  // What is refused by which code: a pointer and a value, an empty one for a missing member.
  // clang-format off
  const std::map<std::string, std::vector<std::pair<std::string, std::string>>> cases = {
      {"EMPLOYERS_MISSING", {{"/contributionDetail/employers", "[]"}, {"/contributionDetail/employers", ""}}},
      {"FUNDS_MISSING", {{kEmployer + "/funds", "[]"}}},
      {"MEMBERS_MISSING", {{kRetail + "/members", "[]"}}},
      {"LIST_EXPECTED", {{kRetail + "/members", "{}"}}},
      {"OBJECT_EXPECTED", {{kMember, "7"}}},
      {"NUMBER_NOT_TEXT", {{kAmount, "1000.25"}, {kMember + "/gender", "1"}, {kSalary, "1"}}},
      {"AMOUNT_INVALID", {{kAmount, R"("1000.2")"}, {kAmount, R"("1,000.25")"}, {kAmount, R"("+1.00")"},
                          {kAmount, R"(".25")"}, {kAmount, R"("99999999999999.00")"},
                          {kMember + "/weeklyHoursWorked", R"("38")"},
                          {kMember + "/otherContributionAmounts/0/amount", R"("x")"}}},
      {"FUND_TOTAL_NEGATIVE", {{kAmount, R"("-5000.00")"}}},
      {"FLAG_EXPECTED", {{kMember + "/atWork", R"("true")"}, {kRetail + "/isDefaultFund", R"("true")"}}},
      {"TEXT_EXPECTED", {{kMember + "/email", "null"}}},
      {"FAMILY_NAME_MISSING", {{kMember + "/name", ""}}},
      {"DOB_MISSING", {{kMember + "/dob", ""}}},
      {"DATE_INVALID", {{kMember + "/dob", R"("1981-02-29")"}, {kMember + "/dob", R"("29/02/1980")"}}},
      {"DOB_IN_FUTURE", {{kMember + "/dob", R"("2999-01-01")"}}},
      {"PAY_PERIOD_MISSING", {{kMember + "/payPeriodStartDate", ""}, {kMember + "/payPeriodEndDate", ""}}},
      {"DATES_REVERSED", {{kMember + "/payPeriodEndDate", R"("2024-02-01")"}}},
      {"TFN_INVALID", {{kTfn, R"("123456789")"}, {kTfn, R"("000000000")"}}},
      {"FUND_ABN_MISSING", {{kRetail + "/fundIdentifier", "{}"}}},
      {"ABN_INVALID", {{kRetail + "/fundIdentifier/abn", R"("53004085617")"},
                       {kPayment + "/businessIdentifier/value", R"("51824753557")"},
                       {kEmployer + "/employerDetail/businessIdentifier/value", R"("5182475355")"},
                       {"/contributionDetail/participantDetail/businessIdentifier/value", R"("1")"}}},
      {"ESA_MISSING", {{kRetail + "/fundIdentifier/usi", ""}, {kSmsf + "/smsfDetail/electronicServiceAddressAlias", ""}}},
      {"DEFAULT_FLAG_MISSING", {{kRetail + "/isDefaultFund", ""}}},
      {"BSB_INVALID", {{kSmsf + "/smsfDetail/bankDetail/account/bsb", R"("62000")"}}},
      {"ACCOUNT_INVALID", {{kSmsf + "/smsfDetail/bankDetail", ""}, {kPayment + "/paymentType", R"("DIRECT_DEBIT")"}}},
      {"EMPLOYER_ABN_MISSING", {{kEmployer + "/employerDetail", ""}}},
      {"PARTICIPANT_MISSING", {{"/contributionDetail/participantDetail", ""}}},
      {"PAYMENT_TYPE_INVALID", {{kPayment + "/paymentType", R"("Direct Credit")"}}},
      {"MESSAGE_ID_MISSING", {{"/identifier/messageId", ""}}},
      {"TIME_INVALID", {{"/identifier/time", R"("2024-03-05T24:20:30Z")"},
                        {"/identifier/time", R"("2024-03-05T10:20:30.000Z")"}}}};
  // clang-format on
  for (const auto& [code, changes] : cases)
    for (const auto& [pointer, value] : changes)
      for (const char* command : {"validate", "submit"}) {
        json::value batch = SampleBatch();
        Change(batch, pointer, value);
        const Reply reply = Post(client, command, batch);
        EXPECT_EQ(reply.status, 400) << pointer << value << reply.body;
        EXPECT_TRUE(Codes(reply, "Error").contains(code)) << pointer << value << reply.body;
        EXPECT_EQ(reply.Text("status"), "Has Errors");
      }
  EXPECT_EQ(Booked(), 0u);
  for (const std::string& body : {std::string("{"), std::string("{}x"), std::string("\"\xFF\""), std::string(64, '[')})
    EXPECT_EQ(client.Send("POST", "/clearing-house/submit", body).Text("errorCode"), "JSON_MALFORMED") << body;
  EXPECT_EQ(client.Send("POST", "/clearing-house/submit", "[]").status, 400);
  EXPECT_EQ(client.Send("POST", "/clearing-house/submit", "{}", "text/plain").status, 415);
}

TEST_F(Office, WarnsWithoutRefusing) {
  const std::tuple<std::string, std::string, std::set<std::string>> cases[] = {
      {"/version", R"("2")", {}},
      {kMember + "/employerProvidedTaxFileNumber", "", {"TFN_MISSING"}},
      {kMember + "/definedBenefits/definedBenefitEmployerRate", "{}", {"MEMBER_UNKNOWN"}},
      {kPayment + "/businessIdentifier/businessIdentifierType", R"("ABN")", {"MEMBER_UNKNOWN"}},
      {kPayment + "/refundDetail", "", {"REFUND_ACCOUNT_MISSING"}},
      {kRetail + "/fundIdentifier/usi", R"("53004085616001")", {}},
      {kRetail + "/fundIdentifier/usi", R"("abc")", {"USI_UNUSUAL"}},
      {kMember + "/superGuaranteeAmount", R"("-0.25")", {"CONTRIBUTION_NEGATIVE"}},
  };
  for (const auto& [pointer, value, warnings] : cases) {
    json::value batch = SampleBatch();
    Change(batch, pointer, value);
    const Reply reply = Post(client, "validate", batch);
    EXPECT_EQ(reply.status, 200) << pointer << reply.body;
    EXPECT_EQ(Codes(reply, "Warning"), warnings) << pointer << reply.body;
    EXPECT_EQ(reply.Text("hasErrors"), "false");
  }
  json::value registration = SampleBatch();  // without money it needs no pay period and no payment
  Change(registration, kMember,
         R"({"dob":"1980-01-01","name":{"familyName":"New"},"fundRegistrationDate":"2024-01-01"})");
  const Reply reply = Post(client, "validate", registration);
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(reply.Json().at("paymentInstructions").as_array().size(), 1u);
}

TEST_F(Office, FindingsNameTheRowAndNeverATaxFileNumber) {
  json::value batch = SampleBatch();
  Change(batch, kMember + "/employerProvidedTaxFileNumber", R"("123456780")");
  const Reply reply = Post(client, "submit", batch);
  const json::value finding = reply.Json().at("validations").at(0);
  EXPECT_EQ(finding.at("context"), "row-1");
  EXPECT_EQ(finding.at("path"), "contributionDetail.employers[0].funds[0].members[0].employerProvidedTaxFileNumber");
  EXPECT_EQ(reply.body.find("123456780"), std::string::npos);
  EXPECT_EQ(Post(client, "submit", SampleBatch()).body.find("123456782"), std::string::npos);
}

TEST_F(Office, PaysEachFundOnceInTheWayOfThePaymentType) {
  json::value batch = SampleBatch();
  json::array& employers = batch.at_pointer("/contributionDetail/employers").as_array();
  employers.push_back(json::value(employers[0]));  // the same funds under a second employer
  const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
      {"DIRECT_CREDIT", "/account/bsb", "000-000", "000-000"},
      {"PASS_THROUGH", "/account/bsb", "000-000", "062-000"},
      {"DIRECT_DEBIT", "/account/bsb", "111-222", "111-222"},
      {"BPAY", "/billerCode", "999999", "999999"}};
  Change(batch, kPayment + "/directDebitDetail", R"({"account":{"accountNumber":"7","bsb":"111-222"}})");
  for (const auto& [type, pointer, retail, smsf] : cases) {
    for (const std::string& each : {kPayment + "/paymentType", std::string("/identifier/messageId")})
      Change(batch, each, json::serialize(json::string(type)));
    const Reply reply = Post(client, "submit", batch);
    ASSERT_EQ(reply.status, 200) << reply.body;
    const json::array payments = reply.Json().at("payments").as_array();
    ASSERT_EQ(payments.size(), 2u);
    EXPECT_EQ(payments[0].at("amount"), "2201.50");
    EXPECT_EQ(payments[1].at("amount"), "19.98");
    EXPECT_EQ(payments[1].at("organisationName"), "Doe Fund");
    EXPECT_EQ(payments[0].at_pointer(pointer), retail) << type;
    EXPECT_EQ(payments[1].at_pointer(pointer), smsf) << type;
    EXPECT_EQ(reply.Text("totalAmount"), "2221.48");
  }
}

TEST_F(Office, ABatchSentTwiceIsNoticed) {
  EXPECT_EQ(Post(client, "validate", SampleBatch("A")).status, 200);
  EXPECT_EQ(Post(client, "submit", SampleBatch("A")).status, 200);
  EXPECT_EQ(Post(client, "submit", SampleBatch("A")).Text("errorCode"), "DUPLICATE_MESSAGE");
  const Reply twin = Post(client, "submit", SampleBatch("B"));
  EXPECT_EQ(twin.status, 200);
  EXPECT_TRUE(Codes(twin, "Warning").contains("POSSIBLE_DUPLICATE"));
  EXPECT_EQ(Booked(), 2u);

  std::atomic<int> accepted = 0;
  {
    std::vector<std::jthread> senders;
    for (int i = 0; i < 8; ++i)
      senders.emplace_back([&] {
        Client own(sandbox);
        own.token = client.token;
        if (Post(own, "submit", SampleBatch("C")).status == 200) ++accepted;
      });
  }
  EXPECT_EQ(accepted, 1);
}

TEST_F(Office, CancelsOnlyBeforeTheMoneyAwaitsClearance) {
  for (const std::string status :
       {"Submitted", "Awaiting Payment", "Awaiting Clearance", "Reconciled", "Sent To Fund", "Cancelled", "Refunded"}) {
    const bool early = status == "Submitted" || status == "Awaiting Payment";
    const Reply sent = Post(client, "submit", SampleBatch(status));
    const std::string id = ProcessId(sent);
    Move(client, id, status);
    EXPECT_EQ(client.Send("PUT", "/clearing-house/cancel/" + id).status, early ? 200 : 409) << status;
    const Reply found = client.Send("GET", "/search/contributions/" + id);
    EXPECT_EQ(found.Text("status"), early ? "Cancelled" : status);
    EXPECT_EQ(found.Text("totalAmount"), "1110.74");
    EXPECT_EQ(found.Text("paymentReferenceNumber"), sent.Text("paymentReferenceNumber"));
  }
}

TEST_F(Office, ACustomerSeesOnlyItsOwnBatchesWhichMayBeLarge) {
  const Reply sent = Post(client, "submit", SampleBatch());
  const std::string id = ProcessId(sent);
  BecomeCustomer(client, "STRANGER");
  EXPECT_EQ(client.Send("GET", "/search/contributions/" + id).status, 404);
  EXPECT_EQ(client.Send("PUT", "/clearing-house/cancel/" + id).status, 404);
  json::value large = SampleBatch();
  json::array& members = large.at_pointer(kRetail + "/members").as_array();
  for (int i = 1; i < 20000; ++i) members.push_back(json::value(members[0]));
  const Reply own = Post(client, "submit", large);
  EXPECT_EQ(own.status, 200) << "message ids are each customer's own";
  EXPECT_EQ(own.Text("totalAmount"), "22015009.99");
}

TEST(Lifecycle, MovesOnWithTimeAndWhenTold) {
  Sandbox sandbox({"--time-step", "100", "--token-lifetime", "1000000", "--pre-register-all"});
  Client client(sandbox);
  BecomeCustomer(client);
  const Reply sent = Post(client, "submit", SampleBatch());
  const std::string id = ProcessId(sent);
  const auto status = [&] { return client.Send("GET", "/search/contributions/" + id).Text("status"); };
  EXPECT_EQ(status(), "Submitted");
  client.Control("POST", "clock", R"({"advanceSeconds":101})");
  EXPECT_EQ(status(), "Awaiting Payment");
  Move(client, id);
  EXPECT_EQ(status(), "Awaiting Clearance");
  client.Control("POST", "clock", R"({"advanceSeconds":100000})");
  EXPECT_EQ(status(), "Sent To Fund");
  const json::array told = client.Send("GET", "/clearing-house/notifications").Json().as_array();
  ASSERT_EQ(told.size(), 9u) << "five statuses, and the answers of two funds about two members";
  EXPECT_LT(told[1].at("create_date").as_string(), told[2].at("create_date").as_string()) << "at the time of the move";
  EXPECT_EQ(Move(client, id, "Nowhere").status, 400);
}

}  // namespace
}  // namespace sandbox_test
