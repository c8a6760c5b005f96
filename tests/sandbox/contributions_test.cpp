#include <atomic>
#include <functional>
#include <set>
#include <thread>

#include "office.h"

namespace sandbox_test {

json::value SampleBatch(const std::string& messageId) {
  json::value batch = json::parse(R"({
    "contributionDetail": {
      "employers": [{
        "employerDetail": {"businessIdentifier": {"businessIdentifierType": "ABN", "value": "51824753556"},
                           "organisationName": "Café Ñandú"},
        "funds": [{
          "fundIdentifier": {"abn": "53004085616", "usi": "ABC1234AU"}, "isDefaultFund": true,
          "members": [{
            "atWork": true, "dob": "1980-02-29", "employerProvidedTaxFileNumber": "123456782",
            "memberTransactionContextId": "row-1",
            "definedBenefits": {"definedBenefitEmployerContribution": "100.00",
                                "definedBenefitEmployerRate.": {"value": "0.10"},
                                "definedBenefitsAnnualSalary": [{"endDate": "2024-06-30", "value": "90000.00"}]},
            "memberRegistrationOtherDetails": [{"endDate": "2024-01-01", "endDate": "2024-01-01", "Text": "t"}],
            "name": {"familyName": "Nguyễn"}, "otherContributionAmounts": [{"amount": "0.50", "description": "d"}],
            "payPeriodEndDate": "2024-03-14", "payPeriodStartDate": "2024-03-01",
            "superGuaranteeAmount": "1000.25", "weeklyHoursWorked": "38.00"}],
          "organisationName": "Retail Fund"}, {
          "fundIdentifier": {"abn": "51824753556"}, "isDefaultFund": false,
          "members": [{"dob": "1990-01-01", "employerProvidedTaxFileNumber": "123456782",
                       "name": {"familyName": "Doe"}, "payPeriodEndDate": "2024-03-14",
                       "payPeriodStartDate": "2024-03-01", "voluntaryAmount": "9.99"}],
          "smsfDetail": {"bankDetail": {"account": {"accountName": "F", "accountNumber": "12345", "bsb": "062-000"}},
                         "electronicServiceAddressAlias": "ESA1", "fundName": "Doe Fund"}}]}],
      "participantDetail": {"businessIdentifier": {"businessIdentifierType": "ABN", "value": "51824753556"}},
      "paymentDetail": {"businessIdentifier": {"businessidentifierType": "ABN", "value": "51824753556"},
                        "paymentType": "DIRECT_CREDIT",
                        "refundDetail": {"account": {"accountNumber": "1", "bsb": "062000"}}}},
    "identifier": {"time": "2024-03-05T10:20:30Z"}, "version": "1.0"})");
  batch.at("identifier").as_object()["messageId"] = messageId;
  return batch;
}

namespace {

const std::string kEmployer = "/contributionDetail/employers/0";
const std::string kRetail = kEmployer + "/funds/0";
const std::string kSmsf = kEmployer + "/funds/1";
const std::string kMember = kRetail + "/members/0";
const std::string kPayment = "/contributionDetail/paymentDetail";

/// Replaces the value at a JSON pointer; removes the member when `text` is empty.
void Change(json::value& batch, const std::string& pointer, const std::string& text) {
  const std::size_t slash = pointer.rfind('/');
  json::value& parent = batch.at_pointer(pointer.substr(0, slash));
  const std::string last = pointer.substr(slash + 1);
  if (text.empty()) {
    parent.as_object().erase(last);
  } else if (parent.is_array()) {
    parent.as_array().at(std::stoul(last)) = json::parse(text);
  } else {
    parent.as_object()[last] = json::parse(text);
  }
}

std::set<std::string> Codes(const Reply& reply, const char* severity) {
  std::set<std::string> codes;
  const json::value answer = reply.Json();
  for (const json::value& finding : answer.at("validations").as_array())
    if (finding.at("severity") == severity) codes.insert(json::value_to<std::string>(finding.at("errorCode")));
  return codes;
}

TEST_F(Office, RefusesWhatAClearingHouseWouldRefuse) {
  const struct {
    std::string pointer, value, code;
  } cases[] = {
      {"/contributionDetail/employers", "[]", "EMPLOYERS_MISSING"},
      {"/contributionDetail/employers", "", "EMPLOYERS_MISSING"},
      {"/contributionDetail/employers/0/funds", "[]", "FUNDS_MISSING"},
      {kRetail + "/members", "[]", "MEMBERS_MISSING"},
      {kRetail + "/members", "{}", "LIST_EXPECTED"},
      {kMember, "7", "OBJECT_EXPECTED"},
      {kMember + "/superGuaranteeAmount", "1000.25", "NUMBER_NOT_TEXT"},
      {kMember + "/superGuaranteeAmount", R"("1000.2")", "AMOUNT_INVALID"},
      {kMember + "/superGuaranteeAmount", R"("1,000.25")", "AMOUNT_INVALID"},
      {kMember + "/superGuaranteeAmount", R"("+1.00")", "AMOUNT_INVALID"},
      {kMember + "/superGuaranteeAmount", R"(".25")", "AMOUNT_INVALID"},
      {kMember + "/superGuaranteeAmount", R"("99999999999999.00")", "AMOUNT_INVALID"},
      {kMember + "/superGuaranteeAmount", R"("-5000.00")", "FUND_TOTAL_NEGATIVE"},
      {kMember + "/weeklyHoursWorked", R"("38")", "AMOUNT_INVALID"},
      {kMember + "/otherContributionAmounts/0/amount", R"("x")", "AMOUNT_INVALID"},
      {kMember + "/definedBenefits/definedBenefitsAnnualSalary/0/value", "1", "NUMBER_NOT_TEXT"},
      {kMember + "/atWork", R"("true")", "FLAG_EXPECTED"},
      {kMember + "/gender", "1", "NUMBER_NOT_TEXT"},
      {kMember + "/email", "null", "TEXT_EXPECTED"},
      {kMember + "/name", "", "FAMILY_NAME_MISSING"},
      {kMember + "/dob", "", "DOB_MISSING"},
      {kMember + "/dob", R"("1981-02-29")", "DATE_INVALID"},
      {kMember + "/dob", R"("29/02/1980")", "DATE_INVALID"},
      {kMember + "/dob", R"("2999-01-01")", "DOB_IN_FUTURE"},
      {kMember + "/payPeriodStartDate", "", "PAY_PERIOD_MISSING"},
      {kMember + "/payPeriodEndDate", "", "PAY_PERIOD_MISSING"},
      {kMember + "/payPeriodEndDate", R"("2024-02-01")", "DATES_REVERSED"},
      {kMember + "/employerProvidedTaxFileNumber", R"("123456789")", "TFN_INVALID"},
      {kMember + "/employerProvidedTaxFileNumber", R"("000000000")", "TFN_INVALID"},
      {kRetail + "/fundIdentifier", "{}", "FUND_ABN_MISSING"},
      {kRetail + "/fundIdentifier/abn", R"("53004085617")", "ABN_INVALID"},
      {kRetail + "/fundIdentifier/usi", "", "ESA_MISSING"},
      {kRetail + "/isDefaultFund", R"("true")", "FLAG_EXPECTED"},
      {kRetail + "/isDefaultFund", "", "DEFAULT_FLAG_MISSING"},
      {kSmsf + "/smsfDetail/electronicServiceAddressAlias", "", "ESA_MISSING"},
      {kSmsf + "/smsfDetail/bankDetail/account/bsb", R"("62000")", "BSB_INVALID"},
      {kSmsf + "/smsfDetail/bankDetail", "", "ACCOUNT_INVALID"},
      {kEmployer + "/employerDetail", "", "EMPLOYER_ABN_MISSING"},
      {kEmployer + "/employerDetail/businessIdentifier/value", R"("5182475355")", "ABN_INVALID"},
      {"/contributionDetail/participantDetail", "", "PARTICIPANT_MISSING"},
      {"/contributionDetail/participantDetail/businessIdentifier/value", R"("1")", "ABN_INVALID"},
      {kPayment + "/businessIdentifier/value", R"("51824753557")", "ABN_INVALID"},
      {kPayment + "/paymentType", R"("Direct Credit")", "PAYMENT_TYPE_INVALID"},
      {kPayment + "/paymentType", R"("DIRECT_DEBIT")", "ACCOUNT_INVALID"},
      {"/identifier/messageId", "", "MESSAGE_ID_MISSING"},
      {"/identifier/time", R"("2024-03-05T24:20:30Z")", "TIME_INVALID"},
      {"/identifier/time", R"("2024-03-05T10:20:30.000Z")", "TIME_INVALID"},
  };
  for (const auto& c : cases) {
    json::value batch = SampleBatch();
    Change(batch, c.pointer, c.value);
    for (const char* command : {"validate", "submit"}) {
      const Reply reply = Post(client, command, batch);
      EXPECT_EQ(reply.status, 400) << c.pointer << " " << c.value << " " << reply.body;
      EXPECT_TRUE(Codes(reply, "Error").contains(c.code)) << c.pointer << " " << c.value << " " << reply.body;
      EXPECT_EQ(reply.Text("status"), "Has Errors");
    }
  }
  EXPECT_EQ(Booked(), 0u);
}

TEST_F(Office, WarnsWithoutRefusing) {
  const struct {
    std::string pointer, value;
    std::set<std::string> warnings;
  } cases[] = {
      {"/version", R"("2")", {}},
      {kMember + "/employerProvidedTaxFileNumber", "", {"TFN_MISSING"}},
      {kMember + "/definedBenefits/definedBenefitEmployerRate", "{}", {"MEMBER_UNKNOWN"}},
      {kPayment + "/businessIdentifier/businessIdentifierType", R"("ABN")", {"MEMBER_UNKNOWN"}},
      {kPayment + "/refundDetail", "", {"REFUND_ACCOUNT_MISSING"}},
      {kRetail + "/fundIdentifier/usi", R"("53004085616001")", {}},
      {kRetail + "/fundIdentifier/usi", R"("abc")", {"USI_UNUSUAL"}},
      {kMember + "/superGuaranteeAmount", R"("-0.25")", {"CONTRIBUTION_NEGATIVE"}},
  };
  for (const auto& c : cases) {
    json::value batch = SampleBatch();
    Change(batch, c.pointer, c.value);
    const Reply reply = Post(client, "validate", batch);
    EXPECT_EQ(reply.status, 200) << c.pointer << reply.body;
    EXPECT_EQ(Codes(reply, "Warning"), c.warnings) << c.pointer << reply.body;
    EXPECT_EQ(reply.Text("hasErrors"), "false");
  }
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

TEST_F(Office, MalformedBodiesAreRefused) {
  for (const std::string& body : {std::string("{"), std::string("{}x"), std::string("\"\xFF\""), std::string(64, '[')})
    EXPECT_EQ(client.Send("POST", "/clearing-house/submit", body).Text("errorCode"), "JSON_MALFORMED") << body;
  EXPECT_EQ(client.Send("POST", "/clearing-house/submit", "[]").status, 400);
  EXPECT_EQ(client.Send("POST", "/clearing-house/submit", "{}", "text/plain").status, 415);
}

TEST_F(Office, PaysEachFundOnceInTheWayOfThePaymentType) {
  json::value batch = SampleBatch();
  json::array& employers = batch.at_pointer("/contributionDetail/employers").as_array();
  employers.push_back(json::value(employers[0]));  // the same funds under a second employer
  const struct {
    const char* type;
    std::string retailPointer, smsfPointer, retailValue, smsfValue;
  } cases[] = {{"DIRECT_CREDIT", "/account/bsb", "/account/bsb", "000-000", "000-000"},
               {"PASS_THROUGH", "/account/bsb", "/account/bsb", "000-000", "062-000"},
               {"DIRECT_DEBIT", "/account/bsb", "/account/bsb", "111-222", "111-222"},
               {"BPAY", "/billerCode", "/billerCode", "999999", "999999"}};
  Change(batch, kPayment + "/directDebitDetail", R"({"account":{"accountNumber":"7","bsb":"111-222"}})");
  for (const auto& c : cases) {
    Change(batch, kPayment + "/paymentType", json::serialize(json::string(c.type)));
    Change(batch, "/identifier/messageId", json::serialize(json::string(c.type)));
    const Reply reply = Post(client, "submit", batch);
    ASSERT_EQ(reply.status, 200) << reply.body;
    const json::array payments = reply.Json().at("payments").as_array();
    ASSERT_EQ(payments.size(), 2u);
    EXPECT_EQ(payments[0].at("amount"), "2201.50");
    EXPECT_EQ(payments[1].at("amount"), "19.98");
    EXPECT_EQ(payments[1].at("organisationName"), "Doe Fund");
    EXPECT_EQ(payments[0].at_pointer(c.retailPointer), c.retailValue.c_str()) << c.type;
    EXPECT_EQ(payments[1].at_pointer(c.smsfPointer), c.smsfValue.c_str()) << c.type;
    EXPECT_EQ(reply.Text("totalAmount"), "2221.48");
  }
}

TEST_F(Office, RegistrationWithoutMoneyNeedsNoPayPeriodAndNoPayment) {
  json::value batch = SampleBatch();
  Change(batch, kMember, R"({"dob":"1980-01-01","name":{"familyName":"New"},"fundRegistrationDate":"2024-01-01"})");
  const Reply reply = Post(client, "validate", batch);
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(reply.Json().at("paymentInstructions").as_array().size(), 1u);
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
  const struct {
    const char* status;
    long answer;
  } cases[] = {{"Submitted", 200},  {"Awaiting Payment", 200}, {"Awaiting Clearance", 409},
               {"Reconciled", 409}, {"Sent To Fund", 409},     {"Cancelled", 409},
               {"Refunded", 409}};
  for (const auto& c : cases) {
    const Reply sent = Post(client, "submit", SampleBatch(c.status));
    const std::string id = json::value_to<std::string>(sent.Json().at("identifier").at("processId"));
    client.Control("POST", "batches/" + id, std::string(R"({"status":")") + c.status + "\"}");
    EXPECT_EQ(client.Send("PUT", "/clearing-house/cancel/" + id).status, c.answer) << c.status;
    const Reply found = client.Send("GET", "/search/contributions/" + id);
    EXPECT_EQ(found.Text("status"), c.answer == 200 ? "Cancelled" : c.status);
    EXPECT_EQ(found.Text("totalAmount"), "1110.74");
    EXPECT_EQ(found.Text("paymentReferenceNumber"), sent.Text("paymentReferenceNumber"));
  }
}

TEST_F(Office, ACustomerSeesOnlyItsOwnBatches) {
  const Reply sent = Post(client, "submit", SampleBatch());
  const std::string id = json::value_to<std::string>(sent.Json().at("identifier").at("processId"));
  BecomeCustomer(client, "STRANGER");
  EXPECT_EQ(client.Send("GET", "/search/contributions/" + id).status, 404);
  EXPECT_EQ(client.Send("PUT", "/clearing-house/cancel/" + id).status, 404);
  EXPECT_EQ(Post(client, "submit", SampleBatch()).status, 200) << "message ids are each customer's own";
}

TEST(Lifecycle, MovesOnWithTimeAndWhenTold) {
  Sandbox sandbox({"--time-step", "100", "--token-lifetime", "1000000", "--pre-register-all"});
  Client client(sandbox);
  BecomeCustomer(client);
  const Reply sent = Post(client, "submit", SampleBatch());
  const std::string id = json::value_to<std::string>(sent.Json().at("identifier").at("processId"));
  const auto status = [&] { return client.Send("GET", "/search/contributions/" + id).Text("status"); };
  EXPECT_EQ(status(), "Submitted");
  client.Control("POST", "clock", R"({"advanceSeconds":101})");
  EXPECT_EQ(status(), "Awaiting Payment");
  client.Control("POST", "batches/" + id);
  EXPECT_EQ(status(), "Awaiting Clearance");
  client.Control("POST", "clock", R"({"advanceSeconds":100000})");
  EXPECT_EQ(status(), "Sent To Fund");
  EXPECT_EQ(client.Control("POST", "batches/" + id, R"({"status":"Nowhere"})").status, 400);
}

TEST_F(Office, TakesALargeBatch) {
  json::value batch = SampleBatch();
  json::array& members = batch.at_pointer(kRetail + "/members").as_array();
  const json::value member = members[0];
  for (int i = 1; i < 20000; ++i) members.push_back(member);
  const Reply reply = Post(client, "submit", batch);
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(reply.Text("totalAmount"), "22015009.99");
}

}  // namespace
}  // namespace sandbox_test
