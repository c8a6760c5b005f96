// 05: two records that the library offers and does not send itself: the usage-billing record of a submission, and a
// list of the fields that the application changed.
#include <iostream>

#include "oxSuperAPI/foundation/uBeamEnumerations.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/model/uBeamSuperObjects.h"
#include "oxSuperAPI/testing/uFakeHost.h"

using namespace oxSuperAPI;

int main() {
  TFakeHost Host;

  TBeamSuperUsage Usage;
  Usage.CustomerNumber = "15001";
  Usage.SubmitDate = Now();  // local; written as UTC
  Usage.ProcessId = "PR-1";
  Usage.BatchId = 7;
  Usage.ABN = "51824753556";
  Usage.CompanyName = "Example Pty Ltd";
  Usage.ContributionCount = 13;
  Usage.FundCount = 5;
  Usage.EmployeeCount = 12;
  Usage.Action = std::string(TBeamSuperActionString[bsaSubmitted]);
  Usage.Submitted = true;
  std::cout << Usage.GetAsJsonString() << '\n';

  TSuperFieldChanges Changes;
  const int First = Changes.Add("cBSB", "062-000", "BSB of the refund account");
  Changes.AddComment("Changed at the bank's request");
  std::cout << Changes.GetChangeCount() << " of at most " << Changes.GetMaxChanges() << " changes\n";
  return First == 0 ? 0 : 1;
}
