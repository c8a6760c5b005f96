#include <limits>

#include "../support/test_host.h"
#include "loss.h"
#include "maximal_documents.h"
#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/model/uBeamSuperObjects.h"

namespace oxSuperAPI {
namespace {

/// Without line breaks, which are for the eye only, and with an address where "@" stands.
std::string Joined(std::string_view Text) {
  std::string Result;
  for (const char Character : Text)
    if (Character == '@')
      Result += R"("address":{"addressType":"POST","countryCode":"AU","line1":"l1","line2":"l2","line3":"l3",)"
                R"("line4":"l4","postCode":"3000","state":"VIC","suburb":"Melbourne"})";
    else if (Character != '\n')
      Result += Character;
  return Result;
}

// Every member with a value of its own, as the writers emit it.
const std::string AuthorityAsWritten = Joined(R"(
{"businessIdentifier":{"businessIdentifierType":"ACN","value":"22"},"organisationName":"Payer",
"account":{"accountName":"an","accountNumber":"ac","bsb":"bs"},"directDebitAuthorityId":"12",
"termsAndConditionsAcceptanceDate":"2024-02-01","userAcceptingTermsAndConditions":"u2","startDate":"2024-01-01",
"endDate":"2025-01-01",@,"employers":[{"clientEmployerNumber":"N1"},{"clientEmployerNumber":"N2"}]})");
const std::string EmployerAsWritten = Joined(R"(
{"clientEmployerNumber":"E1","businessIdentifier":{"businessIdentifierType":"WPN","value":"33"},
"organisationName":"Shop","contact":{"email":"ee","familyName":"ef","firstName":"eg",
"phone":{"areaCode":"02","number":"8","phoneNumberType":"FIXED"},"title":"Ms"},
"defaultFunds":[{"defaultFundId":"F1","endDate":"2026-01-01","startDate":"2024-07-01","usi":"USI1"}],
"employerId":"13","organisationName":"Shop","termsAndConditionsAcceptanceDate":"2024-03-01",
"userAcceptingTermsAndConditions":"u3"})");
const std::string ParticipantAsWritten = Joined(R"(
{"clientParticipantNumber":"P1","organisationName":"Org",
"businessIdentifier":{"businessIdentifierType":"ABN","value":"11"},@,
"contact":{"email":"e","familyName":"f","firstName":"g",
"phone":{"areaCode":"03","number":"9","phoneNumberType":"MOBILE"},"Title":"Dr"},"directDebitAuthorities":[)" +
                                                AuthorityAsWritten + R"(],"employers":[)" + EmployerAsWritten + R"(],
"payrollName":"Pay","redirectUrl":"r","userAcceptingTermsAndConditions":"u1",
"termsAndConditionsAcceptanceDate":"2024-01-01"})");

// The same as the reader of a participant looks it up.
const std::string ParticipantAsRead =
    Replaced(ParticipantAsWritten,
             {{R"("Title":"Dr")", R"("title":"Dr","contact":{"title":"Prof"})"},
              {R"("directDebitAuthorityId":"12",)", ""},
              {R"("employers":[{"clientEmployerNumber":"N1")", R"("employerNumbers":[{"clientEmployerNumber":"N1")"},
              {R"(,"phone":{"areaCode":"02","number":"8","phoneNumberType":"FIXED"},"title":"Ms")", ""},
              {R"("defaultFundId":"F1",)", ""},
              {R"("employerId":"13","organisationName":"Shop",)", ""},
              {"redirectUrl", "redirectURL"}});

TEST(Participant, EmptyRecordsWriteTheirFrames) {
  TBeamParticipantDetails Participant;
  Participant.LastMessage = Participant.PayrollCompanyID = Participant.Code = Participant.PaymentMethod = "host's own";
  Participant.DirectCreditBSB = Participant.DirectCredtaccountName = Participant.DirectCreditaccountNumber = "too";
  TBeamEmployer Employer;
  Employer.PayrollCompanyID = "host's own";
  EXPECT_EQ(Written(Participant), R"({"businessIdentifier":{},"address":{},"contact":{"phone":{}}})");
  EXPECT_EQ(Written(Employer), R"({"businessIdentifier":{},"contact":{"phone":{}},"employerId":"0"})");
  EXPECT_EQ(Written(TBeamDDAuthority()),
            R"({"businessIdentifier":{},"account":{},"directDebitAuthorityId":"0","address":{}})");
  EXPECT_EQ(Written(TBeamEmployerNumber()), "{}");
  EXPECT_EQ(Written(TBeamDefaultFund()), "{}");
  EXPECT_EQ(Written(TBeamTermsAcceptance()), "{}");
}

TEST(Participant, EveryFieldIsReadFromItsKeyAndWrittenInItsPlaceAndBothFormsAgree) {
  TBeamParticipantDetails Participant = Loaded<TBeamParticipantDetails>(ParticipantAsRead);
  TBeamDDAuthority& Authority = *Participant.GetDDAuthority(0);
  TBeamEmployer& Employer = *Participant.GetEmployer(0);
  EXPECT_EQ(Employer.ContactPhoneNumber + Employer.ContactTitle, "9Prof");  // those of the participant's contact
  Authority.DirectDebitAuthorityId = 12;
  Employer.EmployerId = 13;
  Employer.GetDefaultFund(0)->DefaultFundId = "F1";
  Employer.ContactPhoneAreaCode = "02", Employer.ContactPhoneNumber = "8";
  Employer.ContactPhoneNumberType = "FIXED", Employer.ContactTitle = "Ms";
  EXPECT_EQ(Written(Participant), ParticipantAsWritten);
  EXPECT_EQ(Written(Authority), AuthorityAsWritten);
  EXPECT_EQ(Written(Employer), EmployerAsWritten);
}

TEST(Participant, AParticipantReadBackLosesTitleAndAddressOfReturnAndItsChildrenLoseMore) {
  const std::string Authority = "/directDebitAuthorities/0/", Employer = "/employers/0/";
  ExpectLoss<TBeamParticipantDetails>(
      ParticipantAsWritten,
      {"/contact/Title=\"Dr\"", "/redirectUrl=\"r\"", Authority + "directDebitAuthorityId=\"12\"",
       Authority + "employers/0/clientEmployerNumber=\"N1\"", Authority + "employers/1/clientEmployerNumber=\"N2\"",
       Employer + "contact/phone/areaCode=\"02\"", Employer + "contact/phone/number=\"8\"",
       Employer + "contact/phone/phoneNumberType=\"FIXED\"", Employer + "contact/title=\"Ms\"",
       Employer + "defaultFunds/0/defaultFundId=\"F1\"", Employer + "employerId=\"13\""},
      {Authority + "directDebitAuthorityId=\"0\"", Employer + "contact/phone/areaCode=\"03\"",
       Employer + "contact/phone/number=\"9\"", Employer + "contact/phone/phoneNumberType=\"MOBILE\"",
       Employer + "employerId=\"0\""});
}

TEST(Participant, AnEmployerReadBackLosesItsIdentifierAndPhoneAndAnAuthorityItsEmployers) {
  ExpectLoss<TBeamEmployer>(
      EmployerAsWritten,
      {"/businessIdentifier/value=\"33\"", "/contact/phone/areaCode=\"02\"", "/contact/phone/number=\"8\"",
       "/contact/phone/phoneNumberType=\"FIXED\"", "/defaultFunds/0/defaultFundId=\"F1\""},
      {});
  ExpectLoss<TBeamDDAuthority>(
      AuthorityAsWritten, {"/employers/0/clientEmployerNumber=\"N1\"", "/employers/1/clientEmployerNumber=\"N2\""}, {});
  ExpectLoss<TBeamDefaultFund>(R"({"defaultFundId":"i","endDate":"e","startDate":"s","usi":"u"})", {}, {});
  ExpectLoss<TBeamTermsAcceptance>(R"({"termsAndConditionsAcceptanceDate":"d","userAcceptingTermsAndConditions":"u"})",
                                   {}, {});
}

TEST(Participant, AnEmployerOnItsOwnIsReadFromOtherKeysThanItIsWritten) {
  const auto Employer = Loaded<TBeamEmployer>(
      R"({"businessIdentifier":{"businessIdentifierValue":"v","value":"no"},"employerId":"x1",
          "contact":{"areaCode":"a","number":"n","phoneNumberType":"t","title":"Mx"}})");
  EXPECT_EQ(Employer.BusinessIdentifierValue, "v");
  EXPECT_EQ(Employer.ContactPhoneAreaCode + Employer.ContactPhoneNumber + Employer.ContactPhoneNumberType, "ant");
  EXPECT_EQ(Employer.ContactTitle, "Mx");
  EXPECT_EQ(Employer.EmployerId, 0);
}

TEST(Participant, AllEmployersHaveThePhoneOfTheParticipant) {
  const auto Participant = Loaded<TBeamParticipantDetails>(
      R"({"contact":{"phone":{"number":"1"}},"employers":[
          {"contact":{"phone":{"number":"2"},"title":"Ms","email":"own"}},{"contact":{"phone":{"number":"3"}}}]})");
  for (const std::ptrdiff_t Index : {0, 1}) EXPECT_EQ(Participant.GetEmployer(Index)->ContactPhoneNumber, "1");
  EXPECT_EQ(Participant.GetEmployer(0)->ContactTitle, "");
  EXPECT_EQ(Participant.GetEmployer(0)->ContactEmail, "own");
}

TEST(Participant, WhatIsOfTheWrongKindStopsTheLoadAndWhatWasReadBeforeStays) {
  const std::string Prefix = "Unable to load the Participant Details obtained from Super Clearing APIs\r\n";
  // Members, authorities and employers that are loaded, what the error names: "" for no error.
  // clang-format off
  const std::tuple<const char*, std::size_t, std::size_t, const char*> Cases[] = {
      {R"("contact":"text")", 0, 0, "contact"}, {R"("contact":[])", 0, 0, "contact"},
      {R"("contact":5)", 0, 0, "contact"}, {R"("contact":null,"employers":[{}])", 0, 1, ""},
      {R"("businessIdentifier":"text","address":[],"contact":{"phone":"text"})", 0, 0, ""},
      {R"("directDebitAuthorities":{},"employers":"text")", 0, 0, ""},
      {R"("directDebitAuthorities":[null],"employers":[null])", 1, 1, ""},
      {R"("directDebitAuthorities":[{},"text"],"employers":[{}])", 1, 0, "directDebitAuthorities"},
      {R"("directDebitAuthorities":[{"employerNumbers":[{},1]}])", 0, 0, "employerNumbers"},
      {R"("directDebitAuthorities":[{"employerNumbers":[null],"account":[]}])", 1, 0, ""},
      {R"("employers":[{},[]])", 0, 1, "employers"},
      {R"("employers":[{},{"defaultFunds":[true]}])", 0, 1, "defaultFunds"},
      {R"("employers":[{"defaultFunds":[null,{}]}])", 0, 1, ""}};
  // clang-format on
  for (const auto& [Members, Authorities, Employers, Named] : Cases) {
    SCOPED_TRACE(Members);
    TBeamParticipantDetails Participant;
    Participant.ContactEmail = Participant.Suburb = Participant.PayrollName = "old";
    const TJSONValue Json =
        Document(R"({"clientParticipantNumber":"P","payrollName":"new",)" + std::string(Members) + "}");
    const std::string Error = ErrorOf([&] { Participant.LoadFromJsonObject(*Json.AsObject()); });
    const bool Fails = *Named != '\0';
    EXPECT_EQ(Error.starts_with(Prefix), Fails) << Error;
    EXPECT_NE(Error.find(Fails ? Named : "no error"), std::string::npos) << Error;
    EXPECT_EQ(Participant.ClientParticipantNumber(), "P");
    EXPECT_EQ(Participant.ContactEmail + Participant.Suburb, "");
    EXPECT_EQ(Participant.PayrollName, Fails ? "old" : "new");
    EXPECT_EQ(Participant.GetDDAuthorityCount(), Authorities);
    EXPECT_EQ(Participant.GetEmployerCount(), Employers);
  }
  EXPECT_EQ(ErrorOf([] { Loaded<TBeamEmployer>(R"({"defaultFunds":[1]})"); }).find(Prefix), std::string::npos);
}

TEST(Participant, TheFirstNumberStaysExceptAgainstAParticipantsLoad) {
  TBeamParticipantDetails Participant;
  TBeamEmployer Employer;
  for (const char* Number : {"", "1", "2"}) {
    Participant.SetClientParticipantNumber(Number);
    Employer.SetClientEmployerNumber(Number);
  }
  EXPECT_EQ(Participant.ClientParticipantNumber(), "1");
  Load(Participant, R"({"clientParticipantNumber":"3"})");
  Load(Employer, R"({"clientEmployerNumber":"3"})");
  EXPECT_EQ(Participant.ClientParticipantNumber(), "3");
  EXPECT_EQ(Employer.ClientEmployerNumber(), "1");
}

TEST(Participant, LoadingTwiceDoublesTheChildrenAndEmptiesTheFields) {
  TBeamParticipantDetails Participant = Loaded<TBeamParticipantDetails>(ParticipantAsRead);
  Load(Participant, R"({"directDebitAuthorities":[{}],"employers":[{}]})");
  EXPECT_EQ(Participant.GetDDAuthorityCount() + Participant.GetEmployerCount(), 4u);
  const std::string Rest = Written(Participant);
  EXPECT_TRUE(Rest.starts_with(R"({"businessIdentifier":{},"address":{},"contact":{"phone":{}},"directDebit)")) << Rest;
  EXPECT_TRUE(Rest.ends_with("}]}")) << Rest;
}

TEST(Participant, AcceptanceIsUpToDateWhenNoneOfTheThreeDatesIsOlderThanTheChange) {
  const double Never = std::numeric_limits<double>::quiet_NaN();
  const double Change = EncodeDate(2024, 3, 5) + 0.5;
  const char *const Before = "2024-03-05T11:59:59.999Z", *const At = "2024-03-05T22:00:00+10:00";
  using TAuthorities = std::vector<std::pair<const char*, const char*>>;  // end date, acceptance
  // clang-format off
  const std::tuple<TDateTime, const char*, TAuthorities, std::vector<const char*>, bool> Cases[] = {
      {0, At, {}, {}, false}, {4.999, At, {}, {}, false}, {Never, At, {}, {}, false}, {5.0, "1900-01-04", {}, {}, true},
      {5.0, "1900-01-03T23:59:59.999", {}, {}, false}, {Change, At, {}, {}, true},
      {Change, "2024-03-05T12:00", {}, {}, true}, {Change, "2024-03-05", {}, {}, false},
      {Change, Before, {}, {}, false}, {Change, "5 March 2024", {}, {}, false}, {Change, At, {{"", At}}, {}, true},
      {Change, At, {{"", Before}}, {}, false}, {Change, At, {{"", Before}, {"", At}}, {}, true},
      {Change, At, {{"", At}, {"", Before}, {"2024-01-01", At}}, {}, false},
      {Change, At, {{"2024-01-01", Before}, {"2024-01-01", ""}}, {}, true}, {Change, At, {}, {At, Before, ""}, true},
      {Change, At, {}, {Before, At}, false}, {Change, At, {}, {""}, false}, {Change, At, {{"", Before}}, {At}, false},
      {Change, Before, {{"", At}}, {At}, false}};
  // clang-format on
  for (const auto& [Changed, Own, Authorities, Employers, Result] : Cases) {
    TBeamParticipantDetails Participant;
    Participant.TermsAndConditionsAcceptanceDate = Own;
    for (const auto& [EndDate, Accepted] : Authorities) {
      const auto Authority = std::make_shared<TBeamDDAuthority>();
      Authority->EndDate = EndDate;
      Authority->TermsAndConditionsAcceptanceDate = Accepted;
      Participant.AddDDAuthority(Authority);
    }
    for (const char* Accepted : Employers) {
      const auto Employer = std::make_shared<TBeamEmployer>();
      Employer->TermsAndConditionsAcceptanceDate = Accepted;
      Participant.AddEmployer(Employer);
    }
    EXPECT_EQ(Participant.IsUserAcceptanceUpToDate(Changed), Result)
        << Changed << Own << testing::PrintToString(Authorities);
  }
}

TEST(DefaultFunds, AreABareArrayBothWays) {
  TBeamDefaultFunds Funds;
  for (const char* Text : {"{}", R"({"defaultFunds":[{}]})", "[]", "null", "5"})
    Funds.LoadFromJsonObject(Document(Text));
  Funds.LoadFromJsonObject(nullptr);
  EXPECT_EQ(Written(Funds), "[]");
  Funds.LoadFromJsonObject(Document(R"([{"defaultFundId":"1","usi":"u"},null])"));
  Funds.LoadFromJsonObject(Document(R"([{"endDate":"e","startDate":"s"}])"));
  EXPECT_EQ(Written(Funds), R"([{"defaultFundId":"1","usi":"u"},{},{"endDate":"e","startDate":"s"}])");
  EXPECT_THROW(Funds.LoadFromJsonObject(Document(R"([{},"text",{}])")), TBeamTypeError);
  EXPECT_EQ(Funds.GetDefaultFundCount(), 4u);
}

}  // namespace
}  // namespace oxSuperAPI
