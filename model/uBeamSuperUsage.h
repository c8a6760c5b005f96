#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "oxSuperAPI/host/uHostDates.h"
#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

/// The billing record of a submission, for the host to fill and to send where it bills. Nothing of the library makes or
/// reads one.
class OXSUPERAPI_EXPORT TBeamSuperUsage {
 public:
  /// The host's own figures and texts; `ProcessId` is the batch's name at the service. @{
  std::string CustomerNumber;
  std::string DatabaseName;  ///< never in JSON
  TDateTime SubmitDate = 0;  ///< local time; written in UTC, by the host's time zone
  std::string ProcessId;
  std::int32_t BatchId = 0;
  std::string ABN;
  std::string CompanyName;
  std::int32_t ContributionCount = 0;
  std::int32_t FundCount = 0;
  std::int32_t EmployeeCount = 0;
  std::string Action;
  bool Submitted = false;
  /// @}

  /// Both raise TBeamError without a registered host, and TBeamConversionError for a date outside the calendar. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;

  template <class Sink>
  void Write(Sink& Json) const;
  /// @}
};

}  // namespace oxSuperAPI
