#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace oxSuperAPI {

/// An `Error` keeps the file from being sent; a `Warning` is a repair or a doubt that somebody should look at; a
/// `Remark` is for information.
enum class TFindingSeverity : std::uint8_t { Error, Warning, Remark };

/// Something that a check has to say about a pay-run file. Never holds a tax file number or an account number.
struct TFinding {
  TFindingSeverity Severity = TFindingSeverity::Error;
  std::size_t Line = 0;    ///< line of the file, from 1; 0 when the whole file is meant
  std::string LineId;      ///< the row's own LINE ID, may be empty
  std::size_t Column = 0;  ///< 1 to 133; 0 when the whole row is meant
  std::string Reason;
};

/// Data that stands in the file and that the service's JSON has no place for.
struct TNotSent {
  std::size_t Column = 0;
  std::string Reason;
  std::vector<std::size_t> Lines;
};

inline bool HasErrors(const std::vector<TFinding>& Findings) {
  return std::any_of(Findings.begin(), Findings.end(),
                     [](const TFinding& Finding) { return Finding.Severity == TFindingSeverity::Error; });
}

}  // namespace oxSuperAPI
