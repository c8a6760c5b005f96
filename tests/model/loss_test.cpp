// What a record loses and gains on the way from its writer to its reader and back: guards the differences that the wire
// wants from well-meant repair.
#include "loss.h"
#include "maximal_documents.h"
#include "oxSuperAPI/model/uBeamSuperObjects.h"

namespace oxSuperAPI {
namespace {

std::string MemberWithoutDefinedBenefits() {
  const std::size_t Start = MemberAsWritten.find(R"("definedBenefits":)");
  const std::size_t End = MemberAsWritten.find(R"("dob":)");
  return ReplaceFirst(MemberAsWritten, MemberAsWritten.substr(Start, End - Start), "");
}

TEST(Loss, EveryFieldOfEveryRecordIsWrittenInItsPlaceAndBothFormsAgree) {
  auto Member = Loaded<TBeamMemberContribution>(MemberAsRead);
  Member.employmentStatus = "employmentStatus";
  EXPECT_EQ(Written(Member), MemberAsWritten);
  const auto Batch = Loaded<TBeamContributionDetail>(BatchAsRead);
  EXPECT_EQ(Written(Batch), BatchAsWritten);
  const auto Response = Loaded<TBeamContributionResponse>(ResponseAsRead);
  EXPECT_EQ(Written(Response), ResponseAsWritten);
  for (const std::string& Part :
       {Written(*Batch.GetContributionEmployer(0)), Written(*Batch.GetContributionEmployer(0)->GetContributionFund(0)),
        Written(*Response.GetPayment(0)), Written(*Response.GetValidation(0))})
    EXPECT_NE((BatchAsWritten + ResponseAsWritten).find(Part), std::string::npos) << Part;
}

TEST(Loss, AMemberReadBackLosesItsEmploymentStatusAndTheTextsOfOtherDetails) {
  TPaths Lost = {R"(/employmentStatus="employmentStatus")"};
  for (const char* Index : {"0", "1", "2", "3", "4"})
    Lost.push_back("/memberRegistrationOtherDetails/" + std::string(Index) + "/Text=\"" +
                   static_cast<char>(*Index + 1) + " text\"");
  ExpectLoss<TBeamMemberContribution>(MemberWithoutDefinedBenefits(), Lost, {});
}

TEST(Loss, ABatchReadBackLosesThePaymentIdentifierTypeAndTheFundsAccount) {
  const std::string Account = "/contributionDetail/employers/0/funds/0/smsfDetail/bankDetail/account/";
  ExpectLoss<TBeamContributionDetail>(
      BatchAsWritten,
      {"/contributionDetail/paymentDetail/businessIdentifier/businessidentifierType=\"payment type\"",
       Account + "accountName=\"accountName\"", Account + "accountNumber=\"accountNumber\""},
      {});
}

}  // namespace
}  // namespace oxSuperAPI
