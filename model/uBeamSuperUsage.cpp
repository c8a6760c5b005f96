#include "oxSuperAPI/model/uBeamSuperUsage.h"

#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/host/uHost.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamSuperUsage::Write(Sink& Json) const {
  Json.AddString("datasetName", "BeamSuperUsage");
  Json.Object("value", Always, [&](Sink& Value) {
    Value.AddString("datasetName", "BeamSuperUsage");  // kept: wire behaviour, inside as well
    Value.AddString("description", "Beam Usage Billing Data");
    Value.AddString("customerNumber", CustomerNumber);
    Value.AddString("submitDate", FormatUTCMilliseconds(Host().System().LocalToUTC(SubmitDate)));
    Value.AddString("processId", ProcessId);
    Value.AddPair("batchId", BatchId);
    Value.AddString("abn", ABN);
    Value.AddString("companyName", CompanyName);
    Value.AddPair("contributionCount", ContributionCount);
    Value.AddPair("fundCount", FundCount);
    Value.AddPair("employeeCount", EmployeeCount);
    Value.AddString("action", Action);
    Value.AddPair("Submitted", Submitted);  // kept: wire behaviour, a capital S
  });
}

std::unique_ptr<TJSONObject> TBeamSuperUsage::GetAsJsonObject() const {
  return WriteToObject(*this);
}

std::string TBeamSuperUsage::GetAsJsonString() const {
  return WriteToText(*this);
}

template void TBeamSuperUsage::Write(TJSONObjectHelper&) const;
template void TBeamSuperUsage::Write(TJSONTextCounter&) const;
template void TBeamSuperUsage::Write(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
