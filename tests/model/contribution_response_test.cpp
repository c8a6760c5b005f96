#include "loss.h"

namespace oxSuperAPI {
namespace {

TEST(ContributionResponse, AnEmptyOneWritesItsFrameAndEmptyItemsAreElements) {
  TBeamContributionResponse Response;
  Response.StatusCode = 200;
  Response.status = "status";
  Response.version = "2";
  Response.hasErrors = true;
  EXPECT_EQ(Written(Response), R"({"identifier":{},"payments":[],"processed":false,"validations":[],"version":false})");
  Response.AddPayment(std::make_shared<TBeamSuperPayment>());
  Response.AddValidation(std::make_shared<TBeamSuperValidation>());
  EXPECT_EQ(Written(Response),
            R"({"identifier":{},"payments":[{"account":{}}],"processed":false,"validations":[{}],"version":false})");
}

TEST(ContributionResponse, TheTopLevelIdentifiersComeBeforeTheNestedOnes) {
  const std::pair<const char*, const char*> Cases[] = {
      // message, process, time
      {R"({"identifier":{"messageId":"m","processId":"p","time":"t"}})", "m,p,t"},
      {R"({"messageId":"top","identifier":{"messageId":"m","processId":"p"}})", "top,p,"},
      {R"({"messageId":null,"processId":"top","identifier":{"messageId":"m","processId":"p"}})", "m,top,"},
      {R"({"other":{"messageId":"nested","IDENTIFIER ":{"messageId":"m"}}})", "m,,"},
      {R"({"other":{"messageId":"nested"}})", ",,"},
      {R"({"identifier":"text"})", ",,"},
  };
  for (const auto& [Json, Identifiers] : Cases) {
    const auto Response = Loaded<TBeamContributionResponse>(Json);
    EXPECT_EQ(Response.messageId + "," + Response.processId + "," + Response.time, Identifiers) << Json;
  }
}

TEST(ContributionResponse, FlagsAndTextsKeepTheirValuesWhenMissingOrNull) {
  TBeamContributionResponse Response;
  for (const char* Text :
       {R"({"status":"s","hasErrors":true,"processed":true,"version":"v"})", R"({"status":null,"version":null})"}) {
    Load(Response, Text);
    EXPECT_TRUE(Response.status + Response.version == "sv" && Response.hasErrors && Response.processed);
  }
}

TEST(ContributionResponse, PaymentsComeFromEitherListTheArrayCalledPaymentsFirst) {
  const std::pair<const char*, std::string> Cases[] = {
      {R"({"payments":[{"abn":"1","amount":"1"}],"paymentInstructions":[{"abn":"2","amount":"1"}]})", "1"},
      {R"({"payments":[],"paymentInstructions":[{"abn":"2","amount":"1"}]})", ""},
      {R"({"payments":{},"paymentInstructions":[{"abn":"2","amount":"1"}]})", "2"},
      {R"({"payments":null,"body":{"paymentInstructions":[{"abn":"2","amount":"1"},{"abn":"3","amount":"1"}]}})", "23"},
      {R"({"paymentInstructions":"none"})", ""},
  };
  for (const auto& [Json, ABNs] : Cases) {
    const auto Response = Loaded<TBeamContributionResponse>(Json);
    std::string Found;
    for (std::ptrdiff_t Index = 0; const auto Payment = Response.GetPayment(Index); ++Index) Found += Payment->ABN;
    EXPECT_EQ(Found, ABNs) << Json;
  }
}

TEST(ContributionResponse, APaymentWithoutAProperAmountIsRefusedAndTheOnesBeforeItStay) {
  for (const char* Amount : {"", R"(,"amount":"")", R"(,"amount":"ten")", R"(,"amount":null)", R"(,"amount":"1,5")"}) {
    TBeamContributionResponse Response;
    const std::string Text = R"({"messageId":"m","payments":[{"amount":"12.30"},{"abn":"x")" + std::string(Amount) +
                             R"(}],"processed":true})";
    EXPECT_THROW(Load(Response, Text), TBeamConversionError) << Amount;
    ASSERT_EQ(Response.GetPaymentsCount(), 1u);
    EXPECT_EQ(Response.GetPayment(0)->amount, 12.30);
    EXPECT_EQ(Response.messageId, "m");
    EXPECT_FALSE(Response.processed);
  }
}

TEST(ContributionResponse, AnAmountMayBeANumberAndAnAccountThatIsNoObjectLeavesTheAccountAlone) {
  EXPECT_EQ(Loaded<TBeamSuperPayment>(R"({"amount":1.5E2})").amount, 150);
  TBeamSuperPayment Payment;
  Payment.account.BSB = "062-000";
  Load(Payment, R"({"amount":"0.00","account":"text"})");
  EXPECT_EQ(Payment.account.BSB, "062-000");
  EXPECT_EQ(Written(Payment), R"({"account":{"bsb":"062-000"}})");
}

TEST(ContributionResponse, NegativeIndexesAreAnErrorAndThosePastTheEndGiveNull) {
  TBeamContributionResponse Response;
  Response.AddPayment(nullptr);
  Response.AddValidation(nullptr);
  for (const char* Text : {R"({"validations":[{"path":"a"}]})", R"({"validations":[{"path":"b"},{"path":"c"}]})"})
    Load(Response, Text);
  EXPECT_EQ(Response.GetValidation(2)->path, "c") << "the items of both answers";
  EXPECT_FALSE(Response.GetPayment(0) || Response.GetValidation(PTRDIFF_MAX));
  EXPECT_THROW(Response.GetPayment(-1), TBeamRangeError);
  EXPECT_THROW(Response.GetValidation(-1), TBeamRangeError);
}

}  // namespace
}  // namespace oxSuperAPI
