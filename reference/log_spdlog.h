#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uHost.h"

namespace spdlog {
class logger;
}

namespace oxSuperAPI {

/// Where the log is kept and how much of it.
struct TSpdlogOptions {
  std::string FileName;                                    ///< older files get a number: host.log, host.1.log, ...
  std::size_t MaxBytes = 5u << 20;                         ///< of one file
  std::size_t KeptFiles = 5;                               ///< besides the current one
  std::function<std::string(std::string_view)> Mask = {};  ///< what may be written of a text; empty: all of it
};

/// The host log in rotating files that only the owner may read, one line an entry:
/// "2024-03-05 12:00:00.123 [warning] 75 text". Each line is on its way to the disk when AddToLog returns.
class OXSUPERAPI_EXPORT TSpdlogLog final : public THostLog {
 public:
  /// Raises TBeamError when the file cannot be opened, or is a link, open to others or another user's.
  explicit TSpdlogLog(const TSpdlogOptions& Options);
  ~TSpdlogLog() override;
  /// Does not raise when the disk is full or the file cannot be rotated: what is being logged goes on. The next entry
  /// tries to open the file again.
  void AddToLog(const std::string& Text, int Kind, TLogSeverity Severity) override;

 private:
  void Open();

  TSpdlogOptions FOptions;
  std::unique_ptr<spdlog::logger> FLogger;
  bool FFailed = false;
};

/// The text on one line, and harmless to a terminal: control characters (C0, DEL, C1) as a backslash with n, r, t or
/// x and two hexadecimal digits, the backslash itself doubled, so that no text can pass for another line.
OXSUPERAPI_EXPORT std::string EscapeForLog(std::string_view Text);

}  // namespace oxSuperAPI
