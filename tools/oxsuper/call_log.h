#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "oxSuperAPI/reference/db_rows.h"
#include "oxSuperAPI/reference/log_masking.h"

namespace oxSuperAPI {

/// Which rows of the call log; an empty text and a count of 0 ask for nothing.
struct TLogFilter {
  std::string Since;       ///< local date or date-time, inclusive
  std::string Until;       ///< the same; a date alone includes that day, a moment is the first that is not included
  std::string Before;      ///< the same; not included, a date alone neither
  std::string Source;      ///< a piece of the source, in any letter case
  std::string Status;      ///< "200", "4xx" or "failed": whatever is not 200
  std::int32_t Count = 0;  ///< the last ones
};

/// "" when the text is a date or date-time, or a status to filter by; otherwise what is expected. @{
std::string CheckMoment(const std::string& Text);
std::string CheckStatus(const std::string& Text);
/// @}

/// What identifies a row.
struct TLogHead {
  std::int32_t Id = 0;
  std::string When;  ///< "2026-11-21 10:00:00"
  std::string Source;
  std::string Method;
  std::string URL;
  std::string Status;
};

/// A whole row.
struct TLogRow : TLogHead {
  std::string Agent;
  std::string RequestHeader;
  std::string RequestBody;
  std::string Response;
  std::string Details;
};

/// The call log as it is shown: every text masked, whatever the rows hold.
class TCallLog {
 public:
  /// The connection is borrowed.
  TCallLog(TDBConnection& Connection, TLogMasking Masking, std::shared_ptr<TKnownSecrets> Known)
      : FConnection(Connection), FMasking(Masking), FKnown(std::move(Known)) {}

  /// In the order in which they were written.
  std::vector<TLogHead> Find(const TLogFilter& Filter);
  /// None when there is no such row.
  std::optional<TLogRow> Read(std::int32_t Id);

 private:
  TDBConnection& FConnection;
  TLogMasking FMasking;
  std::shared_ptr<TKnownSecrets> FKnown;
};

/// JSON indented; any other text as it is.
std::string PrettyText(const std::string& Text);

}  // namespace oxSuperAPI
