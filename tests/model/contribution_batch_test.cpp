#include "loss.h"
#include "maximal_documents.h"
#include "oxSuperAPI/model/uBeamSuperObjects.h"

namespace oxSuperAPI {
namespace {

TEST(ContributionBatch, EmptyRecordsWriteOnlyWhatIsAlwaysSent) {
  TBeamContributionDetail Batch;
  Batch.BeamSuperLogID = 12;
  EXPECT_EQ(Written(Batch), "{}");
  EXPECT_EQ(TBeamContributionEmployer().GetAsJsonString(), "{}");
  EXPECT_EQ(Written(TBeamContributionFund()), R"({"fundIdentifier":{},"isDefaultFund":false})");
}

TEST(ContributionBatch, EmptyChildrenAreElementsAllTheSame) {
  TBeamContributionFund Fund;
  Fund.AddMemberContribution(std::make_shared<TBeamMemberContribution>());
  EXPECT_EQ(Written(Fund), R"({"fundIdentifier":{},"isDefaultFund":false,"members":[{}]})");
  TBeamContributionDetail Batch;
  Batch.AddContributionEmployer(std::make_shared<TBeamContributionEmployer>());
  EXPECT_EQ(Written(Batch), R"({"contributionDetail":{"employers":[{}]}})");
}

TEST(ContributionBatch, NullChildrenAreIgnoredIndexesOutOfRangeGiveNullAndAChildOutlivesItsParent) {
  TBeamContributionDetail Batch;
  TBeamContributionEmployer Employer;
  TBeamContributionFund Fund;
  Batch.AddContributionEmployer(nullptr);
  Employer.AddContributionFund(nullptr);
  Fund.AddMemberContribution(nullptr);
  for (std::ptrdiff_t Index : {std::ptrdiff_t{-1}, std::ptrdiff_t{0}, PTRDIFF_MIN, PTRDIFF_MAX})
    EXPECT_FALSE(Batch.GetContributionEmployer(Index) || Employer.GetContributionFund(Index) ||
                 Fund.GetMemberContribution(Index));
  const auto Member = Loaded<TBeamContributionDetail>(BatchAsRead)
                          .GetContributionEmployer(0)
                          ->GetContributionFund(0)
                          ->GetMemberContribution(0);
  EXPECT_EQ(Member->superGuaranteeAmount, 1);
}

TEST(ContributionBatch, LoadingTwiceDoublesTheChildren) {
  TBeamContributionDetail Batch;
  Load(Batch, BatchAsRead);
  Load(Batch, BatchAsRead);
  EXPECT_EQ(Batch.GetContributionEmployerCount(), 2u);
  EXPECT_EQ(Batch.GetContributionEmployer(1)->GetContributionFund(0)->GetMemberContributionCount(), 1u);
}

TEST(ContributionBatch, NestedObjectsThatAreMissingLeaveTheirFieldsAndPresentOnesEmptyThem) {
  TBeamContributionDetail Batch;
  Load(Batch, BatchAsRead);
  Load(Batch, R"({"contributionDetail":{"participantDetail":{"name":{"title":"Dr"},"businessIdentifier":null},
                  "paymentDetail":7},"identifier":{"messageId":"new"}})");
  EXPECT_EQ(Batch.participant.email, "");
  EXPECT_EQ(Batch.participant.name.title, "Dr");
  EXPECT_EQ(Batch.participant.name.familyName, "");
  EXPECT_EQ(Batch.participant.businessIdentifierValue, "participant value");
  EXPECT_EQ(Batch.payment.organisationName, "payment organisation");
  EXPECT_EQ(Batch.identifier.messageId, "new");
  EXPECT_EQ(Batch.identifier.time, "");
  EXPECT_EQ(Batch.version, "");
}

TEST(ContributionBatch, PhoneTablesOfFundsAreEmptiedFirstTheOthersAreNot) {
  const std::string Six = Expanded(R"("phoneNumbers":[@{"number":"#"}@,{"number":"6"}]})");
  TBeamContributionDetail Batch;
  TBeamContributionEmployer Employer;
  TBeamContributionFund Fund;
  for (const std::string& Text : {Six, std::string(R"("phoneNumbers":[{"number":"9"}]})")}) {
    Load(Batch, R"({"contributionDetail":{"participantDetail":{)" + Text + "}}");
    Load(Employer, R"({"employerDetail":{)" + Text + "}");
    Load(Fund, R"({"smsfDetail":{)" + Text + "}");
  }
  const std::string Kept[] = {"9", "2", "3", "4", "5"};
  const std::string Emptied[] = {"9", "", "", "", ""};
  for (std::size_t Index = 0; Index < MaxTableEntries; ++Index) {
    EXPECT_EQ(Batch.participant.phoneNumbers[Index].number, Kept[Index]);
    EXPECT_EQ(Employer.employerDetail.phoneNumbers[Index].number, Kept[Index]);
    EXPECT_EQ(Fund.smsfDetail.phoneNumbers[Index].number, Emptied[Index]);
  }
}

TEST(ContributionBatch, ARefusedMemberIsNotAddedAndTheChildrenBeforeItStay) {
  TBeamContributionFund Fund;
  Fund.organisationName = "old";
  EXPECT_THROW(Load(Fund, R"({"fundEmployerNumber":"new","members":[)" + std::string(SmallestMember) + R"(,{}],
                              "organisationName":"new"})"),
               TBeamConversionError);
  EXPECT_EQ(Fund.GetMemberContributionCount(), 1u);
  EXPECT_EQ(Fund.fundEmployerNumber, "new");
  EXPECT_EQ(Fund.organisationName, "old");

  TBeamContributionEmployer Employer;
  EXPECT_THROW(Load(Employer, R"({"funds":[{},{"members":[{}]},{}]})"), TBeamConversionError);
  EXPECT_EQ(Employer.GetContributionFundCount(), 1u);
  EXPECT_THROW(Load(Employer, R"({"funds":["not an object"]})"), TBeamTypeError);
  EXPECT_TRUE(Loaded<TBeamContributionFund>(R"({"isDefaultFund":true})").isDefaultFund);
  EXPECT_FALSE(Loaded<TBeamContributionFund>(R"({"isDefaultFund":"true"})").isDefaultFund);
}

}  // namespace
}  // namespace oxSuperAPI
