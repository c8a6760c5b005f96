#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "oxSuperAPI/reference/db_rows.h"
#include "oxSuperAPI/reference/log_masking.h"

namespace oxSuperAPI {

/// Masks rows of the call log where they stand, in one transaction, and returns how many of them changed. The rows are
/// kept; columns in which nothing is to be hidden are not touched. `Known` may be null. With `DryRun` nothing is
/// written.
OXSUPERAPI_EXPORT std::size_t ScrubCallLog(TDBConnection& Connection, const std::vector<std::int32_t>& Rows,
                                           TLogMasking Masking, std::shared_ptr<TKnownSecrets> Known = nullptr,
                                           bool DryRun = false);

/// Takes from the files of a SQLite database what rows held before they were changed or deleted: the file is written
/// anew and the write-ahead log emptied. No effect on a database server, whose log files are its administrator's.
/// Raises TDatabaseError when another program is in the way; it can be repeated then.
OXSUPERAPI_EXPORT void EraseRemains(TDBConnection& Connection);

}  // namespace oxSuperAPI
