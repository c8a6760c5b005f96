// 02: builds a contribution batch, submits it, and reads the answer: payments to make, findings, or neither because the
// outcome is unknown.
#include <iostream>

#include "oxSuperAPI/calls/uBeamSuperCalls.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"
#include "oxSuperAPI/testing/uFakeHost.h"

using namespace oxSuperAPI;

namespace {

std::shared_ptr<TBeamMemberContribution> MakeMember() {
  auto Member = std::make_shared<TBeamMemberContribution>();
  Member->name.familyName = "Nguy\u1EC5n";
  Member->name.givenName = "Zo\u00EB";
  Member->dob = "1990-02-28";
  Member->memberNumber = "M-1001";
  Member->payrollNumber = "P-7";
  Member->payPeriodStartDate = "2026-11-01";
  Member->payPeriodEndDate = "2026-11-14";
  Member->superGuaranteeAmount = 412.50;  // dollars
  Member->salarySacrificedAmount = 100;
  return Member;
}

TBeamContributionDetail MakeBatch() {
  auto Fund = std::make_shared<TBeamContributionFund>();
  Fund->ABN = "51824753556";
  Fund->USI = "51824753556001";
  Fund->organisationName = "Example Super";
  Fund->AddMemberContribution(MakeMember());

  auto Employer = std::make_shared<TBeamContributionEmployer>();
  Employer->employerDetail.businessIdentifierType = "ABN";
  Employer->employerDetail.businessIdentifierValue = "51824753556";
  Employer->employerDetail.organisationName = "Example Pty Ltd";
  Employer->AddContributionFund(Fund);

  TBeamContributionDetail Batch;
  Batch.participant.clientParticipantNumber = "15001";
  Batch.payment.paymentType = TBeamSuperAPIPaymentMethodString[bspmDC];
  Batch.AddContributionEmployer(Employer);
  return Batch;
}

void Report(const TBeamContributionResponse& Response) {
  for (std::size_t Index = 0; Index < Response.GetPaymentsCount(); ++Index) {
    const auto Payment = Response.GetPayment(static_cast<std::ptrdiff_t>(Index));
    std::cout << "pay " << Payment->amount << " to " << Payment->organisationName << ", reference "
              << Payment->paymentReferenceNumber << '\n';
  }
  for (std::size_t Index = 0; Index < Response.GetValidationsCount(); ++Index) {
    const auto Finding = Response.GetValidation(static_cast<std::ptrdiff_t>(Index));
    std::cout << Finding->severity << ' ' << Finding->errorCode << ": " << Finding->message << '\n';
  }
}

}  // namespace

int main() {
  TFakeHost Host;
  Host.AddActivatedCustomer();
  Host.FakeHTTP.AnswerURL("/auth/token", 200, R"({"access_token":"abc","expires_in":"3599"})");
  Host.FakeHTTP.AnswerURL("/clearing-house/submit", 200, R"({
    "identifier": {"processId": "PR-1"}, "status": "Submitted", "hasErrors": false, "processed": true,
    "payments": [{"amount": "512.50", "organisationName": "Example Super", "paymentReferenceNumber": "PRN-1"}]})");

  TBeamContributionDetail Batch = MakeBatch();
  std::unique_ptr<TBeamContributionResponse> Response;
  std::string Message, Error, Status;
  int Result = 1;
  try {
    // True also for a refusal (400): what was refused stands in the response.
    if (PostContribution("example 02", &Batch, true, Response, Message, Error, Status) && Response) {
      std::cout << "process " << Response->processId << ", log row " << Batch.BeamSuperLogID << '\n';
      Report(*Response);
      Result = Response->StatusCode == 200 && !Response->hasErrors ? 0 : 1;
    } else {
      std::cout << "not submitted: " << Message << '\n';
    }
  } catch (const TBeamError& Failure) {
    // The request may have arrived. Never submit again before it is known what became of it.
    std::cout << "outcome unknown: " << Failure.what() << '\n';
  }
  TBeamSuperGlobal::Finalize();
  return Result;
}
