#include <gtest/gtest.h>

#include "../support/documents.h"
#include "oxSuperAPI/model/uBeamContributionResponse.h"

namespace oxSuperAPI {
namespace {

template <class Record>
Record Loaded(std::string_view Text) {
  Record Result;
  Result.LoadFromJSONObject(*Document(Text).AsObject());
  return Result;
}

TEST(ContributionResponse, AnEmptyOneWritesItsFrame) {
  TBeamContributionResponse Response;
  Response.StatusCode = 200;
  Response.status = "status";
  Response.version = "2";
  Response.hasErrors = true;
  EXPECT_EQ(PrintJSON(*Response.GetAsJsonObject(), TJSONLayout::Compact),
            R"({"identifier":{},"payments":[],"processed":false,"validations":[],"version":false})");
  EXPECT_EQ(Response.GetAsJsonString(), PrintJSON(*Response.GetAsJsonObject(), TJSONLayout::Pretty));
}

TEST(ContributionResponse, EmptyItemsAreElements) {
  TBeamContributionResponse Response;
  Response.AddPayment(std::make_shared<TBeamSuperPayment>());
  Response.AddValidation(std::make_shared<TBeamSuperValidation>());
  EXPECT_EQ(PrintJSON(*Response.GetAsJsonObject(), TJSONLayout::Compact),
            R"({"identifier":{},"payments":[{"account":{}}],"processed":false,"validations":[{}],"version":false})");
}

TEST(ContributionResponse, TheTopLevelIdentifiersComeBeforeTheNestedOnes) {
  struct {
    const char* Json;
    const char* MessageId;
    const char* ProcessId;
    const char* Time;
  } const Cases[] = {
      {R"({"identifier":{"messageId":"m","processId":"p","time":"t"}})", "m", "p", "t"},
      {R"({"messageId":"top","identifier":{"messageId":"m","processId":"p"}})", "top", "p", ""},
      {R"({"messageId":null,"processId":"top","identifier":{"messageId":"m","processId":"p"}})", "m", "top", ""},
      {R"({"other":{"messageId":"nested","IDENTIFIER ":{"messageId":"m"}}})", "m", "", ""},
      {R"({"other":{"messageId":"nested"}})", "", "", ""},
      {R"({"identifier":"text"})", "", "", ""},
  };
  for (const auto& Case : Cases) {
    const auto Response = Loaded<TBeamContributionResponse>(Case.Json);
    EXPECT_EQ(Response.messageId, Case.MessageId) << Case.Json;
    EXPECT_EQ(Response.processId, Case.ProcessId) << Case.Json;
    EXPECT_EQ(Response.time, Case.Time) << Case.Json;
  }
}

TEST(ContributionResponse, FlagsAndTextsKeepTheirValuesWhenMissingOrNull) {
  TBeamContributionResponse Response;
  for (const char* Text :
       {R"({"status":"s","hasErrors":true,"processed":true,"version":"v"})", R"({"status":null,"version":null})"}) {
    Response.LoadFromJSONObject(*Document(Text).AsObject());
    EXPECT_EQ(Response.status, "s");
    EXPECT_TRUE(Response.hasErrors);
    EXPECT_TRUE(Response.processed);
    EXPECT_EQ(Response.version, "v");
  }
}

TEST(ContributionResponse, PaymentsComeFromEitherListTheArrayCalledPaymentsFirst) {
  struct {
    const char* Json;
    std::vector<std::string> Abns;
  } const Cases[] = {
      {R"({"payments":[{"abn":"1","amount":"1"}],"paymentInstructions":[{"abn":"2","amount":"1"}]})", {"1"}},
      {R"({"payments":[],"paymentInstructions":[{"abn":"2","amount":"1"}]})", {}},
      {R"({"payments":{},"paymentInstructions":[{"abn":"2","amount":"1"}]})", {"2"}},
      {R"({"payments":null,"body":{"paymentInstructions":[{"abn":"2","amount":"1"},{"abn":"3","amount":"1"}]}})",
       {"2", "3"}},
      {R"({"paymentInstructions":"none"})", {}},
  };
  for (const auto& Case : Cases) {
    const auto Response = Loaded<TBeamContributionResponse>(Case.Json);
    ASSERT_EQ(Response.GetPaymentsCount(), Case.Abns.size()) << Case.Json;
    for (std::size_t Index = 0; Index < Case.Abns.size(); ++Index)
      EXPECT_EQ(Response.GetPayment(static_cast<std::ptrdiff_t>(Index))->ABN, Case.Abns[Index]);
  }
}

TEST(ContributionResponse, APaymentWithoutAProperAmountIsRefusedAndTheOnesBeforeItStay) {
  for (const char* Amount : {"", R"(,"amount":"")", R"(,"amount":"ten")", R"(,"amount":null)", R"(,"amount":"1,5")"}) {
    TBeamContributionResponse Response;
    const std::string Text = R"({"messageId":"m","payments":[{"amount":"12.30"},{"abn":"x")" + std::string(Amount) +
                             R"(}],"processed":true})";
    EXPECT_THROW(Response.LoadFromJSONObject(*Document(Text).AsObject()), TBeamConversionError) << Amount;
    ASSERT_EQ(Response.GetPaymentsCount(), 1u);
    EXPECT_EQ(Response.GetPayment(0)->amount, 12.30);
    EXPECT_EQ(Response.messageId, "m");
    EXPECT_FALSE(Response.processed);
  }
}

TEST(ContributionResponse, AnAmountMayAlsoBeAJsonNumber) {
  EXPECT_EQ(Loaded<TBeamSuperPayment>(R"({"amount":1.5E2})").amount, 150);
}

TEST(ContributionResponse, AnAccountThatIsNoObjectLeavesTheAccountAlone) {
  TBeamSuperPayment Payment;
  Payment.account.BSB = "062-000";
  Payment.LoadFromJSONObject(*Document(R"({"amount":"0.00","account":"text"})").AsObject());
  EXPECT_EQ(Payment.account.BSB, "062-000");
  EXPECT_EQ(PrintJSON(*Payment.GetAsJsonObject(), TJSONLayout::Compact), R"({"account":{"bsb":"062-000"}})");
}

TEST(ContributionResponse, NegativeIndexesAreAnErrorAndThosePastTheEndGiveNull) {
  TBeamContributionResponse Response;
  Response.AddPayment(nullptr);
  Response.AddValidation(nullptr);
  EXPECT_EQ(Response.GetPaymentsCount(), 0u);
  EXPECT_EQ(Response.GetValidationsCount(), 0u);
  EXPECT_EQ(Response.GetPayment(0), nullptr);
  EXPECT_EQ(Response.GetValidation(PTRDIFF_MAX), nullptr);
  EXPECT_THROW(Response.GetPayment(-1), TBeamRangeError);
  EXPECT_THROW(Response.GetValidation(-1), TBeamRangeError);
}

TEST(ContributionResponse, LoadingTwiceHoldsTheItemsOfBothAnswers) {
  TBeamContributionResponse Response;
  for (const char* Text : {R"({"validations":[{"path":"a"}]})", R"({"validations":[{"path":"b"},{"path":"c"}]})"})
    Response.LoadFromJSONObject(*Document(Text).AsObject());
  ASSERT_EQ(Response.GetValidationsCount(), 3u);
  EXPECT_EQ(Response.GetValidation(2)->path, "c");
}

}  // namespace
}  // namespace oxSuperAPI
