#include "../support/test_host.h"
#include "loss.h"
#include "maximal_documents.h"
#include "oxSuperAPI/model/uBeamSuperObjects.h"

namespace oxSuperAPI {
namespace {

TEST(ContributionBatch, EmptyRecordsWriteOnlyWhatIsAlwaysSentAndEmptyChildrenAreElements) {
  TBeamContributionDetail Batch;
  Batch.BeamSuperLogID = 12;
  TBeamContributionFund Fund;
  EXPECT_EQ(Written(Batch) + Written(TBeamContributionEmployer()), "{}{}");
  EXPECT_EQ(Written(Fund), R"({"fundIdentifier":{},"isDefaultFund":false})");
  Fund.AddMemberContribution(std::make_shared<TBeamMemberContribution>());
  EXPECT_EQ(Written(Fund), R"({"fundIdentifier":{},"isDefaultFund":false,"members":[{}]})");
  Batch.AddContributionEmployer(std::make_shared<TBeamContributionEmployer>());
  EXPECT_EQ(Written(Batch), R"({"contributionDetail":{"employers":[{}]}})");
}

TEST(Children, AreIgnoredWhenNullGiveNullOutOfRangeAndOutliveTheirParent) {
  TBeamContributionDetail Batch;
  TBeamContributionEmployer Employer;
  TBeamContributionFund Fund;
  TBeamParticipantDetails Participant;
  TBeamEmployer Workplace;
  TBeamDDAuthority Authority;
  TBeamDefaultFunds Funds;
  Batch.AddContributionEmployer(nullptr), Employer.AddContributionFund(nullptr), Fund.AddMemberContribution(nullptr);
  Participant.AddEmployer(nullptr), Participant.AddDDAuthority(nullptr), Workplace.AddDefaultFund(nullptr);
  Authority.AddEmployerNumber(nullptr), Funds.AddDefaultFund(nullptr);
  for (const std::ptrdiff_t Index : {std::ptrdiff_t{-1}, std::ptrdiff_t{0}, PTRDIFF_MIN, PTRDIFF_MAX})
    EXPECT_FALSE(Batch.GetContributionEmployer(Index) || Employer.GetContributionFund(Index) ||
                 Fund.GetMemberContribution(Index) || Participant.GetEmployer(Index) ||
                 Participant.GetDDAuthority(Index) || Workplace.GetDefaultFund(Index) ||
                 Authority.GetEmployerNumber(Index) || Funds.GetDefaultFund(Index))
        << Index;
  EXPECT_EQ(Batch.GetContributionEmployerCount() + Employer.GetContributionFundCount() +
                Fund.GetMemberContributionCount() + Participant.GetEmployerCount() + Participant.GetDDAuthorityCount() +
                Workplace.GetFundCount() + Authority.GetEmployerNumberCount() + Funds.GetDefaultFundCount(),
            0u);
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
  const TLines Found = {Batch.participant.email,
                        Batch.participant.name.title,
                        Batch.participant.name.familyName,
                        Batch.participant.businessIdentifierValue,
                        Batch.payment.organisationName,
                        Batch.identifier.messageId,
                        Batch.identifier.time,
                        Batch.version};
  EXPECT_EQ(Found, (TLines{"", "Dr", "", "participant value", "payment organisation", "new", "", ""}));
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
