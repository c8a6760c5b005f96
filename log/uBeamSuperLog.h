#pragma once

#include <cstdint>
#include <string>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// The call log: rows in `dbo._iptblBeamSuperLog` of the payroll database, one for each request that was
/// sent and one more where a program error followed.
class OXSUPERAPI_EXPORT TBeamSuperLog {
 public:
  TBeamSuperLog() = delete;

  /// Writes one row, with client ids, client secrets and UUIDs masked, and returns its key. 0 when nothing was written:
  /// no payroll database, nothing worth a row (source, headers, body and response all blank), or any error, which is
  /// dropped, since logging must never disturb the call.
  ///
  /// Bearer tokens are not masked here. `Source` and `Status` are cut to 100 and 3 characters and not masked.
  static std::int32_t AddToLog(const std::string& Source, const std::string& URL, const std::string& Method,
                               const std::string& Headers, const std::string& Body, const std::string& Response,
                               const std::string& LogDetails, const std::string& Status) noexcept;
};

}  // namespace oxSuperAPI
