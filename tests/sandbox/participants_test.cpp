#include "office.h"

namespace sandbox_test {
namespace {

/// Participant details as clients write them, odd keys included.
json::value SampleDetails() {
  return json::parse(
      R"({"clientParticipantNumber": "P 1", "organisationName": "Café Ñandú",
    "businessIdentifier": {"businessIdentifierType": "ABN", "value": "51824753556"},
    "address": {"countryCode": "AU", "line1": "1 First St", "postCode": "2000", "state": "NSW", "suburb": "Town"},
    "contact": {"email": "a@b.example", "familyName": "Doe", "phone": {"areaCode": "02", "number": "1"}, "Title": "Dr"},
    "directDebitAuthorities": [{"businessIdentifier": {"value": "51824753556"}, "organisationName": "Café",
      "account": {"accountName": "C", "accountNumber": "12345", "bsb": "062-000"}, "directDebitAuthorityId": "0",
      "startDate": "2024-01-01", "address": {}, "employers": [{"clientEmployerNumber": "E1"}]}],
    "employers": [{
      "clientEmployerNumber": "E1", "businessIdentifier": {"businessIdentifierType": "ABN", "value": "51824753556"},
      "organisationName": "first", "contact": {"phone": {"areaCode": "03", "number": "9"}, "title": "Ms"},
      "defaultFunds": [{"usi": "ABC1234AU"}], "employerId": "0", "organisationName": "Café"}, {
      "clientEmployerNumber": "E2", "businessIdentifier": {"value": "53004085616"}, "contact": {"phone": {}},
      "employerId": "0", "organisationName": "Second"}],
    "payrollName": "Payroll", "redirectUrl": "https://payroll.example/back"})");
}

Reply PostDetails(Client& client, const json::value& details) {
  return client.Send("POST", "/clearing-house/participant-details", json::serialize(details));
}

Reply Terms(Client& client, const std::string& inside = "") {
  return client.Send("GET", "/clearing-house/participant/P%201" + inside + "/terms-acceptance");
}

std::string IdAt(const Reply& reply, const std::string& pointer) {
  return json::value_to<std::string>(reply.Json().at_pointer(pointer));
}

TEST_F(Office, ParticipantDetailsComeBackUnderTheNamesThatClientsRead) {
  const Reply posted = PostDetails(client, SampleDetails());
  ASSERT_EQ(posted.status, 200) << posted.body;
  EXPECT_GE(posted.Text("token").size(), 20u);
  EXPECT_EQ(posted.Json().at("validations"), json::array());
  const Reply read = client.Send("GET", "/clearing-house/participant/P%201");
  ASSERT_EQ(read.status, 200);
  // clang-format off
  const std::pair<const char*, const char*> cases[] = {
      {"/clientParticipantNumber", "P 1"}, {"/organisationName", "Café Ñandú"},
      {"/redirectURL", "https://payroll.example/back"}, {"/contact/title", "Dr"}, {"/contact/phone/areaCode", "02"},
      {"/directDebitAuthorities/0/employerNumbers/0/clientEmployerNumber", "E1"},
      {"/directDebitAuthorities/0/account/bsb", "062-000"}, {"/employers/0/organisationName", "Café"},
      {"/employers/0/businessIdentifier/value", "51824753556"},
      {"/employers/0/businessIdentifier/businessIdentifierValue", "51824753556"},
      {"/employers/0/contact/phone/number", "9"}, {"/employers/0/defaultFunds/0/usi", "ABC1234AU"}};
  // clang-format on
  const json::value details = read.Json();
  for (const auto& [pointer, value] : cases) EXPECT_EQ(details.at_pointer(pointer), value) << pointer;
  EXPECT_EQ(client.Send("GET", "/clearing-house/participant/P2").Text("errorCode"), "PARTICIPANT_UNKNOWN");
  BecomeCustomer(client, "STRANGER");
  EXPECT_EQ(client.Send("GET", "/clearing-house/participant/P%201").status, 404) << "each customer's own";
}

TEST_F(Office, ParticipantDetailsAreRefusedOrRemarkedOn) {
  const std::tuple<std::string, std::string, std::string, std::string> cases[] = {
      // error and warning
      {"/clientParticipantNumber", "", "PARTICIPANT_NUMBER_MISSING", ""},
      {"/clientParticipantNumber", "7", "NUMBER_NOT_TEXT", ""},
      {"/businessIdentifier/value", R"("51824753557")", "ABN_INVALID", ""},
      {"/businessIdentifier/businessIdentifierType", R"("WPN")", "", ""},
      {"/businessIdentifier", "", "", "ABN_MISSING"},
      {"/organisationName", "", "", "NAME_MISSING"},
      {"/redirectURL", R"("x")", "", "MEMBER_UNKNOWN"},
      {"/contact/title", R"("x")", "", "MEMBER_UNKNOWN"},
      {"/employers", "{}", "LIST_EXPECTED", ""},
      {"/employers/0", "1", "OBJECT_EXPECTED", ""},
      {"/employers/1/clientEmployerNumber", "", "EMPLOYER_NUMBER_MISSING", ""},
      {"/employers/1/businessIdentifier/value", R"("1")", "ABN_INVALID", ""},
      {"/employers/0/defaultFunds/0/usi", R"("x")", "", "USI_UNUSUAL"},
      {"/directDebitAuthorities/0/account/bsb", R"("1")", "BSB_INVALID", ""},
      {"/directDebitAuthorities/0/account", "", "ACCOUNT_INVALID", ""},
      {"/directDebitAuthorities/0/employers/0/clientEmployerNumber", R"("E9")", "", "EMPLOYER_UNKNOWN"},
  };
  for (const auto& [pointer, value, error, warning] : cases) {
    json::value details = SampleDetails();
    Change(details, pointer, value);
    const Reply reply = PostDetails(client, details);
    EXPECT_EQ(reply.status, error.empty() ? 200 : 400) << pointer << reply.body;
    EXPECT_TRUE(error.empty() || Codes(reply, "Error").contains(error)) << pointer << reply.body;
    EXPECT_TRUE(warning.empty() || Codes(reply, "Warning").contains(warning)) << pointer << reply.body;
  }
  EXPECT_EQ(client.Send("POST", "/clearing-house/participant-details", "{").Text("errorCode"), "JSON_MALFORMED");
  EXPECT_EQ(client.Send("POST", "/clearing-house/participant-details", "[]").status, 400);
  EXPECT_EQ(client.Send("POST", "/clearing-house/participant-details", "{}", "text/plain").status, 415);
}

TEST_F(Office, RecordsKeepTheirIdsWhenTheDetailsArePostedAgain) {
  json::value details = SampleDetails();
  const Reply first = PostDetails(client, details);
  const std::string authority = "/directDebitAuthorities/0/directDebitAuthorityId";
  const std::set<std::string> ids = {"0", IdAt(first, "/employers/0/employerId"),
                                     IdAt(first, "/employers/1/employerId"), IdAt(first, authority)};
  EXPECT_EQ(ids.size(), 4u) << "each its own";

  json::array& employers = details.at("employers").as_array();
  std::swap(employers[0], employers[1]);
  employers.push_back(json::value(employers[0]));  // a second one of the same number is a new one
  const Reply second = PostDetails(client, details);
  EXPECT_EQ(IdAt(second, "/employers/0/employerId"), IdAt(first, "/employers/1/employerId"));
  EXPECT_EQ(IdAt(second, "/employers/1/employerId"), IdAt(first, "/employers/0/employerId"));
  EXPECT_FALSE(ids.contains(IdAt(second, "/employers/2/employerId")));
  EXPECT_EQ(IdAt(second, authority), IdAt(first, authority));

  Change(details, "/employers/0/employerId", R"("999")");
  EXPECT_EQ(PostDetails(client, details).Text("errorCode"), "RECORD_UNKNOWN");
  EXPECT_EQ(client.Send("GET", "/clearing-house/participant/P%201").Json().at_pointer("/employers/0/employerId"),
            second.Json().at_pointer("/employers/0/employerId"))
      << "a refused post changes nothing";
}

TEST_F(Office, TermsAreAcceptedForAParticipantAnEmployerOrAnAuthority) {
  const Reply posted = PostDetails(client, SampleDetails());
  const std::string employer = IdAt(posted, "/employers/1/employerId");
  const std::string authority = IdAt(posted, "/directDebitAuthorities/0/directDebitAuthorityId");
  const auto accept = [&](const std::string& body) {
    return client.Control("POST", "participants/P%201/terms-acceptance", body).status;
  };
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {"/employer/" + employer, R"("employerId":")" + employer + "\","},
      {"/directDebitAuthority/" + authority, R"("directDebitAuthorityId":")" + authority + "\","}};
  for (const auto& [path, record] : cases) {
    EXPECT_EQ(Terms(client, path).body,
              R"({"termsAndConditionsAcceptanceDate":"","userAcceptingTermsAndConditions":""})");
    EXPECT_EQ(accept("{" + record + R"("user":"Jo)" + path + R"(","date":"2024-05-06T07:08:09.000Z"})"), 200) << path;
    EXPECT_EQ(Terms(client, path).Text("termsAndConditionsAcceptanceDate"), "2024-05-06T07:08:09.000Z");
  }
  PostDetails(client, SampleDetails());
  for (const auto& [path, record] : cases)
    EXPECT_EQ(Terms(client, path).Text("userAcceptingTermsAndConditions"), "Jo" + path) << "outlives a new post";

  EXPECT_EQ(Terms(client, "/employer/" + authority).Text("errorCode"), "EMPLOYER_UNKNOWN");
  EXPECT_EQ(Terms(client, "/directDebitAuthority/" + employer).Text("errorCode"), "AUTHORITY_UNKNOWN");
  for (const char* unknown : {R"({"employerId":"999"})", R"({"directDebitAuthorityId":"999"})", R"({"customer":"X"})"})
    EXPECT_EQ(accept(unknown), 404) << unknown;
  EXPECT_EQ(client.Control("POST", "participants/nobody/terms-acceptance").status, 404);
  EXPECT_EQ(accept(R"({"employerId":1})"), 400);
  accept(R"({"date":""})");
  EXPECT_EQ(Terms(client).Text("termsAndConditionsAcceptanceDate"), "") << "taken back";
  accept("");
  EXPECT_EQ(Terms(client).Text("termsAndConditionsAcceptanceDate").size(), 24u) << "now, when no date is named";
}

}  // namespace
}  // namespace sandbox_test
