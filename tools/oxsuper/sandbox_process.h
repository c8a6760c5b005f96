#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

/// The beam-sandbox that belongs to a configuration: its files stand in the folder "sandbox" beside it.
struct TSandboxProcess {
  int Pid = 0;
  unsigned short Port = 0;
  std::string CAFile;
  std::string StartTime;  ///< of the process, by the machine's own count: a pid alone may be somebody else's by now
};

struct TSandboxStart {
  std::filesystem::path Directory;  ///< of the configuration
  std::string Program;              ///< "" looks beside oxsuper, then in $PATH
  unsigned short Port = 0;
  double LifetimeSeconds = 0;  ///< 0: until it is stopped
  double TimeStepSeconds = 0;  ///< how long a batch stays in a status
};

/// The running sandbox, or none.
std::optional<TSandboxProcess> FindSandbox(const std::filesystem::path& Directory, TJSONParser& Parser);
/// Starts it in the background and waits until it is ready. Raises TToolError with the sandbox's own words when it does
/// not get there.
TSandboxProcess StartSandbox(const TSandboxStart& Start, TJSONParser& Parser);
/// Ends it and waits until it is gone. False when none was running.
bool StopSandbox(const std::filesystem::path& Directory, TJSONParser& Parser);

/// A TCP port that nobody uses at this moment.
unsigned short FreePort();

}  // namespace oxSuperAPI
