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
  /// Texts that are moved in are masked where they stand and handed on: none is copied.
  static std::int32_t AddToLog(std::string Source, std::string URL, std::string Method, std::string Headers,
                               std::string Body, std::string Response, std::string LogDetails,
                               std::string Status) noexcept;
};

}  // namespace oxSuperAPI
